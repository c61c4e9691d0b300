#include "Composition/SavePadding.h"

namespace moxtexture
{

void setSavePadding(CMOXTextureHeader& header, uint32_t ui32Alignment)
{
    if (ui32Alignment <= 1)
        return;

    auto* pBlocks = header.getMetaData().find(CMOXTextureHeader::k_ui32NativeFourCC);
    if (pBlocks != nullptr)
        pBlocks->remove(eMetaDataPadding);
    header.setMetaDataSize(header.sumMetaDataSize());

    CMOXTextureHeader padded = header;
    padded.addPaddingMetaData(ui32Alignment);
    const bool bWriteable = padded.getMetaDataSize() != header.getMetaDataSize() + MetaDataBlock::k_uiRecordSize;
    if (bWriteable)
        header = padded;
    else
        header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataPadding, nullptr, ui32Alignment));
}

} // namespace moxtexture
