#include "Codecs/MOXTC/StartingColours.h"

#include <utility>

namespace moxtexture
{
namespace
{

int32_t getBrightness(uint32_t uiPixel)
{
    return (30 * getChannel(uiPixel, 0) + 59 * getChannel(uiPixel, 1) + 11 * getChannel(uiPixel, 2)) / 100;
}

/// The pixels that decide the colours of a block, in rows.
void gatherWindow(const CompressorImages& images, uint32_t uiBlockX, uint32_t uiBlockY, bool bOverlap, std::vector<uint32_t>& window)
{
    const size_t uiScale = bOverlap ? 2 : 1;
    // A window reaches half a block to the left and above; adding the size keeps that from going below 0.
    const size_t uiMarginX = bOverlap ? images.ui8BlockWidth / 2 : 0;
    const size_t uiMarginY = bOverlap ? images.ui8BlockHeight / 2 : 0;
    const size_t uiLeft = size_t{uiBlockX} * images.ui8BlockWidth + images.uiWidth - uiMarginX;
    const size_t uiTop = size_t{uiBlockY} * images.ui8BlockHeight + images.uiHeight - uiMarginY;

    window.clear();
    for (size_t y = 0; y < uiScale * images.ui8BlockHeight; ++y)
    {
        const size_t uiRow = (uiTop + y) % images.uiHeight * images.uiWidth;
        for (size_t x = 0; x < uiScale * images.ui8BlockWidth; ++x)
            window.push_back(images.source[uiRow + (uiLeft + x) % images.uiWidth]);
    }
}

std::pair<uint32_t, uint32_t> findFarthestPair(const std::vector<uint32_t>& pixels)
{
    std::pair<uint32_t, uint32_t> farthest(pixels[0], pixels[0]);
    int32_t iFarthest = 0;
    for (size_t i = 0; i < pixels.size(); ++i)
    {
        for (size_t j = i + 1; j < pixels.size(); ++j)
        {
            const int32_t iDistance = getSquaredDistance(pixels[i], pixels[j]);
            if (iDistance > iFarthest)
            {
                iFarthest = iDistance;
                farthest = {pixels[i], pixels[j]};
            }
        }
    }
    return farthest;
}

} // namespace

void orderByLuminance(uint32_t& uiColourA, uint32_t& uiColourB)
{
    const int32_t iA = getBrightness(uiColourA);
    const int32_t iB = getBrightness(uiColourB);
    if (iA > iB || (iA == iB && uiColourA > uiColourB))
        std::swap(uiColourA, uiColourB);
}

void findStartingColoursReference(CompressorImages& images, bool bOverlap)
{
    std::vector<uint32_t> window;
    for (uint32_t y = 0; y < images.uiBlocksY; ++y)
    {
        for (uint32_t x = 0; x < images.uiBlocksX; ++x)
        {
            gatherWindow(images, x, y, bOverlap, window);
            auto [uiColourA, uiColourB] = findFarthestPair(window);
            orderByLuminance(uiColourA, uiColourB);
            images.colourA[images.getBlockIndex(x, y)] = uiColourA;
            images.colourB[images.getBlockIndex(x, y)] = uiColourB;
        }
    }
}

} // namespace moxtexture
