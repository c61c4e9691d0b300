#include "Codecs/BC/BcDecompress.h"

#include <utility>

#include <gmock/gmock.h>

#include "BcTestBlocks.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace bctest;
using testing::Each;
using testing::ElementsAre;

namespace
{

constexpr uint32_t k_auiTypes[] = {1, 2, 3, 4, 5};

/// Every index in each row of the block: 0, 1, 2, 3.
constexpr uint32_t k_uiEveryIndex = 0xE4E4E4E4;

std::vector<uint8_t> toBytes(const std::vector<uint64_t>& words)
{
    std::vector<uint8_t> bytes(words.size() * 8);
    for (size_t i = 0; i < words.size(); ++i)
        storeLE(bytes.data() + 8 * i, words[i]);
    return bytes;
}

std::vector<uint8_t> decodeToBytes(decltype(&bcDecompressImage) decoder, const std::vector<uint8_t>& blocks, uint32_t uiWidth,
                                   uint32_t uiHeight, uint32_t uiType)
{
    std::vector<uint8_t> pixels(size_t{uiWidth} * uiHeight * 4);
    EXPECT_EQ(pixels.size(), decoder(blocks.data(), pixels.data(), uiWidth, uiHeight, uiType));
    return pixels;
}

std::vector<uint32_t> decode(decltype(&bcDecompressImage) decoder, const std::vector<uint8_t>& blocks, uint32_t uiWidth, uint32_t uiHeight,
                             uint32_t uiType)
{
    const std::vector<uint8_t> pixels = decodeToBytes(decoder, blocks, uiWidth, uiHeight, uiType);
    std::vector<uint32_t> words(pixels.size() / 4);
    for (size_t i = 0; i < words.size(); ++i)
        words[i] = loadLE<uint32_t>(pixels.data() + 4 * i);
    return words;
}

/// The first row of one block.
std::vector<uint32_t> decodeFirstRow(const std::vector<uint64_t>& block, uint32_t uiType)
{
    std::vector<uint32_t> expected = decode(bcDecompressImageReference, toBytes(block), 4, 1, uiType);
    forEachInstructionSet([&] { EXPECT_EQ(expected, decode(bcDecompressImage, toBytes(block), 4, 1, uiType)); });
    return expected;
}

} // namespace

TEST(BcDecompress, GivesTheSizeOfThePixelsAndDoesNothingForANullPointer)
{
    std::vector<uint8_t> bytes(64, 7);
    EXPECT_EQ(140u, bcDecompressImage(nullptr, bytes.data(), 5, 7, 1));
    EXPECT_EQ(140u, bcDecompressImage(bytes.data(), nullptr, 5, 7, 5));
    EXPECT_EQ(0x80000000u, bcDecompressImage(nullptr, nullptr, 32768, 16384, 1));
    EXPECT_EQ(0u, bcDecompressImage(bytes.data(), bytes.data(), 4, 4, 6));
    EXPECT_THAT(bytes, Each(7));
}

TEST(BcDecompress, AWidthOrHeightOfZeroGivesNothing)
{
    const std::vector<uint8_t> blocks(16);
    std::vector<uint8_t> pixels(64, 7);
    for (const auto decoder : {bcDecompressImage, bcDecompressImageReference})
        for (const uint32_t uiType : k_auiTypes)
            for (const auto& [uiWidth, uiHeight] : {std::pair{0u, 4u}, {4u, 0u}, {0u, 5u}, {5u, 0u}, {0u, 0u}})
            {
                EXPECT_EQ(0u, decoder(blocks.data(), pixels.data(), uiWidth, uiHeight, uiType));
                EXPECT_EQ(0u, decoder(nullptr, nullptr, uiWidth, uiHeight, uiType));
            }
    EXPECT_THAT(pixels, Each(7));
}

TEST(BcDecompress, FourColoursOfTypeOneAreOpaque)
{
    EXPECT_THAT(decodeFirstRow({colourPart(0xFFFF, 0, k_uiEveryIndex)}, 1), ElementsAre(grey(255), grey(0), grey(167), grey(87)));
}

