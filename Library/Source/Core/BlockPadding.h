#pragma once

#include <cstdint>

namespace moxtexture
{

/// The place of a surface's side from which an encoder that pads to whole blocks takes position uiPosition.
///
/// Beyond the side it repeats the places that end at the side's end: position p takes p + size - padded size. On purpose not the
/// last place over and over. A side too short for that has one pixel (of blocks of four), which is then repeated.
/// @param uiPaddedSize  uiSize rounded up to whole blocks; uiPosition lies below it
[[nodiscard]] constexpr uint64_t getPaddingSource(uint64_t uiPosition, uint64_t uiSize, uint64_t uiPaddedSize)
{
    if (uiPosition < uiSize)
        return uiPosition;
    return uiPosition + uiSize >= uiPaddedSize ? uiPosition + uiSize - uiPaddedSize : 0;
}

} // namespace moxtexture
