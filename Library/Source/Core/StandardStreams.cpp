#include "Core/StandardStreams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace moxtexture
{

void openMissingStreams()
{
    for (const int iStream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(iStream, F_GETFD) < 0)
            static_cast<void>(::open("/dev/null", O_RDONLY)); // the lowest free number, which is this one
}

} // namespace moxtexture
