#include "Codecs/ETC/EtcDecodeBlock.h"

#include <gmock/gmock.h>

#include "EtcDecodedBlock.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace etctest;
using testing::Each;
using testsupport::CSeededRandom;

namespace
{

bool equal(const EtcPixels& a, const EtcPixels& b)
{
    return a.aui8Red == b.aui8Red && a.aui8Green == b.aui8Green && a.aui8Blue == b.aui8Blue;
}

/// A planar block, compact, whose three channels have the same bytes at (0, 0), (4, 0) and (0, 4): each 0 or 255.
EtcBlockWords blackAndWhitePlane(bool bOrigin, bool bHorizontal, bool bVertical)
{
    const uint32_t o = bOrigin ? 127 : 0, h = bHorizontal ? 127 : 0, v = bVertical ? 127 : 0;
    return {(o & 63) << 26 | o << 19 | (o & 63) << 13 | (h & 63) << 7 | h, (h & 63) << 26 | (v & 63) << 20 | v << 13 | (v & 63) << 7};
}

} // namespace

TEST(EtcDecodeBlock, IndividualModeHasTwoColoursOfFourBitLevels)
{
    // Levels 1, 2, 3 and 4, 5, 6: 17, 34, 51 and 68, 85, 102. Table 5 adds 24, 80, -24, -80, table 2 adds 9, 29, -9, -29.
    const EtcBlockWords words = {0x142536A8, k_ui32EveryIndex};
    for (const EtcPixels& pixels : {decodeEtcPixelsETC1(words), decodeEtcPixelsETC2(words)})
        for (size_t y = 0; y < 4; ++y)
            EXPECT_EQ((Row{{41, 58, 75}, {97, 114, 131}, {59, 76, 93}, {39, 56, 73}}), rowOf(pixels, y));
}

TEST(EtcDecodeBlock, FlipSplitsABlockIntoTopAndBottom)
{
    const EtcPixels pixels = decodeEtcPixelsETC1({0x142536A9, k_ui32EveryIndex});
    for (size_t y = 0; y < 2; ++y)
        EXPECT_EQ((Row{{41, 58, 75}, {97, 114, 131}, {0, 10, 27}, {0, 0, 0}}), rowOf(pixels, y));
    for (size_t y = 2; y < 4; ++y)
        EXPECT_EQ((Row{{77, 94, 111}, {97, 114, 131}, {59, 76, 93}, {39, 56, 73}}), rowOf(pixels, y));
}

TEST(EtcDecodeBlock, DifferentialModeAddsItsDeltasToFiveBitLevels)
{
    // Levels 10, 20, 30 (82, 165, 247) and 13, 16, 30 (107, 132, 247); table 1 adds 5 and 17, table 7 takes away 47 and 183.
    const EtcBlockWords words = {0x53A4F03E, k_ui32EveryIndex};
    for (const EtcPixels& pixels : {decodeEtcPixelsETC1(words), decodeEtcPixelsETC2(words)})
        EXPECT_EQ((Row{{87, 170, 252}, {99, 182, 255}, {60, 85, 200}, {0, 0, 64}}), rowOf(pixels, 3));
}

TEST(EtcDecodeBlock, ETC1IgnoresThatASumOverflows)
{
    // Red 31 + 3 = 34, in 8 bits 34 * 8 | 34 / 4 = 280, less 256: 24. Green 0 - 1 is 255: all bits. Blue 0 - 4 is 252: 11100000 |
    // 00111111. The second half is at the right; tables 0, index 0 adds 2.
    const EtcPixels pixels = decodeEtcPixelsETC1({0xFB070402, 0});
    EXPECT_EQ((Row{{255, 2, 2}, {255, 2, 2}, {26, 255, 255}, {26, 255, 255}}), rowOf(pixels, 0));
}

