#include "Documents/SaveDecision.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

QString getSaveExtension(const QString& strName)
{
    const int iPoint = strName.lastIndexOf('.');
    return iPoint < 0 ? QString() : strName.mid(iPoint + 1);
}

bool isSaveExtension(const QString& strExtension)
{
    return QStringList{"mox", "dds", "ktx"}.contains(strExtension, Qt::CaseSensitive);
}

ESaveRoad decideSave(const QString& strName)
{
    return isSaveExtension(getSaveExtension(strName)) ? ESaveRoad::eWrite : ESaveRoad::eAskForName;
}

ESaveRoad decideSaveAs(const QString& strChosenName, bool bLegacy)
{
    if (!isSaveExtension(getSaveExtension(strChosenName)))
        return ESaveRoad::eWriteNothing;
    return bLegacy ? ESaveRoad::eWriteLegacy : ESaveRoad::eWrite;
}

QString addFilterExtension(const QString& strChosenName, const QString& strFilter)
{
    if (QFileInfo(strChosenName).fileName().contains('.'))
        return strChosenName;
    const int iPoint = strFilter.lastIndexOf('.');
    const int iEnd = strFilter.lastIndexOf(')');
    return iPoint < 0 || iEnd < iPoint ? strChosenName : strChosenName + strFilter.mid(iPoint, iEnd - iPoint);
}

namespace
{

/// Of the last component of a document's name. Of an encoded document that name is its source's title, with the mark of changes, and
/// what it was encoded to: "rock.v2.png * (Encoded:BC1)".
QString getStem(const QFileInfo& document)
{
    static const QRegularExpression fileName(R"(^(.+)\.[A-Za-z0-9]{3,4}( \*)?( \(Encoded:.*\))?$)");
    const QRegularExpressionMatch match = fileName.match(document.fileName());
    return match.hasMatch() ? match.captured(1) : document.baseName();
}

} // namespace

QString suggestSaveName(const QString& strName, const QString& strEnding, const QString& strSavePath)
{
    const QFileInfo document(strName);
    const QString strFolder = document.path();
    return QDir(QDir(strFolder).exists() ? strFolder : strSavePath).filePath(getStem(document) + strEnding);
}
