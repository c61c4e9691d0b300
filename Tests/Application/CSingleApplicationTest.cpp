#include "Application/CSingleApplication.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include <QtGui/QFileOpenEvent>
#include <QtNetwork/QLocalSocket>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Application/InstanceMarker.h"
#include "Support/Environment.h"
#include "Support/TemporaryFolder.h"

using namespace testsupport;

namespace
{

constexpr char k_acKey[] = "HalvaneTest";

/// Application objects one after the other, in a temporary folder of their own, in which their marker and their socket are.
class CSingleApplicationTest : public testing::Test
{
protected:
    CSingleApplicationTest()
    {
        ::setenv("TMPDIR", m_Folder.path().c_str(), 1);
        ::setenv("XDG_RUNTIME_DIR", m_Folder.path().c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    ~CSingleApplicationTest() override
    {
        m_pApplication.reset();
        removeInstanceMarkers(m_Folder.path());
    }

    CSingleApplication& start()
    {
        m_pApplication.reset();
        m_pApplication = std::make_unique<CSingleApplication>(m_iCount, m_apArguments, k_acKey);
        return *m_pApplication;
    }

    /// As the system does it.
    void sendFileOpen(const QString& strPath)
    {
        QFileOpenEvent event(strPath);
        EXPECT_TRUE(QCoreApplication::sendEvent(m_pApplication.get(), &event));
    }
    /// Hands a message over, whatever comes of it.
    static void send(const QByteArray& bytes)
    {
        QLocalSocket client;
        ASSERT_TRUE(connects(client));
        client.write(bytes);
        client.flush();
        EXPECT_TRUE(QTest::qWaitFor([&] { return client.state() == QLocalSocket::UnconnectedState; }));
    }
    /// Notes every message and file that is told of, in its order.
    void note(QStringList& told)
    {
        const auto append = [&told](const QString& strText) { told << strText; };
        QObject::connect(m_pApplication.get(), &CSingleApplication::MessageAvailable, append);
        QObject::connect(m_pApplication.get(), &CSingleApplication::FileOpenEvent, append);
    }

    static bool connects(QLocalSocket& client)
    {
        client.connectToServer(k_acKey);
        return client.waitForConnected();
    }
    bool isListening() const
    {
        QLocalSocket client;
        return connects(client);
    }
    /// The message that the application makes of bytes.
    QString receive(const QByteArray& bytes)
    {
        QSignalSpy spy(m_pApplication.get(), &CSingleApplication::MessageAvailable);
        QLocalSocket client;
        EXPECT_TRUE(connects(client));
        client.write(bytes);
        client.flush();
        EXPECT_TRUE(spy.wait());
        EXPECT_EQ(1, spy.count());
        EXPECT_TRUE(client.state() == QLocalSocket::UnconnectedState || client.waitForDisconnected());
        return spy.isEmpty() ? "nothing" : spy[0][0].toString();
    }

    CTemporaryFolder m_Folder;
    CEnvironmentKeeper m_Keeper{"TMPDIR", "XDG_RUNTIME_DIR", "QT_QPA_PLATFORM"};
    int m_iCount = 1;
    char m_acName[8] = "test";
    char* m_apArguments[2] = {m_acName, nullptr};
    std::unique_ptr<CSingleApplication> m_pApplication;
};

std::string g_strLogged; ///< the debug messages

} // namespace

TEST_F(CSingleApplicationTest, TheFirstOneListens)
{
    EXPECT_FALSE(start().isAlreadyRunning());
    EXPECT_TRUE(isListening());
}

TEST_F(CSingleApplicationTest, ListensToTheUserAlone)
{
    start();
    struct stat status = {};
    ASSERT_EQ(0, ::stat(m_Folder.path(k_acKey).c_str(), &status));
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
    EXPECT_EQ(0u, status.st_mode & 0077u);
}

TEST_F(CSingleApplicationTest, TheSecondOneRunsAndDoesNotListen)
{
    QSharedMemory first(k_acKey);
    ASSERT_TRUE(first.create(1));
    EXPECT_TRUE(start().isAlreadyRunning());
    EXPECT_FALSE(isListening());
}

TEST_F(CSingleApplicationTest, TheNextOneListensWhenTheFirstHasEnded)
{
    start();
    EXPECT_FALSE(start().isAlreadyRunning());
    EXPECT_TRUE(isListening());
}

TEST_F(CSingleApplicationTest, ListensAfterACrashThatLeftItsMarkerBehind)
{
    const pid_t process = ::fork();
    if (process == 0)
    {
        QSharedMemory marker(k_acKey);
        ::_exit(marker.create(1) ? 0 : 1);
    }
    int iState = -1;
    ::waitpid(process, &iState, 0);
    ASSERT_EQ(0, iState);
    EXPECT_FALSE(start().isAlreadyRunning());
    EXPECT_TRUE(isListening());
}

TEST_F(CSingleApplicationTest, ListensAfterACrashWhoseMarkerHasTheNumberOfANewFile)
{
    // Where the file system gives numbers out again, the files of the new marker have some of these.
    std::vector<int> aMemories;
    std::vector<std::string> paths;
    for (const char* pName : {"a", "b", "c", "d"})
    {
        paths.push_back(m_Folder.write(pName, std::string()));
        aMemories.push_back(::shmget(::ftok(paths.back().c_str(), 'Q'), 1, IPC_CREAT | IPC_EXCL | 0600));
    }
    for (const std::string& strPath : paths)
        std::filesystem::remove(strPath);
    EXPECT_FALSE(start().isAlreadyRunning());
    EXPECT_TRUE(isListening());
    for (const int iMemory : aMemories)
        ::shmctl(iMemory, IPC_RMID, nullptr);
}

TEST_F(CSingleApplicationTest, ListensAfterACrashThatLeftItsSocketBehind)
{
    const int iSocket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    m_Folder.path(k_acKey).copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(0, ::bind(iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    ::close(iSocket);
    start();
    EXPECT_TRUE(isListening());
}

TEST_F(CSingleApplicationTest, RunsWhereNoMarkerCanBeMade)
{
    ::setenv("TMPDIR", m_Folder.write("file", std::string("no folder")).c_str(), 1);
    g_strLogged.clear();
    const QtMessageHandler earlier = qInstallMessageHandler([](QtMsgType eType, const QMessageLogContext&, const QString& strText)
                                                            { g_strLogged += (eType == QtDebugMsg ? strText : "").toStdString(); });
    EXPECT_FALSE(start().isAlreadyRunning());
    qInstallMessageHandler(earlier);
    EXPECT_EQ("Unable to create single instance.", g_strLogged);
}

TEST_F(CSingleApplicationTest, GivesAMessageAsUtf8Text)
{
    start();
    EXPECT_EQ(QString::fromUtf8("/tmp/Gr\xC3\xB6\xC3\x9F"
                                "e.mox"),
              receive("/tmp/Gr\xC3\xB6\xC3\x9F"
                      "e.mox"));
    EXPECT_EQ("Halvane", receive("Halvane"));
}

TEST_F(CSingleApplicationTest, EndsAMessageAtTheFirstNul)
{
    start();
    EXPECT_EQ("/a.mox", receive(QByteArray("/a.mox\0rest", 11)));
    EXPECT_EQ("", receive(QByteArray("\0", 1)));
}

TEST_F(CSingleApplicationTest, TakesBytesThatAreNoText)
{
    start();
    EXPECT_FALSE(receive("\xFF\xFE\x80").isEmpty());
}

TEST_F(CSingleApplicationTest, TakesAMessageWhoseSenderHasGone)
{
    QSignalSpy spy(&start(), &CSingleApplication::MessageAvailable);
    {
        QLocalSocket client;
        ASSERT_TRUE(connects(client));
        client.write("/a.mox");
        client.flush();
    }
    EXPECT_TRUE(spy.wait());
    EXPECT_EQ("/a.mox", spy[0][0].toString());
}

TEST_F(CSingleApplicationTest, PassesOverASenderThatSaysNothing)
{
    QSignalSpy spy(&start(), &CSingleApplication::MessageAvailable);
    QLocalSocket silent;
    ASSERT_TRUE(connects(silent));
    EXPECT_EQ("/a.mox", receive("/a.mox")); // the silent one comes first, for a second
    EXPECT_EQ(1, spy.count());
    EXPECT_EQ(QLocalSocket::ConnectedState, silent.state());
}

TEST_F(CSingleApplicationTest, SurvivesSendersThatComeAndGo)
{
    QSignalSpy spy(&start(), &CSingleApplication::MessageAvailable);
    for (int i = 0; i < 20; ++i)
    {
        QLocalSocket client;
        EXPECT_TRUE(connects(client));
    }
    EXPECT_EQ("/a.mox", receive("/a.mox"));
    EXPECT_EQ(1, spy.count());
}

TEST_F(CSingleApplicationTest, HoldsWhatComesBeforeSomebodyListens)
{
    start();
    send("/a.mox");
    sendFileOpen("/b.mox");
    send("/c.mox");
    QStringList told;
    note(told);
    send("/d.mox"); // not before those
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.size() == 4; }));
    EXPECT_EQ(QStringList({"/a.mox", "/b.mox", "/c.mox", "/d.mox"}), told);
}

TEST_F(CSingleApplicationTest, TellsNothingWhileTheMessageBeforeIsHandled)
{
    QStringList told;
    int iDepth = 0, iDeepest = 0;
    const auto handle = [&](const QString& strText)
    {
        iDeepest = std::max(iDeepest, ++iDepth);
        told << strText;
        if (told.size() == 1)
        {
            send("/b.mox");
            sendFileOpen("/c.mox");
            QCoreApplication::processEvents();
            EXPECT_EQ(1, told.size());
        }
        --iDepth;
    };
    QObject::connect(&start(), &CSingleApplication::MessageAvailable, handle);
    QObject::connect(m_pApplication.get(), &CSingleApplication::FileOpenEvent, handle);
    send("/a.mox");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.size() == 3; }));
    EXPECT_EQ(QStringList({"/a.mox", "/b.mox", "/c.mox"}), told);
    EXPECT_EQ(1, iDeepest);
}

