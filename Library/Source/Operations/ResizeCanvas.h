#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Places the top MIP level of every array member and face in a frame of another size. What the texture does not cover becomes
/// zero in all channels, what lies outside the frame is dropped; so are the other levels. A border in the metadata is scaled along
/// as by Resize().
///
/// @param iXOffset, iYOffset, iZOffset  where the texture's first pixel goes; below 0 its left, top or front is cut
/// @return true with nothing done for the texture's own sizes and offsets of 0; false with the texture unchanged for a size of 0, a
///         texture outside the working form (ChannelKind.h) or that lacks a surface, a result of 4 GiB or more, and memory refused
[[nodiscard]] bool ResizeCanvas(CMOXTexture& texture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth, int32_t iXOffset,
                                int32_t iYOffset, int32_t iZOffset);

} // namespace moxtexture
