#include "Texture/DdsFormats.h"

#include "Formats/D3DFormatTable.h"
#include "Formats/DXGIFormatTable.h"

namespace moxtexture
{

bool setFromD3DFormat(CMOXTextureHeader& header, uint32_t ui32Number)
{
    const D3DFormatRow* pRow = findD3DFormat(ui32Number);
    if (pRow == nullptr)
        return false;
    header.setPixelFormat(pRow->pixelFormat);
    header.setChannelType(pRow->eChannelType);
    header.setColourSpace(eCS_Linear);
    if (pRow->isFourCC())
        header.setIsPreMultiplied(pRow->bPreMultiplied);
    return true;
}

void setFromDXGIFormat(CMOXTextureHeader& header, uint32_t ui32Number)
{
    const DXGIFormatRow* pRow = findDXGIFormat(ui32Number);
    if (pRow == nullptr)
        return;
    header.setPixelFormat(pRow->pixelFormat);
    header.setChannelType(pRow->eChannelType);
    header.setColourSpace(pRow->eColourSpace);
}

} // namespace moxtexture
