#include "Common/OpenDocument.h"

#include <string>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QMessageBox>

#include "Common/NativeFunctions.h"
#include "Common/Preferences.h"
#include "Common/TextureFilters.h"

namespace
{

/// Where an installed package keeps its data, seen from the program's folder.
constexpr char k_acPackageData[] = "../share/halvane/";
constexpr char k_acDocumentFilter[] = "HTML document (*.html);;Portable Document Format (*.pdf)";

bool openIfThere(const QString& strPath, const DocumentOpener& opener)
{
    return QFile::exists(strPath) && opener(QFileInfo(strPath).absoluteFilePath());
}

QStringList getPlaces(const QString& strFileName, const QString& strFolder)
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString strPackageFolder = k_acPackageData + QDir(strFolder).dirName() + '/';
    return {strFileName, QDir::cleanPath(program.filePath(strFolder + '/' + strFileName)),
            QDir::cleanPath(program.filePath(strPackageFolder + strFileName))};
}

QString getStoredPath(Preferences* pPreferences, const std::string& strKey)
{
    std::string strPath;
    if (pPreferences != nullptr)
        pPreferences->getText(strKey, strPath);
    return QString::fromStdString(strPath);
}

void storePath(Preferences* pPreferences, const std::string& strKey, const QString& strPath)
{
    if (pPreferences == nullptr)
        return;
    pPreferences->setText(strKey, strPath.toStdString());
    pPreferences->save();
}

/// @return the path that the user located; empty if the user gave up
QString locate(QWidget* pParent, const QString& strTitle, const QString& strFileName)
{
    const auto ePressed = QMessageBox::warning(pParent, strTitle, "Please locate the file: " + strFileName,
                                               QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
    if (ePressed != QMessageBox::Ok)
        return {};
    return NativeFunctions().getOpenFileNames(pParent, k_acOpenSourceTitle, {}, k_acDocumentFilter, false).value(0);
}

} // namespace

bool openLocalFile(const QString& strPath)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(strPath));
}

void openDocument(QWidget* pParent, Preferences* pPreferences, const QString& strFileName, const QString& strFolder,
                  const QString& strSettingName, const DocumentOpener& opener)
{
    const std::string strKey = "OpenDocs/" + strSettingName.toStdString();
    const QString strStored = getStoredPath(pPreferences, strKey);
    if (!strStored.isEmpty() && openIfThere(strStored, opener))
        return;
    for (const QString& strPlace : getPlaces(strFileName, strFolder))
        if (openIfThere(strPlace, opener))
            return;

    QString strLocated = locate(pParent, "Documentation File Not Found", strFileName);
    while (!strLocated.isEmpty())
    {
        if (openIfThere(strLocated, opener))
            return storePath(pPreferences, strKey, strLocated);
        strLocated = locate(pParent, "File Open Failed", strFileName);
    }
}
