#include <iostream>

#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

/// A window system without a screen, and settings and temporary files that are nobody's.
int main(int iCount, char** apArguments)
{
    // The platform without a screen says at every window what it does not support.
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& strText)
        {
            if (!strText.startsWith("This plugin does not support"))
                std::cerr << strText.toStdString() << '\n';
        });
    const testsupport::CTemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.path()));
    qputenv("TEMP", QByteArray::fromStdString(folder.path())); // as the program has a temporary folder of its own
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(iCount, apArguments);
    QApplication::setApplicationName("Halvane");
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&iCount, apArguments);
    return RUN_ALL_TESTS();
}
