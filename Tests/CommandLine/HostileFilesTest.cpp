#include "CommandLine/HalvaneCli.h"
#include "Support/DdsFileBuilder.h"
#include "Support/KtxFileBuilder.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/NativeFileBuilder.h"

using namespace testsupport;

namespace
{

const std::string k_strNative = "hostile.mox";

/// A good file of some size: four levels, metadata, an orientation.
CNativeFileBuilder makeGoodFile()
{
    return CNativeFileBuilder()
        .size(8, 8)
        .levels(4)
        .block(CNativeFileBuilder::k_ui32Native, 3, {0, 2, 0})
        .data(std::vector<uint8_t>(4 * (64 + 16 + 4 + 1), 0x5A));
}

/// Every verb over a file: each ends by itself, with 0 or 1, and with one line where it fails.
void expectSurvived(const std::vector<uint8_t>& bytes, const std::string& strName = k_strNative)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write(strName, bytes);
    std::vector<std::vector<std::string>> lines = {
        {"info", strPath, "--json"},
        {"info", strPath},
        {"convert", strPath, "-o", folder.path("saved.mox")},
        {"convert", strPath, "-o", folder.path("edited.mox"), "--flip", "y", "--resize", "4x4", "--mips", "all", "--format", "bc1"},
        {"extract", strPath, "-o", folder.path("picture.png")},
    };
    if (strName != k_strNative)
    {
        lines.push_back({"convert", strPath, "-o", folder.path("saved.dds")});
        lines.push_back({"convert", strPath, "-o", folder.path("saved.ktx"), "--as-stored"});
    }
    for (const std::vector<std::string>& words : lines)
    {
        const ProgramRun run = cli(words);
        EXPECT_EQ(0, run.iSignal) << testing::PrintToString(words);
        EXPECT_TRUE(run.iStatus == 0 || run.iStatus == 1) << testing::PrintToString(words) << run.iStatus << run.strErrors;
        const std::string strStart = "halvane-cli: error: ";
        if (run.iStatus == 1)
        {
            EXPECT_EQ(strStart, run.strErrors.substr(0, strStart.size()));
            EXPECT_EQ(run.strErrors.size() - 1, run.strErrors.find('\n')) << run.strErrors;
        }
        else
        {
            EXPECT_EQ("", run.strErrors);
        }
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        EXPECT_FALSE(entry.is_directory()) << entry.path(); // nothing half written
}

} // namespace

TEST(HostileFiles, CutShortAnywhere)
{
    const std::vector<uint8_t> good = makeGoodFile().bytes();
    for (const size_t uiSize : {size_t{0}, size_t{1}, size_t{4}, size_t{51}, size_t{52}, size_t{60}, size_t{64}, size_t{67}, size_t{68},
                                size_t{100}, good.size() - 1})
        expectSurvived({good.begin(), good.begin() + static_cast<ptrdiff_t>(uiSize)});
}

TEST(HostileFiles, WithCountsOfAllOnes)
{
    constexpr uint32_t ui32Most = 0xFFFFFFFF;
    expectSurvived(makeGoodFile().size(ui32Most, 8).bytes());
    expectSurvived(makeGoodFile().size(8, ui32Most).bytes());
    expectSurvived(makeGoodFile().size(8, 8, ui32Most).bytes());
    expectSurvived(makeGoodFile().size(ui32Most, ui32Most, ui32Most).bytes());
    expectSurvived(makeGoodFile().members(ui32Most).bytes());
    expectSurvived(makeGoodFile().faces(ui32Most).bytes());
    expectSurvived(makeGoodFile().levels(ui32Most).bytes());
    expectSurvived(makeGoodFile().members(ui32Most).faces(ui32Most).levels(ui32Most).bytes());
    expectSurvived(makeGoodFile().metaDataSize(ui32Most).bytes());
    expectSurvived(makeGoodFile().channelType(ui32Most).bytes());
    expectSurvived(makeGoodFile().colourSpace(ui32Most).bytes());
    expectSurvived(makeGoodFile().flags(ui32Most).bytes());
    expectSurvived(makeGoodFile().format(UINT64_MAX).bytes());
}

TEST(HostileFiles, WithCountsOfNothing)
{
    expectSurvived(makeGoodFile().size(0, 8).bytes());
    expectSurvived(makeGoodFile().size(8, 0, 0).bytes());
    expectSurvived(makeGoodFile().members(0).bytes());
    expectSurvived(makeGoodFile().faces(0).bytes());
    expectSurvived(makeGoodFile().levels(0).bytes());
}

