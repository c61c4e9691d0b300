#include "Composition/WorkingForm.h"

#include <gtest/gtest.h>

#include <vector>

using namespace moxtexture;

namespace
{

CMOXTexture makeTexture(MOXPixelWord pixelFormat, EMOXTChannelType eType, EMOXTColourSpace eSpace, uint32_t uiWidth, uint32_t uiHeight)
{
    return CMOXTexture(CMOXTextureHeader(pixelFormat, uiHeight, uiWidth, 1, 1, 1, 1, eSpace, eType, false));
}

struct FormRow
{
    MOXPixelWord workingFormat;
    EMOXTChannelType eWorkingType;
    uint32_t uiFirstType, uiLastType;
    uint8_t uiBits;
};

constexpr FormRow k_aForms[] = {
    {k_RGBA8, eCT_UnsignedNormalisedByte, 0, 3, 8},       {k_RGBA16, eCT_UnsignedNormalisedShort, 4, 7, 16},
    {k_RGBA32, eCT_UnsignedNormalisedInteger, 8, 11, 32}, {k_RGBA32, eCT_SignedFloatingPoint, 12, 12, 32},
    {k_RGBA32, eCT_SignedFloatingPoint, 13, 13, 16},
};

} // namespace

TEST(WorkingForm, HasTheWidthOfTheChannelTypeAndKeepsTheColourSpace)
{
    for (const FormRow& row : k_aForms)
        for (uint32_t uiType = row.uiFirstType; uiType <= row.uiLastType; ++uiType)
            for (const EMOXTColourSpace eSpace : {eCS_Linear, eCS_sRGB})
            {
                SCOPED_TRACE(uiType);
                CMOXTexture texture =
                    makeTexture(layout("rg", row.uiBits, row.uiBits), static_cast<EMOXTChannelType>(uiType), eSpace, 3, 2);
                ASSERT_TRUE(toWorkingForm(texture));
                EXPECT_EQ(row.workingFormat.getWord(), texture.getPixelFormat().getWord());
                EXPECT_EQ(row.eWorkingType, texture.getChannelType());
                EXPECT_EQ(eSpace, texture.getColourSpace());
                EXPECT_EQ(3u, texture.getWidth());
                EXPECT_EQ(2u, texture.getHeight());
            }
}

TEST(WorkingForm, OfAPackedLayoutGoesByTheChannelTypeNotByTheBits)
{
    CMOXTexture texture = makeTexture(layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_Linear, 1, 1);
    texture.getDataPtr()[0] = 0x00;
    texture.getDataPtr()[1] = 0xF8; // all bits of red
    ASSERT_TRUE(toWorkingForm(texture));
    EXPECT_EQ(k_RGBA16.getWord(), texture.getPixelFormat().getWord());
    const std::vector<uint8_t> expected = {0xFF, 0xFF, 0, 0, 0, 0, 0xFF, 0xFF};
    EXPECT_EQ(expected, std::vector<uint8_t>(texture.getDataPtr(), texture.getDataPtr() + 8));
}

TEST(WorkingForm, OfACompressedTextureIsThatOfItsIntermediate)
{
    CMOXTexture texture = makeTexture(ePF_BC1, eCT_UnsignedNormalisedByte, eCS_sRGB, 4, 4);
    ASSERT_TRUE(toWorkingForm(texture));
    EXPECT_EQ(k_RGBA8.getWord(), texture.getPixelFormat().getWord());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
}

TEST(WorkingForm, HasTheOrientationUndone)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 1, 2);
    const std::vector<uint8_t> rows = {1, 2, 3, 4, 5, 6, 7, 8};
    std::copy(rows.begin(), rows.end(), texture.getDataPtr());
    texture.setOrientation(2);
    ASSERT_TRUE(toWorkingForm(texture));
    const std::vector<uint8_t> expected = {5, 6, 7, 8, 1, 2, 3, 4};
    EXPECT_EQ(expected, std::vector<uint8_t>(texture.getDataPtr(), texture.getDataPtr() + 8));
    EXPECT_EQ(0u, texture.getOrientation(eAxisY));
}

TEST(WorkingForm, IsRefusedForWhatHasNone)
{
    CMOXTexture noTexture;
    EXPECT_FALSE(toWorkingForm(noTexture));
    CMOXTexture unknownType = makeTexture(k_RGBA8, static_cast<EMOXTChannelType>(14), eCS_Linear, 1, 1);
    EXPECT_FALSE(toWorkingForm(unknownType));
}
