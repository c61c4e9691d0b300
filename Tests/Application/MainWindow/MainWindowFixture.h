#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiArea>
#include <QtWidgets/QMdiSubWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStatusBar>
#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"
#include "Documents/CTexViewWindowSingle.h"
#include "Files/SaveTexture.h"
#include "MainWindow/CMainWindow.h"
#include "Support/Environment.h"
#include "Support/QtSupport.h"
#include "Support/TemporaryFolder.h"

/// The main window on the screen, with settings of its own that survive a restart, and a folder for files.
class MainWindowTest : public testing::Test
{
protected:
    MainWindowTest()
    {
        testsupport::CEnvironmentKeeper::set("XDG_CONFIG_HOME", m_Config.path());
        start();
    }

    /// Makes the window, as the program does at its start.
    void start()
    {
        m_pWindow = std::make_unique<CMainWindow>();
        m_pWindow->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_pWindow.get()));
    }
    void restart()
    {
        m_pWindow.reset();
        start();
    }

    CMainWindow& window() const { return *m_pWindow; }
    QMdiArea& area() const { return *m_pWindow->findChild<QMdiArea*>("MdiArea"); }
    QList<QMdiSubWindow*> subWindows() const { return area().subWindowList(); }
    int windowCount() const { return subWindows().size(); }
    QAction& action(const char* pName) const
    {
        auto* pAction = m_pWindow->findChild<QAction*>(pName);
        if (pAction == nullptr)
            throw std::runtime_error(std::string("no action ") + pName);
        return *pAction;
    }
    QMenu& menu(const char* pName) const { return *m_pWindow->findChild<QMenu*>(pName); }
    QLabel& label(const char* pName) const { return *m_pWindow->statusBar()->findChild<QLabel*>(pName); }
    std::string labelText(const char* pName) const { return label(pName).text().toStdString(); }
    QSlider& zoomSlider() const { return *m_pWindow->statusBar()->findChild<QSlider*>("ZoomSlider"); }

    static CTexViewWindowSingle* viewOf(const QMdiSubWindow* pSubWindow)
    {
        return pSubWindow == nullptr ? nullptr : qobject_cast<CTexViewWindowSingle*>(pSubWindow->widget());
    }
    /// The view in the sub window that was opened last.
    CTexViewWindowSingle* lastView() const { return windowCount() == 0 ? nullptr : viewOf(subWindows().back()); }

    void open(const std::string& strPath) { m_pWindow->slotOpenFile(QString::fromStdString(strPath)); }
    /// Opens a file that must open; @return its view
    CTexViewWindowSingle& openView(const std::string& strPath)
    {
        open(strPath);
        for (QMdiSubWindow* pSubWindow : subWindows())
            if (pSubWindow->objectName().toStdString() == strPath)
                return *viewOf(pSubWindow);
        throw std::runtime_error("did not open: " + strPath);
    }

    /// A PNG of one colour; @return its path
    std::string png(const std::string& strName, int iWidth = 16, int iHeight = 8, const QColor& colour = QColor(10, 20, 30)) const
    {
        QImage image(iWidth, iHeight, QImage::Format_ARGB32);
        image.fill(colour);
        EXPECT_TRUE(image.save(QString::fromStdString(m_Files.path(strName)), "PNG"));
        return m_Files.path(strName);
    }
    /// A native file; @return its path
    std::string mox(const std::string& strName, const moxtexture::CMOXTexture& texture) const
    {
        EXPECT_TRUE(moxtexture::saveTexture(texture, m_Files.path(strName)));
        return m_Files.path(strName);
    }

    /// Makes an edit, as a tool would: every byte of the working texture becomes uiByte.
    static void edit(CTexViewWindowSingle& view, uint8_t uiByte = 99)
    {
        ASSERT_TRUE(view.beginEdit());
        testsupport::fill(view.getWorkingTexture(), uiByte);
        view.endEdit();
    }
    /// Lets deferred deletions and posted events happen.
    static void settle()
    {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    const testsupport::CTemporaryFolder m_Config;
    const testsupport::CEnvironmentKeeper m_Environment{"XDG_CONFIG_HOME"};
    const testsupport::CTemporaryFolder m_Files;
    std::unique_ptr<CMainWindow> m_pWindow;
};
