#include "Application/Story/CMonkey.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QTreeWidget>

namespace
{

/// There are fewer actions than this. Each time that untried ones are on offer one of them is chosen, so none is offered that often
/// and stays untried.
constexpr uint32_t k_ui32CertainOffers = 64;
constexpr char k_acCounted[] = "CountedByTheMonkey";
constexpr char k_acVisits[] = "VisitsOfTheMonkey"; // ticks at which a dialog was found open since it was last answered for good

void collectActions(const QMenu& menu, QList<QAction*>& actions)
{
    for (QAction* pAction : menu.actions())
    {
        if (pAction->menu() != nullptr && pAction->isEnabled())
            collectActions(*pAction->menu(), actions);
        else if (pAction->menu() == nullptr && !pAction->isSeparator())
            actions << pAction;
    }
}

QList<QAction*> getActions(const QMainWindow& window)
{
    QList<QAction*> actions;
    for (const QAction* pTop : window.menuBar()->actions())
        if (pTop->menu() != nullptr && pTop->isEnabled())
        {
            emit pTop->menu()->aboutToShow();
            collectActions(*pTop->menu(), actions);
        }
    for (const QToolBar* pBar : window.findChildren<QToolBar*>())
        for (QAction* pAction : pBar->actions())
            if (!pAction->isSeparator() && !actions.contains(pAction))
                actions << pAction;
    return actions;
}

/// The name of a deed: recent files count as one.
std::string nameOf(const QAction& action)
{
    return action.property("ARecentFile").isValid() ? "a recent file" : action.text().toStdString();
}

} // namespace

CMonkey::CMonkey(CMainWindow& window, uint32_t ui32Seed, std::vector<QString> openable, QString strSaveFolder)
    : m_Window(window), m_Random(ui32Seed), m_aOpenable(std::move(openable)), m_strSaveFolder(std::move(strSaveFolder))
{
    startTimer(0);
}

void CMonkey::act()
{
    using Deed = std::pair<const char*, void (CMonkey::*)()>;
    // Doubled entries come up more often.
    static constexpr std::array<Deed, 12> k_aDeeds = {{{"action", &CMonkey::triggerAction},
                                                       {"action", &CMonkey::triggerAction},
                                                       {"action", &CMonkey::triggerAction},
                                                       {"open", &CMonkey::openFile},
                                                       {"message", &CMonkey::sendMessage},
                                                       {"drop", &CMonkey::dropFile},
                                                       {"view", &CMonkey::useView},
                                                       {"view", &CMonkey::useView},
                                                       {"view", &CMonkey::useView},
                                                       {"dock", &CMonkey::useDock},
                                                       {"dock", &CMonkey::useDock},
                                                       {"keys", &CMonkey::pressKeys}}};
    if (!m_Window.isVisible())
        m_Window.show(); // it was closed, which ends the program for others
    noteEnabledActions();
    // What was never chosen may be open to choice for a short while only, so it goes before all else.
    const bool bNew = hasUntriedAction();
    const Deed& deed = bNew ? k_aDeeds[0] : k_aDeeds[static_cast<size_t>(below(static_cast<int>(k_aDeeds.size())))];
    ++m_Counts[deed.first];
    (this->*deed.second)();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    while (QWidget* pPopup = QApplication::activePopupWidget())
        pPopup->close();
    auto* pArea = m_Window.findChild<QMdiArea*>();
    for (QMdiSubWindow* pSubWindow : pArea->subWindowList())
        if (pSubWindow->objectName().contains("(Encoded:") && !pSubWindow->property(k_acCounted).toBool())
        {
            pSubWindow->setProperty(k_acCounted, true);
            ++m_Counts["an encoded document"];
        }
    if (pArea->subWindowList().size() > 8)
    {
        pArea->closeAllSubWindows();
        QApplication::processEvents();
    }
}

void CMonkey::noteEnabledActions()
{
    for (const QAction* pAction : getActions(m_Window))
        if (pAction->isEnabled() && pAction->isVisible() && ++m_Offers[nameOf(*pAction)] == k_ui32CertainOffers)
            m_EnabledActions.insert(nameOf(*pAction));
}

