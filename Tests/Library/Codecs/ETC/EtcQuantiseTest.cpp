#include "Codecs/ETC/EtcQuantise.h"

#include <gtest/gtest.h>

#include "EtcTestBlocks.h"
#include "ReferenceEtcQuantise.h"

namespace
{

using namespace moxtexture;
using namespace etctest;

constexpr EtcColour rgb(uint8_t ui8Red, uint8_t ui8Green, uint8_t ui8Blue)
{
    return {ui8Red, ui8Green, ui8Blue};
}

constexpr EtcColour grey(uint8_t ui8Level)
{
    return {ui8Level, ui8Level, ui8Level};
}

constexpr EtcMean greyMean(float fLevel)
{
    return {fLevel, fLevel, fLevel};
}

void expectColour(const EtcColour& levels, const EtcColour& bytes, const EtcQuantised& quantised)
{
    EXPECT_EQ(levels, quantised.levels);
    EXPECT_EQ(bytes, quantised.bytes);
}

void expectSame(const EtcQuantised& expected, const EtcQuantised& quantised)
{
    expectColour(expected.levels, expected.bytes, quantised);
}

} // namespace

TEST(EtcQuantise, AHalfsMeanIsAnEighthOfItsSum)
{
    // Row y, column x has red 16 y + 4 x, green 3 more; blue is 255 at (3, 3) alone.
    EtcPixels pixels = flatEtcBlock(0, 0, 0);
    for (size_t i = 0; i < 16; ++i)
    {
        pixels.aui8Red[i] = static_cast<uint8_t>(4 * i);
        pixels.aui8Green[i] = static_cast<uint8_t>(4 * i + 3);
    }
    pixels.aui8Blue[15] = 255;
    // Mean columns 0.5 and 2.5 and mean row 1.5; mean rows 0.5 and 2.5 and mean column 1.5.
    EXPECT_EQ((EtcMean{26.0f, 29.0f, 0.0f}), etcHalfMean(pixels, eEtcLeft));
    EXPECT_EQ((EtcMean{34.0f, 37.0f, 31.875f}), etcHalfMean(pixels, eEtcRight));
    EXPECT_EQ((EtcMean{14.0f, 17.0f, 0.0f}), etcHalfMean(pixels, eEtcTop));
    EXPECT_EQ((EtcMean{46.0f, 49.0f, 31.875f}), etcHalfMean(pixels, eEtcBottom));
}

TEST(EtcQuantise, NearestLevelsRoundHalvesUp)
{
    // 127.5 * 31 / 255 = 15.5. One eighth less: 15.48.
    expectColour(grey(16), grey(132), quantiseNearest555(greyMean(127.5f)));
    expectColour(grey(15), grey(123), quantiseNearest555(greyMean(127.375f)));
    expectColour(rgb(0, 31, 31), rgb(0, 255, 255), quantiseNearest555({4.0f, 255.0f, 251.0f}));
    // 8.5 / 17 = 0.5. One eighth less: 0.4926.
    expectColour(grey(1), grey(17), quantiseNearest444(greyMean(8.5f)));
    expectColour(grey(0), grey(0), quantiseNearest444(greyMean(8.375f)));
    expectColour(rgb(15, 14, 0), rgb(255, 238, 0), quantiseNearest444({255.0f, 246.0f, 0.0f}));
}

TEST(EtcQuantise, FlatGrey128GoesUpInFourBits)
{
    // Low is 7 (119) and high 8 (136): both cost 0. The low errors' squares sum to 3 * 81 = 243, above 192.
    expectColour(grey(8), grey(136), quantiseCombined444(greyMean(128.0f)));
}

TEST(EtcQuantise, TheLimitItselfKeepsTheLowLevels)
{
    // 119 lies 8 below 127: 3 * 64 = 192, not above the limit. One eighth more is.
    expectColour(grey(7), grey(119), quantiseCombined444(greyMean(127.0f)));
    expectColour(grey(8), grey(136), quantiseCombined444(greyMean(127.125f)));
    // 7.875^2 + 8.125^2 + 8^2 = 192.03.
    expectColour(grey(8), grey(136), quantiseCombined444({126.875f, 127.125f, 127.0f}));
}

TEST(EtcQuantise, TheOtherFormsHaveNoLimit)
{
    // 5 bits: low of 131 is 15 (123), high 16 (132), 1 away; 4 bits: low of 135 is 7 (119), high 8 (136), 1 away.
    expectColour(grey(15), grey(123), quantiseCombined555(greyMean(131.0f)));
    expectColour(grey(15), grey(123), quantiseCombined555Perceptual(greyMean(131.0f)));
    expectColour(grey(7), grey(119), quantiseCombined444Perceptual(greyMean(135.0f)));
}

