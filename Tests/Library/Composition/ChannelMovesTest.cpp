#include "Composition/ChannelMoves.h"

#include <gtest/gtest.h>

#include "Conversion/Transcode.h"
#include "Support/ChannelBits.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

CMOXTexture makeTexture(MOXPixelWord format, uint32_t uiType, const std::vector<uint8_t>& bytes, EMOXTColourSpace eSpace = eCS_Linear)
{
    const uint32_t uiPixelSize = CMOXTextureHeader::getBitsPerPixel(format) / 8;
    const auto uiWidth = static_cast<uint32_t>(bytes.size() / uiPixelSize);
    return CMOXTexture(CMOXTextureHeader(format, 1, uiWidth, 1, 1, 1, 1, eSpace, static_cast<EMOXTChannelType>(uiType), false),
                       bytes.data());
}

/// Moves, and gives the bytes.
std::vector<uint8_t> moved(MOXPixelWord from, uint32_t uiType, MOXPixelWord to, uint32_t uiNewType, const std::vector<uint8_t>& bytes)
{
    CMOXTexture texture = makeTexture(from, uiType, bytes);
    EXPECT_TRUE(moveChannels(texture, to, static_cast<EMOXTChannelType>(uiNewType)));
    EXPECT_EQ(to, texture.getPixelFormat());
    EXPECT_EQ(uiNewType, texture.getChannelType());
    return blockOf(texture);
}

bool canMove(MOXPixelWord from, uint32_t uiType, MOXPixelWord to, uint32_t uiNewType)
{
    return canMoveChannels(from, static_cast<EMOXTChannelType>(uiType), to, static_cast<EMOXTChannelType>(uiNewType));
}

struct Pair
{
    MOXPixelWord from;
    uint32_t uiType;
    MOXPixelWord to;
    uint32_t uiNewType;
};

/// Every size of pixel, elements and fields, and from one to the other.
const Pair k_aPairs[] = {
    {layout("l", 8), 8, layout("l", 8), 0},
    {layout("al", 4, 4), 0, layout("la", 4, 4), 8},
    {layout("rgb", 3, 3, 2), 0, layout("bgr", 2, 3, 3), 4},
    {layout("al", 8, 8), 0, layout("la", 8, 8), 8},
    {layout("argb", 1, 5, 5, 5), 4, layout("rgba", 5, 5, 5, 1), 8},
    {layout("argb", 4, 4, 4, 4), 4, layout("bgra", 4, 4, 4, 4), 4},
    {layout("rgb", 8, 8, 8), 8, layout("rgb", 8, 8, 8), 0},
    {layout("rgb", 8, 8, 8), 2, layout("bgr", 8, 8, 8), 6},
    {layout("argb", 8, 8, 8, 8), 0, layout("argb", 8, 8, 8, 8), 8},
    {layout("abgr", 8, 8, 8, 8), 1, layout("rgba", 8, 8, 8, 8), 9},
    {layout("rgba", 10, 10, 10, 2), 8, layout("abgr", 2, 10, 10, 10), 8},
    {layout("gr", 16, 16), 12, layout("rg", 16, 16), 12},
    {layout("gr", 16, 16), 4, layout("gr", 16, 16), 8},
    {layout("rgba", 10, 10, 10, 10), 4, layout("abgr", 10, 10, 10, 10), 8},
    {layout("rgb", 16, 16, 16), 5, layout("bgr", 16, 16, 16), 9},
    {layout("rgba", 14, 14, 14, 14), 4, layout("abgr", 14, 14, 14, 14), 8},
    {layout("abgr", 16, 16, 16, 16), 4, layout("abgr", 16, 16, 16, 16), 8},
    {layout("abgr", 16, 16, 16, 16), 9, layout("rgba", 16, 16, 16, 16), 5},
    {layout("gr", 32, 32), 12, layout("rg", 32, 32), 12},
    {layout("bgr", 32, 32, 32), 11, layout("rgb", 32, 32, 32), 11},
    {layout("abgr", 32, 32, 32, 32), 12, layout("rgba", 32, 32, 32, 32), 12},
    {layout("bgra", 32, 32, 32, 32), 8, layout("gbar", 32, 32, 32, 32), 8},
    {layout("rgb", 11, 11, 10), 13, layout("bgr", 10, 11, 11), 13},
};

} // namespace

