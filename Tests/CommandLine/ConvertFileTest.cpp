#include <algorithm>
#include <filesystem>

#include "CommandLine/HalvaneCli.h"
#include "Core/ByteOrder.h"
#include "Support/DdsFileBuilder.h"
#include "Support/FileSizeLimit.h"
#include "Support/KtxFileBuilder.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/NativeFileBuilder.h"

using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint64_t k_ui64ARGB8 = 0x0808080862677261;
constexpr uint64_t k_ui64I8 = 0x0000000800000069;

uint32_t wordAt(const Bytes& bytes, size_t uiOffset)
{
    return uiOffset + 4 <= bytes.size() ? moxtexture::loadLE<uint32_t>(&bytes[uiOffset]) : 0xDEADBEEF;
}

Bytes behind(const Bytes& bytes, size_t uiOffset)
{
    return uiOffset <= bytes.size() ? Bytes(bytes.begin() + static_cast<ptrdiff_t>(uiOffset), bytes.end()) : Bytes();
}

/// Every byte that a C header holds, whatever it is called.
Bytes bytesOfHeader(const std::string& strText)
{
    Bytes bytes;
    for (size_t i = strText.find("0x"); i != std::string::npos; i = strText.find("0x", i + 1))
        bytes.push_back(static_cast<uint8_t>(std::stoul(strText.substr(i, 4), nullptr, 16)));
    return bytes;
}

class ConvertFileTest : public testing::Test
{
protected:
    std::string path(const std::string& strName) const { return m_Folder.path(strName); }
    Bytes bytes(const std::string& strName) const { return readBytes(path(strName)); }

    ProgramRun convert(const std::string& strInput, const std::string& strOutput, std::vector<std::string> words = {}) const
    {
        words.insert(words.begin(), {"convert", path(strInput), "-o", path(strOutput)});
        return cli(words);
    }

    /// A native file of one row of pixels.
    void writeNative(const std::string& strName, uint64_t ui64Format, uint32_t uiType, uint32_t uiWidth, const Bytes& data) const
    {
        m_Folder.write(strName, CNativeFileBuilder().format(ui64Format).channelType(uiType).size(uiWidth, 1).data(data).bytes());
    }

    CTemporaryFolder m_Folder;
};

using Containers = ConvertFileTest;
using AsStored = ConvertFileTest;
using LegacyFiles = ConvertFileTest;

} // namespace

TEST_F(Containers, AreWrittenByTheOutputsExtensionAndReadBackEqual)
{
    writePicture(path("photo.png"), 23, 17);
    expectDone(convert("photo.png", "a.mox", {"--mips", "all"}));
    for (const char* strName : {"a.ktx", "a.dds", "A.KTX", "A.DDS"})
    {
        SCOPED_TRACE(strName);
        expectDone(convert("a.mox", strName));
        const QJsonObject info = infoOf(path(strName));
        EXPECT_FALSE(info["image"].toBool());
        EXPECT_EQ("0x0808080861626772", textOf(info, "formatWord"));
        EXPECT_EQ(23, numberOf(info, "width"));
        EXPECT_EQ(17, numberOf(info, "height"));
        EXPECT_EQ(5, numberOf(info, "mipLevels")); // 23x17, 11x8, 5x4, 2x2, 1x1
        expectDone(convert(strName, "b.mox"));
        const size_t uiMetaData = static_cast<size_t>(numberOf(infoOf(path("b.mox")), "metaDataSize"));
        const size_t uiOfA = static_cast<size_t>(numberOf(infoOf(path("a.mox")), "metaDataSize"));
        EXPECT_EQ(behind(bytes("a.mox"), 52 + uiOfA), behind(bytes("b.mox"), 52 + uiMetaData));
    }
}

