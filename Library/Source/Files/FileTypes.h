#pragma once

#include <cstdio>
#include <iosfwd>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// What is to be done with the files of an extension.
struct FileType
{
    const char* strExtension; ///< lower case; null in the row for all others
    /// Readers from an open file, or from a stream over the whole file; one of the two is null.
    bool (*readHandle)(std::FILE* pFile, CMOXTexture& texture);
    bool (*readStream)(std::istream& stream, CMOXTexture& texture);
    /// Writes straight to the path.
    bool (*write)(const CMOXTexture& texture, const std::string& strPath);
    bool bAppendsExtension; ///< what is saved gets ".mox" added to its path
};

/// The row of an extension as getFileExtension() gives it.
[[nodiscard]] const FileType& getFileType(const std::string& strExtension);

} // namespace moxtexture
