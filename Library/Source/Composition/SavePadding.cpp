#include "Composition/SavePadding.h"

namespace moxtexture
{

void setSavePadding(CMOXTextureHeader& header, uint32_t ui32Alignment)
{
    if (ui32Alignment <= 1)
        return;

    auto& blocks = header.getMetaData()[CMOXTextureHeader::k_ui32NativeFourCC];
    blocks.remove(eMetaDataPadding);
    header.setMetaDataSize(header.sumMetaDataSize());

    header.addPaddingMetaData(ui32Alignment);
    if (blocks[eMetaDataPadding].u32DataSize != 0)
        return;
    header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataPadding, nullptr, ui32Alignment));
    header.setMetaDataSize(header.sumMetaDataSize());
}

} // namespace moxtexture
