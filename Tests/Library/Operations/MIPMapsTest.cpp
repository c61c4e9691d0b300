#include "Operations/MIPMaps.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <vector>

#include "Library/Operations/NumberedTexture.h"
#include "Operations/ResampleSurface.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

/// One row of grey pixels.
CMOXTexture makeRow(std::initializer_list<uint8_t> values)
{
    CMOXTexture texture = seededTexture<uint8_t>({static_cast<uint32_t>(values.size())});
    uint8_t* p = texture.getDataPtr();
    for (const uint8_t uiValue : values)
        for (int i = 0; i < 4; ++i)
            *p++ = uiValue;
    return texture;
}

std::vector<uint8_t> getSurface(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    const uint8_t* p = texture.getDataPtr(uiLevel, uiMember, uiFace);
    return p == nullptr ? std::vector<uint8_t>() : std::vector<uint8_t>(p, p + texture.getDataSize(uiLevel, false, false));
}

std::vector<uint8_t> getFirstPixel(const CMOXTexture& texture, uint32_t uiLevel)
{
    std::vector<uint8_t> pixel = getSurface(texture, uiLevel);
    pixel.resize(4);
    return pixel;
}

} // namespace

TEST(GenerateMIPMaps, TheFullChainOfFiveByThreeHasThreeLevels)
{
    CMOXTexture texture = seededTexture<uint8_t>({5, 3});
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    ASSERT_EQ(3u, texture.getNumMIPLevels());
    EXPECT_EQ(2u, texture.getWidth(1));
    EXPECT_EQ(1u, texture.getHeight(1));
    EXPECT_EQ(1u, texture.getWidth(2));
    EXPECT_EQ(4u * (15 + 2 + 1), texture.getBlockSize());
}

TEST(GenerateMIPMaps, TheLengthOfAFullChainFollowsTheLongestAxis)
{
    EXPECT_EQ(1u, getFullMIPChainLength(1, 1, 1));
    EXPECT_EQ(3u, getFullMIPChainLength(5, 3, 1));
    EXPECT_EQ(9u, getFullMIPChainLength(256, 16, 1));
    EXPECT_EQ(9u, getFullMIPChainLength(16, 256, 1));
    EXPECT_EQ(4u, getFullMIPChainLength(1, 1, 8));
    EXPECT_EQ(2u, getFullMIPChainLength(1, 1, 3));
    EXPECT_EQ(32u, getFullMIPChainLength(0xFFFFFFFF, 1, 1));
}

TEST(GenerateMIPMaps, ACountOfOneLeavesOnlyTheTopLevel)
{
    CMOXTexture texture = seededTexture<uint8_t>({8, 8, 1, 4});
    const std::vector<uint8_t> top = getSurface(texture, 0);
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeCubic, 1));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(top, getSurface(texture, 0));
    EXPECT_EQ(top.size(), texture.getBlockSize());
}

TEST(GenerateMIPMaps, ACountIsUsedAsGiven)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    const std::vector<uint8_t> top = getSurface(texture, 0);
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeNearest, 6));
    EXPECT_EQ(6u, texture.getNumMIPLevels());
    EXPECT_EQ(4u * (16 + 4 + 4 * 1), texture.getBlockSize());
    const std::vector<uint8_t> firstPixel(top.begin(), top.begin() + 4);
    for (uint32_t uiLevel = 2; uiLevel < 6; ++uiLevel)
        EXPECT_EQ(firstPixel, getSurface(texture, uiLevel));
}

TEST(GenerateMIPMaps, ALevelIsMadeFromTheOneAboveAndNotFromTheTop)
{
    // Halved twice: 0 40 0 40, then 20 20. Eight to two in one step would read at 0.75, which is 0.
    CMOXTexture texture = makeRow({0, 0, 40, 40, 0, 0, 40, 40});
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, 3));
    EXPECT_EQ(getSurface(makeRow({0, 40, 0, 40}), 0), getSurface(texture, 1));
    EXPECT_EQ(getSurface(makeRow({20, 20}), 0), getSurface(texture, 2));
}

TEST(GenerateMIPMaps, OlderLevelsAreReplaced)
{
    CMOXTexture texture = seededTexture<uint8_t>({16, 8, 1, 5});
    CMOXTexture onlyTop = texture;
    ASSERT_TRUE(GenerateMIPMaps(onlyTop, eResizeLinear, 1));
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    ASSERT_TRUE(GenerateMIPMaps(onlyTop, eResizeLinear, k_uiFullMIPChain));
    for (uint32_t uiLevel = 0; uiLevel < 5; ++uiLevel)
        EXPECT_EQ(getSurface(onlyTop, uiLevel), getSurface(texture, uiLevel));
}

template <typename T>
class MIPMapsOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(MIPMapsOfEveryKind, ChannelKinds);

