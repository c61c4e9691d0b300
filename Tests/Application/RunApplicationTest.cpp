#include "Application/RunApplication.h"

#include <functional>
#include <memory>

#include <QtCore/QPointer>
#include <QtGui/QFileOpenEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMdiSubWindow>
#include <gtest/gtest.h>

#include "Application/InstanceMarker.h"
#include "Core/Diagnostics.h"
#include "Support/Environment.h"
#include "Support/NativeFileBuilder.h"
#include "Support/TemporaryFolder.h"

using namespace testsupport;

namespace
{

/// Notes the class or, where there is one, the object name of each widget in the order in which they are shown.
class CShownWidgets : public QObject
{
public:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override
    {
        const auto* pWidget = qobject_cast<QWidget*>(pWatched);
        if (pEvent->type() == QEvent::Show && pWidget != nullptr && (pWidget->isWindow() || pWidget->inherits("QMdiSubWindow")))
            m_aNames.push_back(pWidget->inherits("QMdiSubWindow") ? "sub window" : pWidget->objectName().toStdString());
        return false;
    }

    std::vector<std::string> m_aNames;
};

/// Runs the program within the test, in folders of its own, and looks at it from inside.
class RunApplication : public testing::Test
{
protected:
    RunApplication()
    {
        ::setenv("TMPDIR", m_Folder.path().c_str(), 1);
        ::setenv("XDG_RUNTIME_DIR", m_Folder.path().c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", m_Folder.path("config").c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    ~RunApplication() override { removeInstanceMarkers(m_Folder.path()); }

    /// @param inside  called once from the event loop; the program ends after it
    void run(const std::vector<std::string>& arguments, std::function<void()> inside)
    {
        // The one way to be there before the program has made its first window.
        static bool bAdded = false;
        if (!std::exchange(bAdded, true))
            qAddPreRoutine(
                []
                {
                    if (s_pRunning != nullptr)
                        s_pRunning->arrive();
                });
        std::vector<std::string> words = {"halvane"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        for (std::string& strWord : words)
            pointers.push_back(strWord.data());
        pointers.push_back(nullptr);
        m_Inside = std::move(inside);
        s_pRunning = this;
        EXPECT_EQ(0, runApplication(static_cast<int>(words.size()), pointers.data()));
        s_pRunning = nullptr;
        EXPECT_EQ(nullptr, m_Inside) << "never came to its event loop";
    }

    static QWidget* mainWindow()
    {
        for (QWidget* pWidget : QApplication::topLevelWidgets())
            if (pWidget->inherits("CMainWindow"))
                return pWidget;
        return nullptr;
    }
    /// The names of the open textures.
    static std::vector<std::string> openTextures()
    {
        std::vector<std::string> names;
        const QWidget* pWindow = mainWindow();
        if (pWindow != nullptr)
            for (const QMdiSubWindow* pSubWindow : pWindow->findChildren<QMdiSubWindow*>())
                names.push_back(pSubWindow->objectName().toStdString());
        return names;
    }
    std::string makeTexture(const std::string& strName) const
    {
        return m_Folder.write(strName, CNativeFileBuilder().data({1, 2, 3, 4}).bytes());
    }

    CTemporaryFolder m_Folder;
    CEnvironmentKeeper m_Keeper{"TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "QT_QPA_PLATFORM"};
    CShownWidgets m_Shown;

private:
    /// When the application object has been made.
    void arrive()
    {
        QCoreApplication::instance()->installEventFilter(&m_Shown);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [this]
            {
                std::exchange(m_Inside, nullptr)();
                QCoreApplication::quit();
            },
            Qt::QueuedConnection);
    }

    static RunApplication* s_pRunning;
    std::function<void()> m_Inside;
};

RunApplication* RunApplication::s_pRunning = nullptr;

TEST_F(RunApplication, GoesByItsNameAndVersion)
{
    run({},
        []
        {
            EXPECT_EQ("Halvane", QCoreApplication::applicationName());
            EXPECT_EQ("4.23.0", QCoreApplication::applicationVersion());
            ASSERT_NE(nullptr, mainWindow());
            EXPECT_TRUE(mainWindow()->isVisible());
        });
}

TEST_F(RunApplication, WritesTheRemarksOfTheLibraryToStandardOutputAtOnce)
{
    run({},
        []
        {
            testing::internal::CaptureStdout();
            moxtexture::writeDiagnostic("a remark\n");
            moxtexture::writeDiagnostic("100 %s\n");
            EXPECT_EQ("a remark\n100 %s\n", testing::internal::GetCapturedStdout());
        });
}

TEST_F(RunApplication, OpensAFileThatTheSystemWantsOpened)
{
    const std::string strPath = makeTexture("a.mox");
    run({},
        [&]
        {
            QFileOpenEvent event(QString::fromStdString(strPath));
            EXPECT_TRUE(QCoreApplication::sendEvent(QCoreApplication::instance(), &event));
            EXPECT_EQ(std::vector<std::string>{strPath}, openTextures());
        });
}

TEST_F(RunApplication, ShowsItsWindowThenTheFileOfItsArgumentsThenTheSplash)
{
    run({"-", makeTexture("a.mox")}, [] { EXPECT_EQ(1u, openTextures().size()); });
    EXPECT_EQ(std::vector<std::string>({"MainWindowClass", "sub window", "AboutBoxClass"}), m_Shown.m_aNames);
}

} // namespace
