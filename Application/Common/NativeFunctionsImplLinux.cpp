#include "Common/NativeFunctionsImplLinux.h"

#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

QStringList NativeFunctionsImplLinux::getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                                       const QString& strFilter, bool bMultiple, QString* pSelectedFilter,
                                                       QFileDialog::Options options)
{
    if (bMultiple)
        return QFileDialog::getOpenFileNames(pParent, strTitle, strFolder, strFilter, pSelectedFilter, options);
    return {QFileDialog::getOpenFileName(pParent, strTitle, strFolder, strFilter, pSelectedFilter, options)};
}

QString NativeFunctionsImplLinux::getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                                  const QString& strFilter, QString* pSelectedFilter, QFileDialog::Options options)
{
    return QFileDialog::getSaveFileName(pParent, strTitle, strFolder, strFilter, pSelectedFilter, options);
}

void NativeFunctionsImplLinux::showInFolder(const QString& strPath)
{
    // There is no common way to select a file in whatever file manager is there.
    const QFileInfo info(strPath);
    QDesktopServices::openUrl(QUrl::fromLocalFile(info.isDir() ? info.absoluteFilePath() : info.absolutePath()));
}
