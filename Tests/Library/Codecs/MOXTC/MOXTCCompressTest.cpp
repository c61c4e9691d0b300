#include "Codecs/MOXTC/MOXTCCompress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "Codecs/MOXTC/Block/BlockColours.h"
#include "Codecs/MOXTC/ImagePadding.h"
#include "Codecs/MOXTC/MOXTC2bppCompressor.h"
#include "Codecs/MOXTC/MOXTC4bppCompressor.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Codecs/MOXTC/MOXTCII2bppCompressor.h"
#include "Codecs/MOXTC/MOXTCII4bppCompressor.h"
#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"
#include "Codecs/MOXTC/MOXTCThreadDriver.h"
#include "Core/ByteOrder.h"
#include "Support/ProcessorCount.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testsupport::CProcessorCount;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Format
{
    bool b2bpp;
    bool bII;
};

constexpr std::array<Format, 4> k_aFormats{{{true, false}, {false, false}, {true, true}, {false, true}}};

std::string nameOf(const Format& format)
{
    return std::string(format.bII ? "MOXTCII " : "MOXTC1 ") + (format.b2bpp ? "2bpp" : "4bpp");
}

uint32_t querySize(uint32_t uiWidth, uint32_t uiHeight, const Format& format)
{
    return MOXTCCompress(nullptr, nullptr, uiWidth, uiHeight, false, format.b2bpp, format.bII, 0);
}

Bytes compress(const Bytes& picture, uint32_t uiWidth, uint32_t uiHeight, const Format& format, uint32_t uiQuality, bool bHasAlpha = false)
{
    Bytes blocks(querySize(uiWidth, uiHeight, format));
    EXPECT_FALSE(blocks.empty());
    EXPECT_EQ(blocks.size(),
              MOXTCCompress(picture.data(), blocks.data(), uiWidth, uiHeight, bHasAlpha, format.b2bpp, format.bII, uiQuality));
    return blocks;
}

Bytes decompress(const Bytes& blocks, uint32_t uiWidth, uint32_t uiHeight, const Format& format)
{
    Bytes picture(size_t{uiWidth} * uiHeight * 4);
    EXPECT_EQ(picture.size(), MOXTCDecompress(blocks.data(), picture.data(), uiWidth, uiHeight, format.b2bpp, format.bII));
    return picture;
}

Bytes makeFlat(uint32_t uiWidth, uint32_t uiHeight, const std::array<uint8_t, 4>& aui8Colour)
{
    Bytes picture(size_t{uiWidth} * uiHeight * 4);
    for (size_t i = 0; i < picture.size(); ++i)
        picture[i] = aui8Colour[i % 4];
    return picture;
}

double getPSNR(const Bytes& first, const Bytes& second)
{
    double dSum = 0;
    for (size_t i = 0; i < first.size(); ++i)
        dSum += std::pow(first[i] - second[i], 2);
    return 10 * std::log10(255.0 * 255.0 * static_cast<double>(first.size()) / dSum);
}

void write(MOXTCCompressor& compressor, uint8_t* pTarget)
{
    compressor.WriteOutput(pTarget, true);
}

void write(MOXTCIICompressor& compressor, uint8_t* pTarget)
{
    compressor.WriteOutput(pTarget);
}

/// The steps of a fast compressor one by one, in one thread; the tiles are given.
template <typename TCompressor>
Bytes compressByHand(const Bytes& picture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiPasses, const std::vector<BlockRegion>& tiles)
{
    TCompressor compressor(picture.data(), uiWidth, uiHeight);
    compressor.Initialise(true);
    for (uint32_t uiPass = 0; uiPass < uiPasses; ++uiPass)
    {
        for (const BlockRegion& tile : tiles)
            compressor.OptimiseColours(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1);
        compressor.UpscaleColours();
        for (const BlockRegion& tile : tiles)
            compressor.OptimiseModulation(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1);
    }
    Bytes blocks(size_t{compressor.getBlocksX()} * compressor.getBlocksY() * 8);
    write(compressor, blocks.data());
    return blocks;
}

