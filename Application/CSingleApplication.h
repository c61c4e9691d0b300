#pragma once

#include <cstddef>
#include <deque>
#include <utility>

#include <QtCore/QSharedMemory>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

class QLocalServer;

/// The application object, which knows whether it is the first of its key on this machine. The first one takes messages through a
/// local socket of that name; those that come later run all the same, and nobody hands anything over.
///
/// What comes from outside, messages and files to open, is told one after the other, in the order of coming: not before somebody is
/// connected, not while a modal dialog is open, and not within the handling of the one before. Up to k_uiMostWaiting wait for their
/// turn, and what comes on top of them is dropped: whoever sends more than the user can answer gets no further.
class CSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// @param iCount       must outlive the object, as QApplication wants
    /// @param strKey       of the instance marker, and the name of the socket
    CSingleApplication(int& iCount, char** apArguments, const QString& strKey);

    [[nodiscard]] bool isAlreadyRunning() const { return m_bAlreadyRunning; }

    static constexpr size_t k_uiMostWaiting = 1000;

    bool event(QEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

signals:
    void MessageAvailable(const QString& strMessage);
    void FileOpenEvent(const QString& strFile);

public slots:
    /// Reads the message of the next client that waits; waits for it up to a second.
    void ReceiveMessage();

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    using Signal = void (CSingleApplication::*)(const QString&);

    [[nodiscard]] bool createMarker();
    void listen();
    void tell(Signal pSignal, const QString& strText);
    [[nodiscard]] bool mayTell();
    void tellNext();
    void tellSoon();

    bool m_bAlreadyRunning = false;
    QString m_strKey;
    QSharedMemory m_Marker;
    QLocalServer* m_pServer = nullptr;
    std::deque<std::pair<Signal, QString>> m_aWaiting;
    bool m_bTelling = false;
    QTimer m_TellSoon; ///< at the next turn of the event loop
};
