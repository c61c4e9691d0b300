#include "Common/NativeFunctions.h"

#include <utility>

#include "Common/NativeFunctionsImplLinux.h"

NativeFunctions::NativeFunctions(QObject* pParent) : NativeFunctions(std::make_unique<NativeFunctionsImplLinux>(), pParent)
{
}

NativeFunctions::NativeFunctions(std::unique_ptr<NativeFunctionsImpl> pImpl, QObject* pParent) : QObject(pParent), m_pImpl(std::move(pImpl))
{
}

NativeFunctions::~NativeFunctions() = default;

QStringList NativeFunctions::getOpenFileNames(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                                              bool bMultiple, QString* pSelectedFilter, QFileDialog::Options options)
{
    return m_pImpl->getOpenFileNames(pParent, strTitle, strFolder, strFilter, bMultiple, pSelectedFilter, options);
}

QString NativeFunctions::getSaveFileName(QWidget* pParent, const QString& strTitle, const QString& strFolder, const QString& strFilter,
                                         QString* pSelectedFilter, QFileDialog::Options options)
{
    return m_pImpl->getSaveFileName(pParent, strTitle, strFolder, strFilter, pSelectedFilter, options);
}

void NativeFunctions::showInFolder(const QString& strPath)
{
    m_pImpl->showInFolder(strPath);
}