TEST_F(Containers, OfCHoldTheBytesOfTheNativeFile)
{
    writePicture(path("photo.png"), 6, 5);
    for (const std::vector<std::string>& words : {std::vector<std::string>{}, {"--pad", "64"}, {"--format", "bc1", "--mips", "all"}})
    {
        expectDone(convert("photo.png", "a.mox", words));
        expectDone(convert("photo.png", "a.h", words));
        EXPECT_EQ(bytes("a.mox"), bytesOfHeader(readText(path("a.h"))));
        EXPECT_NE(std::string::npos, readText(path("a.h")).find("A8BIT a[] = {"));
    }
}

TEST_F(Containers, HaveNoPlaceForPaddingButAreWrittenAllTheSame)
{
    writePicture(path("photo.png"), 6, 5);
    for (const char* strExtension : {".ktx", ".dds"})
    {
        expectDone(convert("photo.png", std::string("a") + strExtension));
        expectDone(convert("photo.png", std::string("b") + strExtension, {"--pad", "64"}));
        EXPECT_EQ(bytes(std::string("a") + strExtension), bytes(std::string("b") + strExtension));
    }
}

TEST_F(Containers, OfBlocksAreWrittenWithoutDecodingThem)
{
    writePicture(path("photo.png"), 16, 16);
    expectDone(convert("photo.png", "a.mox", {"--format", "bc3", "--mips", "all"}));
    expectDone(convert("a.mox", "a.dds"));
    expectDone(convert("a.dds", "a.ktx"));
    // "DXT5" in plain headers, and its number for OpenGL.
    EXPECT_EQ(0x35545844u, wordAt(bytes("a.dds"), 84));
    EXPECT_EQ(33779u, wordAt(bytes("a.ktx"), 28));
    expectDone(convert("a.ktx", "b.dds"));
    EXPECT_EQ(bytes("a.dds"), bytes("b.dds"));
}

TEST_F(Containers, OfASTCBlocksPassThroughToWhereverThereIsAPlaceForThem)
{
    const Bytes blocks = CSeededRandom(1).bytes(32);
    // 7 by 4 pixels are two blocks of 4 by 4.
    Bytes file = {0x13, 0xAB, 0xA1, 0x5C, 4, 4, 1, 7, 0, 0, 4, 0, 0, 1, 0, 0};
    file.insert(file.end(), blocks.begin(), blocks.end());
    m_Folder.write("a.astc", file);
    EXPECT_EQ("ASTC 4x4", textOf(infoOf(path("a.astc")), "formatName"));
    expectDone(convert("a.astc", "a.ktx"));
    EXPECT_EQ(37808u, wordAt(bytes("a.ktx"), 28));
    expectDone(convert("a.ktx", "a.mox"));
    EXPECT_EQ(blocks, behind(bytes("a.mox"), 52 + static_cast<size_t>(numberOf(infoOf(path("a.mox")), "metaDataSize"))));
    expectFailed(convert("a.astc", "a.dds"), "A .dds file cannot hold ASTC 4x4 of type Unsigned Normalised Byte; choose another --format, "
                                             "--type or output");
    EXPECT_EQ(3u, m_Folder.count());
}

TEST_F(Containers, AreWrittenForManyFiles)
{
    writePicture(path("a.png"), 8, 8, 1);
    writePicture(path("b.png"), 12, 8, 2);
    for (const char* strExtension : {"mox", "ktx", "dds", "h"})
    {
        expectDone(cli({"convert", path("a.png"), path("b.png"), "--out-dir", path(strExtension), "--ext", strExtension}));
        for (const char* strStem : {"a", "b"})
        {
            const std::string strName = std::string(strStem) + "." + strExtension;
            expectDone(convert(std::string(strStem) + ".png", strName));
            EXPECT_EQ(bytes(strName), bytes(std::string(strExtension) + "/" + strName));
            EXPECT_NE(0u, bytes(strName).size());
        }
    }
}

TEST_F(Containers, ThatCannotHoldOneOfManyLeaveTheOthersAlone)
{
    writePicture(path("a.png"), 8, 8, 1);
    writeNative("grey.mox", k_ui64I8, 0, 4, {1, 2, 3, 4});
    const ProgramRun run = cli({"convert", path("grey.mox"), path("a.png"), "--out-dir", path("out"), "--ext", "ktx"});
    EXPECT_EQ(1, run.iStatus);
    EXPECT_EQ("halvane-cli: error: " + path("grey.mox") +
                  ": A .ktx file cannot hold I 8 of type Unsigned Normalised Byte; choose another --format, --type or output\n",
              run.strErrors);
    EXPECT_EQ(8, numberOf(infoOf(path("out/a.ktx")), "width"));
    EXPECT_FALSE(fs::exists(path("out/grey.ktx")));
}

