#include "Codecs/MOXTC/CompressorSteps.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "CompressorTestPictures.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

template <typename Compressor>
class CompressorOfEveryKind : public testing::Test
{
};

using AllCompressors = testing::Types<MOXTC2bppCompressor, MOXTC4bppCompressor, MOXTCII2bppCompressor, MOXTCII4bppCompressor>;
TYPED_TEST_SUITE(CompressorOfEveryKind, AllCompressors);

/// Blocks of two colours, the same in all of them, with random codes; the first pixel has code 0 and the last one code 3.
template <typename Compressor>
std::vector<uint8_t> makeSimpleBlocks(uint32_t uiBlockCount)
{
    testsupport::CSeededRandom random(11);
    std::vector<uint8_t> blocks(uiBlockCount * k_uiBlockBytes);
    for (uint32_t i = 0; i < uiBlockCount; ++i)
    {
        BlockWord block;
        block.ui32Modulation = (random.next32() & ~3u) | 0xC0000000u;
        // B: opaque, red 28, green 25, blue 24. A: opaque for MOXTC1, and for MOXTCII not hard; red 3, green 2, blue 4 (of 4 bits).
        block.ui32Colours =
            1u << 31 | 28u << 26 | 25u << 21 | 24u << 16 | (k_bII<Compressor> ? 0u : 1u << 15) | 3u << 10 | 2u << 5 | 4u << 1;
        storeBlock(&blocks[i * k_uiBlockBytes], block);
    }
    return blocks;
}

/// Squared error of the blends that the compressor reckons with.
template <typename Compressor>
int64_t sumBlendErrors(const Compressor& compressor)
{
    const CompressorImages& images = compressor.getImages();
    int64_t i64Sum = 0;
    for (uint32_t y = 0; y < images.uiHeight; ++y)
    {
        for (uint32_t x = 0; x < images.uiWidth; ++x)
        {
            const auto& record = compressor.getBlockData()[images.getBlockIndex(x / images.ui8BlockWidth, y / images.ui8BlockHeight)];
            const int32_t iWeight = getBlockWeights(record)[y % images.ui8BlockHeight * images.ui8BlockWidth + x % images.ui8BlockWidth];
            const size_t i = size_t{y} * images.uiWidth + x;
            i64Sum += getBlendError(images.source[i], images.upscaledA[i], images.upscaledB[i], iWeight);
        }
    }
    return i64Sum;
}

/// Colours that no two of a block and its neighbours come near to, so that all blocks are moved.
std::vector<uint8_t> makeHarshPicture(uint32_t uiWidth, uint32_t uiHeight)
{
    return makeBytes(uiWidth, uiHeight, [](uint32_t x, uint32_t y) { return rgba(x * 37 % 256, y * 59 % 256, (x / 5 + y / 3) % 2 * 255); });
}

} // namespace

TYPED_TEST(CompressorOfEveryKind, StartsWithNoPassesAndModulationInEveryPass)
{
    const std::vector<uint8_t> picture = makeFlatPicture(0);
    const TypeParam compressor(picture.data(), 16, 8);
    EXPECT_EQ(0u, compressor.getIterations());
    EXPECT_EQ(1u, compressor.getModulationInterval());
    EXPECT_EQ(16 / k_uiBlockWidth<TypeParam>, compressor.getBlocksX());
    EXPECT_EQ(2u, compressor.getBlocksY());
    EXPECT_EQ(compressor.getImages().getBlockCount(), compressor.getBlockData().size());
}

TYPED_TEST(CompressorOfEveryKind, KeepsItsOwnCopyOfThePicture)
{
    std::vector<uint8_t> picture = testsupport::makePicture(32, 32);
    TypeParam compressor(picture.data(), 32, 32);
    const std::vector<uint8_t> original = picture;
    picture.assign(picture.size(), 0);
    compressor.Initialise(true);
    EXPECT_EQ(compress<TypeParam>(original, 32, 32, 0), writeBlocks(compressor));
}

