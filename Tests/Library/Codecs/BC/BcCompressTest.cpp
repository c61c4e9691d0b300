#include "Codecs/BC/BcCompress.h"

#include <utility>

#include <gtest/gtest.h>

#include "BcTestBlocks.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using namespace bctest;

namespace
{

constexpr uint32_t k_auiTypes[] = {1, 2, 3, 4, 5};

std::vector<uint8_t> encode(decltype(&bcCompressImage) encoder, const std::vector<uint8_t>& image, uint32_t uiWidth, uint32_t uiHeight,
                            uint32_t uiType)
{
    const size_t uiBlocks = size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4);
    std::vector<uint8_t> blocks(uiBlocks * getBcBlockBytes(uiType));
    EXPECT_EQ(blocks.size(), encoder(image.data(), blocks.data(), uiWidth, uiHeight, uiType));
    return blocks;
}

/// An image of uiWidth times uiHeight pixels, cut out of another or padded by hand: pixel (x, y) is that at (column(x), row(y)).
template <typename Column, typename Row>
std::vector<uint8_t> pickPixels(const std::vector<uint8_t>& image, uint32_t uiFromWidth, uint32_t uiWidth, uint32_t uiHeight, Column column,
                                Row row)
{
    std::vector<uint8_t> picked;
    for (uint32_t y = 0; y < uiHeight; ++y)
        for (uint32_t x = 0; x < uiWidth; ++x)
        {
            const uint8_t* pPixel = image.data() + (size_t{row(y)} * uiFromWidth + column(x)) * 4;
            picked.insert(picked.end(), pPixel, pPixel + 4);
        }
    return picked;
}

/// Expects of random pixels of a size that is no multiple of 4 the blocks of what it is padded to.
///
/// @param columns, rows  by place in the padded image, the column or row that it repeats
void expectPadding(uint32_t uiWidth, uint32_t uiHeight, const std::vector<uint32_t>& columns, const std::vector<uint32_t>& rows)
{
    const auto uiPaddedWidth = static_cast<uint32_t>(columns.size());
    const auto uiPaddedHeight = static_cast<uint32_t>(rows.size());
    const std::vector<uint8_t> image = CSeededRandom(3).bytes(size_t{uiWidth} * uiHeight * 4);
    const std::vector<uint8_t> padded = pickPixels(
        image, uiWidth, uiPaddedWidth, uiPaddedHeight, [&](uint32_t x) { return columns[x]; }, [&](uint32_t y) { return rows[y]; });
    for (const uint32_t uiType : k_auiTypes)
        EXPECT_EQ(encode(bcCompressImage, padded, uiPaddedWidth, uiPaddedHeight, uiType),
                  encode(bcCompressImage, image, uiWidth, uiHeight, uiType));
}

} // namespace

TEST(BcCompress, ANullPointerAsksForTheSizeWithoutPadding)
{
    uint8_t aui8Block[16] = {};
    EXPECT_EQ(32u, bcCompressImage(nullptr, aui8Block, 8, 8, 1));
    EXPECT_EQ(17u, bcCompressImage(aui8Block, nullptr, 5, 7, 1));
    for (const uint32_t uiType : {2u, 3u, 4u, 5u})
        EXPECT_EQ(35u, bcCompressImage(nullptr, nullptr, 5, 7, uiType));
}

TEST(BcCompress, SizesAreCountedInSixtyFourBitsAndCutToThirtyTwo)
{
    // 65536 * 65536 / 2 is 2^31; the whole is 2^32.
    EXPECT_EQ(0x80000000u, bcCompressImage(nullptr, nullptr, 65536, 65536, 1));
    EXPECT_EQ(0u, bcCompressImage(nullptr, nullptr, 65536, 65536, 5));
}

TEST(BcCompress, TheWorkingPathCountsThePaddedSize)
{
    const std::vector<uint8_t> image(size_t{5} * 7 * 4);
    std::vector<uint8_t> blocks(64);
    EXPECT_EQ(32u, bcCompressImage(image.data(), blocks.data(), 5, 7, 1));
    EXPECT_EQ(64u, bcCompressImage(image.data(), blocks.data(), 5, 7, 5));
}

TEST(BcCompress, AnUnknownTypeGivesNothing)
{
    const std::vector<uint8_t> image(64);
    std::vector<uint8_t> blocks(16, 7);
    for (const uint32_t uiType : {0u, 6u, 0xFFFFFFFFu})
        EXPECT_EQ(0u, bcCompressImage(image.data(), blocks.data(), 4, 4, uiType));
    EXPECT_EQ(std::vector<uint8_t>(16, 7), blocks);
}