TEST(HostileFiles, WithSizesThatWrap)
{
    expectSurvived(makeGoodFile().size(65536, 65536).bytes());                         // 4 * 2^32 is 0 in 32 bits
    expectSurvived(makeGoodFile().size(0x40000001, 1).levels(1).bytes());              // 4 * (2^30 + 1) is 4
    expectSurvived(makeGoodFile().size(0x80000000, 0x80000000, 4).bytes());            // 4 * 2^64 is 0 in 64 bits
    expectSurvived(makeGoodFile().size(8, 8).members(0x10000).faces(0x10000).bytes()); // 2^32 surfaces are none
    expectSurvived(makeGoodFile().format(7).size(0xFFFFFFFF, 0xFFFFFFFF).bytes());     // rounding up to blocks wraps
    expectSurvived(makeGoodFile().format(27).size(0xFFFFFFFE, 3).bytes());
}

TEST(HostileFiles, WithMetaDataThatOverruns)
{
    constexpr uint32_t ui32Native = CNativeFileBuilder::k_ui32Native;
    expectSurvived(makeGoodFile().block(ui32Native, 4, 0xFFFFFFFF, {1, 2, 3}).bytes());
    expectSurvived(makeGoodFile().block(ui32Native, 4, 0xFFFFFFF4, {1, 2, 3}).bytes());
    expectSurvived(makeGoodFile().block(ui32Native, 4, 0, {}).bytes());
    expectSurvived(makeGoodFile().block(ui32Native, 4, 12, {1}).bytes());
    expectSurvived(makeGoodFile().metaDataSize(5).bytes());
    expectSurvived(makeGoodFile().metaDataSize(1000000).bytes());
    expectSurvived(
        CNativeFileBuilder().size(4, 4).block(ui32Native, 2, {'X'}).block(ui32Native, 1, {1}).data(std::vector<uint8_t>(64)).bytes());
    expectSurvived(CNativeFileBuilder().faces(6).block(ui32Native, 2, {0xFF, 0, 0x80}).data(std::vector<uint8_t>(24)).bytes());
}

TEST(HostileFiles, OfFormatsThatAreNone)
{
    for (const uint64_t ui64Format :
         {uint64_t{51}, uint64_t{52}, uint64_t{0xFFFFFFFF}, uint64_t{14}, uint64_t{0x0808080800000000}, uint64_t{0xFF00000061626772},
          uint64_t{0x0008080861626772}, uint64_t{0x0808080872727272}, uint64_t{0x0000000100000072}, uint64_t{0x0000000800000071}})
        expectSurvived(makeGoodFile().format(ui64Format).bytes());
}

TEST(HostileFiles, OfEveryNumberedFormatAndType)
{
    for (uint64_t ui64Format = 0; ui64Format < 51; ++ui64Format)
        expectSurvived(makeGoodFile().format(ui64Format).channelType(static_cast<uint32_t>(ui64Format % 14)).bytes());
}

TEST(HostileFiles, ThatAreNoise)
{
    CSeededRandom random(7);
    for (int i = 0; i < 40; ++i)
    {
        std::vector<uint8_t> bytes = random.bytes(200);
        const std::vector<uint8_t> good = makeGoodFile().bytes();
        std::copy_n(good.begin(), 4 + 4 * random.below(13), bytes.begin()); // right up to some field
        expectSurvived(bytes);
    }
}

TEST(HostileFiles, ABrokenImageIsOneLineAndNotTheImageLibrarysOwn)
{
    const std::vector<uint8_t> good = readBytes(HALVANE_SOURCE_DIR "/Documentation/Samples/Sample.png");
    ASSERT_GT(good.size(), 4000u);
    for (const ptrdiff_t iSize : {20, 60, 3000})
        expectSurvived({good.begin(), good.begin() + iSize}, "cut.png");
    std::vector<uint8_t> turned = good;
    turned[3000] ^= 0xFF; // a checksum does not fit
    expectSurvived(turned, "turned.png");
}

