#include "Codecs/ETC/EtcTryTables.h"

#include <gtest/gtest.h>

#include "EtcTestBlocks.h"
#include "ReferenceEtcTryTables.h"
#include "Support/EveryInstructionSet.h"

namespace
{

using namespace moxtexture;
using namespace etctest;

constexpr EEtcHalf k_aeHalves[] = {eEtcLeft, eEtcRight, eEtcTop, eEtcBottom};

template <typename E>
void expectSameFit(const EtcHalfFit<E>& expected, const EtcHalfFit<E>& fit)
{
    EXPECT_EQ(expected.uiTable, fit.uiTable);
    EXPECT_EQ(expected.ui32Indices, fit.ui32Indices);
    EXPECT_EQ(expected.error, fit.error);
}

/// A block of greys, by rows.
EtcPixels greyBlock(const std::array<uint8_t, 16>& aui8Levels)
{
    EtcPixels pixels;
    pixels.aui8Red = aui8Levels;
    pixels.aui8Green = aui8Levels;
    pixels.aui8Blue = aui8Levels;
    return pixels;
}

/// Base grey 100: seven pixels that table 0's -8 meets, and one that lies 8, 2 and 8 above the base.
EtcPixels blockWithOneColouredPixel()
{
    EtcPixels pixels = flatEtcBlock(92, 92, 92);
    pixels.aui8Red[0] = 108;
    pixels.aui8Green[0] = 102;
    pixels.aui8Blue[0] = 108;
    return pixels;
}

constexpr EtcColour k_grey100 = {100, 100, 100};

} // namespace

TEST(EtcTryTables, OnlyTheBitsOfTheHalfAreSet)
{
    // 92 is 100 - 8: table 0, position 0, whose index is 3. Pixel (x, y) has bit x * 4 + y.
    const EtcPixels pixels = flatEtcBlock(92, 92, 92);
    constexpr uint32_t k_aui32Bits[] = {0x00FF00FF, 0xFF00FF00, 0x33333333, 0xCCCCCCCC};
    forEachInstructionSet(
        [&]
        {
            for (const EEtcHalf eHalf : k_aeHalves)
            {
                SCOPED_TRACE(eHalf);
                expectSameFit({0, k_aui32Bits[eHalf], 0}, tryAllTables(pixels, eHalf, k_grey100));
                expectSameFit({0, k_aui32Bits[eHalf], 0.0f}, tryAllTablesPerceptual(pixels, eHalf, k_grey100));
                expectSameFit({0, k_aui32Bits[eHalf], 0}, tryAllTablesWeighted(pixels, eHalf, k_grey100));
            }
        });
}

TEST(EtcTryTables, ThePositionsAreStoredAsThreeTwoZeroOne)
{
    // Down each column -8, -2, 2, 8: indices 3, 2, 0, 1, so the msb plane is 0011 and the lsb plane 1001 a column.
    const EtcPixels pixels = greyBlock({92, 92, 92, 92, 98, 98, 98, 98, 102, 102, 102, 102, 108, 108, 108, 108});
    forEachInstructionSet(
        [&]
        {
            expectSameFit({0, 0x00330099, 0}, tryAllTables(pixels, eEtcLeft, k_grey100));
            expectSameFit({0, 0x33009900, 0}, tryAllTables(pixels, eEtcRight, k_grey100));
        });
}

TEST(EtcTryTables, ACandidateIsClampedInEachChannel)
{
    // 250 + 8 is clamped to 255, as are 250 + 17 and further ones of later tables; 5 - 8 to 0. The green channel takes them apart:
    // a pixel of 255, 108, 255 is met by table 0's +8 exactly.
    forEachInstructionSet(
        [&]
        {
            expectSameFit({0, 0x000000FF, 0}, tryAllTables(flatEtcBlock(255, 108, 255), eEtcLeft, {250, 100, 250}));
            expectSameFit({0, 0x00FF00FF, 0}, tryAllTables(flatEtcBlock(0, 92, 0), eEtcLeft, {5, 100, 5}));
        });
}

TEST(EtcTryTables, OfEqualModifiersTheEarlierIsTaken)
{
    // 100 lies 2 from both 98 and 102 of table 0: position 1, index 2. Every pixel costs 3 * 4, weighted 1000 * 4.
    forEachInstructionSet(
        [&]
        {
            expectSameFit({0, 0x00FF0000, 96}, tryAllTables(flatEtcBlock(100, 100, 100), eEtcLeft, k_grey100));
            expectSameFit({0, 0x00FF0000, 32000}, tryAllTablesWeighted(flatEtcBlock(100, 100, 100), eEtcLeft, k_grey100));
        });
}

