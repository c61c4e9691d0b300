#include "Codecs/ETC/EtcGather.h"

#include <utility>
#include <vector>

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

/// A surface in which the byte uiByte of pixel (x, y) is 16 y + x + 50 uiByte.
struct Numbered
{
    Numbered(uint32_t uiWidth, uint32_t uiHeight, size_t uiPixelBytes)
    {
        for (uint32_t y = 0; y < uiHeight; ++y)
            for (uint32_t x = 0; x < uiWidth; ++x)
                for (uint32_t uiByte = 0; uiByte < uiPixelBytes; ++uiByte)
                    bytes.push_back(static_cast<uint8_t>(16 * y + x + 50 * uiByte));
        surface = {bytes.data(), uiWidth, uiHeight, uiPixelBytes};
    }

    std::array<uint8_t, 16> getFirstBytes(uint32_t uiX, uint32_t uiY) const
    {
        return gatherEtcPixels(surface, getEtcBlockOffsets(surface, uiX, uiY)).aui8Red;
    }

    std::vector<uint8_t> bytes;
    EtcSurface surface;
};

} // namespace

TEST(EtcGather, ABlockWithinTheSurfaceIsTakenAsItStands)
{
    const Numbered image(8, 8, 3);
    EXPECT_THAT(image.getFirstBytes(4, 4), ElementsAre(68, 69, 70, 71, 84, 85, 86, 87, 100, 101, 102, 103, 116, 117, 118, 119));
}

TEST(EtcGather, AWidthOfSixTakesColumnsSixAndSevenFromColumnsFourAndFive)
{
    const Numbered image(6, 4, 3);
    EXPECT_THAT(image.getFirstBytes(4, 0), ElementsAre(4, 5, 4, 5, 20, 21, 20, 21, 36, 37, 36, 37, 52, 53, 52, 53));
}

TEST(EtcGather, AWidthOfFiveTakesColumnsFiveToSevenFromColumnsTwoToFour)
{
    const Numbered image(5, 4, 4);
    EXPECT_THAT(image.getFirstBytes(4, 0), ElementsAre(4, 2, 3, 4, 20, 18, 19, 20, 36, 34, 35, 36, 52, 50, 51, 52));
}

TEST(EtcGather, AHeightOfSevenTakesRowSevenFromRowSix)
{
    const Numbered image(4, 7, 3);
    EXPECT_THAT(image.getFirstBytes(0, 4), ElementsAre(64, 65, 66, 67, 80, 81, 82, 83, 96, 97, 98, 99, 96, 97, 98, 99));
}

TEST(EtcGather, TheCornerIsShiftedInBothDirections)
{
    // Columns 4, 2, 3, 4 of rows 4, 5, 4, 5.
    const Numbered image(5, 6, 3);
    EXPECT_THAT(image.getFirstBytes(4, 4), ElementsAre(68, 66, 67, 68, 84, 82, 83, 84, 68, 66, 67, 68, 84, 82, 83, 84));
}

TEST(EtcGather, SurfacesBelowABlockStayWithinTheirPixels)
{
    const std::pair<uint32_t, std::array<uint8_t, 4>> aCases[] = {{1, {0, 0, 0, 0}}, {2, {0, 1, 0, 1}}, {3, {0, 1, 2, 2}}};
    for (const auto& [uiSize, columns] : aCases)
        for (const auto& [uiHeight, rows] : aCases)
        {
            const std::array<uint8_t, 16> bytes = Numbered(uiSize, uiHeight, 3).getFirstBytes(0, 0);
            for (size_t y = 0; y < 4; ++y)
                for (size_t x = 0; x < 4; ++x)
                    EXPECT_EQ(16 * rows[y] + columns[x], bytes[y * 4 + x]) << uiSize << " * " << uiHeight;
        }
}

TEST(EtcGather, ChannelsAreTheBytesOfAPixel)
{
    const Numbered image(4, 4, 4);
    const EtcBlockOffsets offsets = getEtcBlockOffsets(image.surface, 0, 0);
    const EtcPixels pixels = gatherEtcPixels(image.surface, offsets);
    const EtcAlphas alphas = gatherEtcAlphas(image.surface, offsets);
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiNumber = 16 * y + x;
            EXPECT_EQ(uiNumber, pixels.aui8Red[y * 4 + x]);
            EXPECT_EQ(uiNumber + 50, pixels.aui8Green[y * 4 + x]);
            EXPECT_EQ(uiNumber + 100, pixels.aui8Blue[y * 4 + x]);
            EXPECT_EQ(uiNumber + 150, alphas.aui8[y * 4 + x]);
        }
}

TEST(EtcGather, WordsAreTakenByChannel)
{
    // Red is the bytes n and n + 50, green n + 100 and n + 150.
    const Numbered image(4, 4, 4);
    const EtcBlockOffsets offsets = getEtcBlockOffsets(image.surface, 0, 0);
    uint16_t aui16Red[16], aui16Green[16];
    gatherEacPixels(image.surface, offsets, 0, aui16Red);
    gatherEacPixels(image.surface, offsets, 1, aui16Green);
    EXPECT_EQ(33 + 83 * 256, aui16Red[9]); // pixel (1, 2): n is 33
    EXPECT_EQ(133 + 183 * 256, aui16Green[9]);
}
