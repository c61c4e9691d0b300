#include "Composition/SavePreparation.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Composition/DdsLayouts.h"
#include "Core/OutputFile.h"
#include "Files/SaveTexture.h"
#include "Support/ChannelBits.h"
#include "Support/FileSizeLimit.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

using Bytes = std::vector<uint8_t>;

CMOXTexture makeTexture(MOXPixelWord format, uint32_t uiType = 0)
{
    CMOXTextureHeader header(format, 8, 8, 1, 4, 1, 1, eCS_Linear, static_cast<EMOXTChannelType>(uiType), false);
    header.setOrientation(2);
    return CMOXTexture(header, CSeededRandom(2).bytes(header.getDataSize()).data());
}

const MOXPixelWord k_ARGB8 = layout("argb", 8, 8, 8, 8);

} // namespace

TEST(SaveForOthers, PutsTheLayoutsOfDdsAndKtxFilesRight)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_ARGB8);
    const Bytes before = blockOf(texture);
    for (const char* strName : {"a.dds", "B.DDS", "a.ktx", "B.Ktx"})
    {
        SCOPED_TRACE(strName);
        ASSERT_TRUE(saveForOthers(texture, folder.path(strName)));
        CMOXTexture loaded(folder.path(strName));
        correctLoadedDds(loaded);
        EXPECT_EQ(codesOf(texture), codesOf(loaded));
        EXPECT_NE(before, blockOf(loaded));
    }
    EXPECT_EQ(4u, folder.count());
    // The texture itself is as it was.
    EXPECT_EQ(k_ARGB8, texture.getPixelFormat());
    EXPECT_EQ(before, blockOf(texture));
}

TEST(SaveForOthers, WritesWhatTheLibraryWritesWhereNothingIsToBeDone)
{
    const CTemporaryFolder folder;
    const CMOXTexture rgba = makeTexture(k_RGBA8);
    const CMOXTexture argb = makeTexture(k_ARGB8);
    const CMOXTexture blocks = makeTexture(ePF_BC1);
    const auto check = [&](const CMOXTexture& texture, const std::string& strExtension)
    {
        SCOPED_TRACE(strExtension);
        ASSERT_TRUE(saveForOthers(texture, folder.path("one/a" + strExtension)));
        ASSERT_TRUE(saveTexture(texture, folder.path("other/a" + strExtension)));
        const std::string strName = getSavedPath("a" + strExtension);
        EXPECT_NE(0u, readBytes(folder.path("one/" + strName)).size());
        EXPECT_EQ(readBytes(folder.path("other/" + strName)), readBytes(folder.path("one/" + strName)));
    };
    fs::create_directory(folder.path("one"));
    fs::create_directory(folder.path("other"));
    for (const char* strExtension : {".dds", ".ktx", ".mox", ".h", ".png", ".astc", ""})
    {
        check(rgba, strExtension);
        check(blocks, strExtension);
    }
    for (const char* strExtension : {".mox", ".h", ".png"})
        check(argb, strExtension);
}

TEST(SaveForOthers, LeavesNoFileWhereNothingFits)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveForOthers(makeTexture(layout("al", 4, 4)), folder.path("a.ktx")));
    EXPECT_FALSE(saveForOthers(makeTexture(ePF_BC4), folder.path("a.ktx")));
    EXPECT_FALSE(saveForOthers(makeTexture(layout("i", 8)), folder.path("a.dds")));
    EXPECT_FALSE(saveForOthers(makeTexture(ePF_ETC1), folder.path("a.dds")));
    EXPECT_FALSE(saveForOthers(makeTexture(k_ARGB8), folder.path("missing/a.dds")));
    EXPECT_FALSE(saveForOthers(makeTexture(k_ARGB8), folder.path("missing/a.ktx")));
    EXPECT_FALSE(saveForOthers(CMOXTexture(), folder.path("a.ktx")));
    EXPECT_FALSE(saveForOthers(CMOXTexture(), folder.path("a.dds")));
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveForOthers, LeavesNoFileThatIsCutShort)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(k_ARGB8);
    const CFileSizeLimit limit(200);
    for (const char* strName : {"a.dds", "a.ktx", "a.mox", "a.h"})
        EXPECT_FALSE(saveForOthers(texture, folder.path(strName))) << strName;
    EXPECT_EQ(0u, folder.count());
}

TEST(SaveForOthers, GoesByTheNameThatAnOutputFileGivesIt)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.dds", "a.KTX", "a.b.dds"})
    {
        const CMOXTexture texture = makeTexture(k_ARGB8);
        COutputFile output(folder.path(strName));
        EXPECT_TRUE(output.writeBy([&](const std::string& strPath) { return saveForOthers(texture, strPath); })) << output.getReason();
        CMOXTexture loaded(folder.path(strName));
        correctLoadedDds(loaded);
        EXPECT_EQ(codesOf(texture), codesOf(loaded));
    }
    EXPECT_EQ(3u, folder.count());
}

TEST(SaveForOthers, LeavesTheEarlierFileOfAnOutputFileWhereItFails)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.dds", "a.ktx"})
    {
        folder.write(strName, "precious");
        COutputFile output(folder.path(strName));
        const CMOXTexture texture = makeTexture(layout("i", 8));
        EXPECT_FALSE(output.writeBy([&](const std::string& strPath) { return saveForOthers(texture, strPath); }));
        EXPECT_EQ("precious", readText(folder.path(strName)));
    }
}

TEST(PlaceForEncoding, IsThereWhereverSavingFindsOne)
{
    const CTemporaryFolder folder;
    const CMOXTexture aTextures[] = {
        makeTexture(k_RGBA8),        makeTexture(k_ARGB8),    makeTexture(layout("rgb", 8, 8, 8), 8),
        makeTexture(layout("i", 8)), makeTexture(ePF_BC1),    makeTexture(ePF_BC4),
        makeTexture(ePF_ETC1),       makeTexture(ePF_1bpp),   makeTexture(layout("al", 4, 4)),
        makeTexture(ePF_UYVY),       makeTexture(ePF_BC5, 9), makeTexture(layout("xbgr", 8, 8, 8, 8), 8),
    };
    for (const CMOXTexture& texture : aTextures)
        for (const char* strName : {"a.dds", "a.ktx", "a.mox", "a.h", "a.png"})
        {
            SCOPED_TRACE(testing::Message() << std::hex << texture.getPixelFormat().getWord() << " " << strName);
            EXPECT_EQ(hasPlaceForEncoding(texture, folder.path(strName)), saveForOthers(texture, folder.path(strName)));
        }
    EXPECT_TRUE(hasPlaceForEncoding(makeTexture(ePF_BC4), "a.dds"));
    EXPECT_FALSE(hasPlaceForEncoding(makeTexture(ePF_BC4), "a.ktx"));
    EXPECT_FALSE(hasPlaceForEncoding(makeTexture(ePF_ETC1), "a.DDS"));
    EXPECT_TRUE(hasPlaceForEncoding(makeTexture(ePF_ETC1), "a.mox"));
}
