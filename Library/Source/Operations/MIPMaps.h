#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// As a count of levels: down to 1 by 1 by 1.
inline constexpr uint32_t k_uiFullMIPChain = 0xFFFFFFFF;

/// Rebuilds the MIP chain of every array member and face from its top level; each level is made from the one above it.
///
/// @param uiNumMIPMaps  levels, the top one included, or k_uiFullMIPChain. On purpose without a limit: a 4 by 4 texture with a
///                      count of 6 gets six levels, the last four of 1 by 1. From level 32 on the header's sizes come round, so
///                      that a surface is larger than the pixel in it; what follows that pixel is 0.
/// @return false with the texture unchanged for a count of 0, a texture outside the working form (ChannelKind.h) or that lacks a
///         top surface, a result of 4 GiB or more, an unknown filter, and memory refused
[[nodiscard]] bool GenerateMIPMaps(CMOXTexture& texture, EResizeMode eMode, uint32_t uiNumMIPMaps);

/// Levels of a full chain: halving, cut, until width and height are at most 1 and the depth is below 2.
[[nodiscard]] uint32_t getFullMIPChainLength(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth);

} // namespace moxtexture
