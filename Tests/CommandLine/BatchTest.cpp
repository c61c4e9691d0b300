#include "CommandLine/Batch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <new>
#include <set>

#include "Support/TemporaryFolder.h"

using namespace moxtexture;

namespace
{

std::vector<BatchFile> numbered(size_t uiCount)
{
    std::vector<BatchFile> files;
    for (size_t i = 0; i < uiCount; ++i)
        files.push_back({"in" + std::to_string(i), "out" + std::to_string(i)});
    return files;
}

std::string outputOf(const std::string& strInput, const std::string& strFolder)
{
    return planBatch({strInput}, strFolder, "mox").front().strOutput;
}

} // namespace

TEST(BatchPlan, GivesTheInputsNameTheNewExtensionInTheFolder)
{
    EXPECT_EQ("out/a.mox", outputOf("a.png", "out"));
    EXPECT_EQ("out/a.mox", outputOf("/deep/in/a.png", "out/"));
    EXPECT_EQ("out/a.b.mox", outputOf("a.b.png", "out"));
    EXPECT_EQ("out/a.mox", outputOf("a", "out"));
    EXPECT_EQ("out/.a.mox", outputOf(".a", "out"));
    EXPECT_EQ("./a.mox", outputOf("a.mox", "."));
}

TEST(BatchClash, NamesBothInputsAndTheOutput)
{
    const std::string strClash = findClash(planBatch({"x/a.png", "b.png", "y/a.jpg"}, "out", "mox"));
    EXPECT_EQ("'x/a.png' and 'y/a.jpg' would both be written to 'out/a.mox'", strClash);
}

TEST(BatchClash, IsOneInputNamedTwice)
{
    EXPECT_NE("", findClash(planBatch({"a.png", "a.png"}, "out", "mox")));
}

TEST(BatchClash, IsALinkToTheOutputOfAnother)
{
    const testsupport::CTemporaryFolder folder;
    folder.write("a.mox", "earlier");
    std::filesystem::create_symlink("a.mox", folder.path("b.mox"));
    EXPECT_EQ("'a.png' and 'b.png' would both be written to '" + folder.path("b.mox") + "'",
              findClash(planBatch({"a.png", "b.png"}, folder.path(), "mox")));
    EXPECT_EQ("", findClash(planBatch({"a.png", "c.png"}, folder.path(), "mox")));
}

TEST(BatchClash, IsNotAnOutputThatIsItsOwnInput)
{
    EXPECT_EQ("", findClash(planBatch({"./a.mox", "./b.mox"}, ".", "mox")));
}

TEST(Batch, WorksOnEveryFileOnceWhateverTheJobs)
{
    for (const uint32_t uiJobs : {1u, 2u, 7u, 1000u})
    {
        std::atomic<uint32_t> auiCalls[20] = {};
        const Outcome outcome = runBatch(numbered(20), uiJobs, false,
                                         [&](const BatchFile& file)
                                         {
                                             ++auiCalls[std::stoul(file.strInput.substr(2))];
                                             return done();
                                         });
        EXPECT_TRUE(outcome.isDone());
        for (const auto& uiCalls : auiCalls)
            EXPECT_EQ(1u, uiCalls);
    }
}

TEST(Batch, GoesOnPastFailuresAndNamesThemInTheOrderOfTheFiles)
{
    for (const uint32_t uiJobs : {1u, 4u})
    {
        std::atomic<uint32_t> uiCalls{0};
        testing::internal::CaptureStderr();
        const Outcome outcome = runBatch(numbered(40), uiJobs, false,
                                         [&](const BatchFile& file)
                                         {
                                             ++uiCalls;
                                             const bool bFails =
                                                 file.strInput == "in3" || file.strInput == "in17" || file.strInput == "in39";
                                             return bFails ? failed("no\ngood") : done();
                                         });
        EXPECT_EQ("halvane-cli: error: in3: no good\nhalvane-cli: error: in17: no good\nhalvane-cli: error: in39: no good\n",
                  testing::internal::GetCapturedStderr());
        EXPECT_EQ(EExitStatus::eFailed, outcome.eStatus);
        EXPECT_EQ("", outcome.strText);
        EXPECT_EQ(40u, uiCalls);
    }
}

TEST(Batch, TakesARefusalOfMemoryForAFailureOfThatFile)
{
    testing::internal::CaptureStderr();
    const Outcome outcome = runBatch(
        numbered(2), 2, false, [](const BatchFile& file) -> Outcome { return file.strInput == "in0" ? throw std::bad_alloc() : done(); });
    EXPECT_EQ("halvane-cli: error: in0: Not enough memory\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(EExitStatus::eFailed, outcome.eStatus);
}
