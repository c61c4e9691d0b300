#include "Codecs/BC/BcAlphaBlock.h"

#include <gmock/gmock.h>

#include "BcTestBlocks.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

using Part = std::array<uint8_t, 8>;

Part encode(const BcAlphas& alphas)
{
    Part part{};
    bcAlphaBlock(alphas, part.data());
    return part;
}

/// The indices of a part, in row order.
std::array<uint32_t, 16> getIndices(const Part& part)
{
    const auto uiBits = loadLE<uint64_t>(part.data());
    std::array<uint32_t, 16> indices;
    for (uint32_t i = 0; i < 16; ++i)
        indices[i] = static_cast<uint32_t>(uiBits >> (16 + 3 * i)) & 7;
    return indices;
}

/// The eight alphas that indices 0 to 7 choose.
std::array<uint8_t, 8> decodePalette(uint8_t alpha0, uint8_t alpha1)
{
    Part part{};
    uint64_t uiBits = alpha0 | static_cast<uint64_t>(alpha1) << 8;
    for (uint32_t i = 0; i < 8; ++i)
        uiBits |= static_cast<uint64_t>(i) << (16 + 3 * i);
    storeLE(part.data(), uiBits);
    const BcAlphas alphas = decodeBcAlphaBlock(part.data());
    std::array<uint8_t, 8> palette;
    std::copy_n(alphas.begin(), 8, palette.begin());
    return palette;
}

std::vector<uint8_t> encodeRow(decltype(&bcAlphaRow) encodeAlpha, const std::vector<BcPixels>& blocks, bool bExplicit)
{
    const std::vector<uint8_t> image = bctest::layOutBlocks(blocks, blocks.size());
    std::vector<uint8_t> parts(blocks.size() * 16, 0xAA);
    encodeAlpha({image.data(), blocks.size() * 16, parts.data(), 16, blocks.size()}, bExplicit);
    return parts;
}

} // namespace

TEST(BcAlphaBlock, AFlatBlockHasOneAlphaTwiceAndAllIndicesZero)
{
    BcAlphas alphas;
    alphas.fill(77);
    EXPECT_THAT(encode(alphas), ElementsAre(77, 77, 0, 0, 0, 0, 0, 0));
}

TEST(BcAlphaBlock, TheEndPointsAreTheGreatestAndTheLeastInThisOrder)
{
    const BcAlphas alphas{10, 10, 10, 200, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10, 10};
    const Part part = encode(alphas);
    EXPECT_EQ(200, part[0]);
    EXPECT_EQ(10, part[1]);
    EXPECT_THAT(getIndices(part), ElementsAre(1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1));
}

TEST(BcAlphaBlock, IndicesChangeAtTheHalvesBetweenSevenths)
{
    // With 0 and 255 as end points, (k + 0.5) * 255 / 7 is 18.2, 54.6, 91.07, 127.5, 163.9, 200.4 and 236.8.
    const BcAlphas alphas{0, 18, 19, 54, 55, 91, 92, 127, 128, 163, 164, 200, 201, 236, 237, 255};
    EXPECT_THAT(getIndices(encode(alphas)), ElementsAre(1, 1, 7, 7, 6, 6, 5, 5, 4, 4, 3, 3, 2, 2, 0, 0));
}

TEST(BcAlphaBlock, AHalfBelongsToTheGreaterSide)
{
    // Of 0 to 14, seventh k is at 2 k, and the halves are the odd numbers.
    const BcAlphas alphas{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 14};
    EXPECT_THAT(getIndices(encode(alphas)), ElementsAre(1, 7, 7, 6, 6, 5, 5, 4, 4, 3, 3, 2, 2, 0, 0, 0));
}

TEST(BcAlphaBlock, TheFirstPixelHasTheLowestBits)
{
    // Indices 0, 1, 1, ...: 48 bits of 001 with the lowest three cleared, that is 0x249249249249 minus 1.
    BcAlphas alphas{};
    alphas[0] = 255;
    EXPECT_THAT(encode(alphas), ElementsAre(255, 0, 0x48, 0x92, 0x24, 0x49, 0x92, 0x24));
}

