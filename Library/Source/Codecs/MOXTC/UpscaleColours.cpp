#include "Codecs/MOXTC/UpscaleColours.h"

namespace moxtexture
{
namespace
{

/// The pixel that is x of uiBlockWidth to the right and y of 4 down from the centre of P, the upper left one of four blocks.
uint32_t interpolate(uint32_t P, uint32_t Q, uint32_t R, uint32_t S, int32_t iBlockWidth, int32_t x, int32_t y)
{
    const uint32_t uiShift = iBlockWidth == 8 ? 5 : 4; // block width times 4
    uint32_t uiPixel = 0;
    for (uint32_t c = 0; c < 4; ++c)
    {
        const int32_t iTop = iBlockWidth * getChannel(P, c) + x * (getChannel(Q, c) - getChannel(P, c));
        const int32_t iBottom = iBlockWidth * getChannel(R, c) + x * (getChannel(S, c) - getChannel(R, c));
        const int32_t iSum = 4 * iTop + y * (iBottom - iTop);
        uiPixel |= static_cast<uint32_t>(iSum) >> uiShift << 8 * c;
    }
    return uiPixel;
}

/// @param colours  one pixel a block
/// @param upscaled  of the picture's size
void upscale(const CompressorImages& images, const std::vector<uint32_t>& colours, std::vector<uint32_t>& upscaled)
{
    const uint32_t uiBlockWidth = images.ui8BlockWidth;
    const uint32_t uiBlockHeight = images.ui8BlockHeight;
    for (uint32_t uiBlockY = 0; uiBlockY < images.uiBlocksY; ++uiBlockY)
    {
        for (uint32_t uiBlockX = 0; uiBlockX < images.uiBlocksX; ++uiBlockX)
        {
            const uint32_t uiRight = (uiBlockX + 1) % images.uiBlocksX;
            const uint32_t uiBelow = (uiBlockY + 1) % images.uiBlocksY;
            const uint32_t P = colours[images.getBlockIndex(uiBlockX, uiBlockY)];
            const uint32_t Q = colours[images.getBlockIndex(uiRight, uiBlockY)];
            const uint32_t R = colours[images.getBlockIndex(uiBlockX, uiBelow)];
            const uint32_t S = colours[images.getBlockIndex(uiRight, uiBelow)];

            const size_t uiLeft = images.getFirstPixel(uiBlockX, 0) + uiBlockWidth / 2;
            const size_t uiTop = size_t{uiBlockY} * uiBlockHeight + uiBlockHeight / 2;
            for (uint32_t y = 0; y < uiBlockHeight; ++y)
            {
                uint32_t* pRow = upscaled.data() + (uiTop + y) % images.uiHeight * images.uiWidth;
                for (uint32_t x = 0; x < uiBlockWidth; ++x)
                    pRow[(uiLeft + x) % images.uiWidth] =
                        interpolate(P, Q, R, S, images.ui8BlockWidth, static_cast<int32_t>(x), static_cast<int32_t>(y));
            }
        }
    }
}

} // namespace

void upscaleColoursReference(CompressorImages& images)
{
    upscale(images, images.colourA, images.upscaledA);
    upscale(images, images.colourB, images.upscaledB);
}

} // namespace moxtexture
