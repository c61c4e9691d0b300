#include "MainWindow/CWaitNotice.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtGui/QWindow>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

namespace
{

constexpr qint64 k_i64MaxWait = 200; // milliseconds

/// A window is painted only once the desktop has mapped it. Nothing but the window system is listened to meanwhile, and it not for
/// long.
void waitUntilShown(const QWidget& widget)
{
    QElapsedTimer timer;
    timer.start();
    const auto isShown = [&] { return widget.windowHandle() != nullptr && widget.windowHandle()->isExposed(); };
    while (!isShown() && timer.elapsed() < k_i64MaxWait)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
}

} // namespace

CWaitNotice::CWaitNotice(const QString& strText, QWidget* pParent) : QDialog(pParent)
{
    setObjectName("Dialog_WaitNotice");
    setWindowTitle(QCoreApplication::applicationName());
    auto* pLayout = new QHBoxLayout(this);
    auto* pLabel = new QLabel(strText, this);
    pLabel->setObjectName("Label_WaitNotice");
    pLayout->addWidget(pLabel);
    show();
    waitUntilShown(*this);
    repaint();
}
