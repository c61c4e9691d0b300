#include "Codecs/Packed/OneBit.h"

#include <gmock/gmock.h>

#include "PackedTestSurfaces.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace packedtest;
using testing::Each;

namespace
{

using Entry = decltype(&encodeOneBit);

constexpr Entry k_aEncoders[] = {encodeOneBit, encodeOneBitReference};
constexpr Entry k_aDecoders[] = {decodeOneBit, decodeOneBitReference};

/// Grey pixels, alpha 0.
Bytes makeGrey(const Bytes& values)
{
    Bytes pixels;
    for (const uint8_t uiValue : values)
        pixels.insert(pixels.end(), {uiValue, uiValue, uiValue, 0});
    return pixels;
}

/// Opaque pixels of a string such as "x..x", white where there is an x.
Bytes makeBlackAndWhite(const std::string& strPixels)
{
    Bytes pixels;
    for (const char c : strPixels)
    {
        const uint8_t uiValue = c == 'x' ? 255 : 0;
        pixels.insert(pixels.end(), {uiValue, uiValue, uiValue, 255});
    }
    return pixels;
}

} // namespace

TEST(OneBit, TheFirstPixelIsTheLowestBitAndGrey128IsTheLeastThatSetsIt)
{
    for (const Entry encoder : k_aEncoders)
        EXPECT_EQ((Bytes{0x8D}), convert(encoder, makeGrey({128, 127, 255, 200, 0, 127, 1, 128}), 1, 8, 1, 1));
}

TEST(OneBit, TheMeanIsAnIntegerAndAlphaDoesNotCount)
{
    // Sums 383, 384, 385, 255, 510, 384, 0, 765, over 3: 127, 128, 128, 85, 170, 128, 0, 255.
    const Bytes pixels = {255, 128, 0,   255, 255, 129, 0,   0, 0, 130, 255, 0,   255, 0,   0,   255,
                          255, 0,   255, 0,   128, 128, 128, 9, 0, 0,   0,   255, 255, 255, 255, 0};
    for (const Entry encoder : k_aEncoders)
        EXPECT_EQ((Bytes{0xB6}), convert(encoder, pixels, 1, 8, 1, 1));
}

TEST(OneBit, TwelvePixelsAreOneByte)
{
    for (const Entry encoder : k_aEncoders)
    {
        EXPECT_EQ(1u, encoder(Bytes(48, 255).data(), Bytes(2).data(), 12, 1));
        EXPECT_EQ((Bytes{0xFF, 7}), convert(encoder, Bytes(48, 255), 2, 12, 1, 1));
    }
}

TEST(OneBit, RowsThatDoNotFitBeginWithAByteEach)
{
    // Twelve white pixels, twelve black ones; 12 * 2 / 8 = 3 is the count all the same.
    Bytes pixels(48, 255);
    pixels.resize(96, 0);
    for (const Entry encoder : k_aEncoders)
        EXPECT_EQ((Bytes{0xFF, 7, 0, 7}), convert(encoder, pixels, 4, 12, 2, 1));
}

TEST(OneBit, RowsBelowAByteAreNotWrittenAndStillCount)
{
    for (const Entry encoder : k_aEncoders)
        EXPECT_EQ((Bytes{7, 7, 7, 7}), convert(encoder, Bytes(64, 255), 4, 4, 4, 1));
}

TEST(OneBit, ASetBitDecodesToWhiteAndAlphaIsAlways255)
{
    for (const Entry decoder : k_aDecoders)
        EXPECT_EQ(makeBlackAndWhite("x.xx...x........"), convert(decoder, {0x8D, 0}, 64, 16, 1, 32));
}

TEST(OneBit, NarrowAndUnevenSurfacesDecodeToTheirLastPixel)
{
    for (const Entry decoder : k_aDecoders)
    {
        EXPECT_EQ(makeBlackAndWhite("x"), convert(decoder, {0x01}, 4, 1, 1, 32));
        EXPECT_EQ(makeBlackAndWhite("xx.."
                                    "..xx"),
                  convert(decoder, {0xF3, 0x0C}, 32, 4, 2, 32));
        EXPECT_EQ(makeBlackAndWhite("xxxxxxxx.x"
                                    "........x."),
                  convert(decoder, {0xFF, 0x02, 0x00, 0xFD}, 80, 10, 2, 32));
    }
}

TEST(OneBit, NullPointersAndEmptySurfacesGiveNothing)
{
    const Bytes source(256, 1);
    Bytes target(256, 7);
    for (const Entry entry : {encodeOneBit, encodeOneBitReference, decodeOneBit, decodeOneBitReference})
    {
        EXPECT_EQ(0u, entry(nullptr, target.data(), 8, 2));
        EXPECT_EQ(0u, entry(source.data(), nullptr, 8, 2));
        for (const uint32_t uiOther : {0u, 3u, 8u})
        {
            EXPECT_EQ(0u, entry(source.data(), target.data(), 0, uiOther));
            EXPECT_EQ(0u, entry(source.data(), target.data(), uiOther, 0));
        }
    }
    EXPECT_THAT(target, Each(7));
}

TEST(OneBit, TheFastFormsGiveTheReferenceBytesAtEveryWidth)
{
    testsupport::CSeededRandom random(334);
    forEachInstructionSet(
        [&]
        {
            for (uint32_t uiWidth = 1; uiWidth <= 300; ++uiWidth)
            {
                const Bytes source = random.bytes(size_t{uiWidth} * 3 * 4);
                const size_t uiPacked = (size_t{uiWidth} + 7) / 8 * 3;
                EXPECT_EQ(convert(encodeOneBitReference, source, uiPacked, uiWidth, 3, 1),
                          convert(encodeOneBit, source, uiPacked, uiWidth, 3, 1));
                EXPECT_EQ(convert(decodeOneBitReference, source, source.size(), uiWidth, 3, 32),
                          convert(decodeOneBit, source, source.size(), uiWidth, 3, 32));
            }
        });
}
