#include "Codecs/MOXTC/MOXTCIIDecoder.h"

#include "DecoderComparison.h"

using namespace moxtctest;

namespace
{

class MOXTCIIDecoder : public testing::TestWithParam<Format>
{
};
INSTANTIATE_TEST_SUITE_P(Format, MOXTCIIDecoder, testing::Values(k_MOXTCIIAt2bpp, k_MOXTCIIAt4bpp), getRateName);

} // namespace

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfAMillionBlocks)
{
    expectThePlainPixelsOfAMillionBlocks(GetParam());
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfEveryInstructionSet)
{
    const Surface surface = {GetParam(), 1000, 510};
    expectThePlainPixels(surface, makeRandomData(surface));
}

/// One block and one pixel, one row and one column of blocks, and sizes that are no whole blocks among them.
TEST_P(MOXTCIIDecoder, GivesThePlainPixelsAtEverySmallSize)
{
    for (uint32_t uiHeight = 1; uiHeight <= 21; ++uiHeight)
    {
        for (uint32_t uiWidth = 1; uiWidth <= 42; ++uiWidth)
        {
            const Surface surface = {GetParam(), uiWidth, uiHeight};
            expectThePlainPixels(surface, makeRandomData(surface));
        }
    }
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsInMortonOrder)
{
    for (uint32_t uiHeight = 1; uiHeight <= 37; uiHeight += 4)
    {
        for (uint32_t uiWidth = 1; uiWidth <= 77; uiWidth += 4)
        {
            const Surface surface = {GetParam(), uiWidth, uiHeight, false};
            expectThePlainPixels(surface, makeRandomData(surface));
        }
    }
}

/// A strip has 128 cells, and vectors unpack up to 16 blocks at once.
TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfRowsOfAnyLength)
{
    const uint32_t uiBlockWidth = moxtexture::getBlockWidth(GetParam().b2bpp);
    for (const uint32_t uiBlocks : {15u, 16u, 17u, 31u, 33u, 64u, 127u, 128u, 129u, 130u, 143u, 144u, 145u, 256u, 257u, 258u, 385u})
    {
        for (uint32_t uiMissing = 0; uiMissing < uiBlockWidth; ++uiMissing)
        {
            const Surface surface = {GetParam(), uiBlocks * uiBlockWidth - uiMissing, 6};
            expectThePlainPixels(surface, makeRandomData(surface));
        }
    }
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfTallSurfaces)
{
    for (const uint32_t uiHeight : {64u, 257u, 518u, 523u})
    {
        const Surface surface = {GetParam(), 9, uiHeight};
        expectThePlainPixels(surface, makeRandomData(surface));
    }
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfExtremeBlocks)
{
    const Surface surface = {GetParam(), 253, 126};
    for (uint64_t ui64Seed = 0; ui64Seed < 8; ++ui64Seed)
        expectThePlainPixels(surface, makeExtremeData(surface, ui64Seed));
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsOfEveryMode)
{
    expectThePlainPixelsOfEveryMode(GetParam());
}

TEST_P(MOXTCIIDecoder, GivesThePlainPixelsWhereBlocksAreMissing)
{
    for (const bool bRasterOrder : {true, false})
    {
        const Surface surface = {GetParam(), 61, 30, bRasterOrder};
        std::vector<uint8_t> data = makeRandomData(surface);
        while (!data.empty())
        {
            data.resize(data.size() - std::min<size_t>(data.size(), 37));
            data.shrink_to_fit();
            expectThePlainPixels(surface, data);
        }
    }
}

TEST_P(MOXTCIIDecoder, RefusesAWidthOfNothingAndWritesNothingForAHeightOfNothing)
{
    const std::vector<uint8_t> data(1024);
    EXPECT_EQ(0u, decodeSurface(EForm::eFast, {GetParam(), 0, 8}, data).uiResult);
    EXPECT_EQ(1u, decodeSurface(EForm::eFast, {GetParam(), 16, 0}, data).uiResult);
    expectThePlainPixels({GetParam(), 0, 8}, data);
    expectThePlainPixels({GetParam(), 16, 0}, data);
}
