#include "Conversion/CompressSurface.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/BC/BcCompress.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTextureHeader rgba8Header(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, uint32_t uiLevels = 1)
{
    return {k_RGBA8, uiHeight, uiWidth, uiDepth, uiLevels, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

CMOXTexture blocksFor(CMOXTextureHeader header, EMOXTPixelFormat eFormat)
{
    header.setPixelFormat(eFormat);
    return CMOXTexture(header);
}

std::vector<uint8_t> bc3Block(const std::vector<uint8_t>& pixels)
{
    std::vector<uint8_t> block(16);
    EXPECT_EQ(16u, bcCompressImage(pixels.data(), block.data(), 4, 4, 5));
    return block;
}

} // namespace

TEST(CompressSurface, RowsOfAnEnlargedSurfaceRunOnIntoTheBytesThatFollow)
{
    // Level 0 is 3 by 3, level 1 one pixel: ten pixels in the block. Row y of the 4 by 4 picture starts at pixel 3 y.
    CMOXTexture source(rgba8Header(3, 3, 1, 2));
    ASSERT_EQ(40u, source.getBlockSize());
    const std::vector<uint8_t> bytes = testsupport::CSeededRandom(5).bytes(40);
    std::memcpy(source.getDataPtr(), bytes.data(), bytes.size());

    std::vector<uint8_t> enlarged(64, 0);
    const int aiPixels[16] = {0, 1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, -1, -1, -1}; // -1: past the end of the block
    for (size_t i = 0; i < 16; ++i)
        if (aiPixels[i] >= 0)
            std::memcpy(&enlarged[4 * i], &bytes[4 * static_cast<size_t>(aiPixels[i])], 4);

    CMOXTexture target = blocksFor(source, ePF_BC3);
    ASSERT_EQ(16u, compressSurface(source, target, ePF_BC3, 0, 0, 0, 0, false));
    EXPECT_EQ(bc3Block(enlarged), std::vector<uint8_t>(target.getDataPtr(), target.getDataPtr() + 16));
}

TEST(CompressSurface, TheLastSurfaceReadsZerosPastTheEndOfTheBlock)
{
    CMOXTexture source(rgba8Header(1, 1));
    const uint8_t aui8Pixel[4] = {10, 20, 30, 40};
    std::memcpy(source.getDataPtr(), aui8Pixel, 4);
    std::vector<uint8_t> enlarged(64, 0);
    std::memcpy(enlarged.data(), aui8Pixel, 4);

    CMOXTexture target = blocksFor(source, ePF_BC3);
    ASSERT_EQ(16u, compressSurface(source, target, ePF_BC3, 0, 0, 0, 0, false));
    EXPECT_EQ(bc3Block(enlarged), std::vector<uint8_t>(target.getDataPtr(), target.getDataPtr() + 16));
}

TEST(CompressSurface, ASurfaceInTheMiddleRunsOnIntoTheNextMember)
{
    // Two members of 2 by 2: pixels 0 to 3 and 4 to 7. Row y of the first one's picture starts at pixel 2 y.
    CMOXTexture source(CMOXTextureHeader{k_RGBA8, 2, 2, 1, 1, 2, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    const std::vector<uint8_t> bytes = testsupport::CSeededRandom(8).bytes(32);
    std::memcpy(source.getDataPtr(), bytes.data(), bytes.size());
    std::vector<uint8_t> enlarged(64, 0);
    for (size_t y = 0; y < 4; ++y)
        std::memcpy(&enlarged[16 * y], &bytes[8 * y], std::min<size_t>(16, 32 - 8 * y));

    CMOXTexture target = blocksFor(source, ePF_BC3);
    ASSERT_EQ(16u, compressSurface(source, target, ePF_BC3, 0, 0, 0, 0, false));
    EXPECT_EQ(bc3Block(enlarged), std::vector<uint8_t>(target.getDataPtr(), target.getDataPtr() + 16));
}

TEST(CompressSurface, OnlyTheAxesBelowTheMinimumAreRaised)
{
    // 8 by 1: raised to 8 by 4, so two blocks; row 0 is the source, the others lie past the end.
    CMOXTexture source(rgba8Header(8, 1));
    const std::vector<uint8_t> bytes = testsupport::CSeededRandom(6).bytes(32);
    std::memcpy(source.getDataPtr(), bytes.data(), bytes.size());
    std::vector<uint8_t> enlarged(8 * 4 * 4, 0);
    std::memcpy(enlarged.data(), bytes.data(), bytes.size());
    std::vector<uint8_t> expected(32);
    ASSERT_EQ(32u, bcCompressImage(enlarged.data(), expected.data(), 8, 4, 5));

    CMOXTexture target = blocksFor(source, ePF_BC3);
    ASSERT_EQ(32u, compressSurface(source, target, ePF_BC3, 0, 0, 0, 0, false));
    EXPECT_EQ(expected, std::vector<uint8_t>(target.getDataPtr(), target.getDataPtr() + 32));
}

TEST(CompressSurface, DepthSlicesAreCompressedOneByOne)
{
    CMOXTexture source(rgba8Header(5, 6, 3));
    const std::vector<uint8_t> bytes = testsupport::CSeededRandom(7).bytes(5 * 6 * 3 * 4);
    std::memcpy(source.getDataPtr(), bytes.data(), bytes.size());
    CMOXTexture target = blocksFor(source, ePF_BC1);
    ASSERT_EQ(3u * 32, target.getBlockSize()); // 8 by 8 pixels at 4 bits a slice

    ASSERT_EQ(96u, compressSurface(source, target, ePF_BC1, 0, 0, 0, 0, false));
    for (size_t z = 0; z < 3; ++z)
    {
        std::vector<uint8_t> slice(32);
        ASSERT_EQ(32u, bcCompressImage(&bytes[z * 120], slice.data(), 5, 6, 1));
        EXPECT_EQ(slice, std::vector<uint8_t>(target.getDataPtr() + 32 * z, target.getDataPtr() + 32 * (z + 1))) << z;
    }
}

TEST(CompressSurface, WithoutACodecOrASurfaceNothingIsWritten)
{
    const CMOXTexture source(rgba8Header(4, 4));
    CMOXTexture target = blocksFor(source, ePF_BC4);
    EXPECT_EQ(0u, compressSurface(source, target, ePF_BC4, 0, 0, 0, 0, false));
    target = blocksFor(source, ePF_BC1);
    EXPECT_EQ(0u, compressSurface(source, target, ePF_BC1, 1, 0, 0, 0, false));
    EXPECT_EQ(0u, compressSurface(source, target, ePF_BC1, 0, 1, 0, 0, false));
    EXPECT_EQ(0u, compressSurface(source, target, ePF_BC1, 0, 0, 1, 0, false));
}