TEST(ChannelMoves, TakeEveryBitOfEveryChannelAlong)
{
    CSeededRandom random(41);
    for (const Pair& pair : k_aPairs)
    {
        SCOPED_TRACE(testing::Message() << std::hex << pair.from.getWord() << " of " << pair.uiType << " to " << pair.to.getWord());
        const uint32_t uiPixelSize = CMOXTextureHeader::getBitsPerPixel(pair.from) / 8;
        const std::vector<uint8_t> bytes = random.bytes(size_t{1021} * uiPixelSize);
        const CMOXTexture before = makeTexture(pair.from, pair.uiType, bytes);
        CMOXTexture after = before;
        ASSERT_TRUE(moveChannels(after, pair.to, static_cast<EMOXTChannelType>(pair.uiNewType)));
        EXPECT_EQ(codesOf(before), codesOf(after));
        ASSERT_TRUE(moveChannels(after, pair.from, static_cast<EMOXTChannelType>(pair.uiType)));
        EXPECT_EQ(bytes, blockOf(after));
    }
}

TEST(ChannelMoves, TakeEveryValueOfSixteenBitsAlong)
{
    std::vector<uint8_t> bytes;
    for (uint32_t uiValue = 0; uiValue < 0x10000; ++uiValue)
        bytes.insert(bytes.end(), {static_cast<uint8_t>(uiValue), static_cast<uint8_t>(uiValue >> 8)});
    const std::vector<uint8_t> swapped = moved(layout("bgr", 5, 6, 5), 4, layout("rgb", 5, 6, 5), 8, bytes);
    const std::vector<uint8_t> turned = moved(layout("argb", 1, 5, 5, 5), 4, layout("rgba", 5, 5, 5, 1), 4, bytes);
    const std::vector<uint8_t> exchanged = moved(layout("al", 8, 8), 0, layout("al", 8, 8), 8, bytes);
    for (uint32_t uiValue = 0; uiValue < 0x10000; ++uiValue)
    {
        const size_t i = size_t{2} * uiValue;
        ASSERT_EQ((uiValue & 0x7E0) | uiValue >> 11 | (uiValue & 31) << 11, swapped[i] + 256u * swapped[i + 1]);
        ASSERT_EQ((uiValue << 1 & 0xFFFF) | uiValue >> 15, turned[i] + 256u * turned[i + 1]);
        ASSERT_EQ(uiValue >> 8 | (uiValue & 255) << 8, exchanged[i] + 256u * exchanged[i + 1]);
    }
}

TEST(ChannelMoves, GiveTheBytesOfTranscodeWhereThatLosesNothing)
{
    const Pair aPairs[] = {
        {layout("rgb", 8, 8, 8), 0, layout("rgb", 8, 8, 8), 8},
        {layout("argb", 8, 8, 8, 8), 0, layout("argb", 8, 8, 8, 8), 8},
        {layout("al", 8, 8), 0, layout("al", 8, 8), 8},
        {layout("gr", 16, 16), 4, layout("gr", 16, 16), 8},
        {layout("abgr", 16, 16, 16, 16), 4, layout("abgr", 16, 16, 16, 16), 8},
        {layout("rgba", 10, 10, 10, 2), 8, layout("abgr", 2, 10, 10, 10), 8},
        {layout("xrgb", 8, 8, 8, 8), 8, layout("bgrx", 8, 8, 8, 8), 0},
        {layout("xbgr", 8, 8, 8, 8), 8, layout("bgrx", 8, 8, 8, 8), 0},
        {layout("xrgb", 8, 8, 8, 8), 8, layout("rgba", 8, 8, 8, 8), 0},
        {layout("abgr", 8, 8, 8, 8), 8, layout("rgba", 8, 8, 8, 8), 0},
    };
    // Every value of 16 bits in the first and the last bytes of some pixel.
    std::vector<uint8_t> bytes;
    for (uint32_t uiValue = 0; uiValue < 0x10000; ++uiValue)
        for (const uint32_t uiElement : {uiValue, ~uiValue, 7 * uiValue, uiValue})
            bytes.insert(bytes.end(), {static_cast<uint8_t>(uiElement), static_cast<uint8_t>(uiElement >> 8)});
    bytes.resize(bytes.size() / 24 * 24); // whole pixels of every size
    for (const Pair& pair : aPairs)
    {
        SCOPED_TRACE(testing::Message() << std::hex << pair.from.getWord());
        CMOXTexture transcoded = makeTexture(pair.from, pair.uiType, bytes);
        ASSERT_TRUE(Transcode(transcoded, pair.to, static_cast<EMOXTChannelType>(pair.uiNewType), eCS_Linear, 0, false));
        EXPECT_EQ(blockOf(transcoded), moved(pair.from, pair.uiType, pair.to, pair.uiNewType, bytes));
    }
}