bool CMonkey::hasUntriedAction() const
{
    const QList<QAction*> actions = getActions(m_Window);
    return std::any_of(actions.begin(), actions.end(),
                       [&](const QAction* pAction)
                       { return pAction->isEnabled() && pAction->isVisible() && m_TriggeredActions.count(nameOf(*pAction)) == 0; });
}

void CMonkey::triggerAction()
{
    const QList<QAction*> actions = getActions(m_Window);
    QList<QAction*> enabled;
    QList<QAction*> untried;
    for (QAction* pAction : actions)
        if (pAction->isEnabled() && pAction->isVisible())
        {
            enabled << pAction;
            if (m_TriggeredActions.count(nameOf(*pAction)) == 0)
                untried << pAction;
        }
    const QList<QAction*>& choice = untried.isEmpty() ? enabled : untried;
    if (choice.isEmpty())
        return;
    QAction* pAction = choice[below(choice.size())];
    m_TriggeredActions.insert(nameOf(*pAction));
    pAction->trigger();
}

void CMonkey::openFile()
{
    m_Window.slotOpenFile(pickPath());
}

void CMonkey::sendMessage()
{
    const std::array<QString, 6> aMessages = {QString("Halvane"), pickPath(), pickPath() + "$!?" + pickPath(),
                                              QString("$!?"),     QString(),  QString("\x01\xff nothing of the kind")};
    m_Window.slotAppMessageRecieved(aMessages[static_cast<size_t>(below(static_cast<int>(aMessages.size())))]);
}

void CMonkey::dropFile()
{
    QMimeData data;
    if (tossUp())
        data.setUrls({QUrl::fromLocalFile(pickPath()), QUrl("https://example.com/picture.png")});
    else
    {
        data.setData("application/x-qt-windows-mime;value=\"FileGroupDescriptor\"",
                     QByteArray(below(600), static_cast<char>('a' + below(26))));
        data.setData("application/x-qt-windows-mime;value=\"FileContents\"", QByteArray(below(1000), 'x'));
    }
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_Window, &enter);
    QDropEvent drop(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_Window, &drop);
}

