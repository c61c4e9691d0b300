#include "Operations/ColourMIPMaps.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <limits>
#include <vector>

#include "Library/Operations/NumberedTexture.h"

using namespace moxtexture;

namespace
{

/// A texture of 2^(uiLevels - 1) pixels in a row, every pixel the same.
template <typename T>
CMOXTexture makeTexture(uint32_t uiLevels, const std::vector<T>& pixel, uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    const CMOXTextureHeader header = testsupport::headerOf<T>({1u << (uiLevels - 1), 1, 1, uiLevels, uiMembers, uiFaces});
    std::vector<T> elements;
    while (elements.size() * sizeof(T) < header.getDataSize())
        elements.insert(elements.end(), pixel.begin(), pixel.end());
    return CMOXTexture(header, elements.data());
}

template <typename T>
std::vector<T> getPixel(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember = 0, uint32_t uiFace = 0, size_t uiPixel = 0)
{
    std::vector<T> pixel(4);
    const uint8_t* p = texture.getDataPtr(uiLevel, uiMember, uiFace);
    if (p != nullptr)
        std::memcpy(pixel.data(), p + uiPixel * 4 * sizeof(T), 4 * sizeof(T));
    return pixel;
}

/// Level 1 of a texture of that pixel, painted: green holds the grey.
template <typename T>
T getGrey(T red, T green, T blue)
{
    CMOXTexture texture = makeTexture<T>(2, {red, green, blue, T(1)});
    EXPECT_TRUE(ColourMIPMaps(texture));
    return getPixel<T>(texture, 1)[1];
}

using Bytes = std::vector<uint8_t>;

} // namespace

TEST(ColourMIPMaps, PaintsEachLevelInTheColourOfItsNumber)
{
    CMOXTexture texture = makeTexture<uint8_t>(9, {10, 20, 32, 7}); // grey 62 / 3 = 20.67
    ASSERT_TRUE(ColourMIPMaps(texture));
    EXPECT_EQ((Bytes{10, 20, 32, 7}), getPixel<uint8_t>(texture, 0));
    EXPECT_EQ((Bytes{0, 20, 0, 7}), getPixel<uint8_t>(texture, 1));
    EXPECT_EQ((Bytes{0, 0, 20, 7}), getPixel<uint8_t>(texture, 2));
    EXPECT_EQ((Bytes{0, 20, 20, 7}), getPixel<uint8_t>(texture, 3));
    EXPECT_EQ((Bytes{20, 0, 20, 7}), getPixel<uint8_t>(texture, 4));
    EXPECT_EQ((Bytes{20, 20, 0, 7}), getPixel<uint8_t>(texture, 5));
    EXPECT_EQ((Bytes{20, 0, 0, 7}), getPixel<uint8_t>(texture, 6));
    EXPECT_EQ((Bytes{0, 20, 0, 7}), getPixel<uint8_t>(texture, 7));
    EXPECT_EQ((Bytes{0, 0, 20, 7}), getPixel<uint8_t>(texture, 8));
}

TEST(ColourMIPMaps, PaintsEveryPixelOfEverySurface)
{
    CMOXTexture texture = makeTexture<uint8_t>(4, {3, 3, 3, 9}, 2, 3);
    ASSERT_TRUE(ColourMIPMaps(texture));
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 3; ++uiFace)
        {
            EXPECT_EQ((Bytes{3, 3, 3, 9}), getPixel<uint8_t>(texture, 0, uiMember, uiFace, 7));
            for (size_t i = 0; i < 4; ++i)
                EXPECT_EQ((Bytes{0, 3, 0, 9}), getPixel<uint8_t>(texture, 1, uiMember, uiFace, i));
            EXPECT_EQ((Bytes{0, 3, 3, 9}), getPixel<uint8_t>(texture, 3, uiMember, uiFace));
        }
}

TEST(ColourMIPMaps, OneLevelIsLeftAsItIs)
{
    CMOXTexture texture = makeTexture<uint8_t>(1, {1, 2, 3, 4});
    EXPECT_TRUE(ColourMIPMaps(texture));
    EXPECT_EQ((Bytes{1, 2, 3, 4}), getPixel<uint8_t>(texture, 0));
}

TEST(ColourMIPMaps, TheGreyIsCut)
{
    EXPECT_EQ(0, getGrey<uint8_t>(1, 1, 0));
    EXPECT_EQ(254, getGrey<uint8_t>(255, 255, 254));
    EXPECT_EQ(255, getGrey<uint8_t>(255, 255, 255));
    EXPECT_EQ(65534, getGrey<uint16_t>(65535, 65535, 65534));
    EXPECT_EQ(65535, getGrey<uint16_t>(65535, 65535, 65535));
}

TEST(ColourMIPMaps, IntegersAreSummedIn64Bits)
{
    EXPECT_EQ(0xC0000000u, getGrey<uint32_t>(0xC0000000, 0xC0000000, 0xC0000000));
    EXPECT_EQ(0xFFFFFFFFu, getGrey<uint32_t>(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF)); // 2^32 as a float
    EXPECT_EQ(1u, getGrey<uint32_t>(2, 2, 1));
}

TEST(ColourMIPMaps, FloatsAreNotCut)
{
    EXPECT_EQ(0.5f, getGrey<float>(0.25f, 0.5f, 0.75f));
    EXPECT_EQ(-2.0f, getGrey<float>(-1.0f, -2.0f, -3.0f));
    const float fLargest = std::numeric_limits<float>::max();
    EXPECT_EQ(std::numeric_limits<float>::infinity(), getGrey<float>(fLargest, fLargest, 0.0f)); // the sum itself is one
}

TEST(ColourMIPMaps, AddsNoMetaDataAndKeepsTheHeader)
{
    CMOXTexture texture = makeTexture<uint16_t>(3, {1, 2, 3, 4});
    EXPECT_TRUE(ColourMIPMaps(texture));
    EXPECT_EQ(0u, texture.getMetaDataSize());
    EXPECT_EQ(3u, texture.getNumMIPLevels());
}

TEST(ColourMIPMaps, ASurfaceThatIsMissingIsLeftOutAndTheOthersGoOn)
{
    // Two members of 4, 2 and 1 pixels take 4 + 4, 2 + 2, 1 + 1. The block ends after 12, so that both last levels are missing.
    CMOXTexture texture = makeTexture<uint8_t>(1, {6, 6, 6, 1}, 12);
    texture.setWidth(4);
    texture.setNumArrayMembers(2);
    texture.setNumMIPLevels(3);
    ASSERT_EQ(nullptr, texture.getDataPtr(2, 0));
    EXPECT_FALSE(ColourMIPMaps(texture));
    EXPECT_EQ((Bytes{0, 6, 0, 1}), getPixel<uint8_t>(texture, 1, 0));
    EXPECT_EQ((Bytes{0, 6, 0, 1}), getPixel<uint8_t>(texture, 1, 1));
    EXPECT_EQ((Bytes{6, 6, 6, 1}), getPixel<uint8_t>(texture, 0, 1));
}

TEST(ColourMIPMaps, RefusesOtherFormats)
{
    CMOXTexture texture = makeTexture<uint8_t>(2, {6, 6, 6, 1});
    texture.setChannelType(eCT_SignedNormalisedByte);
    EXPECT_FALSE(ColourMIPMaps(texture));
    EXPECT_EQ((Bytes{6, 6, 6, 1}), getPixel<uint8_t>(texture, 1));
}
