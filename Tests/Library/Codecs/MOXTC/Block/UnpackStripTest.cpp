#include "Codecs/MOXTC/Block/UnpackStrip.h"

#include <algorithm>
#include <memory>

#include <gmock/gmock.h>

#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

constexpr uint32_t k_ui32Bit15 = 0x8000;
constexpr uint32_t k_uiPunched = 4 | k_ui8PunchThroughBit; ///< a weight

/// Runs the check on a block that each form has unpacked, the fast one for every instruction set.
template <typename Check>
void forEveryForm(const BlockWord& block, bool b2bpp, bool bII, Check check)
{
    const auto pStrip = std::make_unique<BlockStrip>();
    pStrip->aWords[0] = block;
    unpackStripReference(*pStrip, 1, b2bpp, bII);
    check(*pStrip);
    forEachInstructionSet(
        [&]
        {
            const auto pFast = std::make_unique<BlockStrip>();
            pFast->aWords[0] = block;
            unpackStrip(*pFast, 1, b2bpp, bII);
            check(*pFast);
        });
}

std::vector<uint32_t> getWeights(const BlockStrip& strip, size_t uiRow, size_t uiBlockWidth)
{
    return std::vector<uint32_t>(strip.aaui8Weights[uiRow].begin(),
                                 strip.aaui8Weights[uiRow].begin() + static_cast<std::ptrdiff_t>(uiBlockWidth));
}

template <typename T>
bool areFirstEqual(const T& a, const T& b, size_t uiCount)
{
    return std::equal(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(uiCount), b.begin());
}

/// Whether all that the blocks have is the same; fields that are not filled for the format are zero in both.
bool areEqual(const BlockStrip& a, const BlockStrip& b, size_t uiCount, bool b2bpp)
{
    const size_t uiPixels = uiCount * getBlockWidth(b2bpp);
    for (size_t y = 0; y < k_uiBlockHeight; ++y)
        if (!areFirstEqual(a.aaui8Weights[y], b.aaui8Weights[y], uiPixels))
            return false;
    return areFirstEqual(a.aaui16Colours, b.aaui16Colours, uiCount) && areFirstEqual(a.aaui32Expanded, b.aaui32Expanded, uiCount) &&
           areFirstEqual(a.aui32Hard, b.aui32Hard, uiCount) && (!b2bpp || areFirstEqual(a.aui8Modes, b.aui8Modes, uiPixels));
}

} // namespace

TEST(UnpackStrip, AlphasOfColoursAreDoubled)
{
    // A opaque: red 17, green 9, blue 0b1010 to 0b10101. B translucent: alpha 5 to 10 of 15, red 0b1001 to 0b10011, green 2 to 4, blue 15
    // to 31.
    const uint32_t ui32Colours = k_ui32Bit15 | 17u << 10 | 9u << 5 | 10u << 1 | 5u << 28 | 9u << 24 | 2u << 20 | 15u << 16;
    forEveryForm({0, ui32Colours}, false, false,
                 [](const BlockStrip& strip) { EXPECT_THAT(strip.aaui16Colours[0], ElementsAre(17, 9, 21, 30, 19, 4, 31, 20)); });
}

TEST(UnpackStrip, MOXTCIIHasExpandedColoursAndHardFlags)
{
    // A translucent: alpha 3 to 6, red 1 to 2, green 8 to 17, blue 5 to 22. B: alpha 3 to 7, red 0, green 15 to 31, blue 4 to 8.
    const uint32_t ui32Colours = 3u << 12 | 1u << 8 | 8u << 4 | 5u << 1 | 3u << 28 | 0u << 24 | 15u << 20 | 4u << 16;
    forEveryForm({0, ui32Colours | k_ui32Bit15}, false, true,
                 [](const BlockStrip& strip)
                 {
                     EXPECT_THAT(strip.aaui16Colours[0], ElementsAre(2, 17, 22, 12, 0, 31, 8, 14));
                     // 2 is 16, 17 is 140, 22 is 181, alpha 6 is 0x66; 31 is 255, 8 is 66, alpha 7 is 0x77.
                     EXPECT_THAT(strip.aaui32Expanded[0],
                                 ElementsAre(0x66000000u | 181u << 16 | 140u << 8 | 16u, 0x77000000u | 66u << 16 | 255u << 8));
                     EXPECT_EQ(1u, strip.aui32Hard[0]);
                 });
    forEveryForm({0, ui32Colours}, false, true, [](const BlockStrip& strip) { EXPECT_EQ(0u, strip.aui32Hard[0]); });
}

TEST(UnpackStrip, CodesOf4bppGoThroughTheTableOfTheirMode)
{
    constexpr uint32_t k_ui32Codes = 0x00E41BE4; // 0 1 2 3, 3 2 1 0, 0 1 2 3, 0 0 0 0
    for (const bool bII : {false, true})
    {
        forEveryForm({k_ui32Codes, 0}, false, bII,
                     [](const BlockStrip& strip)
                     {
                         EXPECT_THAT(getWeights(strip, 0, 4), ElementsAre(0, 3, 5, 8));
                         EXPECT_THAT(getWeights(strip, 1, 4), ElementsAre(8, 5, 3, 0));
                         EXPECT_THAT(getWeights(strip, 2, 4), ElementsAre(0, 3, 5, 8));
                         EXPECT_THAT(getWeights(strip, 3, 4), ElementsAre(0, 0, 0, 0));
                     });
        forEveryForm({k_ui32Codes, k_ui32ModeFlag}, false, bII,
                     [](const BlockStrip& strip)
                     {
                         EXPECT_THAT(getWeights(strip, 0, 4), ElementsAre(0, 4, k_uiPunched, 8));
                         EXPECT_THAT(getWeights(strip, 1, 4), ElementsAre(8, k_uiPunched, 4, 0));
                         EXPECT_THAT(getWeights(strip, 2, 4), ElementsAre(0, 4, k_uiPunched, 8));
                     });
    }
}

