#include <csignal>

#include "CommandLine/HalvaneCli.h"

using namespace testsupport;

namespace
{

/// "Größe 木.png", in UTF-8
constexpr const char* k_strName = "Gr\xC3\xB6\xC3\x9F"
                                  "e \xE6\x9C\xA8";

std::string nameWith(const std::string& strExtension)
{
    return k_strName + strExtension;
}

ProgramSetting settingOf(std::vector<std::pair<std::string, std::string>> environment, const std::string& strFolder = {})
{
    ProgramSetting setting;
    setting.environment = std::move(environment);
    setting.strFolder = strFolder;
    return setting;
}

class NamesInUtf8 : public testing::TestWithParam<std::vector<std::pair<std::string, std::string>>>
{
};

} // namespace

TEST_P(NamesInUtf8, OpenWhateverTheLocaleThatTheEnvironmentNames)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("plain.png"), 4, 4);
    std::filesystem::rename(folder.path("plain.png"), folder.path(nameWith(".png")));
    const ProgramSetting setting = settingOf(GetParam());
    expectDone(cli({"convert", folder.path(nameWith(".png")), "-o", folder.path(nameWith(".mox"))}, setting));
    expectDone(cli({"extract", folder.path(nameWith(".mox")), "-o", folder.path(nameWith(".bmp"))}, setting));
    EXPECT_TRUE(std::filesystem::exists(folder.path(nameWith(".mox"))));
    EXPECT_TRUE(std::filesystem::exists(folder.path(nameWith(".bmp"))));
    EXPECT_EQ(3u, folder.count());
}

INSTANTIATE_TEST_SUITE_P(Locales, NamesInUtf8,
                         testing::Values(std::vector<std::pair<std::string, std::string>>{{"LC_ALL", ""}, {"LC_CTYPE", ""}, {"LANG", ""}},
                                         std::vector<std::pair<std::string, std::string>>{{"LC_ALL", "C"}},
                                         std::vector<std::pair<std::string, std::string>>{{"LC_ALL", "POSIX"}, {"LANG", "C.UTF-8"}},
                                         std::vector<std::pair<std::string, std::string>>{
                                             {"LC_ALL", ""}, {"LC_CTYPE", ""}, {"LANG", "xx_XX.UTF-8"}},
                                         std::vector<std::pair<std::string, std::string>>{{"LC_ALL", "C.UTF-8"}}));

TEST(TemporaryFolderOfTheProgram, IsGoneWhenTheProgramEnds)
{
    const CTemporaryFolder folder;
    const CTemporaryFolder temporary;
    writePicture(folder.path("a.png"), 4, 4);
    const ProgramSetting setting = settingOf({{"TEMP", temporary.path()}});
    expectDone(cli({"convert", folder.path("a.png"), "-o", folder.path("a.mox")}, setting));
    EXPECT_EQ(0u, temporary.count());
    EXPECT_EQ(1, cli({"info", folder.path("missing.mox")}, setting).iStatus);
    EXPECT_EQ(0u, temporary.count());
}

TEST(TemporaryFolderOfTheProgram, IsGoneWhenASignalEndsTheProgram)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 512, 512);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU})
    {
        int iCaught = 0;
        for (int iTry = 0; iTry < 50 && iCaught == 0; ++iTry)
        {
            const CTemporaryFolder temporary;
            CRunningProgram program(cliWords({"convert", folder.path("a.png"), "-o", folder.path("a.mox"), "--resize", "2048x2048"}),
                                    settingOf({{"TEMP", temporary.path()}}));
            // Half written files mean that the program is past its beginning.
            while (folder.count() == (std::filesystem::exists(folder.path("a.mox")) ? 2u : 1u) && !program.hasEnded())
            {
            }
            if (!program.freeze() || temporary.count() == 0)
                continue;
            ++iCaught;
            EXPECT_EQ(1u, temporary.count());
            program.signal(iSignal);
            program.signal(SIGCONT);
            program.wait();
            EXPECT_EQ(0u, temporary.count()) << iSignal;
        }
        EXPECT_LT(0, iCaught) << "the program was never seen at work";
    }
}

TEST(Streams, ThatAreMissingFromTheStartBecomeNoFilesOfTheProgram)
{
    const CTemporaryFolder pictures;
    writePicture(pictures.path("a.png"), 512, 512);
    int iCaught = 0;
    for (int iTry = 0; iTry < 50 && iCaught == 0; ++iTry)
    {
        const CTemporaryFolder folder;
        const std::string strCommand = "exec '" HALVANE_CLI_PATH "' convert '" + pictures.path("a.png") + "' -o '" + folder.path("a.mox") +
                                       "' --resize 2048x2048 <&- >&- 2>&-";
        CRunningProgram program({"/bin/sh", "-c", strCommand}, {});
        // A half written file means that the program is past its beginning.
        while (folder.count() == 0 && !program.hasEnded())
        {
        }
        if (!program.freeze())
            continue;
        ++iCaught;
        for (const char* strStream : {"0", "1", "2"})
        {
            std::error_code error;
            const std::string strLink = "/proc/" + std::to_string(program.getProcess()) + "/fd/" + strStream;
            EXPECT_EQ("/dev/null", std::filesystem::read_symlink(strLink, error).string()) << strStream << error.message();
        }
    }
    EXPECT_LT(0, iCaught) << "the program was never seen at work";
}

TEST(Streams, ThatAreMissingFromTheStartAreNotTakenForWritten)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 4, 4);
    ProgramSetting setting;
    setting.strFolder = folder.path();
    const ProgramRun run = runProgram({"/bin/sh", "-c", "'" HALVANE_CLI_PATH "' info a.png <&- >&-"}, setting);
    expectFailed(run, "Cannot write to standard output");
}

TEST(FileThatMayNotGrow, IsAFailureThatLeavesTheEarlierOne)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 512, 512);
    folder.write("a.mox", "precious");
    ProgramSetting setting;
    setting.strFolder = folder.path();
    const ProgramRun run = runProgram({"/bin/sh", "-c", "ulimit -f 16; exec '" HALVANE_CLI_PATH "' convert a.png -o a.mox"}, setting);
    EXPECT_EQ(1, run.iStatus) << run.iSignal;
    EXPECT_EQ(0u, run.strErrors.rfind("halvane-cli: error: ", 0)) << run.strErrors;
    EXPECT_EQ("precious", readText(folder.path("a.mox")));
    EXPECT_EQ(2u, folder.count());
}