namespace
{

/// Every verb ends in 1 over the file, with the text of what cannot be loaded in one line, and nothing is written.
void expectRefused(const std::string& strName, const std::vector<uint8_t>& bytes)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write(strName, bytes);
    for (const std::vector<std::string>& words : {std::vector<std::string>{"info", strPath},
                                                  {"convert", strPath, "-o", folder.path("a.mox")},
                                                  {"convert", strPath, "-o", folder.path("a.mox"), "--legacy", "7"},
                                                  {"convert", strPath, "-o", folder.path("a.dds"), "--as-stored"},
                                                  {"convert", strPath, "-o", folder.path("a.ktx"), "--format", "bc1"},
                                                  {"extract", strPath, "-o", folder.path("a.png")}})
        expectFailed(cli(words), "Either file is not a valid image or texture file, or is an unsupported format. If the file is a simple "
                                 "bitmap or texture file, you could try wrapping it as raw data.");
    EXPECT_EQ(1u, folder.count());
}

CKtxFileBuilder makeGoodKtx()
{
    return CKtxFileBuilder().size(4, 4).withKey("KTXorientation", "S=r,T=u").level(64, std::vector<uint8_t>(64, 0x5A));
}

} // namespace

TEST(HostileContainers, ThatClaimWhatTheyCannotHoldAreRefused)
{
    constexpr uint32_t ui32Most = 0xFFFFFFFF;
    const std::vector<uint8_t> some(64, 0x5A);
    expectRefused("a.dds", CDdsFileBuilder().extended(28, 3, 0, ui32Most).data(some).bytes());
    expectRefused("a.dds", CDdsFileBuilder().extended(28, 3, 4, 0x10000000).data(some).bytes());
    expectRefused("a.dds", CDdsFileBuilder().extended(28, 0).data(some).bytes());
    expectRefused("a.dds", CDdsFileBuilder().size(ui32Most, ui32Most).data(some).bytes());
    expectRefused("a.dds", CDdsFileBuilder().fourCC(0x31545844).size(0xFFFFFFFD, 4).levels(ui32Most).data(some).bytes());
    expectRefused("a.ktx", makeGoodKtx().keyValueSize(0xFFFFFFF0).size(60000, 60000).bytes());
    expectRefused("a.ktx", makeGoodKtx().size(ui32Most, ui32Most).bytes());
    expectRefused("a.ktx", makeGoodKtx().elements(ui32Most).bytes());
    expectRefused("a.ktx", makeGoodKtx().faces(0).bytes());
    std::vector<uint8_t> astc = {0x13, 0xAB, 0xA1, 0x5C, 4, 4, 4, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    astc.insert(astc.end(), some.begin(), some.end());
    expectRefused("a.astc", astc);
    expectRefused("a.mox", CLegacyFileBuilder().size(ui32Most, ui32Most).data(some).bytes());
    expectRefused("a.mox", CLegacyFileBuilder().surfaces(ui32Most).data(some).bytes());
    expectRefused("a.mox", CLegacyFileBuilder(44).levelsBelow(ui32Most).data(some).bytes());
}

TEST(HostileContainers, CutShortAnywhereAreSurvived)
{
    const std::vector<uint8_t> dds =
        CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).size(4, 4).data(std::vector<uint8_t>(64)).bytes();
    const std::vector<uint8_t> extended = CDdsFileBuilder().extended(24).size(4, 4).data(std::vector<uint8_t>(64)).bytes();
    const std::vector<uint8_t> ktx = makeGoodKtx().bytes();
    const std::vector<uint8_t> legacy = CLegacyFileBuilder().size(4, 4).data(std::vector<uint8_t>(64)).bytes();
    const auto cut = [](const std::vector<uint8_t>& bytes, size_t uiSize)
    { return std::vector<uint8_t>(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(std::min(uiSize, bytes.size()))); };
    for (const size_t uiSize : {size_t{0}, size_t{44}, size_t{64}, size_t{90}, size_t{128}, size_t{150}})
    {
        expectSurvived(cut(dds, uiSize), "a.dds");
        expectSurvived(cut(extended, uiSize), "a.dds");
        expectSurvived(cut(ktx, uiSize), "a.ktx");
        expectSurvived(cut(legacy, uiSize), "a.mox");
    }
}

TEST(HostileContainers, ThatAreNoiseAreSurvived)
{
    CSeededRandom random(17);
    for (int i = 0; i < 6; ++i)
    {
        std::vector<uint8_t> dds = CDdsFileBuilder().extended(random.below(130), 2 + random.below(3)).data(random.bytes(100)).bytes();
        std::vector<uint8_t> ktx = makeGoodKtx().bytes();
        dds[8 + random.below(140)] ^= static_cast<uint8_t>(1u << random.below(8));
        ktx[16 + random.below(80)] ^= static_cast<uint8_t>(1u << random.below(8));
        expectSurvived(dds, "a.dds");
        expectSurvived(ktx, "a.ktx");
    }
}