Bytes compressByHand(const Bytes& picture, uint32_t uiWidth, uint32_t uiHeight, const Format& format, uint32_t uiPasses,
                     const std::vector<BlockRegion>& tiles)
{
    if (format.bII)
        return format.b2bpp ? compressByHand<MOXTCII2bppCompressor>(picture, uiWidth, uiHeight, uiPasses, tiles)
                            : compressByHand<MOXTCII4bppCompressor>(picture, uiWidth, uiHeight, uiPasses, tiles);
    return format.b2bpp ? compressByHand<MOXTC2bppCompressor>(picture, uiWidth, uiHeight, uiPasses, tiles)
                        : compressByHand<MOXTC4bppCompressor>(picture, uiWidth, uiHeight, uiPasses, tiles);
}

std::vector<BlockRegion> wholeGrid(uint32_t uiBlocksX, uint32_t uiBlocksY)
{
    return {{0, uiBlocksX, 0, uiBlocksY}};
}

} // namespace

TEST(MOXTCCompressSize, IsHalfAByteAPixelOrAQuarter)
{
    EXPECT_EQ(16u * 8 / 4, querySize(16, 8, {true, false}));
    EXPECT_EQ(8u * 8 / 2, querySize(8, 8, {false, false}));
    EXPECT_EQ(16u * 8 / 4, querySize(16, 8, {true, true}));
    EXPECT_EQ(8u * 8 / 2, querySize(8, 8, {false, true}));
}

TEST(MOXTCCompressSize, IsThatOfThePaddedPictureInMOXTCII)
{
    EXPECT_EQ(8u, querySize(1, 1, {false, true}));
    EXPECT_EQ(8u, querySize(1, 1, {true, true}));
    EXPECT_EQ(12u * 8 / 2, querySize(9, 5, {false, true}));
    EXPECT_EQ(16u * 8 / 4, querySize(9, 5, {true, true}));
}

TEST(MOXTCCompressSize, IsGivenForOneNullPointerToo)
{
    Bytes bytes(64);
    EXPECT_EQ(32u, MOXTCCompress(bytes.data(), nullptr, 8, 8, false, false, true, 1));
    EXPECT_EQ(32u, MOXTCCompress(nullptr, bytes.data(), 8, 8, false, false, true, 4));
    EXPECT_EQ(Bytes(64), bytes);
}

TEST(MOXTCCompressSize, IsNothingForNoPixelsAndForMoreBytesThan32BitsCount)
{
    for (const Format& format : k_aFormats)
    {
        EXPECT_EQ(0u, querySize(0, 8, format));
        EXPECT_EQ(0u, querySize(16, 0, format));
        EXPECT_EQ(0u, querySize(0x40000000, 0x40000000, format)); // 2^58 bytes and more
        EXPECT_EQ(0u, querySize(131072, 131072, format));         // 2^33 and 2^32 bytes
    }
    EXPECT_EQ(0u, querySize(0xFFFFFFFF, 1, {false, true})); // 2^30 blocks, padded
    EXPECT_EQ(0u, querySize(131072, 65540, {false, true})); // 2^32 bytes and 2^18
    EXPECT_EQ(0x80000000u, querySize(65536, 65536, {false, true}));
}

TEST(MOXTCCompress, TakesNoMOXTC1SizesOutsideWholeBlocks)
{
    const Bytes picture(size_t{24} * 16 * 4);
    for (const auto& [uiWidth, uiHeight] : {std::pair{17u, 8u}, {12u, 8u}, {16u, 9u}, {16u, 6u}})
    {
        Bytes blocks(256, 0xEE);
        EXPECT_EQ(0u, querySize(uiWidth, uiHeight, {true, false})) << uiWidth << " x " << uiHeight;
        EXPECT_EQ(0u, MOXTCCompress(picture.data(), blocks.data(), uiWidth, uiHeight, false, true, false, 0));
        EXPECT_EQ(Bytes(256, 0xEE), blocks);
    }
    EXPECT_EQ(0u, querySize(9, 8, {false, false}));
    EXPECT_EQ(0u, querySize(8, 10, {false, false}));
    EXPECT_NE(0u, querySize(16, 8, {true, false}));
}

