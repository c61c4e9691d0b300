#include "Core/StandardStreams.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using namespace moxtexture;

namespace
{

/// For a process of its own: ends with 0 if the streams, some of them closed, are as they should be afterwards.
[[noreturn]] void openAndCheck(const std::vector<int>& closed)
{
    for (const int iStream : closed)
        close(iStream);
    openMissingStreams();
    for (const int iStream : closed)
    {
        char cByte = 0;
        if (read(iStream, &cByte, 1) != 0)
            _exit(10 + iStream); // not open, or not empty
        if (write(iStream, "x", 1) != -1 || errno != EBADF)
            _exit(20 + iStream);
    }
    _exit(open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 30);
}

} // namespace

TEST(StandardStreamsDeathTest, AreAllTakenAfterwardsAndRefuseToBeWrittenTo)
{
    for (const std::vector<int>& closed : {std::vector<int>{0}, {1}, {2}, {0, 2}, {1, 2}, {0, 1, 2}})
        EXPECT_EXIT(openAndCheck(closed), testing::ExitedWithCode(0), "") << closed.size() << " from " << closed.front();
}

TEST(StandardStreamsDeathTest, StayAsTheyAreWhereTheyAreOpen)
{
    const auto openAndWrite = []
    {
        openMissingStreams();
        _exit(write(STDERR_FILENO, "still here", 10) == 10 ? 0 : 1);
    };
    EXPECT_EXIT(openAndWrite(), testing::ExitedWithCode(0), "still here");
}