void CMonkey::useView()
{
    auto* pArea = m_Window.findChild<QMdiArea*>();
    const QList<QMdiSubWindow*> windows = pArea->subWindowList();
    if (windows.isEmpty())
        return openFile();
    QMdiSubWindow* pSubWindow = windows[below(windows.size())];
    if (below(3) == 0)
        pArea->setActiveSubWindow(pSubWindow);
    QWidget* pView = pSubWindow->widget();
    if (pView == nullptr)
        return;
    const QPoint position(below(pView->width() + 40) - 20, below(pView->height() + 40) - 20);
    const std::array<std::function<void()>, 7> aDeeds = {
        [&] { QTest::mouseMove(pView, position); },
        [&]
        {
            QTest::mousePress(pView, Qt::LeftButton, Qt::NoModifier, position);
            QTest::mouseMove(pView, QPoint(below(500) - 200, below(500) - 200));
            QTest::mouseRelease(pView, Qt::LeftButton, Qt::NoModifier, position);
        },
        [&] { QTest::mouseClick(pView, Qt::RightButton, Qt::NoModifier, position); },
        [&]
        {
            QWheelEvent wheel(position, pView->mapToGlobal(position), QPoint(), QPoint(0, tossUp() ? 120 : -120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(pView, &wheel);
        },
        [&] { pSubWindow->resize(1 + below(400), 1 + below(300)); },
        [&] { tossUp()   ? pSubWindow->showMaximized()
              : tossUp() ? pSubWindow->showMinimized()
                         : pSubWindow->showNormal(); },
        [&] { pSubWindow->close(); }};
    // Windows are used more than they are closed.
    const int iDeed = below(16);
    aDeeds[iDeed == 15 ? 6 : static_cast<size_t>(iDeed % 6)]();
}

void CMonkey::useDock()
{
    if (below(6) == 0) // one widget among many, with much behind it
        return operate(*m_Window.findChild<QTreeWidget*>("Tree_Surfaces"));
    QList<QWidget*> usable;
    for (const QDockWidget* pDock : m_Window.findChildren<QDockWidget*>())
        for (QWidget* pWidget : pDock->findChildren<QWidget*>())
            if (pWidget->isEnabled() && pWidget->window()->isVisible())
                usable << pWidget;
    if (QWidget* pStatusSlider = m_Window.findChild<QWidget*>("ZoomSlider"))
        usable << pStatusSlider;
    if (!usable.isEmpty())
        operate(*usable[below(usable.size())]);
}

void CMonkey::pressKeys()
{
    static constexpr std::array<Qt::Key, 14> k_aKeys = {Qt::Key_Tab,  Qt::Key_Space,  Qt::Key_Return, Qt::Key_Escape, Qt::Key_Up,
                                                        Qt::Key_Down, Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Delete, Qt::Key_A,
                                                        Qt::Key_Home, Qt::Key_PageUp, Qt::Key_F6,     Qt::Key_Menu};
    QWidget* pFocus = QApplication::focusWidget();
    QWidget* pTarget = pFocus == nullptr ? &m_Window : pFocus;
    QTest::keyClick(pTarget, k_aKeys[static_cast<size_t>(below(static_cast<int>(k_aKeys.size())))],
                    tossUp() ? Qt::NoModifier : Qt::ShiftModifier);
}

void CMonkey::operate(QWidget& widget)
{
    if (auto* pButton = qobject_cast<QAbstractButton*>(&widget))
        pButton->click();
    else if (auto* pCombo = qobject_cast<QComboBox*>(&widget); pCombo != nullptr && pCombo->count() > 0)
    {
        const int iIndex = below(pCombo->count());
        pCombo->setCurrentIndex(iIndex);
        emit pCombo->activated(iIndex);
    }
    else if (auto* pSlider = qobject_cast<QAbstractSlider*>(&widget))
    {
        const int iPosition = pSlider->minimum() + below(pSlider->maximum() - pSlider->minimum() + 1);
        pSlider->setSliderPosition(iPosition);
        emit pSlider->sliderMoved(iPosition);
    }
    else if (auto* pSpin = qobject_cast<QSpinBox*>(&widget))
        pSpin->setValue(tossUp() ? pSpin->maximum() : below(100));
    else if (auto* pReal = qobject_cast<QDoubleSpinBox*>(&widget))
        pReal->setValue(below(100) * 0.1);
    else if (auto* pTree = qobject_cast<QTreeWidget*>(&widget))
    {
        QTreeWidgetItem* pItem = pTree->topLevelItemCount() == 0 ? nullptr : pTree->topLevelItem(below(pTree->topLevelItemCount()));
        while (pItem != nullptr && pItem->childCount() > 0 && tossUp())
            pItem = pItem->child(below(pItem->childCount()));
        if (pItem == nullptr)
            return;
        pTree->setCurrentItem(pItem);
        pTree->scrollToItem(pItem);
        if (tossUp())
            QTest::mouseClick(pTree->viewport(), Qt::RightButton, Qt::NoModifier, pTree->visualItemRect(pItem).center());
        if (QWidget* pPopup = QApplication::activePopupWidget())
        {
            auto* pMenu = qobject_cast<QMenu*>(pPopup);
            const bool bChoose = pMenu != nullptr && !pMenu->actions().isEmpty();
            QAction* pAction = bChoose ? pMenu->actions().front() : nullptr;
            pPopup->close();
            if (pAction != nullptr && pAction->isEnabled())
            {
                ++m_Counts["context menu of the tree"];
                pAction->trigger();
            }
        }
    }
    else if (auto* pView = qobject_cast<QAbstractItemView*>(&widget); pView != nullptr && pView->model() != nullptr)
    {
        if (const int iRows = pView->model()->rowCount(); iRows > 0)
            pView->setCurrentIndex(pView->model()->index(below(iRows), 0));
    }
    else
        QTest::mouseClick(&widget, tossUp() ? Qt::LeftButton : Qt::RightButton);
}

void CMonkey::timerEvent(QTimerEvent*)
{
    if (m_bAnswerPosted)
        return;
    m_bAnswerPosted = true;
    // Not from here: an answer may bring the next dialog up, and a timer rests while its event is at work.
    QMetaObject::invokeMethod(
        this, [this] { answerModalDialog(); }, Qt::QueuedConnection);
}

void CMonkey::answerModalDialog()
{
    m_bAnswerPosted = false;
    auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (pDialog == nullptr || !pDialog->isVisible())
        return;
    const QPointer<QDialog> pLives(pDialog);
    const int iVisits = pDialog->property(k_acVisits).toInt();
    pDialog->setProperty(k_acVisits, iVisits + 1);
    if (iVisits == 0)
        answer(*pDialog);
    else if (qobject_cast<QMessageBox*>(pDialog) != nullptr)
        answerMessageBox(*pDialog);
    else
    {
        // What was chosen did not satisfy it.
        ++m_Rejected[pDialog->windowTitle().toStdString()];
        pDialog->reject();
    }
    if (!pLives.isNull() && !pLives->isVisible())
        pLives->setProperty(k_acVisits, 0);
}

void CMonkey::answer(QDialog& dialog)
{
    if (qobject_cast<QMessageBox*>(&dialog) != nullptr)
        return answerMessageBox(dialog);
    // Each is refused when it first comes and accepted when it comes again; then by chance.
    const std::string strTitle = dialog.windowTitle().toStdString();
    if (m_Rejected.count(strTitle) == 0 || (m_Accepted.count(strTitle) != 0 && below(3) == 0))
    {
        ++m_Rejected[dialog.windowTitle().toStdString()];
        return dialog.reject();
    }
    if (qobject_cast<QFileDialog*>(&dialog) != nullptr)
        return answerFileDialog(dialog);
    if (auto* pGroups = dialog.findChild<QComboBox*>("Combo_API"); pGroups != nullptr && tossUp())
    {
        // Somebody who wants to get somewhere.
        pGroups->setCurrentIndex(1 + below(pGroups->count() - 1));
        auto* pTable = dialog.findChild<QAbstractItemView*>("Table_FilteredFormats");
        pTable->setCurrentIndex(pTable->model()->index(below(pTable->model()->rowCount()), 0));
    }
    else
        for (int i = below(8); i > 0 && dialog.isVisible(); --i)
        {
            QList<QWidget*> usable;
            for (QWidget* pWidget : dialog.findChildren<QWidget*>())
                if (pWidget->isEnabled() && qobject_cast<QPushButton*>(pWidget) == nullptr)
                    usable << pWidget;
            if (!usable.isEmpty())
                operate(*usable[below(usable.size())]);
        }
    if (dialog.isVisible())
        finish(dialog);
}

void CMonkey::finish(QDialog& dialog)
{
    ++m_Accepted[dialog.windowTitle().toStdString()];
    // By the button that a person would press, where it can be pressed.
    for (QPushButton* pButton : dialog.findChildren<QPushButton*>())
        if (pButton->isEnabled() && (pButton->text().remove('&') == "Encode" || pButton->text().remove('&') == "OK"))
        {
            QTest::mouseClick(pButton, Qt::LeftButton);
            return;
        }
    dialog.accept();
}

void CMonkey::answerMessageBox(QDialog& dialog)
{
    const auto buttons = qobject_cast<QMessageBox*>(&dialog)->buttons();
    QAbstractButton* pButton = buttons[below(buttons.size())];
    ++m_Accepted[dialog.windowTitle().toStdString() + " / " + pButton->text().remove('&').toStdString()];
    pButton->click();
}

void CMonkey::answerFileDialog(QDialog& dialog)
{
    auto* pFiles = qobject_cast<QFileDialog*>(&dialog);
    QString strPath = pickPath();
    if (pFiles->acceptMode() == QFileDialog::AcceptSave)
    {
        static constexpr std::array<const char*, 8> k_aEndings = {".mox", ".dds", ".png", ".ktx", ".DDS", "", ".jpg", ".bmp"};
        const char* pcEnding = k_aEndings[static_cast<size_t>(below(static_cast<int>(k_aEndings.size())))];
        // Some names come again, and the file is there already.
        strPath = m_strSaveFolder + "/saved " + QString::number(++m_ui32SaveCount % 40) + pcEnding;
    }
    ++m_Accepted[dialog.windowTitle().toStdString()];
    pFiles->findChild<QLineEdit*>("fileNameEdit")->setText(strPath);
    QMetaObject::invokeMethod(pFiles, "accept");
}
