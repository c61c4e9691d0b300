#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Resizes the top MIP level of every array member and face by resizeSurface(); the other levels are dropped, and a border in the
/// metadata is scaled along.
///
/// @return true with nothing done if the texture has that size; false with the texture unchanged for a size of 0, a texture
///         outside the working form (ChannelKind.h) or that lacks a surface, a result of 4 GiB or more, and memory refused
[[nodiscard]] bool Resize(CMOXTexture& texture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, EResizeMode eMode);

/// Gives a header the sizes, one MIP level, and the border of the old one scaled by new size / old size, in whole numbers.
void setResizedShape(CMOXTextureHeader& header, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth);

} // namespace moxtexture