TEST_F(CSingleApplicationTest, TellsNothingWhileADialogIsOpen)
{
    start();
    QStringList told;
    note(told);
    auto pFirst = std::make_unique<QDialog>();
    QDialog second;
    for (QDialog* pDialog : {pFirst.get(), &second})
    {
        pDialog->setModal(true);
        pDialog->show();
    }
    send("/a.mox");
    sendFileOpen("/b.mox");
    QCoreApplication::processEvents();
    EXPECT_TRUE(told.isEmpty());
    second.close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(told.isEmpty()); // there is another one
    pFirst.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.size() == 2; }));
    EXPECT_EQ(QStringList({"/a.mox", "/b.mox"}), told);
    sendFileOpen("/c.mox");
    EXPECT_EQ(3, told.size());
}

TEST_F(CSingleApplicationTest, LetsNoMoreThanAThousandWait)
{
    start();
    for (int i = 0; i < 1001; ++i)
        sendFileOpen(QString::number(i));
    QStringList told;
    note(told);
    for (int iTurn = 0; iTurn < 5000 && told.size() < 1000; ++iTurn) // one at each turn
        QCoreApplication::processEvents();
    EXPECT_EQ(1000, told.size());
    sendFileOpen("next");
    QCoreApplication::processEvents();
    ASSERT_EQ(1001, told.size());
    EXPECT_EQ("999", told[999]);
    EXPECT_EQ("next", told[1000]);
}

TEST_F(CSingleApplicationTest, GivesAFileThatTheSystemWantsOpened)
{
    QSignalSpy spy(&start(), &CSingleApplication::FileOpenEvent);
    QFileOpenEvent event(QString("/tmp/a b.mox"));
    EXPECT_TRUE(QCoreApplication::sendEvent(m_pApplication.get(), &event));
    ASSERT_EQ(1, spy.count());
    EXPECT_EQ("/tmp/a b.mox", spy[0][0].toString());
    QEvent other(QEvent::User);
    QCoreApplication::sendEvent(m_pApplication.get(), &other);
    EXPECT_EQ(1, spy.count());
}
