#pragma once

#include <cstdint>

namespace moxtexture
{

/// Blocks uiX0 to uiX1 - 1 of the rows uiY0 to uiY1 - 1.
struct BlockRegion
{
    uint32_t uiX0, uiX1, uiY0, uiY1;
};

} // namespace moxtexture
