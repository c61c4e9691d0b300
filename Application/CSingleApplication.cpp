#include "Application/CSingleApplication.h"

#include <QtCore/QDebug>
#include <QtGui/QFileOpenEvent>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

CSingleApplication::CSingleApplication(int& iCount, char** apArguments, const QString& strKey)
    : QApplication(iCount, apArguments), m_strKey(strKey)
{
    m_Marker.setKey(m_strKey);
    // A marker that a crashed instance left behind goes with its last user.
    if (m_Marker.attach(QSharedMemory::ReadWrite))
        m_Marker.detach();
    m_bAlreadyRunning = m_Marker.attach(QSharedMemory::ReadWrite);
    if (m_bAlreadyRunning)
        return;
    if (m_Marker.create(1, QSharedMemory::ReadWrite))
        listen();
    else
        qDebug("Unable to create single instance.");
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
    emit MessageAvailable(QString::fromUtf8(bytes.constData())); // up to the first NUL
    pSocket->disconnectFromServer();
    pSocket->deleteLater();
}

bool CSingleApplication::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::FileOpen)
        return QApplication::event(pEvent);
    emit FileOpenEvent(static_cast<QFileOpenEvent*>(pEvent)->file());
    return true;
}