TEST(MOXTCCompress, TakesNoMOXTC1GridWhoseOrderLeavesTheGrid)
{
    // The order again, coordinate by coordinate: bits pair up below the shorter side, the rest of the longer axis goes above.
    const auto getPlace = [](uint32_t x, uint32_t y, uint32_t uiXBlocks, uint32_t uiYBlocks)
    {
        uint32_t uiPlace = 0;
        uint32_t uiFactor = 1;
        uint32_t uiLonger = uiYBlocks < uiXBlocks ? x : y;
        for (uint32_t uiSide = 1; uiSide < std::min(uiXBlocks, uiYBlocks); uiSide *= 2)
        {
            uiPlace += y % 2 * uiFactor + x % 2 * 2 * uiFactor;
            x /= 2;
            y /= 2;
            uiLonger /= 2;
            uiFactor *= 4;
        }
        return uiPlace + uiLonger * uiFactor;
    };
    uint32_t uiRefused = 0;
    for (uint32_t uiYBlocks = 1; uiYBlocks <= 9; ++uiYBlocks)
        for (uint32_t uiXBlocks = 1; uiXBlocks <= 9; ++uiXBlocks)
        {
            std::set<uint32_t> places;
            for (uint32_t y = 0; y < uiYBlocks; ++y)
                for (uint32_t x = 0; x < uiXBlocks; ++x)
                    places.insert(getPlace(x, y, uiXBlocks, uiYBlocks));
            const bool bComplete = *places.rbegin() < uiXBlocks * uiYBlocks;
            uiRefused += bComplete ? 0 : 1;
            for (const bool b2bpp : {false, true})
            {
                const uint32_t uiWidth = uiXBlocks * (b2bpp ? 8 : 4);
                const uint32_t uiHeight = uiYBlocks * 4;
                const uint32_t uiSize = uiXBlocks * uiYBlocks * 8;
                const Bytes picture(size_t{uiWidth} * uiHeight * 4);
                SCOPED_TRACE(std::to_string(uiXBlocks) + " x " + std::to_string(uiYBlocks) + " blocks");
                EXPECT_EQ(bComplete ? uiSize : 0, querySize(uiWidth, uiHeight, {b2bpp, false}));
                EXPECT_EQ(uiSize, querySize(uiWidth, uiHeight, {b2bpp, true}));
                for (const uint32_t uiQuality : {0u, 1u, 2u})
                {
                    Bytes blocks(uiSize + 8, 0xEE);
                    const bool bDone = bComplete && uiQuality < 2;
                    EXPECT_EQ(bDone ? uiSize : 0,
                              MOXTCCompress(picture.data(), blocks.data(), uiWidth, uiHeight, false, b2bpp, false, uiQuality));
                    EXPECT_EQ(Bytes(8, 0xEE), Bytes(blocks.end() - 8, blocks.end()));
                    if (!bDone)
                    {
                        EXPECT_EQ(Bytes(uiSize + 8, 0xEE), blocks);
                    }
                }
            }
        }
    EXPECT_GT(uiRefused, 0u);
    EXPECT_EQ(0u, querySize(12, 12, {false, false})); // 3 x 3: block (2, 2) at place 12
    EXPECT_EQ(0u, querySize(8, 12, {false, false}));  // 2 x 3: block (1, 2) at place 6
    EXPECT_EQ(48u, querySize(12, 8, {false, false})); // 3 x 2: block (2, 1) at place 5
}

TEST(MOXTCCompress, HasNoEngineForQuality2AndMore)
{
    const Bytes picture(size_t{16} * 8 * 4);
    for (const Format& format : k_aFormats)
        for (const uint32_t uiQuality : {2u, 3u, 4u, 0xFFFFFFFFu})
        {
            Bytes blocks(64, 0xEE);
            EXPECT_EQ(0u, MOXTCCompress(picture.data(), blocks.data(), 16, 8, false, format.b2bpp, format.bII, uiQuality));
            EXPECT_EQ(Bytes(64, 0xEE), blocks);
        }
}