TEST(UnpackStrip, TheCentrePixelOfAHardBlockHasAStandardWeight)
{
    forEveryForm({0xAAAAAAAA, k_ui32ModeFlag | k_ui32Bit15}, false, true,
                 [](const BlockStrip& strip)
                 {
                     EXPECT_THAT(getWeights(strip, 1, 4), ElementsAre(k_uiPunched, k_uiPunched, k_uiPunched, k_uiPunched));
                     EXPECT_THAT(getWeights(strip, 2, 4), ElementsAre(k_uiPunched, k_uiPunched, 5, k_uiPunched));
                 });
    // Of a MOXTC1 block the bit is the opacity of colour A.
    forEveryForm({0xAAAAAAAA, k_ui32ModeFlag | k_ui32Bit15}, false, false,
                 [](const BlockStrip& strip)
                 { EXPECT_THAT(getWeights(strip, 2, 4), ElementsAre(k_uiPunched, k_uiPunched, k_uiPunched, k_uiPunched)); });
}

TEST(UnpackStrip, DirectBlocksOf2bppHaveABitAPixel)
{
    for (const bool bII : {false, true})
        forEveryForm({0x80'01'C3'25, 0}, true, bII,
                     [](const BlockStrip& strip)
                     {
                         EXPECT_THAT(getWeights(strip, 0, 8), ElementsAre(8, 0, 8, 0, 0, 8, 0, 0));
                         EXPECT_THAT(getWeights(strip, 1, 8), ElementsAre(8, 8, 0, 0, 0, 0, 8, 8));
                         EXPECT_THAT(getWeights(strip, 2, 8), ElementsAre(8, 0, 0, 0, 0, 0, 0, 0));
                         EXPECT_THAT(getWeights(strip, 3, 8), ElementsAre(0, 0, 0, 0, 0, 0, 0, 8));
                         EXPECT_THAT(std::vector<uint8_t>(strip.aui8Modes.begin(), strip.aui8Modes.begin() + 8), testing::Each(0));
                     });
}

TEST(UnpackStrip, BlocksOf2bppWithTheFlagHaveEveryOtherPixel)
{
    // Rows 2 1 2 3, 3 2 1 0, 1 1 2 2, 0 3 2 1, the lowest code to the left; flags stand in the low bits of the first code and of the third
    // of row 2.
    constexpr uint32_t k_ui32Codes = 0b01'10'11'00'10'10'01'01'00'01'10'11'11'10'01'10;
    struct
    {
        uint32_t ui32Flags;
        uint8_t ui8Mode;
        uint32_t uiThirdOfRow2;
    } const aCases[] = {
        {0, 1, 5},            // code 2
        {1u << 20, 1, 8},     // an ordinary bit: code 3
        {1, 2, 8},            // code 2 or 3 is 3
        {1 | 1u << 20, 3, 8}, // likewise
    };
    for (const auto& c : aCases)
        for (const bool bII : {false, true})
            forEveryForm({k_ui32Codes | c.ui32Flags, k_ui32ModeFlag}, true, bII,
                         [&](const BlockStrip& strip)
                         {
                             SCOPED_TRACE(c.ui32Flags);
                             EXPECT_THAT(getWeights(strip, 0, 8), ElementsAre(8, 0, 3, 0, 5, 0, 8, 0));
                             EXPECT_THAT(getWeights(strip, 1, 8), ElementsAre(0, 8, 0, 5, 0, 3, 0, 0));
                             EXPECT_THAT(getWeights(strip, 2, 8), ElementsAre(3, 0, 3, 0, c.uiThirdOfRow2, 0, 5, 0));
                             EXPECT_THAT(getWeights(strip, 3, 8), ElementsAre(0, 0, 0, 8, 0, 5, 0, 3));
                             EXPECT_THAT(std::vector<uint8_t>(strip.aui8Modes.begin(), strip.aui8Modes.begin() + 8),
                                         testing::Each(c.ui8Mode));
                         });
}

TEST(UnpackStrip, TheFastFormGivesTheSameForStripsOfEveryLength)
{
    for (const bool b2bpp : {false, true})
    {
        for (const bool bII : {false, true})
        {
            testsupport::CSeededRandom random(b2bpp ? 1 : 2);
            const auto pExpected = std::make_unique<BlockStrip>();
            for (size_t uiCount = 1; uiCount <= k_uiStripBlocks; ++uiCount)
            {
                for (size_t i = 0; i < uiCount; ++i)
                    pExpected->aWords[i] = {random.next32(), random.next32()};
                unpackStripReference(*pExpected, uiCount, b2bpp, bII);
                forEachInstructionSet(
                    [&]
                    {
                        const auto pFast = std::make_unique<BlockStrip>();
                        pFast->aWords = pExpected->aWords;
                        unpackStrip(*pFast, uiCount, b2bpp, bII);
                        EXPECT_TRUE(areEqual(*pExpected, *pFast, uiCount, b2bpp)) << uiCount << ' ' << b2bpp << ' ' << bII;
                    });
            }
        }
    }
}
