#include "Operations/Resize.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "Operations/ResampleSurface.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTexture makeTexture(MOXPixelWord format, EMOXTChannelType eType, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1,
                        uint32_t uiLevels = 1, uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    const CMOXTextureHeader header(format, uiHeight, uiWidth, uiDepth, uiLevels, uiMembers, uiFaces, eCS_sRGB, eType, true);
    std::vector<uint8_t> bytes = testsupport::CSeededRandom(7).bytes(header.getDataSize());
    if (eType == eCT_SignedFloatingPoint)
        for (size_t i = 3; i < bytes.size(); i += 4)
            bytes[i] = 0x3F; // small numbers
    return CMOXTexture(header, bytes.data());
}

CMOXTexture makeBytes(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth = 1, uint32_t uiLevels = 1, uint32_t uiMembers = 1,
                      uint32_t uiFaces = 1)
{
    return makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, uiWidth, uiHeight, uiDepth, uiLevels, uiMembers, uiFaces);
}

bool haveSameData(const CMOXTexture& a, const CMOXTexture& b)
{
    return a.getBlockSize() == b.getBlockSize() && std::memcmp(a.getDataPtr(), b.getDataPtr(), a.getBlockSize()) == 0;
}

using Widths = std::array<uint32_t, 3>;

Widths getBorder(const CMOXTexture& texture)
{
    Widths widths;
    texture.getBorder(widths[0], widths[1], widths[2]);
    return widths;
}

} // namespace

TEST(Resize, ToTheSameSizeIsDoneAtOnceAndKeepsEverything)
{
    CMOXTexture texture = makeBytes(256, 256, 1, 3);
    const CMOXTexture before = texture;
    const uint8_t* pData = texture.getDataPtr();
    EXPECT_TRUE(Resize(texture, 256, 256, 1, eResizeCubic));
    EXPECT_EQ(3u, texture.getNumMIPLevels());
    EXPECT_EQ(pData, texture.getDataPtr());
    EXPECT_TRUE(haveSameData(before, texture));
}

TEST(Resize, KeepsNoMIPLevels)
{
    CMOXTexture texture = makeBytes(8, 8, 1, 4);
    EXPECT_TRUE(Resize(texture, 4, 2, 1, eResizeLinear));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ(1u, texture.getDepth());
    EXPECT_EQ(4u * 4 * 2, texture.getBlockSize());
}

TEST(Resize, KeepsTheEncodingAndTheMetaData)
{
    CMOXTexture texture = makeBytes(4, 4);
    texture.setOrientation(2);
    const PixelEncoding encoding = texture.getEncoding();
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(encoding, texture.getEncoding());
    EXPECT_EQ(2u, texture.getOrientation(eAxisY));
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
}

TEST(Resize, ResizesEverySurfaceOfEveryKindByStages)
{
    const struct
    {
        MOXPixelWord format;
        EMOXTChannelType eType;
    } aKinds[] = {{k_RGBA8, eCT_UnsignedNormalisedByte},
                  {k_RGBA16, eCT_UnsignedNormalisedShort},
                  {k_RGBA32, eCT_UnsignedNormalisedInteger},
                  {k_RGBA32, eCT_SignedFloatingPoint}};
    for (const auto& kind : aKinds)
        for (const EResizeMode eMode : {eResizeNearest, eResizeLinear, eResizeCubic})
        {
            const CMOXTexture source = makeTexture(kind.format, kind.eType, 20, 12, 3, 2, 2, 3);
            CMOXTexture resized = source;
            ASSERT_TRUE(Resize(resized, 5, 30, 2, eMode));
            for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
                for (uint32_t uiFace = 0; uiFace < 3; ++uiFace)
                {
                    std::vector<uint8_t> expected(resized.getDataSize(0, false, false));
                    const auto expect = [&](auto element)
                    {
                        using T = decltype(element);
                        EXPECT_TRUE(resizeSurface(reinterpret_cast<const T*>(source.getDataPtr(0, uiMember, uiFace)),
                                                  reinterpret_cast<T*>(expected.data()), {20, 12, 3}, {5, 30, 2}, eMode));
                    };
                    if (kind.format == k_RGBA8)
                        expect(uint8_t());
                    else if (kind.format == k_RGBA16)
                        expect(uint16_t());
                    else if (kind.eType == eCT_UnsignedNormalisedInteger)
                        expect(uint32_t());
                    else
                        expect(float());
                    EXPECT_EQ(0, std::memcmp(expected.data(), resized.getDataPtr(0, uiMember, uiFace), expected.size()))
                        << "member " << uiMember << " face " << uiFace << " mode " << eMode;
                }
        }
}

