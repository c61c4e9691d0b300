#pragma once

#include <cstdio>
#include <iosfwd>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// What is to be done with the files of an extension. A part that is null has not been built: loading then leaves the texture
/// without data, saving gives false and writes nothing.
struct FileType
{
    const char* strExtension; ///< lower case; null in the row for all others
    /// Readers from an open file, or from a stream over the whole file; no more than one of the two is set.
    bool (*readHandle)(std::FILE* pFile, CMOXTexture& texture);
    bool (*readStream)(std::istream& stream, CMOXTexture& texture);
    /// Writes straight to the path.
    bool (*write)(const CMOXTexture& texture, const std::string& strPath);
    bool bAppendsExtension; ///< what is saved gets ".mox" added to its path
};

/// The row of an extension as getFileExtension() gives it.
[[nodiscard]] const FileType& getFileType(const std::string& strExtension);

} // namespace moxtexture
