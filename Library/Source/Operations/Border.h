#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Frames the top MIP level of every array member and face with its mirror image: rows and columns are repeated from the edge on.
/// The other levels are dropped, and the widths become the border record of the metadata.
///
/// On purpose: the slices in front are mirrored about the first slice and not about its edge, so that the first slice of the
/// result stays empty; and behind, slices of the image are overwritten with the empty slices of the border, as many as the border
/// is deep less one. Empty pixels are zeros.
///
/// @param uiBorderX, uiBorderY, uiBorderZ  pixels on each of the two sides of an axis
/// @return true with nothing done for three widths of 0; false with the texture unchanged for one outside the working form
///         (ChannelKind.h) or that lacks a surface, for a size beyond 32 bits or a result of 4 GiB or more, and memory refused
[[nodiscard]] bool Border(CMOXTexture& texture, uint32_t uiBorderX, uint32_t uiBorderY, uint32_t uiBorderZ);

} // namespace moxtexture
