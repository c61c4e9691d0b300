#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Saves a texture by the path's extension as saveTexture() does, but so that other programs see its colours: layouts that `.dds` and
/// `.ktx` files hold otherwise, or not at all, are put right on a copy, which is only made where something changes.
///
/// @param strPath  where to write; an earlier file may not survive a failure (see COutputFile)
/// @return false if the file's format has no place for the texture's encoding, memory is refused, or the file could not be written;
///         what was begun is removed
[[nodiscard]] bool saveForOthers(const CMOXTexture& texture, const std::string& strPath);

/// Whether saveForOthers() finds a place for the texture's encoding in a file of the path's extension. Always true for the native
/// formats.
[[nodiscard]] bool hasPlaceForEncoding(const CMOXTextureHeader& header, const std::string& strPath);

} // namespace moxtexture
