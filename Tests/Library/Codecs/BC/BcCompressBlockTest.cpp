#include "Codecs/BC/BcCompressBlock.h"

#include <gtest/gtest.h>

#include "BcTestBlocks.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace bctest;

namespace
{

uint64_t encodeAlone(const BcPixels& pixels, bool bOneBitAlpha)
{
    BcIndexSlots slots;
    return bcCompressBlock(pixels, bOneBitAlpha, slots);
}

/// 16 greys from black to white: 0, 17, 34, ... 255.
BcPixels greyRamp()
{
    BcPixels pixels;
    for (uint32_t i = 0; i < 16; ++i)
        pixels[i] = grey(17 * i);
    return pixels;
}

/// Red rises as green falls: the product with (1, 1, 1) is 0, all projections on it are 0 and both end points the mean.
BcPixels opposedBlock()
{
    BcPixels pixels;
    for (uint32_t i = 0; i < 16; ++i)
    {
        static constexpr uint32_t k_auiRed[4] = {28, 78, 178, 228};
        pixels[i] = rgba(k_auiRed[i / 4], 256 - k_auiRed[i / 4], 0);
    }
    return pixels;
}

/// An opaque block with these reds, green and blue 0.
BcPixels redBlock(const std::array<uint32_t, 16>& auiReds)
{
    BcPixels pixels;
    std::transform(auiReds.begin(), auiReds.end(), pixels.begin(), [](uint32_t uiRed) { return rgba(uiRed, 0, 0); });
    return pixels;
}

struct EncodedRow
{
    std::vector<uint8_t> parts;
    uint32_t uiSlots;

    bool operator==(const EncodedRow& other) const { return parts == other.parts && uiSlots == other.uiSlots; }
};

EncodedRow encodeRow(decltype(&bcColourRow) encodeColours, const std::vector<uint8_t>& image, size_t uiBlocks, size_t uiBlockBytes,
                     bool bOneBitAlpha)
{
    EncodedRow row{std::vector<uint8_t>(uiBlocks * uiBlockBytes, 0xAA), 0};
    BcIndexSlots slots;
    slots.uiBits = 0x12345678;
    encodeColours({image.data(), uiBlocks * 16, row.parts.data(), uiBlockBytes, uiBlocks}, bOneBitAlpha, slots);
    row.uiSlots = slots.uiBits;
    return row;
}

/// Expects the colour part of a block from the plain form, and from the fast one with every instruction set.
void expectPart(uint64_t uiExpected, const BcPixels& pixels)
{
    EXPECT_EQ(uiExpected, encodeAlone(pixels, true));
    forEachInstructionSet(
        [&] { EXPECT_EQ(uiExpected, loadLE<uint64_t>(encodeRow(bcColourRow, layOutBlocks({pixels}, 1), 1, 8, true).parts.data())); });
}

} // namespace

TEST(BcCompressBlock, AFlatOpaqueBlockIsItsColourAndZeroWithAllIndicesZero)
{
    // 200, 100, 50: 25 << 11 | 25 << 5 | 6 is 0xCB26.
    EXPECT_EQ(colourPart(0xCB26, 0, 0), encodeAlone(flatBlock(rgba(200, 100, 50)), true));
    EXPECT_EQ(colourPart(0, 0, 0), encodeAlone(flatBlock(rgba(0, 0, 0)), true));
}

