#include "Files/LoadLimits.h"

#include <gtest/gtest.h>

using namespace moxtexture;

namespace
{

constexpr uint64_t k_ui64MiB = 1 << 20;

/// One byte a pixel.
CMOXTexture bytePixels(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels = 1, uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    CMOXTexture texture;
    static_cast<CMOXTextureHeader&>(texture) = CMOXTextureHeader(layout("r", 8), uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces,
                                                                 eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return texture;
}

bool isTaken(CMOXTexture texture, uint64_t ui64FileSize)
{
    const bool bTaken = takeDataBlock(texture, ui64FileSize);
    EXPECT_EQ(texture.getDataSize(), texture.getBlockSize());
    EXPECT_EQ(!bTaken, texture.getPixelFormat() == MOXPixelWord(ePF_Count));
    return bTaken;
}

} // namespace

TEST(LoadLimits, TheBlockIsAllZeros)
{
    CMOXTexture texture = bytePixels(3, 2);
    ASSERT_TRUE(takeDataBlock(texture, 0));
    ASSERT_EQ(6u, texture.getBlockSize());
    for (uint32_t i = 0; i < 6; ++i)
        EXPECT_EQ(0, texture.getDataPtr()[i]);
}

TEST(LoadLimits, AnyFileMayClaim256MiB)
{
    EXPECT_TRUE(isTaken(bytePixels(16384, 16384), 1)); // 2^14 * 2^14 = 2^28
    EXPECT_FALSE(isTaken(bytePixels(16385, 16384), 1));
}

TEST(LoadLimits, BeyondThatAFileMayClaimSixteenTimesItsLength)
{
    // 16385 * 16384 = 268451840 = 16 * 16778240
    EXPECT_TRUE(isTaken(bytePixels(16385, 16384), 16778240));
    EXPECT_FALSE(isTaken(bytePixels(16385, 16384), 16778239));
    EXPECT_TRUE(isTaken(bytePixels(16385, 16384), ~uint64_t{0})) << "a file that claims to be endless";
}

TEST(LoadLimits, ABlockOfFourGiBIsRefusedHoweverLongTheFile)
{
    EXPECT_FALSE(isTaken(bytePixels(65536, 65536), 8192 * k_ui64MiB));
    EXPECT_FALSE(isTaken(bytePixels(0xFFFFFFFF, 0xFFFFFFFF, 1, 0xFFFFFFFF, 0xFFFFFFFF), ~uint64_t{0}));
}

TEST(LoadLimits, ThirtyTwoLevelsAreTheMost)
{
    EXPECT_TRUE(isTaken(bytePixels(1, 1, 32), 100));
    EXPECT_FALSE(isTaken(bytePixels(1, 1, 33), 100));
    EXPECT_FALSE(isTaken(bytePixels(1, 1, 0xFFFFFFFF), 100));
}

TEST(LoadLimits, PixelsBeyond1GiBAsRGBAMustBeNoMoreThan64TimesTheFile)
{
    // 16384 * 16384 pixels are 1 GiB as RGBA, and as BC1 128 MiB.
    CMOXTexture texture = bytePixels(16384, 16384);
    texture.setPixelFormat(ePF_BC1);
    EXPECT_TRUE(isTaken(texture, 1));
    texture.setHeight(16388); // 16384 * 16388 * 4 = 1074003968 = 64 * 16781312
    EXPECT_FALSE(isTaken(texture, 16781311));
    EXPECT_TRUE(isTaken(texture, 16781312));
}

TEST(LoadLimits, AFileWithAllOfItsDataMayBeOfTheDensestFormat)
{
    CMOXTexture texture = bytePixels(1200, 1200);
    texture.setPixelFormat(ePF_ASTC_6x6x6);
    texture.setDepth(600);
    ASSERT_EQ(64000000u, texture.getDataSize()); // 200 * 200 * 100 blocks of 16 bytes; 864,000,000 pixels
    EXPECT_TRUE(isTaken(texture, 64000052));
    EXPECT_FALSE(isTaken(texture, 52));
}

TEST(LoadLimits, SurfacesBeyond65536MustBeNoMoreThanTheBytesOfTheFile)
{
    EXPECT_TRUE(isTaken(bytePixels(1, 1, 2, 4096, 8), 1));       // 2 * 4096 * 8 = 65536
    EXPECT_FALSE(isTaken(bytePixels(1, 1, 1, 65537, 1), 65536)); // one more
    EXPECT_TRUE(isTaken(bytePixels(1, 1, 1, 65537, 1), 65537));
    EXPECT_FALSE(isTaken(bytePixels(1, 1, 1, 1, 0x0FFFFFFF), 100)) << "less than 256 MiB, and hours to walk over";
}

TEST(LoadLimits, SurfacesOfNoBytesAreCountedToo)
{
    CMOXTexture texture = bytePixels(1, 1, 1, 0xFFFFFFFF, 0xFFFFFFFF);
    texture.setPixelFormat(layout("r", 1)); // an eighth of a byte, cut to none
    ASSERT_EQ(0u, texture.getDataSize());
    EXPECT_FALSE(isTaken(texture, 100));
}

TEST(LoadLimits, ALoadThatEndedEarlyMeasuresNothingAndKeepsItsOtherFields)
{
    CMOXTexture texture = bytePixels(8, 4, 2);
    ASSERT_TRUE(texture.allocateData());
    leaveWithoutData(texture);
    EXPECT_EQ(0u, texture.getDataSize());
    EXPECT_EQ(0u, texture.getBlockSize());
    EXPECT_EQ(nullptr, texture.getDataPtr());
    EXPECT_EQ(8u, texture.getWidth());
    EXPECT_EQ(4u, texture.getHeight());
    EXPECT_EQ(2u, texture.getNumMIPLevels());
}
