#include "CommandLine/OutputsInFlight.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using testsupport::CTemporaryFolder;
using testsupport::readText;

namespace
{

bool putText(const std::string& strPath, const std::string& strText)
{
    std::ofstream stream(strPath);
    stream << strText;
    return stream.good();
}

} // namespace

TEST(OutputsInFlight, PutAFinishedFileInPlace)
{
    const CTemporaryFolder folder;
    COutputsInFlight outputs;
    std::string strReason;
    EXPECT_TRUE(outputs.write(
        folder.path("a.txt"), [](const std::string& strPath) { return putText(strPath, "new"); }, strReason));
    EXPECT_EQ("new", readText(folder.path("a.txt")));
    EXPECT_EQ("", strReason);
    EXPECT_EQ(1u, folder.count());
}

TEST(OutputsInFlight, LeaveTheEarlierFileWhereTheWriterFails)
{
    const CTemporaryFolder folder;
    folder.write("a.txt", "old");
    COutputsInFlight outputs;
    std::string strReason = "stale";
    const auto write = [](const std::string& strPath)
    {
        EXPECT_TRUE(putText(strPath, "half"));
        return false;
    };
    EXPECT_FALSE(outputs.write(folder.path("a.txt"), write, strReason));
    EXPECT_EQ("old", readText(folder.path("a.txt")));
    EXPECT_EQ("", strReason); // only the writer knows
    EXPECT_EQ(1u, folder.count());
}

TEST(OutputsInFlight, TellWhyAFileCannotBeBegun)
{
    const CTemporaryFolder folder;
    COutputsInFlight outputs;
    std::string strReason;
    bool bCalled = false;
    const auto write = [&](const std::string&) { return bCalled = true; };
    EXPECT_FALSE(outputs.write(folder.path("missing/a.txt"), write, strReason));
    EXPECT_FALSE(bCalled);
    EXPECT_NE("", strReason);
    EXPECT_EQ(0u, folder.count());
}

TEST(OutputsInFlight, AreAllRemovedWhenAbandoned)
{
    const CTemporaryFolder folder;
    folder.write("a.txt", "old");
    COutputsInFlight outputs;
    std::string strReason;
    const auto writeBoth = [&](const std::string& strPath)
    {
        std::string strInnerReason;
        return putText(strPath, "half") && outputs.write(
                                               folder.path("b.txt"),
                                               [&](const std::string& strOther)
                                               {
                                                   EXPECT_TRUE(putText(strOther, "half"));
                                                   EXPECT_EQ(3u, folder.count()); // the earlier file, and a folder for each
                                                   outputs.abandon();
                                                   EXPECT_EQ(1u, folder.count());
                                                   return true;
                                               },
                                               strInnerReason);
    };
    EXPECT_FALSE(outputs.write(folder.path("a.txt"), writeBoth, strReason));
    EXPECT_EQ("old", readText(folder.path("a.txt")));
    EXPECT_EQ(1u, folder.count());
}

TEST(OutputsInFlight, BeginNothingOnceAbandoned)
{
    const CTemporaryFolder folder;
    COutputsInFlight outputs;
    outputs.abandon();
    std::string strReason;
    EXPECT_FALSE(outputs.write(
        folder.path("a.txt"), [](const std::string& strPath) { return putText(strPath, "new"); }, strReason));
    EXPECT_EQ("interrupted", strReason);
    EXPECT_EQ(0u, folder.count());
}
