#pragma once

#include <cstdio>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Writes a texture as C source: the bytes of its native file, in their order, as an array of constants.
///
/// @param file          open for writing
/// @param strArrayName  what the array is called; taken as it is, be it an identifier or not
/// @return true. On purpose: what could not be written shows when the file is closed (finishWriting())
bool writeCHeader(const CMOXTexture& texture, std::FILE* file, const std::string& strArrayName);

/// The name of the array in a file of that path: its last part, behind '/' and '\', up to the first '.'.
[[nodiscard]] std::string getCArrayName(const std::string& strPath);

/// Writes a C header straight to a path; an earlier file there is emptied first.
///
/// @return false, with the file removed, if it could not be written as a whole
[[nodiscard]] bool saveCHeader(const CMOXTexture& texture, const std::string& strPath);

} // namespace moxtexture
