#include "CommandLine/HalvaneCli.h"

using namespace testsupport;

TEST(Program, TellsItsVersion)
{
    const ProgramRun run = cli({"--version"});
    EXPECT_EQ(0, run.iStatus);
    EXPECT_EQ("halvane-cli " HALVANE_VERSION "\n", run.strOutput);
    EXPECT_EQ("", run.strErrors);
}

TEST(Program, HelpsWithItselfAndWithEachVerbOnStandardOutput)
{
    const ProgramRun own = cli({"--help"});
    EXPECT_EQ(0, own.iStatus);
    EXPECT_EQ("", own.strErrors);
    for (const char* strVerb : {"info", "convert", "extract", "formats"})
    {
        EXPECT_NE(std::string::npos, own.strOutput.find("\n  " + std::string(strVerb) + " ")) << own.strOutput;
        const ProgramRun run = cli({strVerb, "--help"});
        EXPECT_EQ(0, run.iStatus);
        EXPECT_EQ("", run.strErrors);
        EXPECT_NE(std::string::npos, run.strOutput.find("halvane-cli " + std::string(strVerb) + " ")) << run.strOutput;
    }
}

TEST(Program, NamesEveryOptionInTheHelpOfItsVerb)
{
    const std::string strHelp = cli({"convert", "--help"}).strOutput;
    for (const char* strOption : {"--output",      "--assume-space", "--resize",  "--canvas", "--flip",  "--rotate",  "--border", "--mips",
                                  "--colour-mips", "--filter",       "--format",  "--type",   "--space", "--quality", "--dither", "--pad",
                                  "--legacy",      "--as-stored",    "--out-dir", "--ext",    "--jobs",  "--quiet"})
        EXPECT_NE(std::string::npos, strHelp.find(std::string(strOption) + " ")) << strOption;
    for (const char* strVerb : {"info", "convert", "extract", "formats"})
        EXPECT_NE(std::string::npos, cli({strVerb, "--help"}).strOutput.find("--processors N ")) << strVerb;
    const std::string strExtractHelp = cli({"extract", "--help"}).strOutput;
    for (const char* strOption : {"--output", "--level", "--member", "--face"})
        EXPECT_NE(std::string::npos, strExtractHelp.find(std::string(strOption) + " ")) << strOption;
}

TEST(Program, WantsAVerbThatItKnows)
{
    expectWrongWords(cli({}), "verb is required", "");
    expectWrongWords(cli({"frobnicate"}), "frobnicate", "");
    expectWrongWords(cli({"compare", "a", "b"}), "'compare' is no verb (info, convert, extract, formats)", "");
    expectWrongWords(cli({"--frobnicate"}), "--frobnicate", "");
    expectWrongWords(cli({"INFO", "a.mox"}), "INFO", "");
}

TEST(Program, KnowsNoVerbOrOperationThatIsNotBuilt)
{
    for (const char* strVerb : {"compare", "font", "cube", "array", "wrap", "new"})
        expectWrongWords(cli({strVerb, "a", "-o", "b.mox"}), strVerb, "");
    for (const char* strOption : {"--normal-map", "--pre-multiply", "--bleed", "--set", "--set-float", "--copy"})
        expectWrongWords(cli({"convert", "a.mox", "-o", "b.mox", strOption}), strOption, "convert");
}

TEST(Program, TakesANumberOfProcessorsForEveryVerb)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 4, 4);
    for (const char* strCount : {"1", "1024"})
    {
        EXPECT_EQ(cli({"info", folder.path("a.png")}).strOutput, cli({"info", folder.path("a.png"), "--processors", strCount}).strOutput);
        EXPECT_EQ(cli({"formats"}).strOutput, cli({"formats", "--processors", strCount}).strOutput);
        expectDone(cli({"extract", "--processors", strCount, folder.path("a.png"), "-o", folder.path("b.png")}));
        expectDone(cli({"convert", folder.path("a.png"), "-o", folder.path("b.mox"), "--processors", strCount}));
    }
    for (const char* strCount : {"0", "-1", "1025", "two", "1.5", ""})
        expectWrongWords(cli({"info", folder.path("a.png"), "--processors", strCount}), "is no number of processors from 1 to 1024",
                         "info");
    expectWrongWords(cli({"formats", "--processors"}), "--processors", "formats");
}

TEST(Program, ShowsNoControlCharactersOfWrongWords)
{
    expectWrongWords(cli({"a\x1B[31m\nb"}), "a?[31m b", "");
    expectWrongWords(cli({"formats", "--\x1B\x7F"}), "--??", "formats");
}

TEST(Program, TakesOneVerb)
{
    expectWrongWords(cli({"info", "a.mox", "extract"}), "extract", "info");
}

TEST(Program, SaysWhereItsOutputCannotBeWritten)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 4, 4);
    ProgramSetting setting;
    setting.strOutputPath = "/dev/full";
    expectFailed(cli({"info", folder.path("a.png")}, setting), "Cannot write to standard output");
}

TEST(Program, WritesNumbersAlikeInEveryLocale)
{
    const CTemporaryFolder folder;
    writePicture(folder.path("a.png"), 4, 4);
    const std::string strExpected = cli({"info", folder.path("a.png")}).strOutput;
    for (const char* strLocale : {"C", "de_DE.UTF-8", "nonsense"})
    {
        ProgramSetting setting;
        setting.environment = {{"LC_ALL", strLocale}, {"LANG", strLocale}};
        EXPECT_EQ(strExpected, cli({"info", folder.path("a.png")}, setting).strOutput) << strLocale;
    }
}

TEST(Program, TakesPathsAsTheyAreInEveryLocale)
{
    for (const char* strLocale : {"C", "C.UTF-8"})
    {
        const CTemporaryFolder folder;
        ProgramSetting setting;
        setting.environment = {{"LC_ALL", strLocale}};
        const std::string strName = "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC";
        writePicture(folder.path(strName + ".png"), 4, 4);
        expectDone(cli({"convert", folder.path(strName + ".png"), "-o", folder.path(strName + ".mox")}, setting));
        expectDone(cli({"extract", folder.path(strName + ".mox"), "-o", folder.path(strName + ".bmp")}, setting));
        EXPECT_FALSE(readBytes(folder.path(strName + ".mox")).empty());
        EXPECT_FALSE(readBytes(folder.path(strName + ".bmp")).empty());
        EXPECT_EQ(3u, folder.count());
    }
}

TEST(Program, TakesAFileForAFileWhateverItsName)
{
    const CTemporaryFolder folder;
    ProgramSetting setting;
    setting.strFolder = folder.path();
    writePicture(folder.path("picture.png"), 4, 4);
    // A verb's name, what looks like a list, an option behind the mark, a name with the separators of lists.
    for (const char* strName : {"info", "[a,b]", "--format", "a,b;c"})
    {
        std::filesystem::copy_file(folder.path("picture.png"), folder.path(strName));
        expectDone(cli({"convert", "-o", "out.mox", "--", strName}, setting));
        EXPECT_EQ(0, cli({"info", "--", strName}, setting).iStatus) << strName;
        EXPECT_TRUE(std::filesystem::remove(folder.path("out.mox"))) << strName;
    }
    expectDone(cli({"convert", "info", "-o", "out.mox"}, setting));
}
