#include "Codecs/ETC/EtcErrors.h"

#include <gtest/gtest.h>

#include "EtcTestBlocks.h"

using namespace moxtexture;
using namespace etctest;

namespace
{

EtcAlphas flatAlphas(uint8_t ui8Alpha)
{
    EtcAlphas alphas;
    alphas.aui8.fill(ui8Alpha);
    return alphas;
}

} // namespace

TEST(EtcErrors, EqualBlocksHaveNone)
{
    const EtcPixels block = flatEtcBlock(10, 20, 30);
    EXPECT_EQ(0.0, blockErrorRGB(block, block));
    EXPECT_EQ(0.0, blockErrorPerceptual(block, block));
    EXPECT_EQ(0.0, blockErrorRGBA(block, flatAlphas(255), block));
}

TEST(EtcErrors, BlackForWhiteIsTheGreatestError)
{
    const EtcPixels black = flatEtcBlock(0, 0, 0);
    const EtcPixels white = flatEtcBlock(255, 255, 255);
    EXPECT_EQ(16.0 * 3 * 255 * 255, blockErrorRGB(black, white));
    EXPECT_EQ(double{k_uiEtcMaxPlainError}, blockErrorRGB(white, black));
    EXPECT_EQ(k_fEtcMaxError, double{k_uiEtcMaxPerceptualError});
    EXPECT_EQ(1000.0 * 16 * 255 * 255, k_fEtcMaxError);
    EXPECT_NEAR(1040400.0, blockErrorPerceptual(black, white), 1e-6);
}

TEST(EtcErrors, EachPixelCountsOnce)
{
    for (size_t i = 0; i < 16; ++i)
    {
        const EtcPixels block = flatEtcBlock(100, 100, 100);
        EtcPixels decoded = block;
        decoded.aui8Red[i] = 97;
        decoded.aui8Green[i] = 105;
        decoded.aui8Blue[i] = 93;
        EXPECT_EQ(9.0 + 25 + 49, blockErrorRGB(block, decoded));
        EXPECT_EQ(9.0 + 25 + 49, blockErrorRGB(decoded, block));
        EXPECT_EQ(0.299 * 9 + 0.587 * 25 + 0.114 * 49, blockErrorPerceptual(block, decoded));
    }
}

TEST(EtcErrors, ThePerceptualSumWeighsWholeSquaresAndGoesRowByRow)
{
    for (const EtcPixels& block : makeEtcTestBlocks(8, 500))
    {
        const EtcPixels decoded = flatEtcBlock(13, 88, 201);
        double fSum = 0.0;
        for (size_t y = 0; y < 4; ++y)
            for (size_t x = 0; x < 4; ++x)
            {
                const size_t i = etcPixelIndex(x, y);
                const double fRed = 1.0 * block.aui8Red[i] - decoded.aui8Red[i];
                const double fGreen = 1.0 * block.aui8Green[i] - decoded.aui8Green[i];
                const double fBlue = 1.0 * block.aui8Blue[i] - decoded.aui8Blue[i];
                fSum += 0.299 * (fRed * fRed) + 0.587 * (fGreen * fGreen) + 0.114 * (fBlue * fBlue);
            }
        ASSERT_EQ(fSum, blockErrorPerceptual(block, decoded));
    }
}

TEST(EtcErrors, OnlyAlphaAbove128Counts)
{
    const EtcPixels block = flatEtcBlock(0, 0, 0);
    const EtcPixels decoded = flatEtcBlock(1, 2, 3);
    EtcAlphas alphas = flatAlphas(128);
    EXPECT_EQ(0.0, blockErrorRGBA(block, alphas, decoded));
    alphas.aui8[5] = 129;
    EXPECT_EQ(14.0, blockErrorRGBA(block, alphas, decoded));
    alphas.aui8[15] = 255;
    alphas.aui8[0] = 127;
    EXPECT_EQ(28.0, blockErrorRGBA(block, alphas, decoded));
    EXPECT_EQ(16 * 14.0, blockErrorRGBA(block, flatAlphas(255), decoded));
}
