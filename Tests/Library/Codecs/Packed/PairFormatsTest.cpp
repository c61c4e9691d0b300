#include "Codecs/Packed/PairFormats.h"

#include <gmock/gmock.h>

#include "PackedTestSurfaces.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace packedtest;
using testing::Each;

namespace
{

using Entry = decltype(&encodePairFormat);

constexpr EMOXTPixelFormat k_aeFormats[] = {ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8};
constexpr Entry k_aEncoders[] = {encodePairFormat, encodePairFormatReference};
constexpr Entry k_aDecoders[] = {decodePairFormat, decodePairFormatReference};

} // namespace

TEST(PairFormats, KeepRedAndBlueOfTheFirstPixelAndBothGreens)
{
    const Bytes pixels = {10, 20, 30, 40, 50, 60, 70, 80};
    for (const Entry encoder : k_aEncoders)
    {
        EXPECT_EQ((Bytes{10, 20, 30, 60}), convert(encoder, pixels, 4, 2, 1, 16, ePF_2_Planar_RGBG_8_8_8_8));
        EXPECT_EQ((Bytes{20, 10, 60, 30}), convert(encoder, pixels, 4, 2, 1, 16, ePF_2_Planar_GRGB_8_8_8_8));
    }
}

TEST(PairFormats, BothPixelsDecodeWithTheFirstOnesRedAndBlue)
{
    const Bytes expected = {10, 20, 30, 255, 10, 60, 30, 255};
    for (const Entry decoder : k_aDecoders)
    {
        EXPECT_EQ(expected, convert(decoder, {10, 20, 30, 60}, 8, 2, 1, 32, ePF_2_Planar_RGBG_8_8_8_8));
        EXPECT_EQ(expected, convert(decoder, {20, 10, 60, 30}, 8, 2, 1, 32, ePF_2_Planar_GRGB_8_8_8_8));
    }
}

TEST(PairFormats, TheLastColumnOfAnOddWidthIsLeftOutRowByRow)
{
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 9, 9, 9, 11, 12, 13, 14, 15, 16, 17, 18, 19, 19, 19, 19};
    const Bytes pairs = {1, 2, 3, 6, 7, 7, 7, 7, 11, 12, 13, 16, 7, 7, 7, 7};
    for (const Entry encoder : k_aEncoders)
        EXPECT_EQ(pairs, convert(encoder, pixels, 16, 3, 2, 16, ePF_2_Planar_RGBG_8_8_8_8));
    const Bytes decoded = {1, 2, 3, 255, 1, 6, 3, 255, 7, 7, 7, 7, 11, 12, 13, 255, 11, 16, 13, 255, 7, 7, 7, 7};
    for (const Entry decoder : k_aDecoders)
        EXPECT_EQ(decoded, convert(decoder, pairs, 24, 3, 2, 32, ePF_2_Planar_RGBG_8_8_8_8));
}

TEST(PairFormats, AWidthOfOneHasNoPairAndStillCounts)
{
    for (const Entry encoder : k_aEncoders)
        EXPECT_THAT(convert(encoder, Bytes(12, 1), 12, 1, 3, 16, ePF_2_Planar_GRGB_8_8_8_8), Each(7));
}

TEST(PairFormats, OtherFormatsNullPointersAndEmptySurfacesGiveNothing)
{
    const Bytes source(64, 1);
    Bytes target(64, 7);
    for (const auto& entries : {k_aEncoders, k_aDecoders})
        for (const Entry entry : {entries[0], entries[1]})
        {
            for (const EMOXTPixelFormat eFormat : {ePF_UYVY, ePF_YUY2, ePF_Shared_Exponent_RGB999_E5, ePF_ETC2_RGB, ePF_Count})
                EXPECT_EQ(0u, entry(source.data(), target.data(), 2, 2, eFormat));
            EXPECT_EQ(0u, entry(nullptr, target.data(), 2, 2, ePF_2_Planar_RGBG_8_8_8_8));
            EXPECT_EQ(0u, entry(source.data(), nullptr, 2, 2, ePF_2_Planar_RGBG_8_8_8_8));
            for (const uint32_t uiOther : {0u, 2u, 3u})
            {
                EXPECT_EQ(0u, entry(source.data(), target.data(), 0, uiOther, ePF_2_Planar_RGBG_8_8_8_8));
                EXPECT_EQ(0u, entry(source.data(), target.data(), uiOther, 0, ePF_2_Planar_RGBG_8_8_8_8));
            }
        }
    EXPECT_THAT(target, Each(7));
}

TEST(PairFormats, TheFastFormsGiveTheReferenceBytesAtEveryWidth)
{
    testsupport::CSeededRandom random(333);
    for (const EMOXTPixelFormat eFormat : k_aeFormats)
        for (uint32_t uiWidth = 1; uiWidth <= 70; ++uiWidth)
        {
            const Bytes source = random.bytes(size_t{uiWidth} * 3 * 4 + 8);
            const size_t uiRoom = (size_t{uiWidth} + 1) * 3 * 4;
            EXPECT_EQ(convert(encodePairFormatReference, source, uiRoom, uiWidth, 3, 16, eFormat),
                      convert(encodePairFormat, source, uiRoom, uiWidth, 3, 16, eFormat));
            EXPECT_EQ(convert(decodePairFormatReference, source, uiRoom, uiWidth, 3, 32, eFormat),
                      convert(decodePairFormat, source, uiRoom, uiWidth, 3, 32, eFormat));
        }
}
