#pragma once

#include "Common/NativeFunctionsImpl.h"

/// File dialogs through Qt, which takes the desktop's own where there are any; folders through the desktop's file manager.
class NativeFunctionsImplLinux : public NativeFunctionsImpl
{
public:
    [[nodiscard]] QStringList getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                               const QString& strFilter, bool bMultiple, QString* pSelectedFilter,
                                               QFileDialog::Options options) override;
    [[nodiscard]] QString getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                                          QString* pSelectedFilter, QFileDialog::Options options) override;
    void showInFolder(const QString& strPath) override;
};