TEST(EtcDecodeBlock, TModeHasTheFirstColourAndThreeOfTheSecond)
{
    // 15, 2, 3: 255, 34, 51. 4, 5, 6: 68, 85, 102, and it with the distance 3 (index 0), or 64 (index 7), added and taken away.
    EXPECT_EQ((Row{{255, 34, 51}, {71, 88, 105}, {68, 85, 102}, {65, 82, 99}}),
              rowOf(decodeEtcPixelsETC2({0xFB234562, k_ui32EveryIndex}), 1));
    EXPECT_EQ((Row{{255, 34, 51}, {132, 149, 166}, {68, 85, 102}, {4, 21, 38}}),
              rowOf(decodeEtcPixelsETC2({0xFB23456F, k_ui32EveryIndex}), 2));
}

TEST(EtcDecodeBlock, TModePaintsAreClamped)
{
    // Red 0 (000 00 1 00: the sum is negative); second colour 15, 0, 8: 255, 0, 136, distance 64.
    EXPECT_EQ((Row{{0, 0, 0}, {255, 64, 200}, {255, 0, 136}, {191, 0, 72}}), rowOf(decodeEtcPixelsETC2({0x0400F08F, k_ui32EveryIndex}), 0));
}

TEST(EtcDecodeBlock, HModeHasTwoOfEachColour)
{
    // 5, 9, 12: 85, 153, 204, and 5, 9, 11: 85, 153, 187. Distance bits 10, and 1 as the first colour isn't below: 5, which is 32.
    EXPECT_EQ((Row{{117, 185, 236}, {53, 121, 172}, {117, 185, 219}, {53, 121, 155}}),
              rowOf(decodeEtcPixelsETC2({0xACFA2CDE, k_ui32EveryIndex}), 0));
}

TEST(EtcDecodeBlock, TheOrderOfHModesColoursIsTheLowestBitOfItsDistance)
{
    const auto firstPixel = [](uint32_t uiFirst, uint32_t uiSecond) {
        return pixelAt(decodeEtcPixelsH({uiFirst << 14 | uiSecond << 2 | 2, 0}), 0, 0)[0];
    };
    EXPECT_EQ(0x55 + 23, firstPixel(0x59B, 0x59C)); // index 4
    EXPECT_EQ(0x55 + 32, firstPixel(0x59C, 0x59B)); // index 5
    EXPECT_EQ(0x55 + 32, firstPixel(0x59C, 0x59C)); // equal counts as not below
    EXPECT_EQ(0x55 + 23, firstPixel(0x5FF, 0x600)); // red decides first
    EXPECT_EQ(0x66 + 32, firstPixel(0x600, 0x5FF));
}

TEST(EtcDecodeBlock, PlanarModeInterpolatesFromThreeCorners)
{
    // O 42, 85, 51 as 6, 7, 6 bits: 170, 171, 207. H 27, 78, 33: 109, 157, 134. V 22, 51, 56: 89, 102, 227.
    // Red at (x, y) is (4 * 170 + 2 - 61 x - 81 y) / 4 and so on, rounded down.
    const EtcPixels pixels = decodeEtcPixelsETC2({0x55AB15B7, 0x9D0ACCF8});
    EXPECT_EQ((std::array<int, 3>{170, 171, 207}), pixelAt(pixels, 0, 0));
    EXPECT_EQ((std::array<int, 3>{(682 - 183) / 4, (686 - 42) / 4, (830 - 219) / 4}), pixelAt(pixels, 3, 0));
    EXPECT_EQ((std::array<int, 3>{(682 - 243) / 4, (686 - 207) / 4, (830 + 60) / 4}), pixelAt(pixels, 0, 3));
    EXPECT_EQ((std::array<int, 3>{(682 - 426) / 4, (686 - 249) / 4, (830 - 159) / 4}), pixelAt(pixels, 3, 3));
    EXPECT_EQ((std::array<int, 3>{(682 - 61 - 162) / 4, (686 - 14 - 138) / 4, (830 - 73 + 40) / 4}), pixelAt(pixels, 1, 2));
}