TEST(MOXTCCompress, IsTheOnePassCoderForMOXTCIIAt4bppInQuality0Alone)
{
    const CProcessorCount one(1);
    constexpr uint32_t uiSide = 64;
    const Bytes picture = testsupport::makePicture(uiSide, uiSide, 5);
    Bytes onePass(uiSide * uiSide / 2);
    codeMOXTCIIBlocksReference(picture.data(), uiSide, uiSide, onePass.data());
    EXPECT_EQ(onePass, compress(picture, uiSide, uiSide, {false, true}, 0));
    EXPECT_NE(onePass, compress(picture, uiSide, uiSide, {false, true}, 1));
}

TEST(MOXTCCompress, IsTheFastCompressorWithoutPassesInQuality0AndWith8InQuality1)
{
    const CProcessorCount one(1);
    constexpr uint32_t uiSide = 64;
    // Noise, since on a picture the passes soon have nothing left to do.
    const Bytes picture = testsupport::CSeededRandom(6).bytes(uiSide * uiSide * 4);
    for (const Format& format : k_aFormats)
    {
        SCOPED_TRACE(nameOf(format));
        const std::vector<BlockRegion> tiles = wholeGrid(uiSide / (format.b2bpp ? 8 : 4), uiSide / 4);
        if (format.b2bpp || !format.bII)
        {
            EXPECT_EQ(compressByHand(picture, uiSide, uiSide, format, 0, tiles), compress(picture, uiSide, uiSide, format, 0));
        }
        const Bytes refined = compress(picture, uiSide, uiSide, format, 1);
        EXPECT_EQ(compressByHand(picture, uiSide, uiSide, format, 8, tiles), refined);
        EXPECT_NE(compressByHand(picture, uiSide, uiSide, format, 7, tiles), refined);
        EXPECT_NE(compressByHand(picture, uiSide, uiSide, format, 9, tiles), refined);
    }
}

TEST(MOXTCCompress, RefinesTileByTileByTheProcessors)
{
    // 6 processors make 2 by 3 tiles: of 32 rows of blocks, 10 each.
    constexpr uint32_t uiWidth = 64;
    constexpr uint32_t uiHeight = 128;
    const Bytes picture = testsupport::makePicture(uiWidth, uiHeight, 7);
    for (const Format& format : k_aFormats)
    {
        SCOPED_TRACE(nameOf(format));
        const uint32_t uiHalf = uiWidth / (format.b2bpp ? 16 : 8);
        const std::vector<BlockRegion> tiles{{0, uiHalf, 0, 10},           {uiHalf, 2 * uiHalf, 0, 10}, {0, uiHalf, 10, 20},
                                             {uiHalf, 2 * uiHalf, 10, 20}, {0, uiHalf, 20, 30},         {uiHalf, 2 * uiHalf, 20, 30}};
        const CProcessorCount six(6);
        EXPECT_EQ(compressByHand(picture, uiWidth, uiHeight, format, 8, tiles), compress(picture, uiWidth, uiHeight, format, 1));
    }
}

TEST(MOXTCCompress, LeavesTheLastTwoOf32RowsAsTheyStartWith6Processors)
{
    constexpr uint32_t uiSide = 128;
    const Bytes picture = testsupport::makePicture(uiSide, uiSide, 8);
    const CProcessorCount six(6);
    MOXTCII4bppCompressor compressor(picture.data(), uiSide, uiSide);
    compressor.setIterations(8);
    compressor.Initialise(true);
    const CompressorImages start = compressor.getImages();
    const std::vector<BlockRecord4bpp> startRecords = compressor.getBlockData();
    CMOXTCThreadDriver(compressor).run();
    const CompressorImages& refined = compressor.getImages();
    uint32_t uiChanged = 0;
    for (size_t i = 0; i < start.getBlockCount(); ++i)
        if (i / 32 < 30)
            uiChanged += start.colourA[i] != refined.colourA[i] || start.colourB[i] != refined.colourB[i] ? 1 : 0;
        else
        {
            EXPECT_EQ(start.colourA[i], refined.colourA[i]) << "block " << i;
            EXPECT_EQ(start.colourB[i], refined.colourB[i]) << "block " << i;
            EXPECT_EQ(startRecords[i].aui8StandardCodes, compressor.getBlockData()[i].aui8StandardCodes) << "block " << i;
            EXPECT_EQ(startRecords[i].uiMode, compressor.getBlockData()[i].uiMode) << "block " << i;
        }
    EXPECT_GT(uiChanged, 100u);
}

