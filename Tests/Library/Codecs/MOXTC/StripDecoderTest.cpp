#include "Codecs/MOXTC/StripDecoder.h"

#include "Core/Workers.h"
#include "DecoderComparison.h"

using namespace moxtctest;

namespace
{

/// Through the decoders of both generations.
class StripDecoder : public testing::TestWithParam<Format>
{
protected:
    uint32_t getBlockWidth() const { return moxtexture::getBlockWidth(GetParam().b2bpp); }
};

std::string getFormatName(const testing::TestParamInfo<Format>& info)
{
    return std::string(info.param.bII ? "MOXTCII" : "MOXTC1") + (info.param.b2bpp ? "At2bpp" : "At4bpp");
}
INSTANTIATE_TEST_SUITE_P(Format, StripDecoder, testing::ValuesIn(k_aFormats), getFormatName);

} // namespace

/// The plain decoders take their time, so the blocks are shared out, in squares of 65536.
TEST_P(StripDecoder, GivesThePlainPixelsOfAMillionBlocks)
{
    const Surface surface = {GetParam(), 256 * getBlockWidth(), 1024};
    std::array<bool, 16> abEqual = {};
    moxtexture::runTasks(abEqual.size(), moxtexture::getProcessorCount(),
                         [&](size_t i)
                         {
                             const std::vector<uint8_t> data = testsupport::CSeededRandom(i).bytes(getDataSize(surface));
                             abEqual[i] = decodeSurface(EForm::ePlain, surface, data) == decodeSurface(EForm::eFast, surface, data);
                         });
    EXPECT_THAT(abEqual, testing::Each(true));
}

TEST_P(StripDecoder, GivesThePlainPixelsForEveryInstructionSet)
{
    const Surface surface = {GetParam(), 1000, 510};
    expectThePlainPixels(surface, makeRandomData(surface));
}

/// One block and one pixel, one row and one column of blocks, sizes that are no whole blocks, surfaces below MOXTC1's smallest size and
/// grids that its order doesn't fill among them.
TEST_P(StripDecoder, GivesThePlainPixelsAtEverySmallSize)
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
TEST_P(StripDecoder, GivesThePlainPixelsOfRowsOfAnyLength)
{
    for (const uint32_t uiBlocks : {15u, 16u, 17u, 31u, 33u, 64u, 127u, 128u, 129u, 130u, 143u, 144u, 145u, 256u, 257u, 258u, 385u})
    {
        for (uint32_t uiMissing = 0; uiMissing < getBlockWidth(); ++uiMissing)
        {
            const Surface surface = {GetParam(), uiBlocks * getBlockWidth() - uiMissing, 10};
            expectThePlainPixels(surface, makeRandomData(surface));
        }
    }
}

TEST_P(StripDecoder, GivesThePlainPixelsOfTallSurfaces)
{
    for (const uint32_t uiHeight : {64u, 256u, 257u, 518u, 520u})
    {
        const Surface surface = {GetParam(), 17, uiHeight};
        expectThePlainPixels(surface, makeRandomData(surface));
    }
}

TEST_P(StripDecoder, GivesThePlainPixelsOfExtremeBlocks)
{
    for (uint64_t ui64Seed = 0; ui64Seed < 8; ++ui64Seed)
    {
        const Surface surface = {GetParam(), 256 - 3 * static_cast<uint32_t>(ui64Seed % 2), 126};
        expectThePlainPixels(surface, makeExtremeData(surface, ui64Seed));
    }
}

TEST_P(StripDecoder, GivesThePlainPixelsOfEveryMode)
{
    const Surface surface = {GetParam(), 40, 24};
    constexpr uint32_t k_ui32Flags = moxtexture::k_ui32OneAxisFlag | moxtexture::k_ui32VerticalFlag;
    expectThePlainPixels(surface, makeDataOfOneMode(surface, false, 0, 0));
    expectThePlainPixels(surface, makeDataOfOneMode(surface, true, moxtexture::k_ui32OneAxisFlag, 0));
    expectThePlainPixels(surface, makeDataOfOneMode(surface, true, k_ui32Flags, moxtexture::k_ui32OneAxisFlag));
    expectThePlainPixels(surface, makeDataOfOneMode(surface, true, k_ui32Flags, k_ui32Flags));
}

TEST_P(StripDecoder, GivesThePlainPixelsWhereBlocksAreMissing)
{
    for (const uint32_t uiWidth : {64u, 61u})
    {
        const Surface surface = {GetParam(), uiWidth, 32};
        expectThePlainPixelsOfShorterAndShorterData(surface);
    }
}

TEST_P(StripDecoder, WritesNothingForASideOfNothing)
{
    const std::vector<uint8_t> data(1024);
    expectThePlainPixels({GetParam(), 0, 8}, data);
    expectThePlainPixels({GetParam(), 16, 0}, data);
}