TEST_F(Containers, KeepTheColoursOfLayoutsThatTheyHoldOtherwise)
{
    // Alpha 4, red 1, green 2, blue 3, then alpha 8, red 5, green 6, blue 7.
    writeNative("a.mox", k_ui64ARGB8, 0, 2, {4, 1, 2, 3, 8, 5, 6, 7});
    expectDone(convert("a.mox", "a.dds"));
    EXPECT_EQ(0xFF0000u, wordAt(bytes("a.dds"), 92)); // red
    EXPECT_EQ((Bytes{3, 2, 1, 4, 7, 6, 5, 8}), behind(bytes("a.dds"), 128));
    expectDone(convert("a.mox", "a.ktx"));
    EXPECT_EQ(32856u, wordAt(bytes("a.ktx"), 28));
    expectDone(convert("a.ktx", "b.mox"));
    EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6, 7, 8}), behind(bytes("b.mox"), bytes("b.mox").size() - 8));
    // From file to file, too.
    expectDone(convert("a.dds", "b.ktx"));
    EXPECT_EQ(bytes("a.ktx"), bytes("b.ktx"));
}

TEST_F(Containers, OpenWithTheirColours)
{
    // Blue, green, red, and spare bits of nothing; then red alone in ten bits.
    m_Folder.write("x.dds", CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({30, 20, 10, 0}).bytes());
    m_Folder.write("ten.dds", CDdsFileBuilder().extended(24).data({0xFF, 0x03, 0x00, 0xC0}).bytes());
    expectDone(cli({"extract", path("x.dds"), "-o", path("x.png")}));
    expectDone(cli({"extract", path("ten.dds"), "-o", path("ten.png")}));
    EXPECT_EQ(qRgba(10, 20, 30, 255), readImage(path("x.png")).pixel(0, 0));
    EXPECT_EQ(qRgba(255, 0, 0, 255), readImage(path("ten.png")).pixel(0, 0));
    // And what info tells is the layout that they opened to: abgr, 2 and three times 10 bits.
    EXPECT_EQ("0x0a0a0a0272676261", textOf(infoOf(path("ten.dds")), "formatWord"));
}

TEST_F(Containers, ThatHaveNoPlaceSayWhatToDo)
{
    writeNative("a.mox", k_ui64I8, 0, 4, {1, 2, 3, 4});
    for (const char* strExtension : {"dds", "ktx"})
        expectFailed(convert("a.mox", std::string("a.") + strExtension),
                     std::string("A .") + strExtension +
                         " file cannot hold I 8 of type Unsigned Normalised Byte; choose another --format, --type or output");
    EXPECT_EQ(1u, m_Folder.count());
    expectDone(convert("a.mox", "a.dds", {"--format", "l8"}));
    expectDone(convert("a.mox", "a.ktx", {"--format", "l8"}));
}

TEST_F(Containers, ThatCannotBeWrittenLeaveTheEarlierFile)
{
    writeNative("a.mox", k_ui64I8, 0, 4, {1, 2, 3, 4});
    writePicture(path("photo.png"), 64, 64);
    for (const char* strName : {"b.dds", "b.ktx", "b.mox"})
    {
        m_Folder.write(strName, "precious");
        EXPECT_EQ(1, convert("missing.dds", strName).iStatus);
        EXPECT_EQ("precious", readText(path(strName)));
        // A disk that is full after a thousand bytes; the program inherits the limit.
        const CFileSizeLimit limit(1000);
        EXPECT_EQ(1, convert("photo.png", strName).iStatus);
        EXPECT_EQ("precious", readText(path(strName)));
    }
    EXPECT_EQ(1, convert("a.mox", "b.dds").iStatus);
    EXPECT_EQ(1, convert("a.mox", "b.ktx").iStatus);
    EXPECT_EQ(1, convert("a.mox", "b.mox", {"--legacy", "3"}).iStatus);
    EXPECT_EQ("precious", readText(path("b.dds")));
    EXPECT_EQ("precious", readText(path("b.ktx")));
    EXPECT_EQ("precious", readText(path("b.mox")));
    EXPECT_EQ(5u, m_Folder.count());
}

