#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QAction>
#include <QtWidgets/QDialog>

#include "MainWindow/CMainWindow.h"
#include "Support/SeededPictures.h"

/// Uses the program's window as somebody would who knows nothing and stops at nothing: actions, docks, views, files that are broken,
/// dialogs answered this way and that. The same seed does the same.
class CMonkey : public QObject
{
public:
    /// @param openable  paths to open, broken ones among them; @param strSaveFolder  where saves go
    CMonkey(CMainWindow& window, uint32_t ui32Seed, std::vector<QString> openable, QString strSaveFolder);

    /// One user action, with whatever dialogs it brings.
    void act();

    /// How often each kind of deed was done, by its name.
    [[nodiscard]] const std::map<std::string, uint32_t>& counts() const { return m_Counts; }
    /// Actions of menus and tool bars that could have been chosen often enough to be sure that they were.
    [[nodiscard]] const std::set<std::string>& enabledActions() const { return m_EnabledActions; }
    [[nodiscard]] const std::set<std::string>& triggeredActions() const { return m_TriggeredActions; }
    /// Titles of the dialogs that were accepted, or had a button pressed, and of those that were rejected.
    [[nodiscard]] const std::map<std::string, uint32_t>& accepted() const { return m_Accepted; }
    [[nodiscard]] const std::map<std::string, uint32_t>& rejected() const { return m_Rejected; }

protected:
    void timerEvent(QTimerEvent* pEvent) override;

private:
    /// 0 to iCount - 1.
    int below(int iCount) { return static_cast<int>(m_Random.below(static_cast<uint32_t>(iCount))); }
    bool tossUp() { return below(2) == 0; }
    QString pickPath() { return m_aOpenable[m_Random.below(static_cast<uint32_t>(m_aOpenable.size()))]; }

    void noteEnabledActions();
    bool hasUntriedAction() const;
    void triggerAction();
    void openFile();
    void sendMessage();
    void dropFile();
    void useView();
    void useDock();
    void pressKeys();
    void operate(QWidget& widget);

    void answerModalDialog();
    void answer(QDialog& dialog);
    void answerMessageBox(QDialog& dialog);
    void answerFileDialog(QDialog& dialog);
    void finish(QDialog& dialog);

    CMainWindow& m_Window;
    testsupport::CSeededRandom m_Random;
    std::vector<QString> m_aOpenable;
    QString m_strSaveFolder;
    uint32_t m_ui32SaveCount = 0;
    bool m_bAnswerPosted = false;
    std::map<std::string, uint32_t> m_Counts;
    std::map<std::string, uint32_t> m_Offers; // how often each action could have been chosen
    std::set<std::string> m_EnabledActions;
    std::set<std::string> m_TriggeredActions;
    std::map<std::string, uint32_t> m_Accepted;
    std::map<std::string, uint32_t> m_Rejected;
};
