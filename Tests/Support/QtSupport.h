#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMessageBox>

namespace testsupport
{

/// Answers the modal dialogs that come up while it lives, one answer a dialog, in the order of asking. A dialog for which there is
/// no answer left is rejected. All of them are noted.
class CDialogAnswers : public QObject
{
public:
    /// What a dialog showed; the texts are those of a message box, else empty.
    struct Seen
    {
        std::string strTitle;
        std::string strText;
        std::string strInformativeText;
        QMessageBox::Icon eIcon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons = QMessageBox::NoButton;
        QMessageBox::StandardButton eDefaultButton = QMessageBox::NoButton;
    };

    CDialogAnswers();

    /// The next dialog is a message box: press that button of it.
    CDialogAnswers& thenPress(QMessageBox::StandardButton eButton);
    /// The next dialog is a file dialog: choose these paths.
    CDialogAnswers& thenChoose(const QStringList& paths);
    /// The next dialog is whatever it is: work on it, and close it.
    CDialogAnswers& thenDo(std::function<void(QDialog&)> answer);
    CDialogAnswers& thenAccept();
    CDialogAnswers& thenReject();

    [[nodiscard]] const std::vector<Seen>& seen() const { return m_aSeen; }
    /// Answers that no dialog came for.
    [[nodiscard]] size_t left() const { return m_aAnswers.size(); }

protected:
    void timerEvent(QTimerEvent* pEvent) override;

private:
    void answer();

    bool m_bAnswerPosted = false;
    std::deque<std::function<void(QDialog&)>> m_aAnswers;
    std::vector<Seen> m_aSeen;
};

} // namespace testsupport