TEST(EtcTryTables, OfEqualTablesTheEarlierIsTaken)
{
    // Black from base 0: both negative modifiers of every table are clamped to it.
    forEachInstructionSet(
        [&]
        {
            for (const EEtcHalf eHalf : k_aeHalves)
            {
                EXPECT_EQ(0u, tryAllTables(flatEtcBlock(0, 0, 0), eHalf, {0, 0, 0}).uiTable);
                EXPECT_EQ(0u, tryAllTablesPerceptual(flatEtcBlock(0, 0, 0), eHalf, {0, 0, 0}).uiTable);
            }
        });
}

TEST(EtcTryTables, TheLastTableIsFound)
{
    // 100 + 47 and 100 - 47; its outer modifiers are clamped to 0 and 255.
    const EtcPixels pixels = greyBlock({147, 147, 53, 53, 147, 147, 53, 53, 255, 255, 0, 0, 255, 255, 0, 0});
    forEachInstructionSet(
        [&]
        {
            // Left, both columns: positions 2, 2, 3, 3 are indices 0, 0, 1, 1.
            expectSameFit({7, 0x000000CC, 0}, tryAllTables(pixels, eEtcLeft, k_grey100));
            // Right: positions 1, 1, 0, 0 are indices 2, 2, 3, 3.
            expectSameFit({7, 0xFF00CC00, 0}, tryAllTables(pixels, eEtcRight, k_grey100));
        });
}

TEST(EtcTryTables, ThePlainMeasureWeighsTheChannelsAlike)
{
    // The coloured pixel lies 6, 0, 6 from +2 (72) and 0, 6, 0 from +8 (36): +8 is position 3, index 1.
    forEachInstructionSet([&] { expectSameFit({0, 0x00FE00FF, 36}, tryAllTables(blockWithOneColouredPixel(), eEtcLeft, k_grey100)); });
}

TEST(EtcTryTables, ThePerceptualMeasuresPreferGreen)
{
    // +2 costs 36 * (0.299 + 0.114) = 14.868 and +8 costs 36 * 0.587 = 21.132: +2 is position 2, index 0.
    forEachInstructionSet(
        [&]
        {
            const EtcHalfFit<float> fit = tryAllTablesPerceptual(blockWithOneColouredPixel(), eEtcLeft, k_grey100);
            EXPECT_EQ(0u, fit.uiTable);
            EXPECT_EQ(0x00FE00FEu, fit.ui32Indices);
            EXPECT_FLOAT_EQ(14.868f, fit.error);
            expectSameFit({0, 0x00FE00FE, 14868}, tryAllTablesWeighted(blockWithOneColouredPixel(), eEtcLeft, k_grey100));
        });
}

TEST(EtcTryTables, EveryChannelHasItsOwnWeight)
{
    // Pixels of 102 are met by table 0's +2; one is 1 off in one channel.
    constexpr float k_afWeights[3] = {0.299f, 0.587f, 0.114f};
    constexpr uint32_t k_auiWeights[3] = {299, 587, 114};
    for (size_t c = 0; c < 3; ++c)
    {
        EtcPixels pixels = flatEtcBlock(102, 102, 102);
        (*planesOf(pixels)[c])[0] = 103;
        forEachInstructionSet(
            [&]
            {
                expectSameFit({0, 0, 1}, tryAllTables(pixels, eEtcLeft, k_grey100));
                expectSameFit({0, 0, k_afWeights[c]}, tryAllTablesPerceptual(pixels, eEtcLeft, k_grey100));
                expectSameFit({0, 0, k_auiWeights[c]}, tryAllTablesWeighted(pixels, eEtcLeft, k_grey100));
            });
    }
}

TEST(EtcTryTables, AFloatErrorTakesRedAndGreenFirst)
{
    // 255 - 183 is 72; one pixel lies 3, 5 and 7 below. In single precision 0.299 * 9 + 0.587 * 25 + 0.114 * 49 makes 22.952002,
    // but 22.952000 if green and blue are added first.
    EtcPixels pixels = flatEtcBlock(72, 72, 72);
    pixels.aui8Red[0] = 69;
    pixels.aui8Green[0] = 67;
    pixels.aui8Blue[0] = 65;
    constexpr float k_fRed = 0.299f * 9.0f;
    constexpr float k_fGreen = 0.587f * 25.0f;
    constexpr float k_fBlue = 0.114f * 49.0f;
    constexpr float k_fExpected = (k_fRed + k_fGreen) + k_fBlue;
    static_assert(k_fExpected != k_fRed + (k_fGreen + k_fBlue));
    forEachInstructionSet([&] { expectSameFit({7, 0x00FF00FF, k_fExpected}, tryAllTablesPerceptual(pixels, eEtcLeft, {255, 255, 255})); });
}

