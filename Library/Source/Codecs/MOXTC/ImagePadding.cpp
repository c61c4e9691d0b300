#include "Codecs/MOXTC/ImagePadding.h"

#include <cstddef>
#include <cstring>

namespace moxtexture
{
namespace
{

/// Which of uiSide columns or rows stands at place i of a side of uiPaddedSide: itself, or the one a margin before it, as often as needed.
uint32_t sourceOf(uint32_t i, uint32_t uiSide, uint32_t uiPaddedSide)
{
    if (i < uiSide)
        return i;
    // The margin ends with the last column: count from the end, and a side that is too short starts over.
    return uiSide - 1 - (uiPaddedSide - 1 - i) % uiSide;
}

} // namespace

std::vector<uint8_t> padImage(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiPaddedWidth,
                              uint32_t uiPaddedHeight)
{
    const size_t uiRow = size_t{4} * uiWidth;
    const size_t uiPaddedRow = size_t{4} * uiPaddedWidth;
    std::vector<uint8_t> padded(uiPaddedRow * uiPaddedHeight);
    if (uiWidth == 0 || uiHeight == 0)
        return padded;
    for (uint32_t y = 0; y < uiHeight; ++y)
    {
        uint8_t* pui8Row = padded.data() + y * uiPaddedRow;
        std::memcpy(pui8Row, pui8Source + y * uiRow, uiRow);
        for (uint32_t x = uiWidth; x < uiPaddedWidth; ++x)
            std::memcpy(pui8Row + size_t{4} * x, pui8Row + size_t{4} * sourceOf(x, uiWidth, uiPaddedWidth), 4);
    }
    for (uint32_t y = uiHeight; y < uiPaddedHeight; ++y)
        std::memcpy(padded.data() + y * uiPaddedRow, padded.data() + sourceOf(y, uiHeight, uiPaddedHeight) * uiPaddedRow, uiPaddedRow);
    return padded;
}

} // namespace moxtexture
