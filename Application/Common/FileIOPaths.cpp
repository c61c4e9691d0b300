#include "Common/FileIOPaths.h"

#include "Common/Preferences.h"

std::string getFileIOPath(const Preferences* pPreferences, const std::string& strKey)
{
    std::string strFolder;
    if (pPreferences != nullptr)
        pPreferences->getText(strKey, strFolder);
    return strFolder;
}

void setFileIOPath(Preferences* pPreferences, const std::string& strKey, const std::string& strPath)
{
    if (pPreferences == nullptr)
        return;
    // A backslash is a letter of a name where there is a separator of this system.
    const size_t uiSlash = strPath.rfind('/');
    const size_t uiEnd = uiSlash != std::string::npos ? uiSlash : strPath.rfind('\\');
    const bool bRoot = uiSlash == 0;
    pPreferences->setText(strKey, uiEnd == std::string::npos ? "" : strPath.substr(0, bRoot ? 1 : uiEnd));
}
