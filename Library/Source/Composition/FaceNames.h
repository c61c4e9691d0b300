#pragma once

#include <cstdint>
#include <string>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// The name of a texture's face as a user reads it, "+X" or "-X", by the texture's own cube map order; a texture without one has
/// the faces in the order +X, -X, +Y, -Y, +Z, -Z.
///
/// @return "N/A" for a face that the order does not name
[[nodiscard]] std::string getFaceName(const CMOXTextureHeader& header, uint32_t uiFace);

} // namespace moxtexture
