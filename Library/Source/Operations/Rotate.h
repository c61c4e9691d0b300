#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Turns every surface of a texture by a quarter about an axis.
///
/// About Z, which exchanges width and height, the image turns clockwise, or anticlockwise without bForward. On purpose otherwise:
/// about X height and depth are exchanged and about Y the height becomes the width, other numbers keep the sizes, and the pixels
/// of all of these are zeros.
///
/// @param uiAxis  an EMOXTAxis
/// @return false with the texture unchanged for one outside the working form (ChannelKind.h) or that lacks a surface, for a result
///         of 4 GiB or more, and where memory is refused
[[nodiscard]] bool Rotate(CMOXTexture& texture, uint32_t uiAxis, bool bForward);

} // namespace moxtexture
