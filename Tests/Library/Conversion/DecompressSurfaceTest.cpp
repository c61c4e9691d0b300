#include "Conversion/DecompressSurface.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/BC/BcDecompress.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTexture randomBlocks(EMOXTPixelFormat eFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, uint32_t uiLevels = 1,
                         uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    CMOXTexture texture(
        CMOXTextureHeader{eFormat, uiHeight, uiWidth, uiDepth, uiLevels, uiMembers, uiFaces, eCS_sRGB, eCT_UnsignedNormalisedByte, true});
    const std::vector<uint8_t> bytes = testsupport::CSeededRandom(11).bytes(texture.getBlockSize());
    std::memcpy(texture.getDataPtr(), bytes.data(), bytes.size());
    return texture;
}

CMOXTexture rgba8Like(const CMOXTexture& texture)
{
    CMOXTextureHeader header = texture;
    header.setPixelFormat(k_RGBA8);
    return CMOXTexture(header);
}

} // namespace

TEST(DecompressSurface, ASmallSurfaceIsTheTopLeftOfItsBlock)
{
    const CMOXTexture source = randomBlocks(ePF_BC3, 3, 2);
    std::vector<uint8_t> block(64);
    ASSERT_EQ(64u, bcDecompressImage(source.getDataPtr(), block.data(), 4, 4, 5));

    CMOXTexture target = rgba8Like(source);
    EXPECT_EQ(24u, decompressSurface(source, target, ePF_BC3, 0, 0, 0, false)); // the bytes of the real size
    EXPECT_EQ(0, std::memcmp(target.getDataPtr(), block.data(), 12));
    EXPECT_EQ(0, std::memcmp(target.getDataPtr() + 12, block.data() + 16, 12));
}

TEST(DecompressSurface, DepthSlicesAreDecompressedOneByOne)
{
    const CMOXTexture source = randomBlocks(ePF_BC1, 5, 4, 2); // two blocks of eight bytes a slice
    CMOXTexture target = rgba8Like(source);
    ASSERT_EQ(160u, decompressSurface(source, target, ePF_BC1, 0, 0, 0, false));
    for (size_t z = 0; z < 2; ++z)
    {
        std::vector<uint8_t> slice(80);
        ASSERT_EQ(80u, bcDecompressImage(source.getDataPtr() + 16 * z, slice.data(), 5, 4, 1));
        EXPECT_EQ(0, std::memcmp(target.getDataPtr() + 80 * z, slice.data(), 80)) << z;
    }
}

TEST(DecompressSurface, WithoutACodecNothingIsWritten)
{
    const CMOXTexture source = randomBlocks(ePF_BC4, 4, 4);
    CMOXTexture target = rgba8Like(source);
    EXPECT_EQ(0u, decompressSurface(source, target, ePF_BC4, 0, 0, 0, false));
}

TEST(DecompressTexture, TakesEverySurfaceAndKeepsWhatTheHeaderSaysElse)
{
    CMOXTexture texture = randomBlocks(ePF_BC2, 9, 5, 1, 4, 2, 6);
    texture.setOrientation(2);
    const CMOXTexture source = texture;

    EXPECT_EQ((9u * 5 + 4 * 2 + 2 * 1 + 1) * 4 * 2 * 6, decompressTexture(texture));
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_TRUE(texture.isPreMultiplied());
    EXPECT_EQ(2u, texture.getOrientation(eAxisY));
    EXPECT_EQ(15u, texture.getMetaDataSize());

    std::vector<uint8_t> face(9 * 5 * 4);
    ASSERT_EQ(face.size(), bcDecompressImage(source.getDataPtr(0, 1, 4), face.data(), 9, 5, 3));
    EXPECT_EQ(0, std::memcmp(face.data(), texture.getDataPtr(0, 1, 4), face.size()));
    std::vector<uint8_t> smallest(64);
    ASSERT_EQ(64u, bcDecompressImage(source.getDataPtr(3, 1, 5), smallest.data(), 4, 4, 3));
    EXPECT_EQ(0, std::memcmp(smallest.data(), texture.getDataPtr(3, 1, 5), 4));
}

TEST(DecompressTexture, AResultOfFourGiBLeavesTheTextureAsItIs)
{
    // 16384 by 16384 by 8 at 4 bits is 1 GiB, as 8-bit RGBA 8 GiB.
    CMOXTexture texture(CMOXTextureHeader{ePF_BC1, 16384, 16384, 8, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    EXPECT_EQ(0u, decompressTexture(texture));
    EXPECT_EQ(ePF_BC1, texture.getPixelFormat().getFormat());
    EXPECT_EQ(1u << 30, texture.getBlockSize());
}
