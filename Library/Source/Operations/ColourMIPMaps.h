#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Paints each MIP level below the top in the colour of its number, so that a viewer shows which level is on screen: green, blue,
/// cyan, magenta, yellow and red in turn. A pixel keeps its brightness as the plain mean of red, green and blue, and its alpha.
///
/// In place. A surface that the texture lacks is left out, and the others go on.
/// @return that of the last surface, true if there is none below the top; false for a texture outside the working form
///         (ChannelKind.h)
[[nodiscard]] bool ColourMIPMaps(CMOXTexture& texture);

} // namespace moxtexture