TEST(EtcDecodeBlock, PlanarModeIsClampedAtBothEnds)
{
    // From 0 up to 255 at both corners: (2 + 255 (x + y)) / 4, which passes 255 from x + y = 4 on (1022 / 4 = 255).
    const EtcPixels up = decodeEtcPixelsPlanar(blackAndWhitePlane(false, true, true));
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            constexpr int k_aiExpected[7] = {0, 64, 128, 191, 255, 255, 255};
            const int iExpected = k_aiExpected[x + y];
            EXPECT_EQ((std::array<int, 3>{iExpected, iExpected, iExpected}), pixelAt(up, x, y));
        }
    // From 255 down to 0: (1022 - 255 (x + y)) / 4; at x + y = 5 it is negative.
    const EtcPixels down = decodeEtcPixelsPlanar(blackAndWhitePlane(true, false, false));
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            constexpr int k_aiExpected[7] = {255, 191, 128, 64, 0, 0, 0};
            const int iExpected = k_aiExpected[x + y];
            EXPECT_EQ((std::array<int, 3>{iExpected, iExpected, iExpected}), pixelAt(down, x, y));
        }
}

TEST(EtcDecodeBlock, RedDecidesBeforeGreenAndGreenBeforeBlue)
{
    // A byte of 0xFB is 31 + 3, one of 0x04 is 0 - 4; 0x50 is 10 + 0.
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(0xFBFBFB02));
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(0x04FB5002));
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(0xFB505002));
    EXPECT_EQ(eEtcH, getEtcDifferentialMode(0x50FBFB02));
    EXPECT_EQ(eEtcH, getEtcDifferentialMode(0x50045002));
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(0x5050FB02));
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(0x50500402));
    EXPECT_EQ(eEtcDifferential, getEtcDifferentialMode(0x50505002));
}

TEST(EtcDecodeBlock, TheHighestAndLowestSumsThatAreLevelsAreDifferential)
{
    // 28 + 3 = 31 and 4 - 4 = 0; one further each is no level.
    EXPECT_EQ(eEtcDifferential, getEtcDifferentialMode(0xE3E3E302));
    EXPECT_EQ(eEtcDifferential, getEtcDifferentialMode(0x24242402));
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(0xEBE3E302));
    EXPECT_EQ(eEtcH, getEtcDifferentialMode(0xE3EBE302));
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(0xE3E3EB02));
    EXPECT_EQ(eEtcT, getEtcDifferentialMode(0x1C242402));
    EXPECT_EQ(eEtcH, getEtcDifferentialMode(0x241C2402));
    EXPECT_EQ(eEtcPlanar, getEtcDifferentialMode(0x24241C02));
}

TEST(EtcDecodeBlock, WithoutTheDiffBitNothingOverflows)
{
    const EtcBlockWords words = {0xFBFBFB00, 0};
    EXPECT_TRUE(equal(decodeEtcPixelsETC1(words), decodeEtcPixelsETC2(words)));
    EXPECT_EQ((std::array<int, 3>{255, 255, 255}), pixelAt(decodeEtcPixelsETC2(words), 0, 0));
    EXPECT_EQ((std::array<int, 3>{189, 189, 189}), pixelAt(decodeEtcPixelsETC2(words), 3, 0)); // level 11 and 2
}

TEST(EtcDecodeBlock, ABlockIsWrittenAtItsPlaceAndNowhereElse)
{
    constexpr uint32_t kStride = 9;
    const EtcBlockWords words = {CSeededRandom(3).next32(), CSeededRandom(4).next32()};
    const std::pair<decltype(&etcDecodeBlockETC1), EtcPixels> aCases[] = {{etcDecodeBlockETC1, decodeEtcPixelsETC1(words)},
                                                                          {etcDecodeBlockETC2, decodeEtcPixelsETC2(words)}};
    for (const auto& [decode, pixels] : aCases)
    {
        std::vector<uint8_t> image(kStride * 7 * 3, 99);
        decode(words, image.data(), kStride, 3, 2);
        for (size_t y = 0; y < 7; ++y)
            for (size_t x = 0; x < kStride; ++x)
            {
                const bool bInside = x >= 3 && x < 7 && y >= 2 && y < 6;
                const std::array<int, 3> expected = bInside ? pixelAt(pixels, x - 3, y - 2) : std::array<int, 3>{99, 99, 99};
                for (size_t i = 0; i < 3; ++i)
                    EXPECT_EQ(expected[i], image[(y * kStride + x) * 3 + i]) << x << ", " << y;
            }
    }
}