TEST(BcCompress, AWidthOrHeightOfZeroGivesNothing)
{
    const std::vector<uint8_t> image(64);
    std::vector<uint8_t> blocks(16, 7);
    for (const auto encoder : {bcCompressImage, bcCompressImageReference})
        for (const uint32_t uiType : k_auiTypes)
            for (const auto& [uiWidth, uiHeight] : {std::pair{0u, 4u}, {4u, 0u}, {0u, 5u}, {5u, 0u}, {0u, 0u}})
            {
                EXPECT_EQ(0u, encoder(image.data(), blocks.data(), uiWidth, uiHeight, uiType));
                EXPECT_EQ(0u, encoder(nullptr, nullptr, uiWidth, uiHeight, uiType));
            }
    EXPECT_EQ(std::vector<uint8_t>(16, 7), blocks);
}

TEST(BcCompress, ASurfaceOfHardBlocksGivesTheBytesThatAnotherEncoderMakesOfIt)
{
    const std::vector<uint8_t> image = readFixture("surface.rgba");
    ASSERT_EQ(size_t{k_uiFixtureWidth} * k_uiFixtureHeight * 4, image.size());
    for (const uint32_t uiType : k_auiTypes)
    {
        SCOPED_TRACE(uiType);
        const std::vector<uint8_t> expected = readFixture(uiType, ".blocks");
        EXPECT_EQ(expected, encode(bcCompressImageReference, image, k_uiFixtureWidth, k_uiFixtureHeight, uiType));
        forEachInstructionSet([&] { EXPECT_EQ(expected, encode(bcCompressImage, image, k_uiFixtureWidth, k_uiFixtureHeight, uiType)); });
    }
}

TEST(BcCompress, BlocksFollowInRowOrder)
{
    const std::vector<uint8_t> image = layOutBlocks({flatBlock(grey(0)), flatBlock(rgba(255, 0, 0)), flatBlock(rgba(0, 255, 0)),
                                                     flatBlock(rgba(0, 0, 255)), flatBlock(grey(255)), flatBlock(rgba(8, 0, 0))},
                                                    3);
    const std::vector<uint8_t> blocks = encode(bcCompressImage, image, 12, 8, 1);
    const uint16_t aui[6] = {0x0000, 0xF800, 0x07E0, 0x001F, 0xFFFF, 0x0800};
    for (size_t i = 0; i < 6; ++i)
        EXPECT_EQ(colourPart(aui[i], 0, 0), loadLE<uint64_t>(blocks.data() + 8 * i));
}

TEST(BcCompress, TypesTwoToFiveHaveTheAlphaPartFirst)
{
    // White at alpha 0x5C: nibbles of 5, or 0x5C twice and indices 0; and the same colours, which know no 1-bit alpha.
    const std::vector<uint8_t> image = layOutBlocks({flatBlock(grey(255, 0x5C))}, 1);
    for (const uint32_t uiType : {2u, 3u})
        EXPECT_EQ(0x5555555555555555u, loadLE<uint64_t>(encode(bcCompressImage, image, 4, 4, uiType).data()));
    for (const uint32_t uiType : {4u, 5u})
        EXPECT_EQ(0x5C5Cu, loadLE<uint64_t>(encode(bcCompressImage, image, 4, 4, uiType).data()));
    for (const uint32_t uiType : {2u, 3u, 4u, 5u})
        EXPECT_EQ(colourPart(0xFFFF, 0, 0), loadLE<uint64_t>(encode(bcCompressImage, image, 4, 4, uiType).data() + 8));
}

TEST(BcCompress, ThePremultipliedNamesAreEncodedLikeTheOthers)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(32, 32);
    EXPECT_EQ(encode(bcCompressImage, picture, 32, 32, 3), encode(bcCompressImage, picture, 32, 32, 2));
    EXPECT_EQ(encode(bcCompressImage, picture, 32, 32, 5), encode(bcCompressImage, picture, 32, 32, 4));
}

