#include <csignal>

#include "CommandLine/HalvaneCli.h"
#include "Core/Workers.h"

using namespace testsupport;

namespace
{

/// A picture whose texture takes long enough to write that a process can be stopped while it does.
constexpr uint32_t k_uiWidth = 1024;

/// The folder holds anything that is no finished file of the test's.
bool hasFolderIn(const std::string& strFolder)
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error))
        if (entry.is_directory(error))
            return true;
    return false;
}

/// A run that was stopped between the moment in which its output's private folder appeared and the moment in which it goes.
struct Stopped
{
    std::unique_ptr<CRunningProgram> pProgram; ///< null if the folder was not seen in time
};

Stopped stopWhileWriting(const std::vector<std::string>& words, const std::string& strFolder)
{
    auto pProgram = std::make_unique<CRunningProgram>(cliWords(words));
    while (!hasFolderIn(strFolder))
        if (pProgram->hasEnded())
            return {};
    if (!pProgram->freeze() || !hasFolderIn(strFolder))
        return {};
    return {std::move(pProgram)};
}

class InterruptTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(InterruptTest, LeavesTheEarlierFileOrTheNewOneAndNothingElse)
{
    const CTemporaryFolder pictures;
    writePicture(pictures.path("a.png"), k_uiWidth, k_uiWidth);
    const CTemporaryFolder folder;
    const std::string strOutput = folder.path("a.mox");
    const std::vector<std::string> words = {"convert", pictures.path("a.png"), "-o", strOutput, "--resize", "2048x2048", "--filter",
                                            "nearest"};
    expectDone(cli(words));
    const std::vector<uint8_t> whole = readBytes(strOutput);

    int iCaught = 0;
    for (int iTry = 0; iTry < 50 && iCaught < 3; ++iTry)
    {
        folder.write("a.mox", "precious");
        const Stopped stopped = stopWhileWriting(words, folder.path());
        if (!stopped.pProgram)
            continue;
        ++iCaught;
        stopped.pProgram->signal(GetParam());
        stopped.pProgram->signal(SIGCONT);
        const ProgramRun run = stopped.pProgram->wait();
        EXPECT_EQ(128 + GetParam(), run.iStatus) << run.iSignal;
        EXPECT_EQ("", run.strOutput);
        const std::vector<uint8_t> bytes = readBytes(strOutput);
        EXPECT_TRUE(readText(strOutput) == "precious" || bytes == whole) << bytes.size();
        EXPECT_EQ(1u, folder.count());
    }
    EXPECT_LT(0, iCaught) << "the program was never seen writing";
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptTest, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU));

TEST(Interrupt, LeavesNothingHalfWrittenOfManyFiles)
{
    const CTemporaryFolder pictures;
    std::vector<std::string> words = {"convert", "--ext", "mox", "--jobs", "4", "--resize", "1024x1024", "--filter", "nearest"};
    for (uint64_t i = 0; i < 12; ++i)
    {
        const std::string strPath = pictures.path("p" + std::to_string(i) + ".png");
        writePicture(strPath, 256, 256, i);
        words.push_back(strPath);
    }
    const CTemporaryFolder folder;
    words.insert(words.end(), {"--out-dir", folder.path()});
    int iCaught = 0;
    for (int iTry = 0; iTry < 50 && iCaught < 2; ++iTry)
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            std::filesystem::remove(entry.path());
        const Stopped stopped = stopWhileWriting(words, folder.path());
        if (!stopped.pProgram)
            continue;
        ++iCaught;
        stopped.pProgram->signal(SIGTERM);
        stopped.pProgram->signal(SIGCONT);
        EXPECT_EQ(128 + SIGTERM, stopped.pProgram->wait().iStatus);
        EXPECT_FALSE(hasFolderIn(folder.path()));
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            EXPECT_EQ(52u + 15 + 1024 * 1024 * 4, entry.file_size()) << entry.path(); // header, orientation record, pixels
    }
    EXPECT_LT(0, iCaught) << "the program was never seen writing";
}

TEST(Interrupt, IsNoneForASignalThatWasIgnoredFromTheStart)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), k_uiWidth, k_uiWidth);
    ProgramSetting setting;
    setting.ignoredSignals = {SIGHUP};
    CRunningProgram program(cliWords({"convert", folder.path("a.png"), "-o", folder.path("a.mox"), "--mips", "all"}), setting);
    program.signal(SIGHUP);
    expectDone(program.wait());
}

TEST(Interrupt, IsNoneWhereTheReaderOfTheErrorsGoesAway)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 8, 8);
    // The shell closes standard error's other end before the program writes its first error line; the last file is written all the same.
    const std::string strCommand =
        "'" HALVANE_CLI_PATH "' convert missing.png a.png --out-dir out --ext mox --jobs 1 2>&1 >/dev/null | true";
    ProgramSetting setting;
    setting.strFolder = folder.path();
    runProgram({"/bin/sh", "-c", strCommand}, setting);
    EXPECT_FALSE(readBytes(folder.path("out/a.mox")).empty());
    EXPECT_FALSE(hasFolderIn(folder.path("out")));
}
