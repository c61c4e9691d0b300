#pragma once

#include <string>

namespace moxtexture
{

/// What stands behind the last '.' of a path, in lower case (of the letters A to Z); empty without a '.' or with a final one.
/// On purpose: a '.' in a folder's name counts where the file's own name has none ("v1.2/picture" gives "2/picture").
[[nodiscard]] std::string getFileExtension(const std::string& strPath);

} // namespace moxtexture