TEST(ChannelMoves, KeepFloatsThatAreNoNumbers)
{
    // A signalling NaN, a denormal, minus zero and infinity, which no way through arithmetic brings back.
    const std::vector<uint8_t> halves = {0x01, 0x7D, 0x01, 0x00, 0x00, 0x80, 0x00, 0x7C};
    EXPECT_EQ((std::vector<uint8_t>{0x00, 0x7C, 0x00, 0x80, 0x01, 0x00, 0x01, 0x7D}),
              moved(layout("abgr", 16, 16, 16, 16), 12, layout("rgba", 16, 16, 16, 16), 12, halves));
    const std::vector<uint8_t> floats = {0x01, 0x00, 0x80, 0x7F, 0x01, 0x00, 0x00, 0x00};
    EXPECT_EQ((std::vector<uint8_t>{0x01, 0x00, 0x00, 0x00, 0x01, 0x00, 0x80, 0x7F}),
              moved(layout("gr", 32, 32), 12, layout("rg", 32, 32), 12, floats));
}

TEST(ChannelMoves, ReachEverySurfaceAndKeepTheRest)
{
    CMOXTextureHeader header(layout("rgb", 8, 8, 8), 5, 7, 1, 3, 2, 6, eCS_sRGB, eCT_UnsignedNormalisedByte, true);
    header.setOrientation(2);
    const std::vector<uint8_t> bytes = CSeededRandom(3).bytes(header.getDataSize());
    const CMOXTexture before(header, bytes.data());
    CMOXTexture after = before;
    ASSERT_TRUE(moveChannels(after, layout("bgr", 8, 8, 8), eCT_UnsignedNormalisedByte));
    EXPECT_EQ(codesOf(before), codesOf(after));
    EXPECT_EQ(eCS_sRGB, after.getColourSpace());
    EXPECT_TRUE(after.isPreMultiplied());
    EXPECT_EQ(2u, after.getOrientation(eAxisY));
    EXPECT_EQ(before.getMetaDataSize(), after.getMetaDataSize());
}

TEST(ChannelMoves, LetTheSpareChannelBecomeAlphaAndNothingElse)
{
    EXPECT_EQ((std::vector<uint8_t>{3, 2, 1, 4}),
              moved(layout("xrgb", 8, 8, 8, 8), 8, layout("rgba", 8, 8, 8, 8), 0, std::vector<uint8_t>{1, 2, 3, 4}));
    EXPECT_TRUE(canMove(layout("xrgb", 8, 8, 8, 8), 0, layout("bgrx", 8, 8, 8, 8), 8));
    EXPECT_FALSE(canMove(layout("argb", 8, 8, 8, 8), 0, layout("xrgb", 8, 8, 8, 8), 0));
    EXPECT_FALSE(canMove(layout("xrgb", 8, 8, 8, 8), 0, layout("lrgb", 8, 8, 8, 8), 0));
}

TEST(ChannelMoves, RefuseWhatWouldLoseOrInventSomething)
{
    const MOXPixelWord rgba8 = layout("rgba", 8, 8, 8, 8);
    EXPECT_FALSE(canMove(rgba8, 0, layout("rgb", 8, 8, 8), 0));
    EXPECT_FALSE(canMove(layout("rgb", 8, 8, 8), 0, rgba8, 0));
    EXPECT_FALSE(canMove(layout("rgb", 5, 6, 5), 4, layout("rgb", 6, 5, 5), 4));
    EXPECT_FALSE(canMove(layout("l", 8), 0, layout("r", 8), 0));
    EXPECT_FALSE(canMove(layout("l", 8), 0, layout("i", 8), 0));
    // Other kinds of values.
    EXPECT_FALSE(canMove(rgba8, 0, rgba8, 1));
    EXPECT_FALSE(canMove(rgba8, 0, rgba8, 2));
    EXPECT_FALSE(canMove(layout("r", 32), 8, layout("r", 32), 12));
    EXPECT_FALSE(canMove(layout("r", 16), 12, layout("r", 16), 13));
    // Faults: a name twice, no bits, no name, parts of a byte, too wide, elements that lie over fields, no type.
    EXPECT_FALSE(canMove(layout("rr", 8, 8), 0, layout("rr", 8, 8), 0));
    EXPECT_FALSE(canMove(layout("rg", 8, 0), 0, layout("rg", 8, 0), 0));
    EXPECT_FALSE(canMove(layout("r", 8, 8), 0, layout("r", 8, 8), 0));
    EXPECT_FALSE(canMove(layout("rgb", 5, 5, 5), 4, layout("bgr", 5, 5, 5), 4));
    EXPECT_FALSE(canMove(layout("rg", 255, 1), 4, layout("gr", 1, 255), 4));
    EXPECT_FALSE(canMove(layout("rgba", 24, 24, 24, 24), 8, layout("abgr", 24, 24, 24, 24), 8));
    EXPECT_FALSE(canMove(layout("argb", 8, 3, 3, 2), 0, layout("argb", 8, 3, 3, 2), 0));
    EXPECT_FALSE(canMove(rgba8, 14, rgba8, 14));
    EXPECT_FALSE(canMove(rgba8, 0xFFFFFFFF, rgba8, 0));
    EXPECT_FALSE(canMove(ePF_BC1, 0, ePF_BC1, 0));
    EXPECT_FALSE(canMove(ePF_Count, 0, rgba8, 0));
    EXPECT_FALSE(canMove(MOXPixelWord(UINT64_MAX), 0, MOXPixelWord(UINT64_MAX), 0));
}

