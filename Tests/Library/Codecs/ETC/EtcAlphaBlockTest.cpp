#include "Codecs/ETC/EtcAlphaBlock.h"

#include <gtest/gtest.h>

#include "Codecs/ETC/EacBlock.h"
#include "EtcTestBlocks.h"
#include "ReferenceEtcAlphaBlock.h"
#include "Support/EveryInstructionSet.h"

namespace
{

using namespace moxtexture;

using AlphaBlock = std::array<uint8_t, 8>;
using Encoder = void (*)(const EtcAlphas&, uint8_t*);

AlphaBlock encode(Encoder pEncode, const EtcAlphas& alphas)
{
    AlphaBlock block{};
    pEncode(alphas, block.data());
    return block;
}

EtcAlphas makeFlat(uint8_t ui8Alpha)
{
    EtcAlphas alphas;
    alphas.aui8.fill(ui8Alpha);
    return alphas;
}

/// All blocks by every instruction set against the reference.
void expectReferenceBytes(Encoder pEncode, Encoder pReference, const std::vector<EtcAlphas>& blocks)
{
    std::vector<AlphaBlock> expected;
    expected.reserve(blocks.size());
    for (const EtcAlphas& alphas : blocks)
        expected.push_back(encode(pReference, alphas));
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
                ASSERT_EQ(expected[i], encode(pEncode, blocks[i])) << "block " << i << ": " << testing::PrintToString(blocks[i].aui8);
        });
}

/// Two alphas in a fixed pattern, for pairs of numbers uiStep apart.
std::vector<EtcAlphas> makePairs(uint32_t uiStep)
{
    std::vector<EtcAlphas> blocks;
    for (uint32_t uiLow = 0; uiLow < 256; uiLow += uiStep)
        for (uint32_t uiHigh = uiLow + 1; uiHigh < 256; uiHigh += uiStep)
        {
            EtcAlphas alphas;
            for (size_t i = 0; i < 16; ++i)
                alphas.aui8[i] = static_cast<uint8_t>((0x3A71u >> i & 1) != 0 ? uiHigh : uiLow);
            blocks.push_back(alphas);
        }
    return blocks;
}

/// The red bytes of colour blocks: photos, noise, gradients, edges.
std::vector<EtcAlphas> makeFromColours(uint32_t uiSeed, size_t uiCount)
{
    std::vector<EtcAlphas> blocks;
    for (const EtcPixels& pixels : etctest::makeEtcTestBlocks(uiSeed, uiCount))
        blocks.push_back({pixels.aui8Red});
    return blocks;
}

} // namespace