TEST(BcDecompress, TheFourthOfThreeColoursIsTransparentBlackInTypeOne)
{
    EXPECT_THAT(decodeFirstRow({colourPart(0, 0xFFFF, k_uiEveryIndex)}, 1), ElementsAre(grey(0), grey(255), grey(127), 0u));
    EXPECT_THAT(decodeFirstRow({colourPart(0xFFFF, 0xFFFF, k_uiEveryIndex)}, 1), ElementsAre(grey(255), grey(255), grey(255), 0u));
}

TEST(BcDecompress, TypesTwoAndThreeAlwaysHaveFourColours)
{
    const uint64_t uiAlphas = 0xF50AF50AF50AF50A; // nibbles 10, 0, 5, 15 in each row
    for (const uint32_t uiType : {2u, 3u})
    {
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0xFFFF, 0, k_uiEveryIndex)}, uiType),
                    ElementsAre(grey(255, 170), grey(0, 0), grey(167, 85), grey(87, 255)));
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0, 0xFFFF, k_uiEveryIndex)}, uiType),
                    ElementsAre(grey(0, 170), grey(255, 0), grey(87, 85), grey(167, 255)));
    }
}

TEST(BcDecompress, TypesFourAndFiveHaveThreeColoursIfTheFirstIsNotTheGreater)
{
    const uint64_t uiAlphas = 99 | 99 << 8;
    for (const uint32_t uiType : {4u, 5u})
    {
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0xFFFF, 0, k_uiEveryIndex)}, uiType),
                    ElementsAre(grey(255, 99), grey(0, 99), grey(167, 99), grey(87, 99)));
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0, 0xFFFF, k_uiEveryIndex)}, uiType),
                    ElementsAre(grey(0, 99), grey(255, 99), grey(127, 99), grey(0, 99)));
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0xFFFF, 0xFFFF, k_uiEveryIndex)}, uiType),
                    ElementsAre(grey(255, 99), grey(255, 99), grey(255, 99), grey(0, 99)));
    }
}

TEST(BcDecompress, AlphaIndicesOfTypesFourAndFiveBeginWithTheFirstPixel)
{
    // Indices 0, 1, 2, 7 of 255 and 0: 255, 0, 6 * 255 / 7 = 218, 255 / 7 = 36.
    const uint64_t uiAlphas = 255 | (uint64_t{0} | 1 << 3 | 2 << 6 | 7 << 9) << 16;
    for (const uint32_t uiType : {4u, 5u})
        EXPECT_THAT(decodeFirstRow({uiAlphas, colourPart(0, 0, 0)}, uiType),
                    ElementsAre(grey(0, 255), grey(0, 0), grey(0, 218), grey(0, 36)));
}

TEST(BcDecompress, IndicesGoRowByRowFromTheLowestBits)
{
    // Of colours 0 to 3, pixel (x, y) has x in row 0, then 3 - x, then 0, then 1.
    const std::vector<uint32_t> pixels = decode(bcDecompressImage, toBytes({colourPart(0xFFFF, 0, 0x55001BE4)}), 4, 4, 1);
    EXPECT_THAT(pixels, ElementsAre(grey(255), grey(0), grey(167), grey(87), grey(87), grey(167), grey(0), grey(255), grey(255), grey(255),
                                    grey(255), grey(255), grey(0), grey(0), grey(0), grey(0)));
}

TEST(BcDecompress, PixelsBeyondTheEdgeAreDropped)
{
    const uint64_t uiBlack = colourPart(0, 0, 0);
    const uint64_t uiWhite = colourPart(0xFFFF, 0, 0);
    const uint64_t uiRed = colourPart(0xF800, 0, 0);
    const uint64_t uiBlue = colourPart(0x001F, 0, 0);
    const std::vector<uint32_t> pixels = decode(bcDecompressImage, toBytes({uiBlack, uiWhite, uiRed, uiBlue}), 5, 6, 1);
    for (uint32_t y = 0; y < 6; ++y)
        for (uint32_t x = 0; x < 5; ++x)
        {
            const uint32_t uiUpper = x < 4 ? grey(0) : grey(255);
            const uint32_t uiLower = x < 4 ? rgba(255, 0, 0) : rgba(0, 0, 255);
            EXPECT_EQ(y < 4 ? uiUpper : uiLower, pixels[y * 5 + x]) << x << ", " << y;
        }
}

