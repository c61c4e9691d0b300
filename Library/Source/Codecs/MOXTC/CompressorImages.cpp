#include "Codecs/MOXTC/CompressorImages.h"

#include "Codecs/MOXTC/Block/BlockWord.h"
#include "Core/ByteOrder.h"

namespace moxtexture
{

CompressorImages makeCompressorImages(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight, uint8_t ui8BlockWidth)
{
    CompressorImages images;
    images.uiWidth = uiWidth;
    images.uiHeight = uiHeight;
    images.uiBlocksX = uiWidth / ui8BlockWidth;
    images.uiBlocksY = uiHeight / k_uiBlockHeight;
    images.ui8BlockWidth = ui8BlockWidth;
    images.ui8BlockHeight = k_uiBlockHeight;

    const size_t uiPixels = size_t{uiWidth} * uiHeight;
    images.source.reserve(uiPixels);
    for (size_t i = 0; i < uiPixels; ++i)
        images.source.push_back(loadLE<uint32_t>(pSource + 4 * i));
    images.colourA.resize(images.getBlockCount());
    images.colourB.resize(images.getBlockCount());
    images.upscaledA.resize(uiPixels);
    images.upscaledB.resize(uiPixels);
    return images;
}

} // namespace moxtexture
