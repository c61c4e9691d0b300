#include "Files/SaveTexture.h"

#include "Files/FileExtension.h"
#include "Files/FileTypes.h"

namespace moxtexture
{

bool saveTexture(const CMOXTexture& texture, const std::string& strPath)
{
    return getFileType(getFileExtension(strPath)).write(texture, getSavedPath(strPath));
}

std::string getSavedPath(const std::string& strPath)
{
    return getFileType(getFileExtension(strPath)).bAppendsExtension ? strPath + ".mox" : strPath;
}

} // namespace moxtexture