TYPED_TEST(MIPMapsOfEveryKind, TheNearestFilterTakesEverySecondPixel)
{
    CMOXTexture texture = numberedTexture<TypeParam>({4, 2, 1, 1, 2, 1}); // rows 1 to 4 and 5 to 8; then 9 to 12 and 13 to 16
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeNearest, k_uiFullMIPChain));
    ASSERT_EQ(3u, texture.getNumMIPLevels());
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}), numbersOf<TypeParam>(texture, 0, 0));
    EXPECT_EQ((std::vector<int>{1, 3}), numbersOf<TypeParam>(texture, 1, 0));
    EXPECT_EQ((std::vector<int>{1}), numbersOf<TypeParam>(texture, 2, 0));
    EXPECT_EQ((std::vector<int>{9, 11}), numbersOf<TypeParam>(texture, 1, 1));
    EXPECT_EQ((std::vector<int>{9}), numbersOf<TypeParam>(texture, 2, 1));
}

TYPED_TEST(MIPMapsOfEveryKind, TheLinearFilterTakesTheMeanOfTwoPixelsAndIntegersAreCut)
{
    CMOXTexture texture = numberedTexture<TypeParam>({4, 1});
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    ASSERT_EQ(3u, texture.getNumMIPLevels());
    const auto* pLevel = reinterpret_cast<const TypeParam*>(texture.getDataPtr(1));
    EXPECT_EQ(static_cast<TypeParam>(1.5f), pLevel[0]);  // of 1 and 2
    EXPECT_EQ(static_cast<TypeParam>(61.5f), pLevel[1]); // green, 60 more
    EXPECT_EQ(static_cast<TypeParam>(3.5f), pLevel[4]);  // of 3 and 4
    const auto* pLast = reinterpret_cast<const TypeParam*>(texture.getDataPtr(2));
    EXPECT_EQ(static_cast<TypeParam>(1.5f), pLast[0]); // a single pixel is read at place 0 of the level above
    EXPECT_EQ(static_cast<TypeParam>(181.5f), pLast[3]);
}

TYPED_TEST(MIPMapsOfEveryKind, EverySurfaceHasItsOwnChainOfEveryFilter)
{
    for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
    {
        const CMOXTexture source = seededTexture<TypeParam>({13, 10, 5, 1, 2, 6});
        CMOXTexture texture = source;
        ASSERT_TRUE(GenerateMIPMaps(texture, eMode, k_uiFullMIPChain));
        ASSERT_EQ(4u, texture.getNumMIPLevels());
        const SurfaceSize aSizes[] = {{13, 10, 5}, {6, 5, 2}, {3, 2, 1}, {1, 1, 1}};
        for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
            for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            {
                std::vector<uint8_t> above = getSurface(source, 0, uiMember, uiFace);
                EXPECT_EQ(above, getSurface(texture, 0, uiMember, uiFace));
                for (uint32_t uiLevel = 1; uiLevel < 4; ++uiLevel)
                {
                    std::vector<uint8_t> level(texture.getDataSize(uiLevel, false, false));
                    ASSERT_TRUE(resampleSurfaceReference(reinterpret_cast<const TypeParam*>(above.data()),
                                                         reinterpret_cast<TypeParam*>(level.data()), aSizes[uiLevel - 1], aSizes[uiLevel],
                                                         eMode));
                    EXPECT_EQ(level, getSurface(texture, uiLevel, uiMember, uiFace));
                    above = level;
                }
            }
    }
}

TEST(GenerateMIPMaps, KeepsTheMetaData)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    texture.setBorder(1, 2, 3);
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    uint32_t x;
    uint32_t y;
    uint32_t z;
    texture.getBorder(x, y, z);
    EXPECT_EQ(1u, x);
    EXPECT_EQ(2u, y);
    EXPECT_EQ(3u, z);
}

TEST(GenerateMIPMaps, FromLevel32OnSurfacesAreLargerThanTheirPixel)
{
    // The header shifts sizes by the level modulo 32, so that level 33 of an 8 by 8 texture measures 4 by 4.
    CMOXTexture texture = seededTexture<uint8_t>({8, 8});
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeNearest, 70));
    const std::vector<uint8_t> firstPixel = getFirstPixel(texture, 0);
    for (uint32_t uiLevel = 4; uiLevel < 70; ++uiLevel)
        EXPECT_EQ(firstPixel, getFirstPixel(texture, uiLevel)) << uiLevel;
    std::vector<uint8_t> expected(4 * 16);
    std::copy(firstPixel.begin(), firstPixel.end(), expected.begin());
    EXPECT_EQ(expected, getSurface(texture, 33));
}

TEST(GenerateMIPMaps, MayMakeVeryManyLevels)
{
    CMOXTexture texture = seededTexture<uint8_t>({1, 1});
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, 300000));
    EXPECT_EQ(getFirstPixel(texture, 0), getFirstPixel(texture, 299999));
}

TEST(GenerateMIPMaps, RefusesACountOfZeroOtherFormatsAndUnknownFilters)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, 0));
    EXPECT_FALSE(GenerateMIPMaps(texture, static_cast<EResizeMode>(3), 2));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    texture.setChannelType(eCT_UnsignedByte);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
}

TEST(GenerateMIPMaps, RefusesAChainOfFourGiBAndLeavesTheTexture)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, 0xFFFFFFFE));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(64u, texture.getBlockSize());
}

TEST(GenerateMIPMaps, RefusesATextureThatLacksASurface)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    texture.setNumFaces(6);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    CMOXTexture empty(CMOXTextureHeader(k_RGBA8, 4, 4, 1, 0, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    EXPECT_FALSE(GenerateMIPMaps(empty, eResizeLinear, 2));
}
