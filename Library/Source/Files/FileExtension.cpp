#include "Files/FileExtension.h"

#include <algorithm>

namespace moxtexture
{

std::string getFileExtension(const std::string& strPath)
{
    const size_t uiDot = strPath.rfind('.');
    if (uiDot == std::string::npos)
        return {};
    std::string strExtension = strPath.substr(uiDot + 1);
    std::transform(strExtension.begin(), strExtension.end(), strExtension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return strExtension;
}

} // namespace moxtexture
