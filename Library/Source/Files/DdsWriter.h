#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Writes a DDS file straight to a path; an earlier file there is emptied first. Metadata has no place in it.
///
/// A single texture whose format has a D3D number or FourCC gets the plain header, which knows of no colour space. All others get
/// the extended header with a DXGI number. On purpose: arrays get it even where the plain header could name the format.
///
/// @return false, with the file removed, if the format has no number, if the texture has no data or if anything could not be written
[[nodiscard]] bool writeDds(const CMOXTexture& texture, const std::string& strPath);

} // namespace moxtexture
