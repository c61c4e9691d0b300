#include "Support/QtSupport.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <gtest/gtest.h>

namespace testsupport
{
namespace
{

constexpr char k_acSeen[] = "SeenByTheTest";

CDialogAnswers::Seen note(const QDialog& dialog)
{
    CDialogAnswers::Seen seen;
    seen.strTitle = dialog.windowTitle().toStdString();
    if (const auto* pBox = qobject_cast<const QMessageBox*>(&dialog))
    {
        seen.strText = pBox->text().toStdString();
        seen.strInformativeText = pBox->informativeText().toStdString();
        seen.eIcon = pBox->icon();
        seen.buttons = pBox->standardButtons();
        seen.eDefaultButton = pBox->standardButton(pBox->defaultButton());
    }
    return seen;
}

} // namespace

CDialogAnswers::CDialogAnswers()
{
    startTimer(1);
}

CDialogAnswers& CDialogAnswers::thenDo(std::function<void(QDialog&)> answer)
{
    m_aAnswers.push_back(std::move(answer));
    return *this;
}

CDialogAnswers& CDialogAnswers::thenAccept()
{
    return thenDo([](QDialog& dialog) { dialog.accept(); });
}

CDialogAnswers& CDialogAnswers::thenReject()
{
    return thenDo([](QDialog& dialog) { dialog.reject(); });
}

CDialogAnswers& CDialogAnswers::thenPress(QMessageBox::StandardButton eButton)
{
    return thenDo(
        [eButton](QDialog& dialog)
        {
            auto* pBox = qobject_cast<QMessageBox*>(&dialog);
            QAbstractButton* pButton = pBox == nullptr ? nullptr : pBox->button(eButton);
            if (pButton != nullptr)
                return pButton->click();
            ADD_FAILURE() << "no such button in \"" << dialog.windowTitle().toStdString() << "\"";
            dialog.reject();
        });
}

CDialogAnswers& CDialogAnswers::thenChoose(const QStringList& paths)
{
    return thenDo(
        [paths](QDialog& dialog)
        {
            auto* pFiles = qobject_cast<QFileDialog*>(&dialog);
            if (pFiles == nullptr || paths.isEmpty())
            {
                ADD_FAILURE() << "no file dialog: \"" << dialog.windowTitle().toStdString() << "\"";
                return dialog.reject();
            }
            // What a user would type into the name box.
            QStringList quoted;
            for (const QString& strPath : paths)
                quoted << (paths.size() > 1 ? '"' + strPath + '"' : strPath);
            pFiles->selectFile(paths.front());
            pFiles->findChild<QLineEdit*>("fileNameEdit")->setText(quoted.join(' '));
            QMetaObject::invokeMethod(pFiles, "accept");
        });
}

void CDialogAnswers::timerEvent(QTimerEvent*)
{
    if (m_bAnswerPosted)
        return;
    m_bAnswerPosted = true;
    // Not from here: an answer may bring the next dialog up, and a timer rests while its event is at work.
    QMetaObject::invokeMethod(
        this, [this] { answer(); }, Qt::QueuedConnection);
}

void CDialogAnswers::answer()
{
    m_bAnswerPosted = false;
    auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (pDialog == nullptr || !pDialog->isVisible() || pDialog->property(k_acSeen).toBool())
        return;
    pDialog->setProperty(k_acSeen, true);
    m_aSeen.push_back(note(*pDialog));
    if (m_aAnswers.empty())
        return pDialog->reject();
    const auto nextAnswer = std::move(m_aAnswers.front());
    m_aAnswers.pop_front();
    const QPointer<QDialog> pLives(pDialog);
    nextAnswer(*pDialog);
    if (!pLives.isNull() && !pLives->isVisible())
        pLives->setProperty(k_acSeen, false); // a dialog that is kept may come up again
}

} // namespace testsupport
