#include "Codecs/MOXTC/MOXTC1Decoder.h"

#include "DecoderComparison.h"

using namespace moxtctest;

TEST(MOXTC1Decoder, GivesTheBytesThatTheSurfaceIsMadeOf)
{
    for (const EForm eForm : {EForm::ePlain, EForm::eFast})
    {
        const std::vector<uint8_t> data(16 * 8 / 2);
        EXPECT_EQ(16u * 8 / 4, decodeSurface(eForm, {k_MOXTC1At2bpp, 16, 8}, data).uiResult);
        EXPECT_EQ(16u * 8 / 2, decodeSurface(eForm, {k_MOXTC1At4bpp, 16, 8}, data).uiResult);
        EXPECT_EQ(0u, decodeSurface(eForm, {k_MOXTC1At4bpp, 16, 0}, data).uiResult);
    }
}

TEST(MOXTC1Decoder, LeavesPixelsPastTheLastWholeBlock)
{
    for (const Format& format : {k_MOXTC1At2bpp, k_MOXTC1At4bpp})
    {
        const uint32_t uiWholeWidth = 4 * moxtexture::getBlockWidth(format.b2bpp);
        const Surface surface = {format, uiWholeWidth + 3, 18};
        const Decoded decoded = decodeSurface(EForm::eFast, surface, std::vector<uint8_t>(getDataSize(surface)));
        for (size_t y = 0; y < surface.uiHeight; ++y)
        {
            for (size_t x = 0; x < surface.uiWidth; ++x)
            {
                const bool bUntouched = x >= uiWholeWidth || y >= 16;
                EXPECT_EQ(bUntouched ? CPicture::k_ui8Untouched : 0, decoded.buffer[Decoded::k_uiMargin + (y * surface.uiWidth + x) * 4])
                    << x << ", " << y;
            }
        }
    }
}
