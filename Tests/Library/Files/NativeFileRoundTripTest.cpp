#include <string>

#include <gtest/gtest.h>

#include "Files/NativeFile.h"
#include "Support/CatalogueLayouts.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

struct Shape
{
    const char* strName;
    uint32_t uiWidth, uiHeight, uiDepth, uiLevels, uiMembers, uiFaces;
};

constexpr Shape k_aShapes[] = {
    {"one pixel", 1, 1, 1, 1, 1, 1},   {"one surface", 13, 7, 1, 1, 1, 1},
    {"MIP levels", 16, 8, 1, 5, 1, 1}, {"more levels than sizes", 4, 2, 1, 6, 1, 1},
    {"array", 5, 4, 1, 1, 3, 1},       {"array with levels", 6, 6, 1, 3, 4, 1},
    {"cube", 8, 8, 1, 4, 1, 6},        {"array of cubes", 4, 4, 1, 2, 3, 6},
    {"3D", 6, 5, 4, 1, 1, 1},          {"3D with levels", 8, 4, 8, 4, 1, 1},
    {"all at once", 3, 5, 2, 3, 2, 6},
};

/// A texture of seeded bytes with metadata of three owners.
CMOXTexture makeTexture(const PixelEncoding& encoding, const Shape& shape, uint64_t ui64Seed)
{
    const CMOXTextureHeader header(encoding.pixelFormat, shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels, shape.uiMembers,
                                   shape.uiFaces, encoding.eColourSpace, encoding.eChannelType, encoding.bPreMultiplied);
    CSeededRandom random(ui64Seed);
    CMOXTexture texture(header, random.bytes(header.getDataSize()).data());
    texture.addMetaData(MetaDataBlock(0x746E6F66, 0xFFFFFFFF, random.bytes(5).data(), 5));
    texture.setOrientation(random.below(8));
    texture.addMetaData(MetaDataBlock(0, 0, random.bytes(300).data(), 300));
    texture.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataCubeMapOrder, "xXyYzZ", 6));
    return texture;
}

/// The same file by the published layout alone: header fields, blocks and data as a list of bytes.
std::vector<uint8_t> expectedFile(const CMOXTexture& texture, const PixelEncoding& encoding, const Shape& shape)
{
    CNativeFileBuilder builder;
    builder.format(encoding.pixelFormat.getWord()).channelType(encoding.eChannelType).colourSpace(encoding.eColourSpace);
    builder.flags(encoding.bPreMultiplied ? 2 : 0).size(shape.uiWidth, shape.uiHeight, shape.uiDepth);
    builder.levels(shape.uiLevels).members(shape.uiMembers).faces(shape.uiFaces);
    const MetaDataMap& metaData = texture.getMetaData();
    for (uint32_t i = 0; i < metaData.getCount(); ++i)
    {
        for (uint32_t j = 0; j < metaData.getValue(i).getCount(); ++j)
        {
            const MetaDataBlock& block = metaData.getValue(i).getValue(j);
            builder.block(block.DevFOURCC, block.u32Key, {block.Data.get(), block.Data.get() + block.u32DataSize});
        }
    }
    return builder.data(dataOf(texture)).bytes();
}

void expectRoundTrip(const PixelEncoding& encoding, const Shape& shape, uint64_t ui64Seed)
{
    SCOPED_TRACE(shape.strName);
    const CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(encoding, shape, ui64Seed);
    ASSERT_NE(0u, texture.getDataSize());

    ASSERT_TRUE(writeNative(texture, folder.path("first.mox")));
    const std::vector<uint8_t> written = readBytes(folder.path("first.mox"));
    ASSERT_EQ(expectedFile(texture, encoding, shape), written);

    const NativeLoad load = loadNative(written);
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(encoding, load.texture.getEncoding());
    EXPECT_EQ(texture.getMetaDataSize(), load.texture.getMetaDataSize());
    EXPECT_EQ(dataOf(texture), dataOf(load.texture));

    ASSERT_TRUE(writeNative(load.texture, folder.path("second.mox")));
    EXPECT_EQ(written, readBytes(folder.path("second.mox")));
}

} // namespace

TEST(NativeRoundTrip, EveryUncompressedLayoutComesBackByteForByte)
{
    uint64_t ui64Seed = 1;
    for (const CatalogueLayout& row : k_aCatalogueLayouts)
    {
        SCOPED_TRACE(std::string(row.strLetters) + " of channel type " + std::to_string(row.uiType));
        PixelEncoding encoding = row.getEncoding();
        for (const EMOXTColourSpace eSpace : {eCS_Linear, eCS_sRGB})
        {
            encoding.eColourSpace = eSpace;
            expectRoundTrip(encoding, k_aShapes[1], ui64Seed++);
            expectRoundTrip(encoding, k_aShapes[std::size(k_aShapes) - 1], ui64Seed++);
        }
    }
}

TEST(NativeRoundTrip, EveryShapeComesBackByteForByte)
{
    uint64_t ui64Seed = 1000;
    for (const Shape& shape : k_aShapes)
        for (const MOXPixelWord format : {k_RGBA8, k_RGBA32, layout("rgb", 8, 8, 8), MOXPixelWord(ePF_BC1), MOXPixelWord(ePF_ASTC_3x3x3)})
            expectRoundTrip({format, eCT_UnsignedNormalisedByte, eCS_Linear, true}, shape, ui64Seed++);
}

TEST(NativeRoundTrip, EveryNumberedFormatComesBackByteForByte)
{
    for (uint32_t uiFormat = 0; uiFormat < ePF_Count; ++uiFormat)
    {
        SCOPED_TRACE(uiFormat);
        if (uiFormat != ePF_BC6 && uiFormat != ePF_BC7) // which have no size
            expectRoundTrip({static_cast<EMOXTPixelFormat>(uiFormat), eCT_UnsignedNormalisedByte, eCS_sRGB}, k_aShapes[2], 2000 + uiFormat);
    }
}

TEST(NativeRoundTrip, FlagsWithoutAMeaningHereAreKept)
{
    const std::vector<uint8_t> bytes = CNativeFileBuilder().flags(0xFFFFFFFF).data({1, 2, 3, 4}).bytes();
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(loadNative(bytes).texture, folder.path("a.mox")));
    EXPECT_EQ(bytes, readBytes(folder.path("a.mox")));
}
