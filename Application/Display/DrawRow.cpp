#include "Display/DrawRow.h"

#include <cstring>
#include <utility>

void drawRowReference(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        uint8_t aui8Pixel[4]; // a functor of another class may read after it has written
        std::memcpy(aui8Pixel, pui8Source + 4 * i, 4);
        drawPixel.draw(pui8Target + 4 * i, aui8Pixel);
    }
}

void swapRowForScreenReference(uint8_t* pui8Pixels, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        std::swap(pui8Pixels[4 * i], pui8Pixels[4 * i + 2]);
        pui8Pixels[4 * i + 3] = 255;
    }
}
