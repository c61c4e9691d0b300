#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QFileDialog>

class QWidget;

/// What differs from desktop to desktop behind NativeFunctions, which tells the arguments and results.
class NativeFunctionsImpl
{
public:
    NativeFunctionsImpl() = default;
    NativeFunctionsImpl(const NativeFunctionsImpl&) = delete;
    NativeFunctionsImpl& operator=(const NativeFunctionsImpl&) = delete;
    virtual ~NativeFunctionsImpl() = default;

    [[nodiscard]] virtual QStringList getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                                       const QString& strFilter, bool bMultiple, QString* pSelectedFilter,
                                                       QFileDialog::Options options) = 0;
    [[nodiscard]] virtual QString getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                                  const QString& strFilter, QString* pSelectedFilter, QFileDialog::Options options) = 0;
    virtual void showInFolder(const QString& strPath) = 0;
};