TEST(MOXTCCompress, GivesTheSameBytesAgainAndForOtherProcessorsWithTheSameTiles)
{
    constexpr uint32_t uiSide = 128;
    const Bytes picture = testsupport::makePicture(uiSide, uiSide, 9);
    for (const Format& format : k_aFormats)
    {
        SCOPED_TRACE(nameOf(format));
        const auto compressWith = [&](uint32_t uiProcessors, uint32_t uiQuality)
        {
            const CProcessorCount processors(uiProcessors);
            return compress(picture, uiSide, uiSide, format, uiQuality);
        };
        // 4 and 5: 2 by 2 tiles. 9, 10 and 11: 3 by 3. 64 and more: 8 by 8.
        const Bytes four = compressWith(4, 1);
        EXPECT_EQ(four, compressWith(4, 1));
        EXPECT_EQ(four, compressWith(5, 1));
        const Bytes nine = compressWith(9, 1);
        EXPECT_EQ(nine, compressWith(10, 1));
        EXPECT_EQ(nine, compressWith(11, 1));
        EXPECT_EQ(compressWith(64, 1), compressWith(1000, 1));
        EXPECT_NE(four, nine) << "3 by 3 tiles leave blocks out";
        // Tiles that leave nothing out give what one tile gives: no step looks at what another block gets in it.
        EXPECT_EQ(compressWith(1, 1), four);
        // Without passes there are no tiles.
        EXPECT_EQ(compressWith(1, 0), compressWith(7, 0));
    }
}

TEST(MOXTCCompress, TakesPixelsAndTargetsOfAnyAlignment)
{
    constexpr uint32_t uiSide = 32;
    const Bytes picture = testsupport::makePicture(uiSide, uiSide, 10);
    for (const Format& format : k_aFormats)
        for (const uint32_t uiQuality : {0u, 1u})
        {
            const Bytes expected = compress(picture, uiSide, uiSide, format, uiQuality);
            Bytes moved(picture.size() + 1);
            std::copy(picture.begin(), picture.end(), moved.begin() + 1);
            Bytes blocks(expected.size() + 1);
            EXPECT_EQ(expected.size(),
                      MOXTCCompress(moved.data() + 1, blocks.data() + 1, uiSide, uiSide, false, format.b2bpp, format.bII, uiQuality));
            EXPECT_EQ(expected, Bytes(blocks.begin() + 1, blocks.end())) << nameOf(format);
        }
}

TEST(MOXTCCompress, DoesNotLookAtItsAlphaSwitch)
{
    const Bytes picture = testsupport::makePicture(32, 32, 11);
    for (const Format& format : k_aFormats)
        EXPECT_EQ(compress(picture, 32, 32, format, 1, false), compress(picture, 32, 32, format, 1, true)) << nameOf(format);
}

TEST(MOXTCCompress, PadsOddSizesInMOXTCIIByTheLastColumnsAndRows)
{
    for (const bool b2bpp : {false, true})
        for (const auto& [uiWidth, uiHeight] : {std::pair{13u, 7u}, {9u, 33u}, {16u, 5u}, {11u, 8u}, {1u, 1u}})
            for (const uint32_t uiQuality : {0u, 1u})
            {
                const Bytes picture = testsupport::makePicture(uiWidth, uiHeight, 12);
                const uint32_t uiPaddedWidth = b2bpp ? (uiWidth + 7) / 8 * 8 : (uiWidth + 3) / 4 * 4;
                const uint32_t uiPaddedHeight = (uiHeight + 3) / 4 * 4;
                const Bytes padded = padImage(picture.data(), uiWidth, uiHeight, uiPaddedWidth, uiPaddedHeight);
                const Bytes blocks = compress(picture, uiWidth, uiHeight, {b2bpp, true}, uiQuality);
                EXPECT_EQ(size_t{uiPaddedWidth} * uiPaddedHeight / (b2bpp ? 4 : 2), blocks.size());
                EXPECT_EQ(compress(padded, uiPaddedWidth, uiPaddedHeight, {b2bpp, true}, uiQuality), blocks)
                    << uiWidth << " x " << uiHeight << ", quality " << uiQuality;
            }
}

