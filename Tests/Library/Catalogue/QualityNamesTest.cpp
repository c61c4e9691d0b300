#include "Catalogue/QualityNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace moxtexture;

namespace
{

std::vector<std::string> textsOf(MOXPixelWord pixelFormat)
{
    std::vector<std::string> texts;
    for (const std::string_view strText : getQualityNames(pixelFormat))
        texts.emplace_back(strText);
    return texts;
}

} // namespace

TEST(QualityNames, OfMoxtcStartAtNormal)
{
    const std::vector<std::string> expected = {"Fastest (Development Quality)", "Fast (Lower Quality)", "Normal (Good Quality)",
                                               "High (Better Quality)", "Very High (Best Quality)"};
    for (const EMOXTPixelFormat eFormat : {ePF_MOXTC_2bpp_RGB, ePF_MOXTC_4bpp_RGBA, ePF_MOXTCII_2bpp, ePF_MOXTCII_4bpp})
    {
        EXPECT_EQ(expected, textsOf(eFormat));
        EXPECT_EQ(2u, getQualityNames(eFormat).uiDefaultIndex);
    }
}

TEST(QualityNames, OfEtcStartAtFast)
{
    const std::vector<std::string> expected = {"Fast", "Fast Perceptual", "Slow", "Slow Perceptual"};
    for (const EMOXTPixelFormat eFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA})
    {
        EXPECT_EQ(expected, textsOf(eFormat));
        EXPECT_EQ(0u, getQualityNames(eFormat).uiDefaultIndex);
    }
}

TEST(QualityNames, OfAstcStartAtMedium)
{
    const std::vector<std::string> expected = {"Very Fast", "Fast", "Medium", "Thorough", "Exhaustive"};
    for (const EMOXTPixelFormat eFormat : {ePF_ASTC_4x4, ePF_ASTC_12x12, ePF_ASTC_3x3x3, ePF_ASTC_6x6x6})
    {
        EXPECT_EQ(expected, textsOf(eFormat));
        EXPECT_EQ(2u, getQualityNames(eFormat).uiDefaultIndex);
    }
}

TEST(QualityNames, AreNoneForFormatsWithOneQuality)
{
    for (const EMOXTPixelFormat eFormat : {ePF_BC1, ePF_ETC2_RGB_A1, ePF_EAC_R11, ePF_EAC_RG11, ePF_1bpp, ePF_Count})
        EXPECT_TRUE(textsOf(eFormat).empty()) << eFormat;
    EXPECT_TRUE(textsOf(k_RGBA8).empty());
    EXPECT_EQ(0u, getQualityNames(k_RGBA8).uiDefaultIndex);
}

TEST(QualityNames, OfAFormatAreThoseOfItsFamily)
{
    EXPECT_EQ(eQualityMOXTC, getQualityFamily(ePF_MOXTC_2bpp_RGB));
    EXPECT_EQ(eQualityMOXTC, getQualityFamily(ePF_MOXTCII_4bpp));
    EXPECT_EQ(eQualityETC, getQualityFamily(ePF_ETC1));
    EXPECT_EQ(eQualityNone, getQualityFamily(ePF_BC1));
    EXPECT_EQ(eQualityNone, getQualityFamily(ePF_2_Planar_GRGB_8_8_8_8));
    EXPECT_EQ(eQualityETC, getQualityFamily(ePF_ETC2_RGB));
    EXPECT_EQ(eQualityETC, getQualityFamily(ePF_ETC2_RGBA));
    EXPECT_EQ(eQualityNone, getQualityFamily(ePF_ETC2_RGB_A1));
    EXPECT_EQ(eQualityNone, getQualityFamily(ePF_EAC_RG11));
    EXPECT_EQ(eQualityASTC, getQualityFamily(ePF_ASTC_4x4));
    EXPECT_EQ(eQualityASTC, getQualityFamily(ePF_ASTC_6x6x6));
    EXPECT_EQ(eQualityNone, getQualityFamily(ePF_Count));
    EXPECT_EQ(eQualityNone, getQualityFamily(k_RGBA8));

    for (const MOXPixelWord pixelFormat : {MOXPixelWord(ePF_MOXTCII_2bpp), MOXPixelWord(ePF_ETC2_RGB), MOXPixelWord(ePF_ASTC_5x5), k_RGBA8})
        EXPECT_EQ(getQualityNames(getQualityFamily(pixelFormat)).pTexts, getQualityNames(pixelFormat).pTexts);
}
