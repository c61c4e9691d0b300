#pragma once

#include <QtCore/QSharedMemory>
#include <QtCore/QString>
#include <QtWidgets/QApplication>

class QLocalServer;

/// The application object, which knows whether it is the first of its key on this machine. The first one takes messages through a
/// local socket of that name; those that come later run all the same, and nobody hands anything over.
class CSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @param iCount       must outlive the object, as QApplication wants
    /// @param strKey       of the instance marker, and the name of the socket
    CSingleApplication(int& iCount, char** apArguments, const QString& strKey);

    [[nodiscard]] bool isAlreadyRunning() const { return m_bAlreadyRunning; }

    bool event(QEvent* pEvent) override;

signals:
    void MessageAvailable(const QString& strMessage);
    void FileOpenEvent(const QString& strFile);

public slots:
    /// Reads the message of the next client that waits; waits for it up to a second.
    void ReceiveMessage();

private:
    void listen();

    bool m_bAlreadyRunning = false;
    QString m_strKey;
    QSharedMemory m_Marker;
    QLocalServer* m_pServer = nullptr;
};
