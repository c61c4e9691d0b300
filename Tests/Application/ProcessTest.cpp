#include <csignal>
#include <memory>

#include <QtNetwork/QLocalSocket>
#include <gtest/gtest.h>
#include <sched.h>

#include "Application/InstanceMarker.h"
#include "Common/Preferences.h"
#include "Support/Environment.h"
#include "Support/NativeFileBuilder.h"
#include "Support/RunProgram.h"
#include "Support/TemporaryFolder.h"

using namespace testsupport;

namespace
{

using Paths = std::vector<std::string>;

/// The program in processes of its own. What it opened is seen in its settings: every file that opens comes first among the recent
/// ones, which are saved at once.
class Process : public testing::Test
{
protected:
    ~Process() override
    {
        m_Programs.clear();
        removeInstanceMarkers(m_Temporary.path());
    }

    static ProgramSetting settingOf(const CTemporaryFolder& config, const CTemporaryFolder& temporary)
    {
        ProgramSetting setting;
        setting.environment = {{"QT_QPA_PLATFORM", "offscreen"},      {"XDG_CONFIG_HOME", config.path()}, {"TMPDIR", temporary.path()},
                               {"XDG_RUNTIME_DIR", temporary.path()}, {"TEMP", temporary.path("own")},    {"LC_ALL", "C"}};
        return setting;
    }
    CRunningProgram& start(const Paths& words = {}) { return start(words, m_Config); }
    CRunningProgram& start(const Paths& words, const CTemporaryFolder& config, const std::string& strFolder = {})
    {
        std::filesystem::create_directory(m_Temporary.path("own"));
        Paths all = {HALVANE_PATH};
        all.insert(all.end(), words.begin(), words.end());
        ProgramSetting setting = settingOf(config, m_Temporary);
        setting.strFolder = strFolder;
        m_Programs.push_back(std::make_unique<CRunningProgram>(all, setting));
        return *m_Programs.back();
    }

    /// Connects as soon as the program listens; false if it has ended.
    bool connects(QLocalSocket& client, const CRunningProgram& program) const
    {
        for (;;)
        {
            client.connectToServer(QString::fromStdString(m_Temporary.path("Halvane")));
            if (client.waitForConnected())
                return true;
            if (program.hasEnded())
                return false;
            ::sched_yield();
        }
    }
    /// Sends a message and returns when the program has done what it asks for; false if it has ended.
    bool send(const std::string& strMessage, const CRunningProgram& program) const
    {
        QLocalSocket client;
        return post(strMessage, client, program) && (client.state() == QLocalSocket::UnconnectedState || client.waitForDisconnected(-1)) &&
               !program.hasEnded();
    }
    bool post(const std::string& strMessage, QLocalSocket& client, const CRunningProgram& program) const
    {
        if (!connects(client, program))
            return false;
        client.write(QByteArray::fromStdString(strMessage));
        return client.waitForBytesWritten(-1);
    }

    Paths recentFiles() const { return recentFiles(m_Config); }
    static Paths recentFiles(const CTemporaryFolder& config)
    {
        const CEnvironmentKeeper keeper{"XDG_CONFIG_HOME"};
        ::setenv("XDG_CONFIG_HOME", config.path().c_str(), 1);
        Preferences preferences("Halvane");
        std::string strError;
        EXPECT_TRUE(preferences.load(strError, false)) << strError;
        Paths paths;
        preferences.getTextArray("Recent files", paths);
        return paths;
    }

    /// A texture of one pixel.
    std::string makeTexture(const std::string& strName) const
    {
        return m_Files.write(strName, CNativeFileBuilder().data({1, 2, 3, 4}).bytes());
    }

    CTemporaryFolder m_Config, m_Temporary, m_Files;
    std::vector<std::unique_ptr<CRunningProgram>> m_Programs;
};

} // namespace

TEST_F(Process, OpensNothingOfOneArgument)
{
    const CRunningProgram& program = start({makeTexture("a.mox")});
    EXPECT_TRUE(send("Halvane", program));
    EXPECT_EQ(Paths{}, recentFiles());
}

TEST_F(Process, OpensTheSecondOfTwoArguments)
{
    const std::string strSecond = makeTexture("b.mox");
    const CRunningProgram& program = start({makeTexture("a.mox"), strSecond});
    EXPECT_TRUE(send("Halvane", program));
    EXPECT_EQ(Paths{strSecond}, recentFiles());
}

TEST_F(Process, OpensTheSecondAndTheThirdOfMoreArguments)
{
    const std::string strSecond = makeTexture("b.mox");
    const std::string strThird = makeTexture("c.mox");
    const CRunningProgram& program = start({makeTexture("a.mox"), strSecond, strThird, makeTexture("d.mox")});
    EXPECT_TRUE(send("Halvane", program));
    EXPECT_EQ((Paths{strThird, strSecond}), recentFiles());
}

