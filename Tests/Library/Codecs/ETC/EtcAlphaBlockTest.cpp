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