TEST(BcCompressBlock, AFlatBlockWithTransparentPixelsHasZeroFirst)
{
    BcPixels pixels = flatBlock(rgba(200, 100, 50));
    pixels[0] = rgba(200, 100, 50, 127);
    pixels[15] = rgba(200, 100, 50, 0);
    EXPECT_EQ(colourPart(0, 0xCB26, packIndices({3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, AFlatBlackBlockWithTransparentPixelsStillUsesIndexOne)
{
    BcPixels pixels = flatBlock(rgba(0, 0, 0));
    pixels[2] = rgba(0, 0, 0, 0);
    EXPECT_EQ(colourPart(0, 0, packIndices({1, 1, 3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, AnAlphaOf128IsOpaque)
{
    EXPECT_EQ(colourPart(0xFFFF, 0, 0), encodeAlone(flatBlock(grey(255, 128)), true));
    EXPECT_EQ(colourPart(0, 0xFFFF, 0xFFFFFFFF), encodeAlone(flatBlock(grey(255, 127)), true));
}

TEST(BcCompressBlock, WithoutOneBitAlphaAlphasDoNotCount)
{
    EXPECT_EQ(colourPart(0xFFFF, 0, 0), encodeAlone(flatBlock(grey(255, 0)), false));
}

TEST(BcCompressBlock, BlackAndWhiteHaveWhiteFirst)
{
    BcPixels pixels = flatBlock(grey(255));
    pixels[1] = pixels[4] = grey(0);
    EXPECT_EQ(colourPart(0xFFFF, 0, packIndices({0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, TwoColoursWithTransparentPixelsHaveTheLesserFirst)
{
    BcPixels pixels = flatBlock(grey(255));
    pixels[0] = grey(255, 10);
    pixels[1] = grey(0);
    EXPECT_EQ(colourPart(0, 0xFFFF, packIndices({3, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, TheColourOfATransparentPixelCountsAsOne)
{
    BcPixels pixels = flatBlock(grey(255));
    pixels[0] = grey(0, 0);
    EXPECT_EQ(colourPart(0, 0xFFFF, packIndices({3, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, ColoursThatAreOneInFiveSixFiveAreOne)
{
    BcPixels pixels = flatBlock(rgba(200, 100, 48));
    pixels[3] = rgba(207, 103, 55);
    EXPECT_EQ(colourPart(0xCB26, 0, 0), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, ARampTakesItsEndsAndTheNearestOfFour)
{
    // Pixel i lies (15 - i) / 15 along the way from white to black, and 3 t + 0.5 is (15 - i) / 5 + 0.5: below 1 for 13 and more,
    // below 2 for 8 and more, below 3 for 3 and more.
    EXPECT_EQ(colourPart(0xFFFF, 0, packIndices({1, 1, 1, 3, 3, 3, 3, 3, 2, 2, 2, 2, 2, 0, 0, 0})), encodeAlone(greyRamp(), true));
}

TEST(BcCompressBlock, ARampWithTransparentPixelsTakesTheNearestOfThree)
{
    // From black: 2 t + 0.5 is 2 i / 15 + 0.5, which is below 1 for 3 and less, below 2 for 11 and less.
    BcPixels pixels = greyRamp();
    pixels[5] &= 0x00FFFFFF;
    EXPECT_EQ(colourPart(0, 0xFFFF, packIndices({0, 0, 0, 0, 2, 3, 2, 2, 2, 2, 2, 2, 1, 1, 1, 1})), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, TheMeanKeepsItsFraction)
{
    // Reds lie symmetrically about 96.5, and the two pixels with a green of 5 do so too: red and green do not change together,
    // the axis is (1, 0, 0), and both end points have the mean green of 4 + 2 / 16. (127, 4.1, 0) is 15 << 11 | 1 << 5, and
    // (66, 4.1, 0) is 8 << 11 | 1 << 5. About (96, 4) the axis would rise with green, and an end point fall short of 4.
    // 3 t + 0.5 is (127 - red) / 61 * 3 + 0.5: for 127, 113, 97, 96, 80, 66 it is 0.5, 1.19, 1.98, 2.02, 2.81, 3.5.
    BcPixels pixels = redBlock({66, 66, 66, 66, 127, 127, 127, 127, 80, 80, 80, 113, 113, 113, 96, 97});
    for (uint32_t i = 0; i < 16; ++i)
        pixels[i] |= (i < 14 ? 4u : 5u) << 8;
    expectPart(colourPart(0x7820, 0x4020, packIndices({1, 1, 1, 1, 0, 0, 0, 0, 3, 3, 3, 2, 2, 2, 3, 2})), pixels);
}

TEST(BcCompressBlock, IndicesAreMeasuredBetweenTheEndPointsBeforeTheyAreQuantised)
{
    // The end points are 199 and 7, stored as 24 and 0, which are 198 (or 192) and 0 again. Both blocks have colours that lie
    // on the one side of a half between 199 and 7, on the other between these.
    // 3 t + 0.5 is (199 - red) / 64 + 0.5: for 166, 101, 38 it is 1.02, 2.03, 3.02; from 198 to 0, 0.98, 1.97, 2.92.
    expectPart(colourPart(24 << 11, 0, packIndices({1, 0, 2, 3, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})),
               redBlock({7, 199, 166, 101, 38, 199, 199, 199, 199, 199, 199, 199, 199, 199, 199, 199}));
    // Three colours, from the lesser: 2 t + 0.5 is (red - 7) / 96 + 0.5: for 53, 149 it is 0.98, 1.98; from 0 to 198, 1.04, 2.01.
    BcPixels pixels = redBlock({7, 199, 53, 149, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7});
    pixels[15] &= 0x00FFFFFF;
    expectPart(colourPart(0, 24 << 11, packIndices({0, 1, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3})), pixels);
}

TEST(BcCompressBlock, AStepOfTheIterationIsMultipliedByOneOverTheLength)
{
    // Expected numbers from MakeBcFixtures.py --block; with channels divided by the length, colour 1 is 0x1BC8 there.
    const BcPixels pixels = opaqueBlock({0x68B0A8, 0x2FAA99, 0x108645, 0x3B6D3E, 0x3B6D3E, 0x68B0A8, 0x68B0A8, 0x2FAA99, 0x108645, 0x108645,
                                         0x68B0A8, 0x68B0A8, 0x3B6D3E, 0x2FAA99, 0x2FAA99, 0x108645});
    expectPart(colourPart(0x5D95, 0x1BE8, 0x69058158), pixels);
}

TEST(BcCompressBlock, TheWayBetweenTheEndPointsIsMultipliedByOneOverItsSquareBeforeThePixelIs)
{
    // Expected numbers from MakeBcFixtures.py --block; with a division of the way, or of its product with the pixel, the indices
    // are 0xD88592B5 there.
    const BcPixels pixels = opaqueBlock({0x1A21E5, 0x1E23E1, 0x2325DC, 0x2828D7, 0x2D2AD2, 0x322DCD, 0x1E23E1, 0x2D2AD2, 0x1E23E1, 0x1A21E5,
                                         0x322DCD, 0x2828D7, 0x322DCD, 0x2D2AD2, 0x1A21E5, 0x2325DC});
    expectPart(colourPart(0x3179, 0x191C, 0xD887B2BD), pixels);
}

TEST(BcCompressBlock, EndPointsThatAreOneInFiveSixFiveGiveAllIndicesZero)
{
    // The mean (128, 128, 0) twice: 16 << 11 | 32 << 5.
    EXPECT_EQ(colourPart(0x8400, 0x8400, 0), encodeAlone(opposedBlock(), true));
}

TEST(BcCompressBlock, EqualEndPointsTakeIndexZeroForTransparentPixelsToo)
{
    BcPixels pixels = opposedBlock();
    pixels[7] &= 0x00FFFFFF;
    EXPECT_EQ(colourPart(0x8400, 0x8400, 0), encodeAlone(pixels, true));
}

TEST(BcCompressBlock, AnIndexThatIsLeftOutKeepsThatOfTheBlockBefore)
{
    BcIndexSlots slots;
    EXPECT_EQ(partWithFirstIndexLeftOut(0), bcCompressBlock(blockWithFirstIndexLeftOut(), true, slots));

    for (const uint32_t uiBefore : {0u, 1u, 2u, 3u})
    {
        slots.uiBits = 0xFFFFFFFC | uiBefore;
        EXPECT_EQ(partWithFirstIndexLeftOut(uiBefore), bcCompressBlock(blockWithFirstIndexLeftOut(), true, slots));
        EXPECT_EQ(partWithFirstIndexLeftOut(uiBefore) >> 32, slots.uiBits);
        EXPECT_EQ(partWithFirstIndexLeftOut(uiBefore), bcCompressBlock(blockWithFirstIndexLeftOut(), false, slots));
    }
}

TEST(BcCompressBlock, AnIndexThatIsLeftOutOfThreeKeepsThatOfTheBlockBefore)
{
    for (const uint32_t uiBefore : {0u, 1u, 2u, 3u})
    {
        BcIndexSlots slots{uiBefore};
        EXPECT_EQ(transparentPartWithFirstIndexLeftOut(uiBefore), bcCompressBlock(transparentBlockWithFirstIndexLeftOut(), true, slots));
    }
}

TEST(BcCompressBlock, StepsAreTruncatedTowardsZeroSoThatAPixelALittleBeforeTheFirstTakesIt)
{
    // The block of transparentBlockWithFirstIndexLeftOut, made opaque: colour 0 is (165, 255, 0), d = (-140, -100), |d|^2 = 29600.
    //     (255, 205): -7600 / 29600 = -0.2568   3 t + 0.5 = -0.27   step 0, index 0
    //     (115, 65):  26000 / 29600 = 0.8784                 3.14   step 3, index 1
    //     (65, 255):  14000 / 29600 = 0.4730                 1.92   step 1, index 2
    //     (125, 255):  5600 / 29600 = 0.1892                 1.07   step 1, index 2
    //     (65, 195):  20000 / 29600 = 0.6757                 2.53   step 2, index 3
    BcPixels pixels = transparentBlockWithFirstIndexLeftOut();
    for (uint32_t& uiPixel : pixels)
        uiPixel |= 0xFF000000;
    BcIndexSlots slots{0xFFFFFFFF};
    EXPECT_EQ(colourPart(0xA7E0, 0x1CC0, packIndices({0, 1, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3})),
              bcCompressBlock(pixels, true, slots));
}

TEST(BcCompressBlock, EveryKindOfBlockLeavesItsIndicesToTheNext)
{
    BcPixels blackFirst = flatBlock(grey(255));
    blackFirst[0] = grey(0);
    BcPixels transparentFirst = flatBlock(grey(255));
    transparentFirst[0] = grey(255, 0);
    BcPixels rampFrom2 = greyRamp();
    std::swap(rampFrom2[0], rampFrom2[8]);
    const std::pair<BcPixels, uint32_t> aBlocks[] = {
        {blackFirst, 1}, {flatBlock(grey(255)), 0}, {transparentFirst, 3}, {opposedBlock(), 0}, {rampFrom2, 2}, {greyRamp(), 1}};
    for (const auto& [before, uiFirstIndex] : aBlocks)
    {
        BcIndexSlots slots{0xFFFFFFFF};
        (void)bcCompressBlock(before, true, slots);
        EXPECT_EQ(partWithFirstIndexLeftOut(uiFirstIndex), bcCompressBlock(blockWithFirstIndexLeftOut(), true, slots));
    }
}

TEST(BcCompressBlock, TheFastFormGivesTheReferenceBytesOnHardBlocks)
{
    constexpr size_t uiBlocks = 3000;
    for (uint64_t ui64Seed = 1; ui64Seed <= 8; ++ui64Seed)
        for (const bool bOneBitAlpha : {false, true})
        {
            const std::vector<uint8_t> image = layOutBlocks(makeHardBlocks(uiBlocks, ui64Seed), uiBlocks);
            const EncodedRow expected = encodeRow(bcColourRowReference, image, uiBlocks, 16, bOneBitAlpha);
            forEachInstructionSet([&] { EXPECT_TRUE(expected == encodeRow(bcColourRow, image, uiBlocks, 16, bOneBitAlpha)); });
        }
}

TEST(BcCompressBlock, TheFastFormGivesTheReferenceBytesOnRunsOfOneKind)
{
    // A run of blocks that all iterate long, or all leave an index out, loads the passes otherwise than a mixture.
    constexpr size_t uiBlocks = 300;
    CSeededRandom random(5);
    for (const BlockKind& kind : getHardKinds())
    {
        std::vector<BcPixels> blocks(uiBlocks);
        for (BcPixels& pixels : blocks)
            kind(random, pixels);
        const std::vector<uint8_t> image = layOutBlocks(blocks, uiBlocks);
        const EncodedRow expected = encodeRow(bcColourRowReference, image, uiBlocks, 8, true);
        forEachInstructionSet([&] { EXPECT_TRUE(expected == encodeRow(bcColourRow, image, uiBlocks, 8, true)); });
    }
}

TEST(BcCompressBlock, TheFastFormGivesTheReferenceBytesAtEveryLength)
{
    for (const size_t uiBlocks : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 32u, 33u, 255u, 256u, 257u, 511u, 513u})
    {
        SCOPED_TRACE(uiBlocks);
        const std::vector<uint8_t> image = layOutBlocks(makeHardBlocks(uiBlocks, 77), std::max<size_t>(uiBlocks, 1));
        const EncodedRow expected = encodeRow(bcColourRowReference, image, uiBlocks, 8, true);
        forEachInstructionSet([&] { EXPECT_TRUE(expected == encodeRow(bcColourRow, image, uiBlocks, 8, true)); });
    }
}
