#include "Operations/Resize.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "Library/Operations/NumberedTexture.h"
#include "Operations/ResampleSurface.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

bool haveSameData(const CMOXTexture& a, const CMOXTexture& b)
{
    return a.getBlockSize() == b.getBlockSize() && std::memcmp(a.getDataPtr(), b.getDataPtr(), a.getBlockSize()) == 0;
}

using Widths = std::array<uint32_t, 3>;

Widths getBorder(const CMOXTexture& texture)
{
    Widths widths;
    texture.getBorder(widths[0], widths[1], widths[2]);
    return widths;
}

} // namespace

TEST(Resize, ToTheSameSizeIsDoneAtOnceAndKeepsEverything)
{
    CMOXTexture texture = seededTexture<uint8_t>({256, 256, 1, 3});
    const CMOXTexture before = texture;
    const uint8_t* pData = texture.getDataPtr();
    EXPECT_TRUE(Resize(texture, 256, 256, 1, eResizeCubic));
    EXPECT_EQ(3u, texture.getNumMIPLevels());
    EXPECT_EQ(pData, texture.getDataPtr());
    EXPECT_TRUE(haveSameData(before, texture));
}

TEST(Resize, KeepsNoMIPLevels)
{
    CMOXTexture texture = seededTexture<uint8_t>({8, 8, 1, 4});
    EXPECT_TRUE(Resize(texture, 4, 2, 1, eResizeLinear));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ(1u, texture.getDepth());
    EXPECT_EQ(4u * 4 * 2, texture.getBlockSize());
}

TEST(Resize, KeepsTheEncodingAndTheMetaData)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    texture.setOrientation(2);
    texture.setColourSpace(eCS_sRGB);
    const PixelEncoding encoding = texture.getEncoding();
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(encoding, texture.getEncoding());
    EXPECT_EQ(2u, texture.getOrientation(eAxisY));
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
}

template <typename T>
class ResizeOfEveryKind : public ::testing::Test
{
};
TYPED_TEST_SUITE(ResizeOfEveryKind, ChannelKinds);

TYPED_TEST(ResizeOfEveryKind, ResizesEverySurfaceByStages)
{
    for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
    {
        const CMOXTexture source = seededTexture<TypeParam>({20, 12, 3, 2, 2, 3});
        CMOXTexture resized = source;
        ASSERT_TRUE(Resize(resized, 5, 30, 2, eMode));
        for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
            for (uint32_t uiFace = 0; uiFace < 3; ++uiFace)
            {
                std::vector<TypeParam> expected(5 * 30 * 2 * 4);
                ASSERT_TRUE(resizeSurface(reinterpret_cast<const TypeParam*>(source.getDataPtr(0, uiMember, uiFace)), expected.data(),
                                          {20, 12, 3}, {5, 30, 2}, eMode));
                ASSERT_EQ(expected.size() * sizeof(TypeParam), resized.getDataSize(0, false, false));
                EXPECT_EQ(0, std::memcmp(expected.data(), resized.getDataPtr(0, uiMember, uiFace), expected.size() * sizeof(TypeParam)))
                    << "member " << uiMember << " face " << uiFace << " mode " << eMode;
            }
    }
}

TEST(Resize, ScalesTheBorderByIntegerDivision)
{
    CMOXTexture texture = seededTexture<uint8_t>({10, 20});
    texture.setBorder(3, 4, 0);
    EXPECT_TRUE(Resize(texture, 5, 30, 1, eResizeNearest));
    EXPECT_EQ((Widths{1, 6, 0}), getBorder(texture)); // 3 * 5 / 10, 4 * 30 / 20
    EXPECT_EQ(texture.sumMetaDataSize(), texture.getMetaDataSize());
}

TEST(Resize, ScalesTheBorderInDepthByTheDepths)
{
    CMOXTexture texture = seededTexture<uint8_t>({10, 20, 6});
    texture.setBorder(3, 4, 5);
    EXPECT_TRUE(Resize(texture, 5, 30, 9, eResizeNearest));
    EXPECT_EQ((Widths{1, 6, 7}), getBorder(texture)); // 5 * 9 / 6 is 7.5
    EXPECT_TRUE(Resize(texture, 5, 30, 3, eResizeNearest));
    EXPECT_EQ((Widths{1, 6, 2}), getBorder(texture)); // 7 * 3 / 9
}

TEST(Resize, ABorderTimesASizeMayTakeMoreThan32Bits)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 1});
    texture.setBorder(0xFFFFFFF0, 0, 0);
    EXPECT_TRUE(Resize(texture, 2, 1, 1, eResizeNearest));
    EXPECT_EQ((Widths{0x7FFFFFF8, 0, 0}), getBorder(texture));
}

TEST(Resize, WithoutABorderNoneIsAdded)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(0u, texture.getMetaDataSize());
}

TEST(Resize, RefusesASizeOfZeroAndOtherFormats)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    const CMOXTexture before = texture;
    EXPECT_FALSE(Resize(texture, 0, 4, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 4, 0, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 4, 4, 0, eResizeNearest));
    EXPECT_TRUE(haveSameData(before, texture));

    CMOXTexture other = foreignTexture(); // 2 by 1
    EXPECT_FALSE(Resize(other, 1, 1, 1, eResizeNearest));
    EXPECT_FALSE(Resize(other, 2, 1, 1, eResizeNearest)); // even to its own size
    EXPECT_TRUE(isStillForeign(other));
    CMOXTexture signedBytes = seededTexture<uint8_t>({4, 4});
    signedBytes.setChannelType(eCT_SignedNormalisedByte);
    EXPECT_FALSE(Resize(signedBytes, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(4u, signedBytes.getWidth());
}

TEST(Resize, RefusesAnUnknownFilterAndLeavesTheTexture)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    const CMOXTexture before = texture;
    EXPECT_FALSE(Resize(texture, 2, 2, 1, static_cast<EResizeMode>(3)));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_TRUE(haveSameData(before, texture));
}

TEST(Resize, RefusesAResultOfFourGiBAndLeavesTheTexture)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    const CMOXTexture before = texture;
    EXPECT_FALSE(Resize(texture, 32768, 32768, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, eResizeNearest));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_TRUE(haveSameData(before, texture));
}

TEST(Resize, RefusesATextureThatLacksASurface)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    texture.setNumArrayMembers(2);
    EXPECT_FALSE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(2u, texture.getNumArrayMembers());

    CMOXTexture withoutLevels = seededTexture<uint8_t>({4, 4});
    withoutLevels.setNumMIPLevels(0);
    EXPECT_FALSE(Resize(withoutLevels, 2, 2, 1, eResizeNearest));
}

TEST(Resize, ATextureWithoutFacesIsDoneAtOnce)
{
    CMOXTexture texture = seededTexture<uint8_t>({4, 4});
    texture.setNumFaces(0);
    texture.setNumArrayMembers(0xFFFFFFFF);
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(2u, texture.getWidth());
}
