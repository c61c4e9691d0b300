#include "Application/RunApplication.h"

#include <cstdio>

#include <QtCore/QFileInfo>
#include <QtGui/QIcon>

#include "Application/CSingleApplication.h"
#include "Application/StartUpArguments.h"
#include "Core/Diagnostics.h"
#include "MainWindow/CMainWindow.h"
#include "MainWindow/ProductVersion.h"
#include "Resources/Resources.h"

namespace
{

/// What is remembered of a file must lead to it from any folder.
QString fromWorkingFolder(const QString& strPath)
{
    return strPath.isEmpty() ? strPath : QFileInfo(strPath).absoluteFilePath();
}

void openRequested(CMainWindow& window, const OpenRequest& request)
{
    const QString strFirst = fromWorkingFolder(request.strFirst);
    if (request.eKind == OpenRequest::eOne)
        window.slotOpenFile(strFirst);
    else if (request.eKind == OpenRequest::eTwo)
        window.slotOpenDiff(strFirst, fromWorkingFolder(request.strSecond));
}

QIcon makeIcon()
{
    QIcon icon;
    for (const int iSize : {16, 32, 48, 64, 128, 256})
        icon.addFile(QString(":/AppIcons/Halvane_%1.png").arg(iSize));
    return icon;
}

/// At once, for whoever watches the program from a terminal.
void writeToStandardOutput(const char* pszText)
{
    std::fputs(pszText, stdout);
    std::fflush(stdout);
}

} // namespace

int runApplication(int iCount, char** apArguments)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    CSingleApplication application(iCount, apArguments, k_acProductName);
    QApplication::setApplicationName(k_acProductName);
    QApplication::setApplicationVersion(k_acProductVersion);
    moxtexture::setDiagnosticsHook(writeToStandardOutput);
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
