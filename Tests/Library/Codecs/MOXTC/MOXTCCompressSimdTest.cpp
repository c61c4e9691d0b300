#include "Codecs/MOXTC/MOXTCCompress.h"

#include "CompressorHardImages.h"
#include "ReferenceCompressor.h"
#include "Support/ProcessorCount.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

struct Format
{
    const char* pName;
    bool b2bpp;
    bool bII;
};

std::string getFormatName(const testing::TestParamInfo<Format>& info)
{
    return info.param.pName;
}

class MOXTCCompressSimd : public testing::TestWithParam<Format>
{
};
INSTANTIATE_TEST_SUITE_P(EveryFormat, MOXTCCompressSimd,
                         testing::Values(Format{"MOXTC1At2bpp", true, false}, Format{"MOXTC1At4bpp", false, false},
                                         Format{"MOXTCIIAt2bpp", true, true}, Format{"MOXTCIIAt4bpp", false, true}),
                         getFormatName);

constexpr uint32_t k_uiPasses = 8; ///< of quality 1

/// Quality 1 by the entry and by the plain steps.
void expectThePlainBlocks(const Format& format, const std::vector<uint8_t>& picture, uint32_t uiWidth, uint32_t uiHeight)
{
    SCOPED_TRACE(testing::Message() << uiWidth << " by " << uiHeight << " pixels, " << getProcessorCount() << " processors");
    const std::vector<uint8_t> expected = format.b2bpp
                                              ? compressByReference<BlockRecord2bpp>(picture, uiWidth, uiHeight, format.bII, k_uiPasses)
                                              : compressByReference<BlockRecord4bpp>(picture, uiWidth, uiHeight, format.bII, k_uiPasses);
    forEachInstructionSet(
        [&]
        {
            std::vector<uint8_t> actual(expected.size());
            EXPECT_EQ(actual.size(), MOXTCCompress(picture.data(), actual.data(), uiWidth, uiHeight, true, format.b2bpp, format.bII, 1));
            EXPECT_TRUE(expected == actual);
        });
}

} // namespace

TEST_P(MOXTCCompressSimd, GivesThePlainBlocksOfAPicture)
{
    expectThePlainBlocks(GetParam(), testsupport::makePicture(256, 128), 256, 128);
}

TEST_P(MOXTCCompressSimd, GivesThePlainBlocksOfHardPictures)
{
    CSeededRandom random(77);
    for (const EPixels ePixels : k_AllPixels)
        expectThePlainBlocks(GetParam(), makeHardBytes(ePixels, 64, 32, random), 64, 32);
}

/// Tiles of every layout up to seven processors, with remainders.
TEST_P(MOXTCCompressSimd, GivesThePlainBlocksOfEveryTileLayout)
{
    for (uint32_t uiProcessors = 1; uiProcessors <= 7; ++uiProcessors)
    {
        const testsupport::CProcessorCount processors(uiProcessors);
        expectThePlainBlocks(GetParam(), testsupport::makePicture(128, 64, uiProcessors), 128, 64);
    }
}
