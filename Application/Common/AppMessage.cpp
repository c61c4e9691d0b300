#include "Common/AppMessage.h"

#include <QtCore/QStringList>

OpenRequest readAppMessage(const QString& strMessage)
{
    const QLatin1String strSeparator("$!?");
    if (strMessage == QLatin1String("Halvane"))
        return {};
    if (!strMessage.contains(strSeparator))
        return {OpenRequest::eOne, strMessage, {}};
    const QStringList parts = strMessage.split(strSeparator, Qt::KeepEmptyParts);
    return {OpenRequest::eTwo, parts[0], parts[1]};
}