TEST_F(Containers, MayBeReplacedByThemselves)
{
    m_Folder.write("a.dds", CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({30, 20, 10, 0}).bytes());
    expectDone(convert("a.dds", "a.dds"));
    // DXGI's layout of the same bytes, with the spare bits set.
    EXPECT_EQ(88u, wordAt(bytes("a.dds"), 128));
    EXPECT_EQ((Bytes{30, 20, 10, 255}), behind(bytes("a.dds"), 148));
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(AsStored, LayoutsAndBytesGoThroughUntouched)
{
    const Bytes pixel = {4, 1, 2, 3};
    writeNative("a.mox", k_ui64ARGB8, 0, 1, pixel);
    expectDone(convert("a.mox", "a.dds", {"--as-stored"}));
    EXPECT_EQ(pixel, behind(bytes("a.dds"), 128));

    m_Folder.write("x.dds", CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({30, 20, 10, 0}).bytes());
    expectDone(convert("x.dds", "x.mox", {"--as-stored"}));
    EXPECT_EQ((Bytes{30, 20, 10, 0}), behind(bytes("x.mox"), 52));
    m_Folder.write("ten.dds", CDdsFileBuilder().extended(24).data({1, 2, 3, 4}).bytes());
    expectDone(convert("ten.dds", "ten.mox", {"--as-stored"}));
    EXPECT_EQ("0x020a0a0a61626772", textOf(infoOf(path("ten.mox")), "formatWord"));
    expectDone(convert("ten.dds", "again.dds", {"--as-stored"}));
    EXPECT_EQ(24u, wordAt(bytes("again.dds"), 128));
    EXPECT_EQ((Bytes{1, 2, 3, 4}), behind(bytes("again.dds"), 148));
}

TEST_F(AsStored, AKTXFileWithoutNumbersIsWrittenWithNoneOfThem)
{
    writeNative("a.mox", k_ui64ARGB8, 0, 1, {4, 1, 2, 3});
    expectDone(convert("a.mox", "a.ktx", {"--as-stored"}));
    for (const size_t uiOffset : {size_t{16}, size_t{20}, size_t{24}, size_t{28}, size_t{32}})
        EXPECT_EQ(0u, wordAt(bytes("a.ktx"), uiOffset)) << uiOffset;
    const Bytes file = bytes("a.ktx");
    EXPECT_EQ((Bytes{4, 1, 2, 3}), behind(file, file.size() - 4));
}

TEST_F(AsStored, ADDSFileMayBeRefusedThatWouldElseBeWritten)
{
    m_Folder.write("x.dds", CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({30, 20, 10, 0}).bytes());
    expectFailed(convert("x.dds", "y.dds", {"--as-stored"}),
                 "A .dds file cannot hold XRGB 8 8 8 8 of type Unsigned Normalised Integer as it stands; leave out --as-stored");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(AsStored, IsForManyFilesAsWell)
{
    m_Folder.write("x.dds", CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({30, 20, 10, 0}).bytes());
    expectDone(cli({"convert", path("x.dds"), "--as-stored", "--out-dir", path("out"), "--ext", "mox"}));
    EXPECT_EQ((Bytes{30, 20, 10, 0}), behind(bytes("out/x.mox"), 52));
}

TEST_F(LegacyFiles, AreVersion2WithThePixelTypeOfTheAPI)
{
    writeNative("a.mox", 0x0808080861626772, 0, 2, {1, 2, 3, 4, 5, 6, 7, 8});
    struct Row
    {
        const char* strApi;
        uint32_t uiType;
    };
    // RGBA 8888 has no type in the families of 3 and 5.
    for (const Row& row : {Row{"1", 18}, Row{"2", 18}, Row{"4", 18}, Row{"6", 97}, Row{"7", 152}})
    {
        SCOPED_TRACE(row.strApi);
        expectDone(convert("a.mox", "b.mox", {"--legacy", row.strApi}));
        const Bytes expected = CLegacyFileBuilder().size(2, 1).flags(row.uiType).word(20, 8).data({1, 2, 3, 4, 5, 6, 7, 8}).bytes();
        EXPECT_EQ(expected, bytes("b.mox"));
        expectDone(convert("b.mox", "c.mox"));
        EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6, 7, 8}), behind(bytes("c.mox"), 52));
    }
    for (const char* strApi : {"3", "5"})
        expectFailed(convert("a.mox", "d.mox", {"--legacy", strApi}),
                     std::string("A version 2 file for API ") + strApi +
                         " cannot hold RGBA 8 8 8 8 of type Unsigned Normalised Byte; choose another --legacy, --format or --type");
    EXPECT_FALSE(fs::exists(path("d.mox")));
}

