#include "Codecs/MOXTC/MOXTC1Decoder.h"

#include "DecoderComparison.h"

using namespace moxtctest;

namespace
{

class MOXTC1Decoder : public testing::TestWithParam<Format>
{
};
INSTANTIATE_TEST_SUITE_P(Format, MOXTC1Decoder, testing::Values(k_MOXTC1At2bpp, k_MOXTC1At4bpp), getRateName);

} // namespace

TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfAMillionBlocks)
{
    expectThePlainPixelsOfAMillionBlocks(GetParam());
}

TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfEveryInstructionSet)
{
    const Surface surface = {GetParam(), 1024, 512};
    expectThePlainPixels(surface, makeRandomData(surface));
}

/// Surfaces below the smallest size, widths that are no whole blocks and grids that the order doesn't fill among them.
TEST_P(MOXTC1Decoder, GivesThePlainPixelsAtEverySmallSize)
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

/// A strip has 128 cells, and vectors unpack up to 16 blocks at once.
TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfRowsOfAnyLength)
{
    const uint32_t uiBlockWidth = moxtexture::getBlockWidth(GetParam().b2bpp);
    for (const uint32_t uiBlocks : {15u, 16u, 17u, 31u, 33u, 64u, 127u, 128u, 129u, 130u, 143u, 144u, 145u, 256u, 257u, 258u, 385u})
    {
        const Surface surface = {GetParam(), uiBlocks * uiBlockWidth, 12};
        expectThePlainPixels(surface, makeRandomData(surface));
    }
}

TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfTallSurfaces)
{
    for (const uint32_t uiHeight : {64u, 256u, 520u})
    {
        const Surface surface = {GetParam(), 16, uiHeight};
        expectThePlainPixels(surface, makeRandomData(surface));
    }
}

TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfExtremeBlocks)
{
    const Surface surface = {GetParam(), 256, 128};
    for (uint64_t ui64Seed = 0; ui64Seed < 8; ++ui64Seed)
        expectThePlainPixels(surface, makeExtremeData(surface, ui64Seed));
}

TEST_P(MOXTC1Decoder, GivesThePlainPixelsOfEveryMode)
{
    expectThePlainPixelsOfEveryMode(GetParam());
}

TEST_P(MOXTC1Decoder, GivesThePlainPixelsWhereBlocksAreMissing)
{
    const Surface surface = {GetParam(), 64, 32};
    std::vector<uint8_t> data = makeRandomData(surface);
    while (!data.empty())
    {
        data.resize(data.size() - std::min<size_t>(data.size(), 37));
        data.shrink_to_fit();
        expectThePlainPixels(surface, data);
    }
}

TEST_P(MOXTC1Decoder, WritesNothingForASideOfNothing)
{
    const std::vector<uint8_t> data(1024);
    expectThePlainPixels({GetParam(), 0, 8}, data);
    expectThePlainPixels({GetParam(), 16, 0}, data);
}

TEST_P(MOXTC1Decoder, LeavesPixelsPastTheLastWholeBlock)
{
    const uint32_t uiBlockWidth = moxtexture::getBlockWidth(GetParam().b2bpp);
    const Surface surface = {GetParam(), 4 * uiBlockWidth + 3, 18};
    const Decoded decoded = decodeSurface(EForm::eFast, surface, std::vector<uint8_t>(getDataSize(surface)));
    for (size_t y = 0; y < surface.uiHeight; ++y)
    {
        for (size_t x = 0; x < surface.uiWidth; ++x)
        {
            const bool bUntouched = x >= size_t{4} * uiBlockWidth || y >= 16;
            EXPECT_EQ(bUntouched ? CPicture::k_ui8Untouched : 0, decoded.buffer[Decoded::k_uiMargin + (y * surface.uiWidth + x) * 4])
                << x << ", " << y;
        }
    }
}
