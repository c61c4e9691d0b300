#include "MainWindow/MemoryGuard.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace
{

TEST(MemoryGuard, TellsOfRefusedMemoryAlone)
{
    int iRun = 0;
    EXPECT_TRUE(runWithinMemory([&] { iRun = 1; }));
    EXPECT_EQ(1, iRun);
    EXPECT_FALSE(runWithinMemory(
        [&]
        {
            iRun = 2;
            throw std::bad_alloc();
        }));
    EXPECT_EQ(2, iRun);
    EXPECT_THROW((void)runWithinMemory([] { throw std::runtime_error("a fault"); }), std::runtime_error);
}

} // namespace
