#include "Application/CSingleApplication.h"

#include <QtCore/QDebug>
#include <QtCore/QMetaMethod>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QFileOpenEvent>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>
#include <QtWidgets/QWidget>

CSingleApplication::CSingleApplication(int& iCount, char** apArguments, const QString& strKey)
    : QApplication(iCount, apArguments), m_strKey(strKey)
{
    m_TellSoon.setSingleShot(true);
    connect(&m_TellSoon, &QTimer::timeout, this, &CSingleApplication::tellNext);
    m_Marker.setKey(m_strKey);
    // A marker that a crashed instance left behind goes with its last user.
    if (m_Marker.attach(QSharedMemory::ReadWrite))
        m_Marker.detach();
    m_bAlreadyRunning = m_Marker.attach(QSharedMemory::ReadWrite);
    if (m_bAlreadyRunning)
        return;
    if (createMarker())
        listen();
    else
        qDebug("Unable to create single instance.");
}

bool CSingleApplication::createMarker()
{
    if (m_Marker.create(1, QSharedMemory::ReadWrite))
        return true;
    // Markers are known by the number of a file, which a crashed instance's had, too, before that file was removed. Only now is there
    // a file by which to attach to what it left behind.
    if (m_Marker.error() != QSharedMemory::AlreadyExists || !m_Marker.attach(QSharedMemory::ReadWrite))
        return false;
    m_Marker.detach();
    return m_Marker.create(1, QSharedMemory::ReadWrite);
}

void CSingleApplication::listen()
{
    m_pServer = new QLocalServer(this);
    connect(m_pServer, &QLocalServer::newConnection, this, &CSingleApplication::ReceiveMessage);
    m_pServer->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(m_strKey); // of an instance that crashed
    if (!m_pServer->listen(m_strKey))
        qDebug() << m_pServer->errorString();
}

void CSingleApplication::ReceiveMessage()
{
    constexpr int iMostMilliseconds = 1000;
    QLocalSocket* pSocket = m_pServer->nextPendingConnection();
    if (pSocket == nullptr)
        return;
    if (!pSocket->waitForReadyRead(iMostMilliseconds))
    {
        qDebug() << pSocket->errorString();
        // Left as it is; what the client does with it is all the same.
        connect(pSocket, &QLocalSocket::disconnected, pSocket, &QObject::deleteLater);
        return;
    }
    const QByteArray bytes = pSocket->readAll();
    tell(&CSingleApplication::MessageAvailable, QString::fromUtf8(bytes.constData())); // up to the first NUL
    pSocket->disconnectFromServer();
    pSocket->deleteLater();
}

/// At once, or in its turn.
void CSingleApplication::tell(Signal pSignal, const QString& strText)
{
    if (m_aWaiting.size() >= k_uiMostWaiting)
        return;
    m_aWaiting.emplace_back(pSignal, strText);
    if (m_aWaiting.size() == 1)
        tellNext();
}

/// @return false if it is not the time for what stands first; then tellNext() is called when it may be
bool CSingleApplication::mayTell()
{
    if (!isSignalConnected(QMetaMethod::fromSignal(m_aWaiting.front().first)))
        return false;
    QWidget* pModal = activeModalWidget();
    if (pModal == nullptr)
        return true;
    pModal->installEventFilter(this);
    connect(pModal, &QObject::destroyed, this, &CSingleApplication::tellSoon, Qt::UniqueConnection);
    return false;
}

void CSingleApplication::tellNext()
{
    if (m_bTelling || m_aWaiting.empty() || !mayTell())
        return;
    {
        const QScopedValueRollback<bool> telling(m_bTelling, true);
        const auto [pSignal, strText] = std::move(m_aWaiting.front());
        m_aWaiting.pop_front();
        emit(this->*pSignal)(strText);
    }
    tellSoon();
}

void CSingleApplication::tellSoon()
{
    if (!m_aWaiting.empty())
        m_TellSoon.start();
}

void CSingleApplication::connectNotify(const QMetaMethod& signal)
{
    QApplication::connectNotify(signal);
    tellSoon();
}

/// Of the modal dialog that something waits for.
bool CSingleApplication::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Hide)
        tellSoon();
    return QApplication::eventFilter(pWatched, pEvent);
}

bool CSingleApplication::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::FileOpen)
        return QApplication::event(pEvent);
    tell(&CSingleApplication::FileOpenEvent, static_cast<QFileOpenEvent*>(pEvent)->file());
    return true;
}