TEST(EtcTryTables, FloatErrorsAreAddedDownTheColumns)
{
    // From white, table 7's -183 makes 72. Black pixels (k) miss it by 72 in all channels, which costs 5184 in single precision;
    // the others by 1 in one channel (r, g or b).
    constexpr char k_acPixels[] = "brgk"
                                  "rbrb"
                                  "kbgb"
                                  "kgbg";
    EtcPixels pixels;
    for (size_t i = 0; i < 16; ++i)
    {
        const char cPixel = k_acPixels[i];
        const auto level = [&](char cChannel) { return static_cast<uint8_t>(cPixel == 'k' ? 0 : cPixel == cChannel ? 73 : 72); };
        pixels.aui8Red[i] = level('r');
        pixels.aui8Green[i] = level('g');
        pixels.aui8Blue[i] = level('b');
    }
    constexpr float r = 0.299f, g = 0.587f, b = 0.114f, k = 5184.0f;
    constexpr float k_fLeft = b + r + k + k + r + b + b + g;
    constexpr float k_fTop = b + r + r + b + g + r + k + b;
    // The last bits differ if they are added along the rows.
    static_assert(k_fLeft != b + r + r + b + k + b + k + g);
    static_assert(k_fTop != b + r + g + k + r + b + r + b);
    forEachInstructionSet(
        [&]
        {
            expectSameFit({7, 0x00FF00FF, k_fLeft}, tryAllTablesPerceptual(pixels, eEtcLeft, {255, 255, 255}));
            expectSameFit({7, 0x33333333, k_fTop}, tryAllTablesPerceptual(pixels, eEtcTop, {255, 255, 255}));
        });
}

TEST(EtcTryTables, NearErrorsOfDifferentChannelsAreToldApart)
{
    // Table 5 is off by 214.771, mostly in blue, and table 6 by 214.834: closer than weights of 55, 108 and 21 can tell, which would
    // take table 6 (39523 against 39550).
    constexpr uint8_t k_aaui8Pixels[8][3] = {{255, 255, 110}, {158, 226, 0},  {152, 231, 0}, {203, 255, 37},
                                             {255, 255, 108}, {203, 255, 37}, {146, 231, 0}, {208, 255, 32}};
    EtcPixels pixels = flatEtcBlock(0, 0, 0);
    for (size_t i = 0; i < 8; ++i)
        for (size_t c = 0; c < 3; ++c)
            (*planesOf(pixels)[c])[i] = k_aaui8Pixels[i][c];
    constexpr EtcColour k_base = {179, 255, 4};
    forEachInstructionSet(
        [&]
        {
            const EtcHalfFit<uint32_t> weighted = tryAllTablesWeighted(pixels, eEtcTop, k_base);
            EXPECT_EQ(5u, weighted.uiTable);
            EXPECT_EQ(214771u, weighted.error);
            const EtcHalfFit<float> perceptual = tryAllTablesPerceptual(pixels, eEtcTop, k_base);
            EXPECT_EQ(5u, perceptual.uiTable);
            EXPECT_NEAR(214.771f, perceptual.error, 0.001f);
        });
}

TEST(EtcTryTables, GiveTheReferencesFits)
{
    const std::vector<EtcPixels> blocks = makeEtcTestBlocks(52, 9000);
    CSeededRandom random(53);
    for (const EtcPixels& pixels : blocks)
    {
        const EEtcHalf eHalf = k_aeHalves[random.below(4)];
        // A base near a pixel of the half, anywhere, or on the edge of the cube.
        EtcColour base;
        const uint32_t uiKind = random.below(4);
        const size_t uiPixel = eHalf == eEtcLeft || eHalf == eEtcTop ? 0 : 15;
        const uint8_t aui8Near[3] = {pixels.aui8Red[uiPixel], pixels.aui8Green[uiPixel], pixels.aui8Blue[uiPixel]};
        for (size_t c = 0; c < 3; ++c)
        {
            if (uiKind < 2)
                base[c] = toByte(aui8Near[c] + around(random, uiKind == 0 ? 10 : 60));
            else
                base[c] = uiKind == 2 ? toByte(around(random, 300)) : toByte(static_cast<int32_t>(random.below(256)));
        }
        const auto plain = etcreference::tryAllTables(pixels, eHalf, base);
        const auto perceptual = etcreference::tryAllTablesPerceptual(pixels, eHalf, base);
        const auto weighted = etcreference::tryAllTablesWeighted(pixels, eHalf, base);
        forEachInstructionSet(
            [&]
            {
                expectSameFit(plain, tryAllTables(pixels, eHalf, base));
                expectSameFit(perceptual, tryAllTablesPerceptual(pixels, eHalf, base));
                expectSameFit(weighted, tryAllTablesWeighted(pixels, eHalf, base));
            });
        if (testing::Test::HasFailure())
            break;
    }
}
