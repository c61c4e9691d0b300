#include <QtGui/QIcon>
#include <unistd.h>

#include "Application/CSingleApplication.h"
#include "Application/StartUpArguments.h"
#include "Core/PrivateTemporaryFolder.h"
#include "Core/SignalWatcher.h"
#include "Core/Utf8Locale.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/ProductVersion.h"
#include "Resources/Resources.h"

namespace
{

void openRequested(CMainWindow& window, const OpenRequest& request)
{
    if (request.eKind == OpenRequest::eOne)
        window.slotOpenFile(request.strFirst);
    else if (request.eKind == OpenRequest::eTwo)
        window.slotOpenDiff(request.strFirst, request.strSecond);
}

QIcon makeIcon()
{
    QIcon icon;
    for (const int iSize : {16, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/AppIcons/Halvane_%1.png").arg(iSize));
    return icon;
}

int runApplication(int iCount, char** apArguments)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    CSingleApplication application(iCount, apArguments, k_acProductName);
    QApplication::setApplicationName(k_acProductName);
    QApplication::setApplicationVersion(k_acProductVersion);
    initResources();
    QApplication::setWindowIcon(makeIcon());

    CMainWindow window;
    QObject::connect(&application, &CSingleApplication::FileOpenEvent, &window, &CMainWindow::slotOpenFile);
    QObject::connect(&application, &CSingleApplication::MessageAvailable, &window, &CMainWindow::slotAppMessageRecieved);
    window.show();
    openRequested(window, readStartUpArguments(QCoreApplication::arguments()));
    window.slotAboutBox(false);

    const int iStatus = QApplication::exec();
    QCoreApplication::quit();
    return iStatus;
}

} // namespace

int main(int iCount, char** apArguments)
{
    constexpr int iSignalled = 128; // added to the signal's number, as shells tell it
    moxtexture::useUtf8Locale();
    const moxtexture::CPrivateTemporaryFolder temporaryFolder;
    const moxtexture::CSignalWatcher watcher(
        [&temporaryFolder](int iSignal)
        {
            temporaryFolder.remove();
            // No destructors: the main thread is at work.
            _exit(iSignalled + iSignal);
        });
    return runApplication(iCount, apArguments);
}
