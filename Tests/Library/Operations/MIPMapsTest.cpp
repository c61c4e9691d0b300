#include "Operations/MIPMaps.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <vector>

#include "Operations/ResampleSurface.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTexture makeTexture(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, uint32_t uiLevels = 1, uint32_t uiMembers = 1,
                        uint32_t uiFaces = 1)
{
    const CMOXTextureHeader header(k_RGBA8, uiHeight, uiWidth, uiDepth, uiLevels, uiMembers, uiFaces, eCS_Linear,
                                   eCT_UnsignedNormalisedByte, false);
    return CMOXTexture(header, testsupport::CSeededRandom(3).bytes(header.getDataSize()).data());
}

/// One row of grey pixels.
CMOXTexture makeRow(std::initializer_list<uint8_t> values)
{
    CMOXTexture texture = makeTexture(static_cast<uint32_t>(values.size()), 1);
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
    CMOXTexture texture = makeTexture(5, 3);
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
    CMOXTexture texture = makeTexture(8, 8, 1, 4);
    const std::vector<uint8_t> top = getSurface(texture, 0);
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeCubic, 1));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(top, getSurface(texture, 0));
    EXPECT_EQ(top.size(), texture.getBlockSize());
}

TEST(GenerateMIPMaps, ACountIsUsedAsGiven)
{
    CMOXTexture texture = makeTexture(4, 4);
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
    CMOXTexture texture = makeTexture(16, 8, 1, 5);
    CMOXTexture onlyTop = texture;
    ASSERT_TRUE(GenerateMIPMaps(onlyTop, eResizeLinear, 1));
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    ASSERT_TRUE(GenerateMIPMaps(onlyTop, eResizeLinear, k_uiFullMIPChain));
    for (uint32_t uiLevel = 0; uiLevel < 5; ++uiLevel)
        EXPECT_EQ(getSurface(onlyTop, uiLevel), getSurface(texture, uiLevel));
}

TEST(GenerateMIPMaps, EverySurfaceHasItsOwnChainOfEveryFilter)
{
    for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
    {
        const CMOXTexture source = makeTexture(13, 10, 5, 1, 2, 6);
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
                    ASSERT_TRUE(resampleSurfaceReference(above.data(), level.data(), aSizes[uiLevel - 1], aSizes[uiLevel], eMode));
                    EXPECT_EQ(level, getSurface(texture, uiLevel, uiMember, uiFace));
                    above = level;
                }
            }
    }
}

TEST(GenerateMIPMaps, KeepsTheMetaData)
{
    CMOXTexture texture = makeTexture(4, 4);
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
    CMOXTexture texture = makeTexture(8, 8);
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
    CMOXTexture texture = makeTexture(1, 1);
    ASSERT_TRUE(GenerateMIPMaps(texture, eResizeLinear, 300000));
    EXPECT_EQ(getFirstPixel(texture, 0), getFirstPixel(texture, 299999));
}

TEST(GenerateMIPMaps, RefusesACountOfZeroOtherFormatsAndUnknownFilters)
{
    CMOXTexture texture = makeTexture(4, 4);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, 0));
    EXPECT_FALSE(GenerateMIPMaps(texture, static_cast<EResizeMode>(3), 2));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    texture.setChannelType(eCT_UnsignedByte);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
}

TEST(GenerateMIPMaps, RefusesAChainOfFourGiBAndLeavesTheTexture)
{
    CMOXTexture texture = makeTexture(4, 4);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, 0xFFFFFFFE));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(64u, texture.getBlockSize());
}

TEST(GenerateMIPMaps, RefusesATextureThatLacksASurface)
{
    CMOXTexture texture = makeTexture(4, 4);
    texture.setNumFaces(6);
    EXPECT_FALSE(GenerateMIPMaps(texture, eResizeLinear, k_uiFullMIPChain));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    CMOXTexture empty(CMOXTextureHeader(k_RGBA8, 4, 4, 1, 0, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    EXPECT_FALSE(GenerateMIPMaps(empty, eResizeLinear, 2));
}