TEST(BcCompress, IndicesAreHandedOnFromBlockToBlockAndFromRowToRow)
{
    BcPixels blackFirst = flatBlock(grey(255));
    blackFirst[0] = grey(0);
    const std::vector<uint8_t> image =
        layOutBlocks({blockWithFirstIndexLeftOut(), blackFirst, blockWithFirstIndexLeftOut(), blockWithFirstIndexLeftOut()}, 2);
    forEachInstructionSet(
        [&]
        {
            for (const uint32_t uiType : k_auiTypes)
            {
                const std::vector<uint8_t> blocks = encode(bcCompressImage, image, 8, 8, uiType);
                const size_t uiBytes = getBcBlockBytes(uiType);
                const auto part = [&](size_t uiBlock) { return loadLE<uint64_t>(blocks.data() + (uiBlock + 1) * uiBytes - 8); };
                EXPECT_EQ(partWithFirstIndexLeftOut(0), part(0)) << "nothing came before";
                EXPECT_EQ(colourPart(0xFFFF, 0, 1), part(1));
                EXPECT_EQ(partWithFirstIndexLeftOut(1), part(2)) << "the first of the second row";
                EXPECT_EQ(partWithFirstIndexLeftOut(1), part(3)) << "an index that was itself kept";
            }
        });
}

TEST(BcCompress, ColumnsAndRowsBeyondTheEdgeRepeatThoseBefore)
{
    // A width of 5 is padded to 8 by the columns 2, 3, 4; a height of 6 by the rows 4 + 6 - 8 = 4 and 5.
    expectPadding(5, 6, {0, 1, 2, 3, 4, 2, 3, 4}, {0, 1, 2, 3, 4, 5, 4, 5});
}

TEST(BcCompress, SidesOfTwoAndThreeAreRepeatedByTheSameRule)
{
    // 2 is padded by 2 + 2 - 4 = 0 and 1; 3 by 3 + 3 - 4 = 2.
    expectPadding(2, 3, {0, 1, 0, 1}, {0, 1, 2, 2});
}

TEST(BcCompress, ASideOfOnePixelRepeatsThatPixel)
{
    const std::vector<uint8_t> image = {200, 100, 50, 255};
    EXPECT_EQ(colourPart(0xCB26, 0, 0), loadLE<uint64_t>(encode(bcCompressImage, image, 1, 1, 1).data()));

    const std::vector<uint8_t> column = layOutBlocks({flatBlock(grey(0))}, 1);
    EXPECT_EQ(colourPart(0, 0, 0), loadLE<uint64_t>(encode(bcCompressImage, column, 1, 13, 1).data() + 24));
}

TEST(BcCompress, TheFastFormGivesTheReferenceBytesAtEverySmallWidth)
{
    CSeededRandom random(9);
    for (uint32_t uiWidth = 1; uiWidth <= 70; ++uiWidth)
    {
        SCOPED_TRACE(uiWidth);
        const uint32_t uiHeight = 1 + random.below(17);
        const std::vector<uint8_t> hard = layOutBlocks(makeHardBlocks(size_t{18} * 5, uiWidth), 18);
        const auto same = [](uint32_t i) { return i; };
        const std::vector<uint8_t> image = pickPixels(hard, 72, uiWidth, uiHeight, same, same);
        for (const uint32_t uiType : k_auiTypes)
        {
            const std::vector<uint8_t> expected = encode(bcCompressImageReference, image, uiWidth, uiHeight, uiType);
            forEachInstructionSet([&] { EXPECT_EQ(expected, encode(bcCompressImage, image, uiWidth, uiHeight, uiType)); });
        }
    }
}

TEST(BcCompress, TheFastFormGivesTheReferenceBytesOfAPicture)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(256, 256);
    const std::vector<uint8_t> noise = CSeededRandom(12).bytes(picture.size());
    for (const std::vector<uint8_t>& image : {picture, noise})
        for (const uint32_t uiType : k_auiTypes)
        {
            const std::vector<uint8_t> expected = encode(bcCompressImageReference, image, 256, 256, uiType);
            forEachInstructionSet([&] { EXPECT_TRUE(expected == encode(bcCompressImage, image, 256, 256, uiType)); });
        }
}

TEST(BcCompress, BuffersNeedNoAlignment)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(64, 8);
    std::vector<uint8_t> shifted(1);
    shifted.insert(shifted.end(), picture.begin(), picture.end());
    for (const uint32_t uiType : k_auiTypes)
    {
        const std::vector<uint8_t> expected = encode(bcCompressImageReference, picture, 64, 8, uiType);
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> blocks(expected.size() + 1);
                EXPECT_EQ(expected.size(), bcCompressImage(shifted.data() + 1, blocks.data() + 1, 64, 8, uiType));
                EXPECT_TRUE(std::equal(expected.begin(), expected.end(), blocks.begin() + 1));
            });
    }
}
