#include "Common/LastPathComponent.h"

#include <algorithm>

QString getLastPathComponent(const QString& strPath)
{
    return strPath.mid(std::max(strPath.lastIndexOf('/'), strPath.lastIndexOf('\\')) + 1);
}
