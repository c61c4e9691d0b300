#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

uint32_t indexToBlockOrder(uint32_t ui32Indices)
{
    uint32_t ui32Stored = 0;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiIndex = ui32Indices >> (y * 4 + x) * 2 & 3;
            ui32Stored |= (uiIndex >> 1) << (16 + x * 4 + y) | (uiIndex & 1) << (x * 4 + y);
        }
    return ui32Stored;
}

} // namespace moxtexture
