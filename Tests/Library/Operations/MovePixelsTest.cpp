#include "Operations/MovePixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

using namespace moxtexture;

namespace
{

/// Copies a surface of single bytes that count from 1 into one of zeros.
std::vector<int> place(const SurfaceSize& source, const SurfaceSize& destination, int64_t x, int64_t y, int64_t z)
{
    std::vector<uint8_t> from(source.getPixelIndex(0, 0, source.uiDepth));
    std::iota(from.begin(), from.end(), uint8_t{1});
    std::vector<uint8_t> to(destination.getPixelIndex(0, 0, destination.uiDepth));
    copyBox(from.data(), source, to.data(), destination, x, y, z, 1);
    return {to.begin(), to.end()};
}

} // namespace

TEST(CopyBox, PutsTheSourceAtItsOffset)
{
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 1, 2, 0, 3, 4}), place({2, 2, 1}, {3, 3, 1}, 1, 1, 0));
    EXPECT_EQ((std::vector<int>{0, 0, 1, 2, 3, 4}), place({1, 2, 2}, {1, 2, 3}, 0, 0, 1));
}

TEST(CopyBox, CutsWhatReachesPastTheDestination)
{
    EXPECT_EQ((std::vector<int>{0, 0, 0, 1}), place({2, 2, 1}, {2, 2, 1}, 1, 1, 0));
    EXPECT_EQ((std::vector<int>{4, 0, 0, 0}), place({2, 2, 1}, {2, 2, 1}, -1, -1, 0));
    EXPECT_EQ((std::vector<int>{4}), place({1, 2, 3}, {1, 1, 1}, 0, -1, -1));
}

TEST(CopyBox, CopiesNothingWhereNothingIsShared)
{
    const std::vector<int> nothing(4, 0);
    for (const int64_t i64Offset : {int64_t{2}, int64_t{-2}, int64_t{std::numeric_limits<int32_t>::min()},
                                    int64_t{std::numeric_limits<int32_t>::max()}, int64_t{1} << 33})
    {
        EXPECT_EQ(nothing, place({2, 2, 1}, {2, 2, 1}, i64Offset, 0, 0));
        EXPECT_EQ(nothing, place({2, 2, 1}, {2, 2, 1}, 0, i64Offset, 0));
        EXPECT_EQ(nothing, place({2, 2, 1}, {2, 2, 1}, 0, 0, i64Offset));
    }
}

TEST(CopyBox, CopiesPixelsOfAnySize)
{
    const uint8_t aui8Source[6] = {1, 2, 3, 4, 5, 6};
    uint8_t aui8Destination[9] = {};
    copyBox(aui8Source, {2, 1, 1}, aui8Destination, {3, 1, 1}, 1, 0, 0, 3);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 1, 2, 3, 4, 5, 6}), std::vector<int>(aui8Destination, aui8Destination + 9));
}

TEST(SurfaceSizeOfALevel, IsThatOfTheHeader)
{
    const CMOXTextureHeader header(k_RGBA8, 6, 9, 4, 2, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    EXPECT_TRUE(getSurfaceSize(header) == (SurfaceSize{9, 6, 4}));
    EXPECT_TRUE(getSurfaceSize(header, 1) == (SurfaceSize{4, 3, 2}));
}
