#include "Codecs/MOXTC/MOXTCIIDecoder.h"

#include "DecoderComparison.h"

using namespace moxtctest;

TEST(MOXTCIIDecoder, GivesThePlainPixelsInMortonOrder)
{
    for (const Format& format : {k_MOXTCIIAt2bpp, k_MOXTCIIAt4bpp})
    {
        for (uint32_t uiHeight = 1; uiHeight <= 37; uiHeight += 4)
        {
            for (uint32_t uiWidth = 1; uiWidth <= 77; uiWidth += 4)
            {
                const Surface surface = {format, uiWidth, uiHeight, false};
                expectThePlainPixels(surface, makeRandomData(surface));
            }
        }
        expectThePlainPixelsOfShorterAndShorterData({format, 61, 30, false});
    }
}

TEST(MOXTCIIDecoder, RefusesAWidthOfNothingButNotAHeightOfNothing)
{
    const std::vector<uint8_t> data(1024);
    for (const Format& format : {k_MOXTCIIAt2bpp, k_MOXTCIIAt4bpp})
    {
        EXPECT_EQ(0u, decodeSurface(EForm::eFast, {format, 0, 8}, data).uiResult);
        EXPECT_EQ(0u, decodeSurface(EForm::eFast, {format, 0, 0}, data).uiResult);
        EXPECT_EQ(1u, decodeSurface(EForm::eFast, {format, 16, 0}, data).uiResult);
    }
}
