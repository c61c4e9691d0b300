#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Mirrors every surface of a texture in place, each level with its own sizes; the header stays.
///
/// @param uiAxis  an EMOXTAxis; any other number leaves the pixels and gives true
/// @return false for a texture outside the working form (ChannelKind.h), or at the first surface that it lacks
[[nodiscard]] bool Flip(CMOXTexture& texture, uint32_t uiAxis);

} // namespace moxtexture