TEST(BcAlphaBlock, DecodesEightAlphasFromAGreaterFirstOne)
{
    // 6 * 255 / 7 = 218.6, 5 * 255 / 7 = 182.1, 145.7, 109.3, 72.9, 36.4; fractions are dropped.
    EXPECT_THAT(decodePalette(255, 0), ElementsAre(255, 0, 218, 182, 145, 109, 72, 36));
    // (6 * 9 + 2) / 7 = 8, (45 + 4) / 7 = 7, (36 + 6) / 7 = 6, 5, 4, 3.
    EXPECT_THAT(decodePalette(9, 2), ElementsAre(9, 2, 8, 7, 6, 5, 4, 3));
}

TEST(BcAlphaBlock, DecodesSixAlphasAndTheExtremesFromALesserOrEqualFirstOne)
{
    EXPECT_THAT(decodePalette(0, 255), ElementsAre(0, 255, 51, 102, 153, 204, 0, 255));
    // (4 * 1 + 4) / 5 = 1.6, (3 + 8) / 5 = 2.2, (2 + 12) / 5 = 2.8, (1 + 16) / 5 = 3.4.
    EXPECT_THAT(decodePalette(1, 4), ElementsAre(1, 4, 1, 2, 2, 3, 0, 255));
    EXPECT_THAT(decodePalette(99, 99), ElementsAre(99, 99, 99, 99, 99, 99, 0, 255));
}

TEST(BcAlphaBlock, ExplicitAlphasKeepTheUpperFourBits)
{
    const BcAlphas alphas{0x00, 0x1F, 0x20, 0x3F, 0x40, 0x50, 0x60, 0x70, 0x80, 0x90, 0xA0, 0xB0, 0xC0, 0xD0, 0xE0, 0xFF};
    Part part{};
    bcExplicitAlphaBlock(alphas, part.data());
    EXPECT_THAT(part, ElementsAre(0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE));
}

TEST(BcAlphaBlock, ExplicitAlphasDecodeToSeventeenTimesTheNibble)
{
    const Part part{0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};
    EXPECT_THAT(decodeBcExplicitAlphaBlock(part.data()),
                ElementsAre(0, 17, 34, 51, 68, 85, 102, 119, 136, 153, 170, 187, 204, 221, 238, 255));
}

TEST(BcAlphaBlock, TheFastFormGivesTheReferenceBytesForEveryPlaceBetweenEveryTwoEndPoints)
{
    // For each range, blocks that hold both end points and fourteen of the places between them.
    std::vector<BcPixels> blocks;
    for (uint32_t uiRange = 1; uiRange <= 255; ++uiRange)
        for (uint32_t uiFirst = 0; uiFirst <= uiRange; uiFirst += 14)
        {
            BcPixels pixels;
            for (uint32_t i = 0; i < 14; ++i)
                pixels[i] = std::min(uiFirst + i, uiRange) << 24;
            pixels[14] = 0;
            pixels[15] = uiRange << 24;
            blocks.push_back(pixels);
        }
    const std::vector<uint8_t> expected = encodeRow(bcAlphaRowReference, blocks, false);
    forEachInstructionSet([&] { EXPECT_EQ(expected, encodeRow(bcAlphaRow, blocks, false)); });
}

TEST(BcAlphaBlock, TheFastFormGivesTheReferenceBytesAtEveryLength)
{
    for (const bool bExplicit : {false, true})
        for (const size_t uiCount : {0u, 1u, 2u, 3u, 4u, 5u, 7u, 8u, 9u, 15u, 16u, 17u, 31u, 33u, 255u, 256u, 257u, 600u})
        {
            SCOPED_TRACE(uiCount);
            const std::vector<BcPixels> blocks = bctest::makeHardBlocks(uiCount, uiCount + 1);
            const std::vector<uint8_t> expected = encodeRow(bcAlphaRowReference, blocks, bExplicit);
            forEachInstructionSet([&] { EXPECT_EQ(expected, encodeRow(bcAlphaRow, blocks, bExplicit)); });
        }
}
