#include "Composition/CanonicalForm.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Core/ByteOrder.h"

using namespace moxtexture;

namespace
{

CMOXTexture fourGreys(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    const uint8_t aui8Greys[4] = {1, 2, 3, 4};
    return CMOXTexture(
        CMOXTextureHeader{layout("r", 8), uiHeight, uiWidth, uiDepth, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false}, aui8Greys);
}

std::vector<int> redsOf(const CMOXTexture& texture)
{
    std::vector<int> reds;
    for (uint32_t i = 0; i < texture.getBlockSize(); i += 4)
        reds.push_back(texture.getDataPtr()[i]);
    return reds;
}

} // namespace

TEST(CanonicalForm, AMirroredYAxisComesOutFlipped)
{
    CMOXTexture texture = fourGreys(2, 2, 1);
    texture.setOrientation(2);
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ((std::vector<int>{3, 4, 1, 2}), redsOf(texture));
    for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
        EXPECT_EQ(0u, texture.getOrientation(eAxis));
}

TEST(CanonicalForm, EachAxisHasItsOwnBit)
{
    CMOXTexture texture = fourGreys(4, 1, 1);
    texture.setOrientation(1);
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ((std::vector<int>{4, 3, 2, 1}), redsOf(texture));

    texture = fourGreys(1, 2, 2);
    texture.setOrientation(4);
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ((std::vector<int>{3, 4, 1, 2}), redsOf(texture));

    texture = fourGreys(1, 2, 2);
    texture.setOrientation(7);
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ((std::vector<int>{4, 3, 2, 1}), redsOf(texture));
}

TEST(CanonicalForm, OtherValuesInTheRecordAreNoOrientation)
{
    CMOXTexture texture = fourGreys(2, 2, 1);
    const uint8_t aui8Odd[3] = {2, 1, 1}; // none of them the axis' own value
    texture.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataOrientation, aui8Odd, 3));
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), redsOf(texture));
}

TEST(CanonicalForm, IsLinear)
{
    // 188 / 255 = 0.737255; (0.737255 + 0.0556) / 1.0556 = 0.751094 to the power 2.4 is 0.503166: 128.3 of 255.
    const uint8_t aui8Pixel[4] = {188, 188, 188, 255};
    CMOXTexture texture(CMOXTextureHeader{k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, false}, aui8Pixel);
    ASSERT_TRUE(toRGBA8Canonical(texture));
    EXPECT_EQ(eCS_Linear, texture.getColourSpace());
    EXPECT_EQ(128, texture.getDataPtr()[0]);
}

TEST(CanonicalForm, TheFloatFormHoldsFourFloats)
{
    CMOXTexture texture = fourGreys(2, 2, 1);
    texture.setOrientation(2);
    ASSERT_TRUE(toRGBAFloatCanonical(texture));
    EXPECT_EQ(k_RGBA32, texture.getPixelFormat());
    EXPECT_EQ(eCT_SignedFloatingPoint, texture.getChannelType());
    EXPECT_EQ(3.0f / 255.0f, loadLE<float>(texture.getDataPtr()));
    EXPECT_EQ(1.0f, loadLE<float>(texture.getDataPtr() + 12));
    EXPECT_EQ(0u, texture.getOrientation(eAxisY));
}

TEST(CanonicalForm, FailsForAnEmptyTexture)
{
    CMOXTexture texture;
    EXPECT_FALSE(toRGBA8Canonical(texture));
}

TEST(UndoOrientation, OutsideTheWorkingFormTellsAndClearsTheRecord)
{
    CMOXTexture texture = fourGreys(2, 2, 1); // 8-bit red is no working form
    texture.setOrientation(2);
    EXPECT_FALSE(undoOrientation(texture));
    EXPECT_EQ(0u, texture.getOrientation(eAxisY));
}

TEST(CanonicalForm, EverySurfaceIsTurnedOnAllAxesAtOnce)
{
    // Two members of two faces, 3 by 2 by 2 with a level below; each red is its own number within the surface.
    CMOXTexture texture(CMOXTextureHeader(layout("r", 8), 2, 3, 2, 2, 2, 2, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 2; ++uiFace)
            for (uint8_t i = 0; i < 12; ++i)
                texture.getDataPtr(0, uiMember, uiFace)[i] = i;
    texture.setOrientation(7);
    ASSERT_TRUE(toRGBAFloatCanonical(texture));
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 2; ++uiFace)
            for (uint32_t i = 0; i < 12; ++i) // mirrored on all three axes, a surface runs backwards
                EXPECT_EQ(static_cast<float>(11 - i) / 255.0f, loadLE<float>(texture.getDataPtr(0, uiMember, uiFace) + 16 * i)) << i;
}

TEST(CanonicalForm, AFailedConversionStillClearsTheRecord)
{
    CMOXTexture texture(CMOXTextureHeader(ePF_BC4, 4, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false)); // no codec
    texture.setOrientation(2);
    EXPECT_FALSE(toRGBA8Canonical(texture));
    EXPECT_EQ(0u, texture.getOrientation(eAxisY));
}