TYPED_TEST(CompressorOfEveryKind, CompressIsItsPassesOverTheWholeGrid)
{
    const std::vector<uint8_t> picture = makeHarshPicture(64, 32);
    TypeParam compressor(picture.data(), 64, 32);
    compressor.Initialise(true);
    for (uint32_t uiPass = 0; uiPass < 3; ++uiPass)
    {
        compressor.OptimiseColours(0, compressor.getBlocksX(), 0, compressor.getBlocksY());
        compressor.UpscaleColours();
        compressor.OptimiseModulation(0, compressor.getBlocksX(), 0, compressor.getBlocksY());
    }
    EXPECT_EQ(compress<TypeParam>(picture, 64, 32, 3), writeBlocks(compressor));
    EXPECT_NE(compress<TypeParam>(picture, 64, 32, 0), writeBlocks(compressor));
}

TYPED_TEST(CompressorOfEveryKind, GivesTheSameBytesEveryTime)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(64, 64);
    EXPECT_EQ(compress<TypeParam>(picture, 64, 64, 8), compress<TypeParam>(picture, 64, 64, 8));
}

TYPED_TEST(CompressorOfEveryKind, ColoursOfOtherTilesStayWithoutRefinement)
{
    const std::vector<uint8_t> picture = makeHarshPicture(64, 64);
    TypeParam compressor(picture.data(), 64, 64);
    compressor.Initialise(true);
    const CompressorImages before = compressor.getImages();
    compressor.OptimiseColours(0, compressor.getBlocksX(), 0, compressor.getBlocksY() - 2);
    const CompressorImages& after = compressor.getImages();
    const auto uiRefined = static_cast<ptrdiff_t>(before.getBlockIndex(0, before.uiBlocksY - 2));
    EXPECT_TRUE(std::equal(before.colourA.begin() + uiRefined, before.colourA.end(), after.colourA.begin() + uiRefined));
    EXPECT_FALSE(std::equal(before.colourA.begin(), before.colourA.begin() + uiRefined, after.colourA.begin()));
    EXPECT_EQ(before.upscaledA, after.upscaledA);
}

TYPED_TEST(CompressorOfEveryKind, ABlockOfItsOwnIsAPicture)
{
    const std::vector<uint8_t> picture =
        makeBytes(k_uiBlockWidth<TypeParam>, 4, [](uint32_t x, uint32_t y) { return x == 0 && y == 0 ? rgba(0, 0, 0) : rgba(248, 0, 0); });
    TypeParam compressor(picture.data(), k_uiBlockWidth<TypeParam>, 4);
    compressor.setIterations(8);
    compressor.Initialise(true);
    compressor.Compress();
    EXPECT_THAT(compressor.getImages().colourA, testing::ElementsAre(rgba(0, 0, 0)));
    EXPECT_THAT(compressor.getImages().colourB, testing::ElementsAre(rgba(248, 0, 0)));
    // Every pixel but the first is all B. At 4bpp, 2 bits a pixel; at 2bpp one.
    const Words words = getWords(writeBlocks(compressor));
    ASSERT_EQ(1u, words.size());
    EXPECT_EQ(k_b2bpp<TypeParam> ? 0xFFFFFFFEu : 0xFFFFFFFCu, words[0].first);
}

TYPED_TEST(CompressorOfEveryKind, APictureOfSimpleBlocksGoesBackToThem)
{
    constexpr uint32_t uiWidth = 8 * k_uiBlockWidth<TypeParam>;
    const std::vector<uint8_t> blocks = makeSimpleBlocks<TypeParam>(64);
    const std::vector<uint8_t> picture = decode<TypeParam>(blocks, uiWidth, 32);
    EXPECT_EQ(blocks, compress<TypeParam>(picture, uiWidth, 32, 0));
    EXPECT_EQ(blocks, compress<TypeParam>(picture, uiWidth, 32, 8));
}

TYPED_TEST(CompressorOfEveryKind, EightPassesBringTheBlendNearerToThePicture)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(128, 128);
    TypeParam compressor(picture.data(), 128, 128);
    compressor.Initialise(true);
    const int64_t i64Before = sumBlendErrors(compressor);
    compressor.setIterations(8);
    compressor.Compress();
    EXPECT_LT(sumBlendErrors(compressor), i64Before);
}
