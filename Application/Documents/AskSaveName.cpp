#include "Documents/AskSaveName.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QMessageBox>

#include "Common/NativeFunctions.h"
#include "Documents/SaveDecision.h"

namespace
{

bool mayReplace(QWidget* pParent, const QString& strTitle, const QString& strPath)
{
    const QString strText = QFileInfo(strPath).fileName() + " already exists.\nDo you want to replace it?";
    return QMessageBox::warning(pParent, strTitle, strText, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

} // namespace

QString askSaveName(QWidget* pParent, const SaveQuestion& question, const QString& strEnding)
{
    QString strFilter = question.strSelectedFilter;
    NativeFunctions native;
    const QString strChosen = native.getSaveFileName(pParent, question.strTitle, question.strStart, question.strFilter, &strFilter);
    if (strChosen.isEmpty())
        return {};
    QString strPath = addFilterExtension(strChosen, strEnding.isEmpty() ? strFilter : "(*" + strEnding + ')');
    if (strPath != strChosen && QFileInfo::exists(strPath) && !mayReplace(pParent, question.strTitle, strPath))
        return {};
    return strPath;
}