TEST(BcDecompress, TheFastFormGivesTheReferencePixelsAtEverySmallWidth)
{
    for (uint32_t uiWidth = 1; uiWidth <= 140; ++uiWidth)
    {
        SCOPED_TRACE(uiWidth);
        const uint32_t uiHeight = 1 + uiWidth % 9;
        for (const uint32_t uiType : k_auiTypes)
        {
            const size_t uiBytes = size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4) * getBcBlockBytes(uiType);
            const std::vector<uint8_t> blocks = CSeededRandom(uiWidth * 8 + uiType).bytes(uiBytes);
            const std::vector<uint32_t> expected = decode(bcDecompressImageReference, blocks, uiWidth, uiHeight, uiType);
            forEachInstructionSet([&] { EXPECT_EQ(expected, decode(bcDecompressImage, blocks, uiWidth, uiHeight, uiType)); });
        }
    }
}

TEST(BcDecompress, TheFastFormGivesTheReferencePixelsOfManyBlocks)
{
    for (const uint32_t uiType : k_auiTypes)
    {
        std::vector<uint8_t> blocks = CSeededRandom(uiType).bytes(size_t{128} * 128 * getBcBlockBytes(uiType));
        const std::vector<uint32_t> expected = decode(bcDecompressImageReference, blocks, 512, 512, uiType);
        forEachInstructionSet([&] { EXPECT_TRUE(expected == decode(bcDecompressImage, blocks, 512, 512, uiType)); });
    }
}

TEST(BcDecompress, TheFastFormGivesTheReferenceAlphasOfEveryTwoEndPoints)
{
    // A block for every alpha 0 and alpha 1, its indices 0 to 7 twice.
    uint64_t uiIndices = 0;
    for (uint32_t i = 0; i < 16; ++i)
        uiIndices |= static_cast<uint64_t>(i % 8) << (16 + 3 * i);
    std::vector<uint64_t> words;
    for (uint64_t uiAlphas = 0; uiAlphas < 65536; ++uiAlphas)
    {
        words.push_back(uiIndices | uiAlphas);
        words.push_back(colourPart(uiAlphas, 0xFFFF - uiAlphas, k_uiEveryIndex));
    }
    const std::vector<uint8_t> blocks = toBytes(words);
    const std::vector<uint32_t> expected = decode(bcDecompressImageReference, blocks, 1024, 1024, 5);
    forEachInstructionSet([&] { EXPECT_TRUE(expected == decode(bcDecompressImage, blocks, 1024, 1024, 5)); });
}

TEST(BcDecompress, BlocksOfEveryTypeGiveThePixelsThatAnotherDecoderMakesOfThem)
{
    for (const uint32_t uiType : k_auiTypes)
    {
        SCOPED_TRACE(uiType);
        const std::vector<uint8_t> blocks = readFixture(uiType, ".blocks");
        ASSERT_EQ(80 * getBcBlockBytes(uiType), blocks.size());
        const std::vector<uint8_t> expected = readFixture(uiType, ".rgba");
        EXPECT_EQ(expected, decodeToBytes(bcDecompressImageReference, blocks, k_uiFixtureWidth, k_uiFixtureHeight, uiType));
        forEachInstructionSet(
            [&] { EXPECT_EQ(expected, decodeToBytes(bcDecompressImage, blocks, k_uiFixtureWidth, k_uiFixtureHeight, uiType)); });
    }
}

TEST(BcDecompress, BuffersNeedNoAlignment)
{
    for (const uint32_t uiType : k_auiTypes)
    {
        const std::vector<uint8_t> blocks = CSeededRandom(uiType).bytes(16 * getBcBlockBytes(uiType) + 1);
        std::vector<uint8_t> expected(1024);
        EXPECT_EQ(1024u, bcDecompressImageReference(blocks.data() + 1, expected.data(), 64, 4, uiType));
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> pixels(1025);
                EXPECT_EQ(1024u, bcDecompressImage(blocks.data() + 1, pixels.data() + 1, 64, 4, uiType));
                EXPECT_TRUE(std::equal(expected.begin(), expected.end(), pixels.begin() + 1));
            });
    }
}
