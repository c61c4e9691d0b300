#include "Display/CMOXDrawPixel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace
{

using Pixel = std::array<uint8_t, 4>;

template <typename DrawPixel>
Pixel draw(const Pixel& source, const Pixel& background, const Pixel& mask = {255, 255, 255, 255})
{
    DrawPixel drawPixel;
    drawPixel.setBGColour(background);
    drawPixel.setMask(mask);
    Pixel target = {};
    drawPixel.draw(target.data(), source.data());
    return target;
}

} // namespace

TEST(CMOXDrawPixelBlend, MixesSourceAndBackgroundByAlphaAndTruncates)
{
    // alpha 128, so 127 parts of 160 are 20320:
    // (20320 + 200 * 128) / 255 = 180.07, (20320 + 100 * 128) / 255 = 129.88, (20320 + 50 * 128) / 255 = 104.78
    EXPECT_THAT(draw<CMOXDrawPixelBlend>({200, 100, 50, 128}, {160, 160, 160, 255}), ElementsAre(180, 129, 104, 128));
    EXPECT_THAT(draw<CMOXDrawPixelBlend>({200, 100, 50, 0}, {1, 2, 3, 4}), ElementsAre(1, 2, 3, 0));
    EXPECT_THAT(draw<CMOXDrawPixelBlend>({200, 100, 50, 255}, {1, 2, 3, 4}), ElementsAre(200, 100, 50, 255));
}

TEST(CMOXDrawPixelBlend, WithoutTheAlphaMaskColourIsOpaque)
{
    EXPECT_THAT(draw<CMOXDrawPixelBlend>({200, 100, 50, 0}, {160, 160, 160, 255}, {255, 255, 255, 0}), ElementsAre(200, 100, 50, 255));
}

TEST(CMOXDrawPixelBlend, MaskedChannelsAreBlackAlsoInTheBackgroundsShare)
{
    EXPECT_THAT(draw<CMOXDrawPixelBlend>({200, 100, 50, 128}, {160, 160, 160, 255}, {255, 0, 255, 255}), ElementsAre(180, 0, 104, 128));
}

TEST(CMOXDrawPixelPreMultBlend, AddsTheBackgroundsShareAndStopsAt255)
{
    // 160 * 127 / 255 = 79.68: 100 + 79, 50 + 79, and 250 + 79 is too much.
    EXPECT_THAT(draw<CMOXDrawPixelPreMultBlend>({100, 50, 250, 128}, {160, 160, 160, 255}), ElementsAre(179, 129, 255, 128));
    EXPECT_THAT(draw<CMOXDrawPixelPreMultBlend>({100, 50, 250, 128}, {160, 160, 160, 255}, {0, 255, 255, 0}), ElementsAre(0, 50, 250, 255));
}

TEST(CMOXDrawPixelAlphaAsGrey, ShowsAlphaAndTakesNoNoticeOfBackgroundAndMask)
{
    EXPECT_THAT(draw<CMOXDrawPixelAlphaAsGrey>({1, 2, 3, 77}, {160, 160, 160, 255}, {0, 0, 0, 0}), ElementsAre(77, 77, 77, 255));
}

TEST(CMOXDrawPixel, EveryClassMayDrawInPlace)
{
    const CDrawPixelChoice choice({9, 99, 199, 255}, {255, 255, 255, 255});
    const CDrawPixelChoice grey({9, 99, 199, 255}, {0, 0, 0, 255});
    for (const CMOXDrawPixel* pDrawPixel : {&choice.choose(false), &choice.choose(true), &grey.choose(false)})
    {
        const Pixel source = {11, 22, 233, 144};
        Pixel apart = {};
        pDrawPixel->draw(apart.data(), source.data());
        Pixel inPlace = source;
        pDrawPixel->draw(inPlace.data(), inPlace.data());
        EXPECT_EQ(apart, inPlace);
    }
}

TEST(CDrawPixelChoice, ShowsAlphaAsGreyOnlyIfItIsAloneOn)
{
    for (uint32_t uiChannels = 0; uiChannels < 16; ++uiChannels)
        for (const bool bPreMultiplied : {false, true})
        {
            Pixel mask;
            for (uint32_t c = 0; c < 4; ++c)
                mask[c] = (uiChannels >> c & 1) != 0 ? 255 : 0;
            const CDrawPixelChoice choice({1, 2, 3, 4}, mask);
            const CMOXDrawPixel& drawPixel = choice.choose(bPreMultiplied);
            const bool bGrey = uiChannels == 8;
            EXPECT_EQ(bGrey, dynamic_cast<const CMOXDrawPixelAlphaAsGrey*>(&drawPixel) != nullptr) << uiChannels;
            EXPECT_EQ(!bGrey && bPreMultiplied, dynamic_cast<const CMOXDrawPixelPreMultBlend*>(&drawPixel) != nullptr) << uiChannels;
            EXPECT_EQ(!bGrey && !bPreMultiplied, dynamic_cast<const CMOXDrawPixelBlend*>(&drawPixel) != nullptr) << uiChannels;
            EXPECT_EQ(mask, drawPixel.getMask());
            EXPECT_EQ((Pixel{1, 2, 3, 4}), drawPixel.getBGColour());
        }
}
