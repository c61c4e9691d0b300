#include <csignal>
#include <initializer_list>

#include <QtCore/QThread>
#include <QtCore/QtGlobal>
#include <unistd.h>

#include "CommandLine/ErrorStream.h"
#include "CommandLine/OutputsInFlight.h"
#include "CommandLine/Program.h"
#include "CommandLine/ProgressLine.h"
#include "Core/PrivateTemporaryFolder.h"
#include "Core/SignalWatcher.h"
#include "Core/StandardStreams.h"
#include "Core/Utf8Locale.h"

int main(int iCount, char** apArguments)
{
    constexpr int iSignalled = 128; // added to the signal's number, as shells tell it
    moxtexture::openMissingStreams();
    moxtexture::useUtf8Locale();
    const moxtexture::CPrivateTemporaryFolder temporaryFolder;
    moxtexture::COutputsInFlight outputs;
    const moxtexture::CSignalWatcher watcher(
        [&outputs, &temporaryFolder](int iSignal)
        {
            outputs.abandon();
            temporaryFolder.remove();
            moxtexture::eraseTerminalLine();
            // No destructors: other threads are at work.
            _exit(iSignalled + iSignal);
        });
    // A reader that goes away and a file that may not grow show as failed writes, with the files under way brought to their end.
    for (const int iSignal : {SIGPIPE, SIGXFSZ})
        std::signal(iSignal, SIG_IGN);
    // The first thread that Qt sees is the main thread to it; a worker of a batch must not become that.
    static_cast<void>(QThread::currentThread());
    // Image plug-ins talk of faults in files; an error here is one line, and ours.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    moxtexture::dropErrorsOfLibraries();
    return moxtexture::runProgram(iCount, apArguments, outputs);
}
