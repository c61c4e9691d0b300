#pragma once

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QFileDialog>

class NativeFunctionsImpl;
class QWidget;

/// The desktop's file dialogs and file manager. Make one where it is needed; it keeps nothing between calls.
class NativeFunctions : public QObject
{
    Q_OBJECT

public:
    explicit NativeFunctions(QObject* pParent = nullptr);
    /// With another layer below, as tests have.
    explicit NativeFunctions(std::unique_ptr<NativeFunctionsImpl> pImpl, QObject* pParent = nullptr);
    ~NativeFunctions() override;

    /// Asks for files to open, modally.
    ///
    /// @param strFolder        where the dialog starts; a file in it may be named, too
    /// @param strFilter        name filters in QFileDialog's form
    /// @param bMultiple        more than one file may be chosen
    /// @param pSelectedFilter  in: the filter to start with; out: the one chosen. May be null
    /// @return the paths. After a cancel: nothing with bMultiple, otherwise a list of one empty string
    [[nodiscard]] QStringList getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder,
                                               const QString& strFilter, bool bMultiple, QString* pSelectedFilter = nullptr,
                                               QFileDialog::Options options = {});

    /// Asks for a file to write, modally; a name that exists is asked about before it is given.
    /// @return the path, empty after a cancel
    [[nodiscard]] QString getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                                          QString* pSelectedFilter = nullptr, QFileDialog::Options options = {});

    /// Opens the file manager at a folder, or at the folder that a file lies in. A failure is silent.
    void showInFolder(const QString& strPath);

private:
    std::unique_ptr<NativeFunctionsImpl> m_pImpl;
};
