#pragma once

#include <cstdio>
#include <iosfwd>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Loads a texture from an open file, by the reader that is told by the extension (as getFileExtension() gives it). The path
/// constructor of CMOXTexture is this with the file opened.
///
/// @param texture  a default texture; afterwards the block that it holds is what its header measures in any case
/// @return what the reader says; that a texture was loaded shows in a data size other than 0
bool readTexture(std::FILE* pFile, const std::string& strExtension, CMOXTexture& texture);

/// Reads the whole file into memory and calls a reader with a stream over it.
///
/// @return false if the file is longer than any texture could need (6 GiB) or delivers less than its size, if the reader gives false,
///         and also for a std::runtime_error, which a stream throws whose reader asked for exceptions; any other exception passes
///         through
[[nodiscard]] bool readThroughStream(std::FILE* pFile, bool (*reader)(std::istream& stream, CMOXTexture& texture), CMOXTexture& texture);

} // namespace moxtexture
