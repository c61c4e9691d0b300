#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Saves a texture in the format that the path's extension tells; every extension without a format of its own saves the native
/// one to getSavedPath().
///
/// It writes straight over an earlier file, which does not survive a failure; see COutputFile for what keeps it.
/// @return false if it could not be written; what was begun is removed
[[nodiscard]] bool saveTexture(const CMOXTexture& texture, const std::string& strPath);

/// The path that saveTexture() writes: the path itself where its extension has a format, else with ".mox" behind the whole of it
/// ("a.png.mox", "a.mox").
[[nodiscard]] std::string getSavedPath(const std::string& strPath);

} // namespace moxtexture