TEST(MOXTCCompress, KeepsAFlatPictureExactInAColourThatBothColoursHold)
{
    // 5 bits of red and green, and a blue that 4 bits give as well (0, 3, 31 and 21 of 31 are their own high bits repeated).
    for (const std::array<uint8_t, 4>& aui8Colour : {std::array<uint8_t, 4>{0, 0, 0, 255}, {255, 255, 255, 255}, {132, 66, 173, 255}})
        for (const Format& format : k_aFormats)
            for (const uint32_t uiQuality : {0u, 1u})
            {
                const Bytes picture = makeFlat(32, 32, aui8Colour);
                EXPECT_EQ(picture, decompress(compress(picture, 32, 32, format, uiQuality), 32, 32, format)) << nameOf(format);
            }
}

TEST(MOXTCCompress, KeepsAFlatPictureBetweenItsColoursAsTheyAreStored)
{
    // Both colours are the picture's; what is stored of them differs by a bit or two.
    const auto widen = [](uint32_t ui, uint32_t uiBits)
    {
        // To 5 bits by repetition, then to 8.
        const uint32_t ui5 = uiBits == 5 ? ui : uiBits == 4 ? ui << 1 | ui >> 3 : ui << 2 | ui >> 1;
        return ui5 << 3 | ui5 >> 2;
    };
    testsupport::CSeededRandom random(13);
    for (uint32_t uiCase = 0; uiCase < 50; ++uiCase)
    {
        std::array<uint8_t, 4> aui8Colour;
        for (uint8_t& ui8Channel : aui8Colour)
            ui8Channel = static_cast<uint8_t>(random.below(256));
        if (uiCase % 2 == 0)
            aui8Colour[3] = 255;
        if (aui8Colour[3] == 0)
            aui8Colour[3] = 1; // alpha 0 makes the one-pass coder punch holes
        const bool bOpaque = aui8Colour[3] == 255;
        const Bytes picture = makeFlat(16, 16, aui8Colour);
        for (const Format& format : k_aFormats)
            for (const uint32_t uiQuality : {0u, 1u})
            {
                const Bytes decoded = decompress(compress(picture, 16, 16, format, uiQuality), 16, 16, format);
                for (uint32_t c = 0; c < 4; ++c)
                {
                    const uint32_t uiBitsA = bOpaque ? (c == 2 ? 4 : 5) : (c == 2 ? 3 : 4);
                    const uint32_t uiBitsB = bOpaque ? 5 : 4;
                    uint32_t uiA = widen(aui8Colour[c] >> (8 - uiBitsA), uiBitsA);
                    uint32_t uiB = widen(aui8Colour[c] >> (8 - uiBitsB), uiBitsB);
                    if (c == 3)
                    {
                        // Three bits and a low bit that only MOXTCII's B has set; 17 is the step of 4 bits.
                        uiA = bOpaque ? 255 : 17u * (uint32_t{aui8Colour[3]} >> 5 << 1);
                        uiB = bOpaque || !format.bII ? uiA : uiA + 17;
                    }
                    for (size_t i = c; i < decoded.size(); i += 4)
                    {
                        ASSERT_GE(decoded[i], std::min(uiA, uiB)) << nameOf(format) << " channel " << c << " of case " << uiCase;
                        ASSERT_LE(decoded[i], std::max(uiA, uiB)) << nameOf(format) << " channel " << c << " of case " << uiCase;
                    }
                }
            }
    }
}