TEST(EtcAlphaBlock, AFlatBlockTakesTheFirstRowAndItsAlphaAsTheBase)
{
    for (uint32_t uiAlpha = 0; uiAlpha < 256; ++uiAlpha)
    {
        const EtcAlphas alphas = makeFlat(static_cast<uint8_t>(uiAlpha));
        const AlphaBlock expected = {static_cast<uint8_t>(uiAlpha), 0, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(expected, encode(alphaBlockFast, alphas)) << uiAlpha;
        EXPECT_EQ(expected, encode(alphaBlockThorough, alphas)) << uiAlpha;
        EXPECT_EQ(0, etcreference::searchAlphaFast(alphas).iSum) << uiAlpha;
        EXPECT_EQ(0, etcreference::searchAlphaFast(alphas).iRow) << uiAlpha;
        EXPECT_EQ(0, etcreference::searchAlphaThorough(alphas).iSum) << uiAlpha;
        EXPECT_EQ(0, etcreference::searchAlphaThorough(alphas).iRow) << uiAlpha;
    }
}

TEST(EtcAlphaBlock, NearlyOpaqueAlphasKeepTheFastSearchInTheRowsOfZeros)
{
    // The sum is 4079, the mean (4079 + 8) / 16 = 255 and the greatest distance 1, so the row is about 255 / 160 - 4 = -3 and the
    // search ends before row 12. Rows 0 to 15 are zeros: base 255 and one pixel off by one.
    EtcAlphas alphas = makeFlat(255);
    alphas.aui8[15] = 254;
    EXPECT_EQ((AlphaBlock{255, 0, 0, 0, 0, 0, 0, 0}), encode(alphaBlockFast, alphas));
}

TEST(EtcAlphaBlock, TheThoroughSearchGoesOnToARowThatFits)
{
    // The best of the zeros has the sum 1. Row 16 is -3 -6 -9 -15 2 5 8 14. Bases 127 to 255 by 32: all are left, base 255 at 9
    // (255 against 252) as the least. Bases 239 to 255 by 4: 243 is the first with the sum 1 (257 clamped meets 255, 254 is one
    // off). Bases 239 to 247: 246 is the first to meet both, 254 with index 6 and 255, which is 260 clamped, with index 7.
    EtcAlphas alphas = makeFlat(255);
    alphas.aui8[15] = 254;
    EXPECT_EQ((AlphaBlock{246, 16, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE}), encode(alphaBlockThorough, alphas));
}

TEST(EtcAlphaBlock, AFarOutlierKeepsTheFastSearchInTheLastRows)
{
    // The mean is (255 + 8) / 16 = 16, the greatest distance 239, so the row is 380 - 4, clamped to 255, and the first row 240:
    // -45 -90 -135 -225 30 75 120 210. Bases 0, 16, 32 have 210, 226 and 242 for the 255; base 48 has 258, clamped, and 0 for the
    // others by index 1, as 48 - 45 is 3.
    EtcAlphas alphas = makeFlat(0);
    alphas.aui8[etcPixelIndex(1, 0)] = 255;
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_EQ(48, block[0]);
    EXPECT_EQ(240, block[1]);
    // Column by column: pixel (1, 0) is the fifth.
    EXPECT_EQ((std::array<uint8_t, 16>{1, 1, 1, 1, 7, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}), readEacIndices(block.data()));
    EXPECT_EQ(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, OneRowAndBothEndsMeetACutOut)
{
    // Eight of 0 and eight of 255: the mean is 128, the greatest distance 128, the row 204 - 4 = 200, the first row 185, which is
    // multiplier 11 and table 9: -22 -55 -88 -110 11 44 77 99. No base of it meets both ends (110 + 99 is below 255). Table 10 and
    // the others of multiplier 11 have 9 * 11 at most; row 192 is multiplier 12 and table 0: 14 * 12 = 168 above and 180 below,
    // so base 96 (128 - 32) is the first of 64, 80, 96 with 96 + 168 at or above 255.
    EtcAlphas alphas;
    for (size_t i = 0; i < 16; ++i)
        alphas.aui8[i] = i % 2 == 0 ? 0 : 255;
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_EQ(96, block[0]);
    EXPECT_EQ(192, block[1]);
    EXPECT_EQ(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, AMeanOfOneHalfIsRoundedUp)
{
    // Eight of 100 and eight of 101 have the mean 100.5, and 100.5 + 0.5 is 101. The greatest distance is 1, so only rows of zeros
    // are tried: bases 37, 53 ... 101, then 93, 97, 101 ..., then 99, 100, 101. 100 has the same sum 8 as 101, but later.
    EtcAlphas alphas;
    for (size_t i = 0; i < 16; ++i)
        alphas.aui8[i] = i % 2 == 0 ? 100 : 101;
    EXPECT_EQ((AlphaBlock{101, 0, 0, 0, 0, 0, 0, 0}), encode(alphaBlockFast, alphas));
}

TEST(EtcAlphaBlock, AGreatestDistanceOf3KeepsTheFastSearchInTheRowsOfZeros)
{
    // The mean is 99.5 + 0.5 = 100, the greatest distance 3, and 3 * 255 / 160 - 4 = 0: rows 0 to 14. Base 100 has the sum
    // 8 * 9 + 8 * 4 = 104 as 99 has it, but earlier.
    EtcAlphas alphas;
    for (size_t i = 0; i < 16; ++i)
        alphas.aui8[i] = i % 2 == 0 ? 97 : 102;
    EXPECT_EQ((AlphaBlock{100, 0, 0, 0, 0, 0, 0, 0}), encode(alphaBlockFast, alphas));
    // The thorough search comes to row 16, -3 -6 -9 -15 2 5 8 14. By 32: base 96 has the sum 16, all pixels one off. By 4: 100 meets
    // both. Columns of 97 (index 0) and of 102 (index 4) in turn.
    EXPECT_EQ((AlphaBlock{100, 16, 0x00, 0x09, 0x24, 0x00, 0x09, 0x24}), encode(alphaBlockThorough, alphas));
}

TEST(EtcAlphaBlock, AGreatestDistanceOf4BringsTheFastSearchToRow16)
{
    // Thirteen of 97 and three of 102: the mean is 97.9 + 0.5, the greatest distance 4, and 4 * 255 / 160 - 4 = 2: rows 0 to 16.
    // Rows of zeros leave 13 * 1 + 3 * 16 = 61 at base 98. Row 16 by 16: base 98 has 13 * 4 + 3 * 1 = 55. By 4 from 90 to 106: 90
    // has 25, 94 has 13, 98 and 102 are left, 106 has 3: 97 is met by -9 (index 2), 102 is one off by -3 (index 0). By 1: 104, 105,
    // 107 and 108 are left, so base 100, which has none, is never come to.
    EtcAlphas alphas = makeFlat(97);
    for (size_t x = 1; x < 4; ++x)
        alphas.aui8[etcPixelIndex(x, 3)] = 102;
    EXPECT_EQ((AlphaBlock{106, 16, 0x49, 0x24, 0x90, 0x49, 0x04, 0x90}), encode(alphaBlockFast, alphas));
}

// The rows at the ends of the fast search's window, by blocks that a row meets exactly.

TEST(EtcAlphaBlock, TheFastSearchBeginsFifteenRowsBeforeTheApproximateOne)
{
    // The sum is 2672, the mean 167, the greatest distance 32, and 32 * 255 / 160 - 4 = 47, so row 32 is the first. It is -6 -12 -18
    // -30 4 10 16 28: base 165 has 135, 147 and 193.
    const EtcAlphas alphas = {{135, 147, 193, 193, 193, 193, 193, 147, 135, 193, 147, 193, 193, 135, 147, 135}};
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_EQ(165, block[0]);
    EXPECT_EQ(32, block[1]);
    EXPECT_EQ(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, TheFastSearchLeavesOutARowBeforeThatThoughItFits)
{
    // The sum is 1120, the mean 70, the greatest distance 65, and 65 * 255 / 160 - 4 = 99, so row 84 is the first. Row 83, -10 -20 -30
    // -65 5 15 25 60, would meet 5, 85 and 95 at base 70.
    const EtcAlphas alphas = {{95, 5, 85, 5, 95, 95, 85, 85, 5, 95, 85, 95, 95, 95, 5, 95}};
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_GE(block[1], 84);
    EXPECT_NE(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, TheFastSearchEndsFourteenRowsBehindTheApproximateOne)
{
    // The sum is 3072, the mean 192, the greatest distance 34, and 34 * 255 / 160 - 4 = 50, so row 64 is the last. It is -12 -24 -36
    // -60 8 20 32 56: base 194 has 158 and 226.
    const EtcAlphas alphas = {{158, 226, 158, 226, 226, 158, 226, 158, 158, 226, 158, 158, 226, 226, 158, 226}};
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_EQ(194, block[0]);
    EXPECT_EQ(64, block[1]);
    EXPECT_EQ(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, TheFastSearchLeavesOutARowBehindThatThoughItFits)
{
    // The sum is 1444, the mean 90, the greatest distance 16, and 16 * 255 / 160 - 4 = 21, so row 35 is the last. Row 36, -6 -12 -16
    // -24 4 10 14 22, would meet 74, 94 and 104 at base 90.
    const EtcAlphas alphas = {{74, 94, 104, 104, 94, 94, 74, 74, 74, 104, 74, 94, 94, 94, 94, 104}};
    const AlphaBlock block = encode(alphaBlockFast, alphas);
    EXPECT_LE(block[1], 35);
    EXPECT_NE(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, TheThoroughSearchTriesTheLastRow)
{
    // Row 255 is -45 -75 -105 -135 30 60 90 120: base 135 has 90 60 30 0 165 195 225 255, as no other row has.
    const EtcAlphas alphas = {{225, 30, 225, 90, 165, 30, 60, 30, 255, 255, 30, 60, 0, 60, 195, 225}};
    const AlphaBlock block = encode(alphaBlockThorough, alphas);
    EXPECT_EQ(135, block[0]);
    EXPECT_EQ(255, block[1]);
    EXPECT_EQ(alphas.aui8, decodeEtcAlphas(block.data()).aui8);
}

TEST(EtcAlphaBlock, ASumThatWasLeftSteersTheFinerBases)
{
    // Some blocks come out otherwise when every sum goes to its end: the reference without leaving tells which.
    const std::vector<EtcAlphas> blocks = makeFromColours(31, 2000);
    size_t uiOtherwise = 0;
    for (const EtcAlphas& alphas : blocks)
    {
        AlphaBlock whole{};
        etcreference::writeAlphaBlock(alphas, etcreference::searchAlphaFast(alphas, false), whole.data());
        uiOtherwise += whole != encode(alphaBlockFast, alphas) ? 1u : 0u;
    }
    EXPECT_GT(uiOtherwise, 0u);
}

TEST(EtcAlphaBlock, ASumIsLeftWhereItExceedsTheBestAndNotWhereItEqualsIt)
{
    // Bytes of an independent encoder. With sums that go to their ends it gives base 53, row 35; with sums that are left at the best
    // sum already, base 66, row 33.
    const EtcAlphas alphas = {{77, 40, 40, 41, 40, 77, 40, 41, 40, 41, 60, 77, 41, 40, 60, 41}};
    forEachInstructionSet([&] { EXPECT_EQ((AlphaBlock{67, 35, 0xCD, 0xB7, 0x9B, 0x6C, 0x96, 0xF3}), encode(alphaBlockFast, alphas)); });
}

TEST(EtcAlphaBlock, FastGivesTheReferenceBytesOnAlphasOfAllKinds)
{
    expectReferenceBytes(alphaBlockFast, etcreference::alphaBlockFast, etctest::makeEtcTestAlphas(1, 10500));
}

TEST(EtcAlphaBlock, FastGivesTheReferenceBytesOnPlanesOfColours)
{
    expectReferenceBytes(alphaBlockFast, etcreference::alphaBlockFast, makeFromColours(2, 9000));
}

TEST(EtcAlphaBlock, FastGivesTheReferenceBytesOnPairsOfAlphas)
{
    expectReferenceBytes(alphaBlockFast, etcreference::alphaBlockFast, makePairs(5));
}

TEST(EtcAlphaBlock, ThoroughGivesTheReferenceBytesOnAlphasOfAllKinds)
{
    expectReferenceBytes(alphaBlockThorough, etcreference::alphaBlockThorough, etctest::makeEtcTestAlphas(3, 700));
}

TEST(EtcAlphaBlock, ThoroughGivesTheReferenceBytesOnPlanesOfColours)
{
    expectReferenceBytes(alphaBlockThorough, etcreference::alphaBlockThorough, makeFromColours(4, 450));
}

TEST(EtcAlphaBlock, ThoroughGivesTheReferenceBytesOnPairsOfAlphas)
{
    expectReferenceBytes(alphaBlockThorough, etcreference::alphaBlockThorough, makePairs(13));
}
