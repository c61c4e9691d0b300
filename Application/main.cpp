#include <unistd.h>

#include "Application/RunApplication.h"
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
    const moxtexture::CSignalWatcher watcher(
        [&temporaryFolder](int iSignal)
        {
            temporaryFolder.remove();
            // No destructors: the main thread is at work.
            _exit(iSignalled + iSignal);
        });
    return runApplication(iCount, apArguments);
}