TEST(MOXTCCompress, BringsPicturesOfTwoColoursAndTheirBlendsBackUnchanged)
{
    // Blocks with one dark and one bright colour throughout and any codes decode to pictures of two colours (2bpp, direct codes) or four
    // (4bpp). Both ends are in every window, so the fast compressors find the same two colours, and then the same codes.
    constexpr uint32_t uiSide = 64;
    const std::array<uint8_t, 4> aui8Dark{0, 66, 33, 255};
    const std::array<uint8_t, 4> aui8Bright{231, 189, 255, 255};
    testsupport::CSeededRandom random(14);
    for (const Format& format : k_aFormats)
    {
        Bytes blocks(uiSide * uiSide / (format.b2bpp ? 4 : 2));
        for (size_t i = 0; i < blocks.size(); i += 8)
        {
            // The first pixels have codes 0 and 3, or 0 and 1 of one bit.
            const uint32_t uiCodes = (random.next32() & ~0xFu) | (format.b2bpp ? 2 : 12);
            storeBlock(blocks.data() + i, {uiCodes, packColours(aui8Dark.data(), aui8Bright.data(), format.bII)});
        }
        const Bytes picture = decompress(blocks, uiSide, uiSide, format);
        for (const uint32_t uiQuality : {0u, 1u})
        {
            if (uiQuality == 0 && format.bII && !format.b2bpp)
                continue; // the one-pass coder, below
            EXPECT_EQ(picture, decompress(compress(picture, uiSide, uiSide, format, uiQuality), uiSide, uiSide, format))
                << nameOf(format) << ", quality " << uiQuality;
        }
    }
}

TEST(MOXTCCompress, BringsSmoothBlocksBackWithLowError)
{
    // A and B move slowly from block to block, every code occurs.
    constexpr uint32_t uiSide = 128;
    for (const Format& format : k_aFormats)
    {
        const uint32_t uiBlocksX = uiSide / (format.b2bpp ? 8 : 4);
        CompressorImages images;
        images.uiBlocksX = uiBlocksX;
        images.uiBlocksY = uiSide / 4;
        images.ui8BlockWidth = format.b2bpp ? 8 : 4;
        for (uint32_t y = 0; y < images.uiBlocksY; ++y)
            for (uint32_t x = 0; x < uiBlocksX; ++x)
            {
                // Waves of one period, so that the picture wraps.
                const auto wave = [](uint32_t i, uint32_t uiCount, double dBase)
                { return static_cast<uint32_t>(dBase + 30 * std::sin(6.283185307 * i / uiCount)); };
                images.colourA.push_back(wave(x, uiBlocksX, 50) | wave(y, images.uiBlocksY, 50) << 8 | 40u << 16 | 255u << 24);
                images.colourB.push_back(wave(y, images.uiBlocksY, 200) | wave(x, uiBlocksX, 200) << 8 | 220u << 16 | 255u << 24);
            }
        std::array<uint8_t, 32> aui8Codes;
        for (size_t i = 0; i < aui8Codes.size(); ++i)
            aui8Codes[i] = static_cast<uint8_t>(format.b2bpp ? i % 8 / 4 * 3 : i % 4);
        const Bytes noHardFlags(images.getBlockCount());
        Bytes blocks(images.getBlockCount() * 8);
        writeBlocks(images, format.bII ? noHardFlags.data() : nullptr, !format.bII, blocks.data(),
                    [&](size_t) {
                        return ChosenModulation{aui8Codes.data(), 0};
                    });
        const Bytes picture = decompress(blocks, uiSide, uiSide, format);
        // Truncation to 4 and 5 bits alone costs up to 8 levels of 255, 30 dB; a wrong colour or code costs 60 levels and more.
        for (const uint32_t uiQuality : {0u, 1u})
            EXPECT_GT(getPSNR(picture, decompress(compress(picture, uiSide, uiSide, format, uiQuality), uiSide, uiSide, format)), 28.0)
                << nameOf(format) << ", quality " << uiQuality;
    }
}

TEST(MOXTCCompress, GainsByItsPasses)
{
    // MOXTC1 alone: in MOXTCII the passes know nothing of the hard blocks, and may lose a little.
    constexpr uint32_t uiSide = 128;
    const Bytes picture = testsupport::makePicture(uiSide, uiSide, 15);
    for (const bool b2bpp : {false, true})
    {
        const Format format{b2bpp, false};
        const auto getQuality = [&](uint32_t uiQuality)
        { return getPSNR(picture, decompress(compress(picture, uiSide, uiSide, format, uiQuality), uiSide, uiSide, format)); };
        EXPECT_GT(getQuality(1), getQuality(0)) << nameOf(format);
    }
}
