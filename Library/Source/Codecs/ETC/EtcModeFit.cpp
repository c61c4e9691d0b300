#include "Codecs/ETC/EtcModeFit.h"

namespace moxtexture
{

namespace
{

/// Changes places of the bits that a mask names and those uiShift above them.
constexpr uint32_t swapBits(uint32_t ui32, uint32_t ui32Lower, uint32_t uiShift)
{
    const uint32_t ui32Changes = (ui32 >> uiShift ^ ui32) & ui32Lower;
    return ui32 ^ ui32Changes ^ ui32Changes << uiShift;
}

} // namespace

uint32_t indexToBlockOrder(uint32_t ui32Indices)
{
    // The five bits of a bit's place, from the top: y1 y0 x1 x0 p, where p tells the upper bit of an index from the lower. Each line
    // changes two of them for each other; the order wanted is p x1 x0 y1 y0.
    uint32_t ui32 = ui32Indices;
    ui32 = swapBits(ui32, 0x0000AAAA, 15); // p y0 x1 x0 y1
    ui32 = swapBits(ui32, 0x00F000F0, 4);  // p x1 y0 x0 y1
    ui32 = swapBits(ui32, 0x0C0C0C0C, 2);  // p x1 x0 y0 y1
    ui32 = swapBits(ui32, 0x22222222, 1);  // p x1 x0 y1 y0
    return ui32;
}

} // namespace moxtexture
