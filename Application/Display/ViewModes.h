#pragma once

#include <cstdint>

/// How a view shows its surface; the values are the rows of the display mode box.
enum ETextureViewModes : uint32_t
{
    eViewSingle = 0, ///< one surface, panned, with the background outside it
    eViewTiled = 1,  ///< the surface repeated without end
    eViewCube = 2,   ///< six faces seen from inside; panning turns the view
};
