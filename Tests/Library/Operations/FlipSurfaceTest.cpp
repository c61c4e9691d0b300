#include "Operations/FlipSurface.h"

#include <gtest/gtest.h>

#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

template <size_t uiPixelBytes>
void expectReferenceBytes(const SurfaceSize& size)
{
    const size_t uiBytes = size.getPixelIndex(0, 0, size.uiDepth) * uiPixelBytes;
    testsupport::CSeededRandom random(uiBytes + uiPixelBytes);
    for (uint32_t uiAxis = 0; uiAxis < 4; ++uiAxis)
    {
        // One byte off any boundary, with a byte before and behind that has to stay.
        std::vector<uint8_t> expected = random.bytes(uiBytes + 2);
        std::vector<uint8_t> actual = expected;
        flipSurfaceReference<uiPixelBytes>(expected.data() + 1, size, uiAxis);
        flipSurface<uiPixelBytes>(actual.data() + 1, size, uiAxis);
        ASSERT_EQ(expected, actual) << uiPixelBytes << " bytes, axis " << uiAxis << ", " << size.uiWidth << " by " << size.uiHeight
                                    << " by " << size.uiDepth;
    }
}

void expectReferenceBytesOfEveryPixel(const SurfaceSize& size)
{
    expectReferenceBytes<4>(size);
    expectReferenceBytes<8>(size);
    expectReferenceBytes<16>(size);
}

} // namespace

TEST(FlipSurface, GivesTheReferenceBytesAtEveryWidth)
{
    for (uint32_t uiWidth = 1; uiWidth <= 70; ++uiWidth)
        expectReferenceBytesOfEveryPixel({uiWidth, 3, 2});
}

TEST(FlipSurface, GivesTheReferenceBytesAtEveryHeightAndDepth)
{
    for (uint32_t uiHeight = 1; uiHeight <= 5; ++uiHeight)
        for (uint32_t uiDepth = 1; uiDepth <= 5; ++uiDepth)
            expectReferenceBytesOfEveryPixel({5, uiHeight, uiDepth});
}

TEST(FlipSurface, GivesTheReferenceBytesForRowsAndSlicesLongerThanItsBuffer)
{
    expectReferenceBytesOfEveryPixel({1500, 4, 2}); // 6000 to 24000 bytes a row
}

TEST(FlipSurfaceReference, ExchangesPixelsFromBothEndsOfTheAxis)
{
    uint8_t aui8Pixels[12] = {1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3};
    flipSurfaceReference<4>(aui8Pixels, {3, 1, 1}, eAxisX);
    const uint8_t aui8Expected[12] = {3, 3, 3, 3, 2, 2, 2, 2, 1, 1, 1, 1};
    EXPECT_EQ(0, std::memcmp(aui8Expected, aui8Pixels, 12));
}
