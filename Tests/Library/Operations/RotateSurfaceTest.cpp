#include "Operations/RotateSurface.h"

#include <gtest/gtest.h>

#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

template <size_t uiPixelBytes>
void expectReferenceBytes(const SurfaceSize& size)
{
    const size_t uiBytes = size.getPixelIndex(0, 0, size.uiDepth) * uiPixelBytes;
    const std::vector<uint8_t> source = testsupport::CSeededRandom(uiBytes + uiPixelBytes).bytes(uiBytes + 1);
    for (const bool bClockwise : {true, false})
    {
        // One byte off any boundary, with a byte before and behind that has to stay.
        std::vector<uint8_t> expected(uiBytes + 2, 0xAA);
        std::vector<uint8_t> actual(uiBytes + 2, 0xAA);
        rotateSurfaceReference<uiPixelBytes>(source.data() + 1, expected.data() + 1, size, bClockwise);
        rotateSurface<uiPixelBytes>(source.data() + 1, actual.data() + 1, size, bClockwise);
        ASSERT_EQ(expected, actual) << uiPixelBytes << " bytes, " << size.uiWidth << " by " << size.uiHeight << " by " << size.uiDepth;
    }
}

} // namespace

TEST(RotateSurface, GivesTheReferenceBytesAroundTheSizesOfItsTiles)
{
    const uint32_t auiSizes[] = {1, 2, 3, 15, 16, 17, 31, 32, 33, 63, 64, 65, 130};
    for (const uint32_t uiWidth : auiSizes)
        for (const uint32_t uiHeight : auiSizes)
        {
            expectReferenceBytes<4>({uiWidth, uiHeight, 2});
            expectReferenceBytes<8>({uiWidth, uiHeight, 2});
            expectReferenceBytes<16>({uiWidth, uiHeight, 1});
        }
}