TEST_F(Process, RemembersARelativePathFromItsRoot)
{
    const std::string strFirst = makeTexture("a.mox");
    const std::string strSecond = makeTexture("b.mox");
    CRunningProgram& one = start({"-", "a.mox"}, m_Config, m_Files.path());
    EXPECT_TRUE(send("Halvane", one));
    EXPECT_EQ(Paths{strFirst}, recentFiles());
    one.signal(SIGTERM);
    one.wait();
    const CRunningProgram& two = start({"-", "a.mox", "b.mox"}, m_Config, m_Files.path());
    EXPECT_TRUE(send("Halvane", two));
    EXPECT_EQ((Paths{strSecond, strFirst}), recentFiles());
}

TEST_F(Process, OpensAPathThatComesAsAMessage)
{
    const std::string strPath = makeTexture("a.mox");
    const CRunningProgram& program = start();
    EXPECT_TRUE(send(strPath, program));
    EXPECT_EQ(Paths{strPath}, recentFiles());
}

TEST_F(Process, OpensBothPathsThatComeAsOneMessage)
{
    const std::string strFirst = makeTexture("a.mox");
    const std::string strSecond = makeTexture("b.mox");
    const CRunningProgram& program = start();
    EXPECT_TRUE(send(strFirst + "$!?" + strSecond + "$!?" + makeTexture("c.mox"), program));
    EXPECT_EQ((Paths{strSecond, strFirst}), recentFiles());
}

TEST_F(Process, OpensANameInUtf8WithoutALocale)
{
    const std::string strSecond = makeTexture("Gr\xC3\xB6\xC3\x9F"
                                              "e \xE6\x9C\xA8.mox");
    const CRunningProgram& program = start({"-", strSecond}); // in the "C" locale, as all of these
    const std::string strMessage = makeTexture("\xE6\x9C\xA8.mox");
    EXPECT_TRUE(send(strMessage, program));
    EXPECT_EQ((Paths{strMessage, strSecond}), recentFiles());
}

TEST_F(Process, SurvivesEachBadMessage)
{
    for (const std::string& strBad :
         {std::string("/missing.mox"), std::string("\xFF\xFE\x80"), std::string("$!?"), std::string("\0", 1),
          m_Files.write("broken.mox", std::string("MOX\3 and no more")), m_Files.write("broken.png", std::string("\x89PNG\r\n\x1A\n")),
          m_Files.path(), std::string(5000, 'x')})
    {
        CRunningProgram& program = start();
        // It ends in a message box, behind which the program goes on to take messages; nobody answers it here.
        QLocalSocket client;
        EXPECT_TRUE(post(strBad, client, program));
        EXPECT_TRUE(send("Halvane", program));
        program.signal(SIGKILL);
        program.wait();
    }
}

TEST_F(Process, SurvivesThousandsOfBadMessages)
{
    const CRunningProgram& program = start();
    // As many boxes, one within the other, would be more than its stack holds; behind the first they wait.
    QLocalSocket first;
    EXPECT_TRUE(post("/missing.mox", first, program));
    bool bTaken = true;
    for (int i = 0; i < 4000 && bTaken; ++i)
        bTaken = send("/missing.mox", program);
    EXPECT_TRUE(bTaken);
    EXPECT_FALSE(program.hasEnded());
}

TEST_F(Process, HandsNothingOverFromASecondStart)
{
    const CTemporaryFolder secondConfig;
    const std::string strPath = makeTexture("a.mox");
    const CRunningProgram& first = start();
    EXPECT_TRUE(send("Halvane", first));
    const CRunningProgram& second = start({"-", strPath}, secondConfig);
    while (!second.hasEnded() && recentFiles(secondConfig).empty())
        ::sched_yield();
    EXPECT_EQ(Paths{strPath}, recentFiles(secondConfig));
    EXPECT_FALSE(second.hasEnded());

    const std::string strMessage = makeTexture("b.mox");
    EXPECT_TRUE(send(strMessage, first));
    EXPECT_EQ(Paths{strMessage}, recentFiles());
    EXPECT_EQ(Paths{strPath}, recentFiles(secondConfig));
}

TEST_F(Process, TakesMessagesAfterTheInstanceBeforeItCrashed)
{
    CRunningProgram& first = start();
    EXPECT_TRUE(send("Halvane", first));
    first.signal(SIGKILL);
    first.wait();
    const std::string strPath = makeTexture("a.mox");
    const CRunningProgram& second = start();
    EXPECT_TRUE(send(strPath, second));
    EXPECT_EQ(Paths{strPath}, recentFiles());
}

TEST_F(Process, HasATemporaryFolderThatGoesWithIt)
{
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP})
    {
        CRunningProgram& program = start();
        EXPECT_TRUE(send("Halvane", program));
        EXPECT_FALSE(std::filesystem::is_empty(m_Temporary.path("own")));
        program.signal(iSignal);
        EXPECT_EQ(128 + iSignal, program.wait().iStatus);
        EXPECT_TRUE(std::filesystem::is_empty(m_Temporary.path("own")));
    }
}

TEST_F(Process, RunsWithoutAFolderForSettings)
{
    m_Config.write("Larkfield Systems", std::string("in the way"));
    const CRunningProgram& program = start();
    // The message box that tells of it waits for an answer; the program takes messages behind it.
    EXPECT_TRUE(send("Halvane", program));
    EXPECT_TRUE(send("Halvane", program));
}