TEST(ChannelMoves, LeaveATextureThatTheyRefuse)
{
    CMOXTexture texture = makeTexture(layout("rgb", 8, 8, 8), 0, {1, 2, 3});
    EXPECT_FALSE(moveChannels(texture, layout("rgba", 8, 8, 8, 8), eCT_UnsignedNormalisedByte));
    EXPECT_EQ(layout("rgb", 8, 8, 8), texture.getPixelFormat());
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3}), blockOf(texture));
    // A header that has grown since.
    texture.setWidth(2);
    EXPECT_FALSE(moveChannels(texture, layout("bgr", 8, 8, 8), eCT_UnsignedNormalisedByte));
    EXPECT_EQ(layout("rgb", 8, 8, 8), texture.getPixelFormat());
    CMOXTexture none;
    EXPECT_FALSE(moveChannels(none, layout("bgr", 8, 8, 8), eCT_UnsignedNormalisedByte));
}

TEST(SpareChannel, IsFilledWithOnesWhereverItStands)
{
    const auto filled = [](MOXPixelWord format, uint32_t uiType, const std::vector<uint8_t>& bytes)
    {
        CMOXTexture texture = makeTexture(format, uiType, bytes);
        fillSpareChannel(texture);
        EXPECT_EQ(format, texture.getPixelFormat());
        return blockOf(texture);
    };
    using Bytes = std::vector<uint8_t>;
    EXPECT_EQ((Bytes{1, 2, 3, 255, 4, 5, 6, 255}), filled(layout("xrgb", 8, 8, 8, 8), 8, {1, 2, 3, 0, 4, 5, 6, 99}));
    EXPECT_EQ((Bytes{255, 2, 3, 4}), filled(layout("xrgb", 8, 8, 8, 8), 0, {1, 2, 3, 4}));
    EXPECT_EQ((Bytes{1, 2, 3, 255}), filled(layout("bgrx", 8, 8, 8, 8), 0, {1, 2, 3, 4}));
    EXPECT_EQ((Bytes{0x34, 0x92}), filled(layout("xrgb", 1, 5, 5, 5), 8, {0x34, 0x12}));
    EXPECT_EQ((Bytes{1, 2, 3, 0xFC}), filled(layout("xbgr", 6, 8, 8, 10), 8, {1, 2, 3, 0}));
    // Elements of 16 bits, the first of the pixel.
    EXPECT_EQ((Bytes{255, 255, 3, 4}), filled(layout("xr", 16, 16), 4, {1, 2, 3, 4}));
}

TEST(SpareChannel, GetsTheGreatestSignedValueWhereThereIsASign)
{
    // All ones would be a negative value, which is shown transparent.
    CMOXTexture texture = makeTexture(layout("xlgr", 8, 8, 8, 8), 9, {1, 2, 3, 0x80});
    fillSpareChannel(texture);
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 0x7F}), blockOf(texture));
}

TEST(SpareChannel, IsAllThatIsTouched)
{
    CSeededRandom random(7);
    for (const MOXPixelWord format : {layout("argb", 8, 8, 8, 8), layout("rgb", 5, 6, 5), layout("l", 8), MOXPixelWord(ePF_BC1)})
    {
        const CMOXTextureHeader header(format, 8, 8, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedInteger, false);
        CMOXTexture texture(header, random.bytes(header.getDataSize()).data());
        const std::vector<uint8_t> before = blockOf(texture);
        fillSpareChannel(texture);
        EXPECT_EQ(before, blockOf(texture));
    }
    CMOXTexture none;
    fillSpareChannel(none);
    EXPECT_EQ(0u, none.getBlockSize());
}