TEST(Resize, ScalesTheBorderByIntegerDivision)
{
    CMOXTexture texture = makeBytes(10, 20);
    texture.setBorder(3, 4, 0);
    EXPECT_TRUE(Resize(texture, 5, 30, 1, eResizeNearest));
    EXPECT_EQ((Widths{1, 6, 0}), getBorder(texture)); // 3 * 5 / 10, 4 * 30 / 20
    EXPECT_EQ(texture.sumMetaDataSize(), texture.getMetaDataSize());
}

TEST(Resize, ABorderTimesASizeMayTakeMoreThan32Bits)
{
    CMOXTexture texture = makeBytes(4, 1);
    texture.setBorder(0xFFFFFFF0, 0, 0);
    EXPECT_TRUE(Resize(texture, 2, 1, 1, eResizeNearest));
    EXPECT_EQ((Widths{0x7FFFFFF8, 0, 0}), getBorder(texture));
}

TEST(Resize, WithoutABorderNoneIsAdded)
{
    CMOXTexture texture = makeBytes(4, 4);
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(0u, texture.getMetaDataSize());
}

TEST(Resize, RefusesASizeOfZeroAndOtherFormats)
{
    CMOXTexture texture = makeBytes(4, 4);
    const CMOXTexture before = texture;
    EXPECT_FALSE(Resize(texture, 0, 4, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 4, 0, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 4, 4, 0, eResizeNearest));
    EXPECT_TRUE(haveSameData(before, texture));

    CMOXTexture other = makeTexture(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, 4, 4);
    EXPECT_FALSE(Resize(other, 2, 2, 1, eResizeNearest));
    EXPECT_FALSE(Resize(other, 4, 4, 1, eResizeNearest)); // even to its own size
    CMOXTexture signedBytes = makeTexture(k_RGBA8, eCT_SignedNormalisedByte, 4, 4);
    EXPECT_FALSE(Resize(signedBytes, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(4u, signedBytes.getWidth());
}

TEST(Resize, RefusesAResultOfFourGiBAndLeavesTheTexture)
{
    CMOXTexture texture = makeBytes(4, 4);
    const CMOXTexture before = texture;
    EXPECT_FALSE(Resize(texture, 32768, 32768, 1, eResizeNearest));
    EXPECT_FALSE(Resize(texture, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, eResizeNearest));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_TRUE(haveSameData(before, texture));
}

TEST(Resize, RefusesATextureThatLacksASurface)
{
    CMOXTexture texture = makeBytes(4, 4);
    texture.setNumArrayMembers(2);
    EXPECT_FALSE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(2u, texture.getNumArrayMembers());

    CMOXTexture withoutLevels = makeBytes(4, 4);
    withoutLevels.setNumMIPLevels(0);
    EXPECT_FALSE(Resize(withoutLevels, 2, 2, 1, eResizeNearest));
}

TEST(Resize, ATextureWithoutFacesIsDoneAtOnce)
{
    CMOXTexture texture = makeBytes(4, 4);
    texture.setNumFaces(0);
    texture.setNumArrayMembers(0xFFFFFFFF);
    EXPECT_TRUE(Resize(texture, 2, 2, 1, eResizeNearest));
    EXPECT_EQ(2u, texture.getWidth());
}