TEST(EtcQuantise, ChannelsRoundTogetherToKeepTheHue)
{
    // Errors low and high: red and blue -1 and 16, green -16 and 1. Low, high, low: (-1, 1, -1), cost 4 + 0 + 4.
    expectColour(rgb(7, 8, 7), rgb(119, 136, 119), quantiseCombined444({120.0f, 135.0f, 120.0f}));
    // 5 bits, 15 is 123 and 16 is 132: red -8 and 1, green and blue -1 and 8. High, low, low: (1, -1, -1), cost 4 + 4 + 0.
    expectColour(rgb(16, 15, 15), rgb(132, 123, 123), quantiseCombined555({131.0f, 124.0f, 124.0f}));
}

TEST(EtcQuantise, TheEyeTellsRedFromGreenBest)
{
    // Errors low and high: red -6, 11, green -13, 4, blue 0, 17.
    // Low, high, low: 100 + 36 + 16 = 152; weighted 17.55 + 1.23 + 1.07 = 19.85.
    // High, high, low: 49 + 121 + 16 = 186; weighted 8.60 + 4.12 + 1.07 = 13.80.
    const EtcMean mean = {125.0f, 132.0f, 119.0f};
    expectColour(rgb(7, 8, 7), rgb(119, 136, 119), quantiseCombined444(mean));
    expectColour(rgb(8, 8, 7), rgb(136, 136, 119), quantiseCombined444Perceptual(mean));
}

TEST(EtcQuantise, OfEqualChoicesTheFirstStays)
{
    // Errors low and high: red and green -8.5, 8.5, blue 0, 17. Low low low, high high low and high high high all cost 2 * 72.25;
    // the low errors' squares sum to 144.5, below the limit.
    const EtcMean mean = {8.5f, 8.5f, 17.0f};
    expectColour(rgb(0, 0, 1), rgb(0, 0, 17), quantiseCombined444(mean));
    expectColour(rgb(0, 0, 1), rgb(0, 0, 17), quantiseCombined444Perceptual(mean));
}

TEST(EtcQuantise, TheHighestLevelHasNoneAbove)
{
    expectColour(grey(15), grey(255), quantiseCombined444(greyMean(255.0f)));
    expectColour(grey(31), grey(255), quantiseCombined555(greyMean(255.0f)));
    expectColour(grey(15), grey(255), quantiseCombined444Perceptual(greyMean(255.0f)));
    expectColour(grey(31), grey(255), quantiseCombined555Perceptual(greyMean(255.0f)));
}

TEST(EtcQuantise, AnOffsetReachesFromMinusFourToThree)
{
    EXPECT_TRUE(isEtcDifferential(rgb(10, 10, 10), rgb(6, 13, 10)));
    EXPECT_FALSE(isEtcDifferential(rgb(10, 10, 10), rgb(5, 10, 10)));
    EXPECT_FALSE(isEtcDifferential(rgb(10, 10, 10), rgb(10, 14, 10)));
    EXPECT_FALSE(isEtcDifferential(rgb(10, 10, 0), rgb(10, 10, 31)));
}

TEST(EtcQuantise, GivesTheReferencesLevelsForEveryMeanOfAChannel)
{
    for (uint32_t uiSum = 0; uiSum <= 8 * 255; ++uiSum)
    {
        const float fMean = static_cast<float>(uiSum) / 8.0f;
        const EtcMean mean = {fMean, 255.0f - fMean, fMean / 2.0f};
        expectSame(etcreference::quantiseNearest555(mean), quantiseNearest555(mean));
        expectSame(etcreference::quantiseNearest444(mean), quantiseNearest444(mean));
    }
}

TEST(EtcQuantise, GivesTheReferencesLevels)
{
    for (const EtcPixels& pixels : makeEtcTestBlocks(54, 30000))
        for (const EEtcHalf eHalf : {eEtcLeft, eEtcBottom})
        {
            const EtcMean mean = etcreference::halfMean(pixels, eHalf);
            EXPECT_EQ(mean, etcHalfMean(pixels, eHalf));
            expectSame(etcreference::quantiseCombined444(mean), quantiseCombined444(mean));
            expectSame(etcreference::quantiseCombined555(mean), quantiseCombined555(mean));
            expectSame(etcreference::quantiseCombined444Perceptual(mean), quantiseCombined444Perceptual(mean));
            expectSame(etcreference::quantiseCombined555Perceptual(mean), quantiseCombined555Perceptual(mean));
        }
}