TEST_F(LegacyFiles, TakeOperationsAndTargetsLikeAnyOther)
{
    writePicture(path("photo.png"), 16, 8);
    expectDone(convert("photo.png", "a.mox", {"--legacy", "5", "--mips", "all", "--format", "bc1"}));
    const Bytes file = bytes("a.mox");
    EXPECT_EQ(52u, wordAt(file, 0));
    EXPECT_EQ(4u, wordAt(file, 12));          // 16x8, then 8x4, 4x2, 2x1, 1x1
    EXPECT_EQ(0x100u | 32, wordAt(file, 16)); // MIP maps, BC1
    EXPECT_EQ("BC1", textOf(infoOf(path("a.mox")), "formatName"));
}

TEST_F(LegacyFiles, AreWrittenForManyFiles)
{
    writePicture(path("a.png"), 8, 8, 1);
    writePicture(path("b.png"), 12, 8, 2);
    expectDone(cli({"convert", path("a.png"), path("b.png"), "--out-dir", path("out"), "--ext", "mox", "--legacy", "2"}));
    EXPECT_EQ(52u, wordAt(bytes("out/a.mox"), 0));
    EXPECT_EQ(makePicture(12, 8, 2), behind(bytes("out/b.mox"), 52));
}

TEST_F(LegacyFiles, CannotHoldDepth)
{
    m_Folder.write("a.mox", CNativeFileBuilder().size(1, 1, 2).data(Bytes(8)).bytes());
    expectFailed(convert("a.mox", "b.mox", {"--legacy", "1"}),
                 "A version 2 file cannot hold a texture that is deeper than 1; leave out --legacy");
    EXPECT_EQ(1u, m_Folder.count());
}

TEST_F(LegacyFiles, AreMoxFiles)
{
    writePicture(path("photo.png"), 8, 8);
    for (const char* strName : {"a.ktx", "a.dds", "a.h"})
        expectWrongWords(convert("photo.png", strName, {"--legacy", "1"}), "--legacy: '" + path(strName) + "' must end in .mox", "convert");
    for (const char* strExtension : {"ktx", "dds", "h"})
        expectWrongWords(cli({"convert", path("photo.png"), "--out-dir", path("out"), "--ext", strExtension, "--legacy", "1"}),
                         "--legacy requires --ext mox", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--legacy", "1", "--pad", "16"}), "--legacy and --pad exclude each other", "convert");
    for (const char* strApi : {"0", "8", "-1", "ES2", ""})
        expectWrongWords(convert("photo.png", "a.mox", {"--legacy", strApi}), "is no API from 1 to 7", "convert");
    expectWrongWords(convert("photo.png", "a.mox", {"--as-stored=no"}), "as-stored", "convert");
    EXPECT_EQ(1u, m_Folder.count());
    expectDone(convert("photo.png", "A.MOX", {"--legacy", "1", "--pad", "0"}));
}
