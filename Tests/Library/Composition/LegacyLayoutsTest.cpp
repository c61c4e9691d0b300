#include "Composition/LegacyLayouts.h"

#include <gtest/gtest.h>

#include "Files/LegacyFile.h"
#include "Support/ChannelBits.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

CMOXTexture makeTexture(MOXPixelWord format, uint32_t uiType, const Bytes& bytes, uint32_t uiWidth, uint32_t uiHeight = 1)
{
    const CMOXTextureHeader header(format, uiHeight, uiWidth, 1, 1, 1, 1, eCS_Linear, static_cast<EMOXTChannelType>(uiType), false);
    return CMOXTexture(header, bytes.data());
}

CMOXTexture saveAndLoad(const CMOXTexture& texture, uint32_t uiApi)
{
    const CTemporaryFolder folder;
    EXPECT_TRUE(saveLegacyForOthers(texture, folder.path("a.mox"), uiApi));
    return CMOXTexture(folder.path("a.mox"));
}

} // namespace

TEST(LegacyLayouts, OfElementsComeBackWithTheirChannels)
{
    // Elements lie in the order of the letters with the types 0 and 4, against it with the type 8 of the numbers.
    struct Row
    {
        MOXPixelWord format;
        uint32_t uiType;
        Bytes bytes, written;
    };
    const Row aRows[] = {
        {layout("rgb", 8, 8, 8), 0, {1, 2, 3}, {3, 2, 1}},
        {layout("argb", 8, 8, 8, 8), 0, {1, 2, 3, 4}, {4, 3, 2, 1}},
        {layout("al", 8, 8), 0, {1, 2}, {2, 1}},
        {layout("gr", 16, 16), 4, {1, 2, 3, 4}, {3, 4, 1, 2}},
        {layout("abgr", 16, 16, 16, 16), 4, {1, 2, 3, 4, 5, 6, 7, 8}, {7, 8, 5, 6, 3, 4, 1, 2}},
    };
    for (const Row& row : aRows)
    {
        for (const uint32_t uiApi : {3u, 5u})
        {
            SCOPED_TRACE(testing::Message() << row.format.getWord() << " by API " << uiApi);
            const CMOXTexture texture = makeTexture(row.format, row.uiType, row.bytes, 1);
            const CMOXTexture loaded = saveAndLoad(texture, uiApi);
            EXPECT_EQ(row.format, loaded.getPixelFormat());
            EXPECT_EQ(eCT_UnsignedNormalisedInteger, loaded.getChannelType());
            EXPECT_EQ(row.written, blockOf(loaded));
            EXPECT_EQ(codesOf(texture), codesOf(loaded));
            EXPECT_EQ(row.bytes, blockOf(texture));
        }
    }
}

TEST(LegacyLayouts, OfOneWordStayAsTheyAre)
{
    const CMOXTexture texture = makeTexture(layout("rgb", 5, 6, 5), 4, {1, 2, 3, 4}, 2);
    EXPECT_EQ(texture.getEncoding(), getLegacyEncoding(texture.getEncoding(), 3));
    const CMOXTexture loaded = saveAndLoad(texture, 3);
    EXPECT_EQ(texture.getEncoding(), loaded.getEncoding());
    EXPECT_EQ(blockOf(texture), blockOf(loaded));
}

TEST(LegacyLayouts, OfFreshBlocksGoOutWithTheTypeOfTheNumbers)
{
    const Bytes blocks = CSeededRandom(5).bytes(16);
    for (const EMOXTPixelFormat eFormat : {ePF_BC1, ePF_BC2, ePF_BC3})
    {
        SCOPED_TRACE(static_cast<uint32_t>(eFormat));
        const CMOXTexture texture = makeTexture(MOXPixelWord(eFormat), 0, blocks, 4, 4);
        const CTemporaryFolder folder;
        EXPECT_FALSE(saveLegacy(texture, folder.path("a.mox"), 6));
        const CMOXTexture loaded = saveAndLoad(texture, 6);
        EXPECT_EQ(texture.getPixelFormat(), loaded.getPixelFormat());
        EXPECT_EQ(eCT_UnsignedNormalisedInteger, loaded.getChannelType());
        EXPECT_EQ(blockOf(texture), blockOf(loaded));
    }
}

TEST(LegacyLayouts, ThatAnApiHasNoTypeForAreRefusedWithoutAFile)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(layout("rg", 32, 32), 10, {1, 2, 3, 4, 5, 6, 7, 8}, 1);
    for (const uint32_t uiApi : {1u, 3u, 0u, 8u})
        EXPECT_FALSE(saveLegacyForOthers(texture, folder.path("a.mox"), uiApi));
    const CMOXTexture blocks = makeTexture(MOXPixelWord(ePF_BC1), 0, Bytes(8, 1), 4, 4);
    EXPECT_FALSE(saveLegacyForOthers(blocks, folder.path("a.mox"), 1));
    EXPECT_EQ(0u, folder.count());
}
