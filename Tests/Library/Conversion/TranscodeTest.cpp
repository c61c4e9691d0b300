#include "Conversion/Transcode.h"

#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Core/ByteOrder.h"
#include "Pixels/CMOXPixelAccessor.h"
#include "Pixels/SurfacePump.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTexture makeTexture(MOXPixelWord pixelFormat, EMOXTChannelType eType, uint32_t uiWidth, uint32_t uiHeight,
                        const std::vector<uint8_t>& bytes)
{
    const CMOXTextureHeader header(pixelFormat, uiHeight, uiWidth, 1, 1, 1, 1, eCS_Linear, eType, false);
    EXPECT_EQ(header.getDataSize(), bytes.size());
    return CMOXTexture(header, bytes.data());
}

std::vector<uint8_t> bytesOf(const CMOXTexture& texture)
{
    return {texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize()};
}

} // namespace

TEST(Transcode, ToWhatTheTextureIsAlreadyCopiesNothing)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 2, 1, {1, 2, 3, 4, 5, 6, 7, 8});
    const uint8_t* pBlock = texture.getDataPtr();
    EXPECT_TRUE(Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(pBlock, texture.getDataPtr());
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7, 8}), bytesOf(texture));
}

TEST(Transcode, AChangeOfColourSpaceAloneConverts)
{
    // 128 / 255 to the power 0.41666666 is 0.750417; times 1.0556 less 0.0556 is 0.736540: 187.8 of 255, and alpha stays.
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 1, 1, {128, 0, 255, 77});
    ASSERT_TRUE(Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_sRGB, 0, false));
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_EQ((std::vector<uint8_t>{188, 0, 255, 77}), bytesOf(texture));
}

TEST(Transcode, AChangeOfChannelTypeAloneConverts)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 1, 1, {255, 0, 255, 0});
    ASSERT_TRUE(Transcode(texture, k_RGBA8, eCT_SignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(eCT_SignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ((std::vector<uint8_t>{127, 0, 127, 0}), bytesOf(texture));
}

TEST(Transcode, UnsignedByteToNormalisedShortUsesTheWholeRange)
{
    CMOXTexture texture = makeTexture(layout("r", 8), eCT_UnsignedByte, 1, 1, {255});
    ASSERT_TRUE(Transcode(texture, layout("r", 16), eCT_UnsignedNormalisedShort, eCS_Linear, 0, false));
    EXPECT_EQ((std::vector<uint8_t>{0xFF, 0xFF}), bytesOf(texture));
}

TEST(Transcode, RefusesNoFormatAndAnEmptyTextureUntouched)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 1, 1, {1, 2, 3, 4});
    EXPECT_FALSE(Transcode(texture, ePF_Count, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), bytesOf(texture));
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());

    CMOXTexture empty;
    EXPECT_FALSE(Transcode(empty, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(ePF_Count, empty.getPixelFormat().getFormat());
}

TEST(Transcode, ToAFormatWithoutACodecFails)
{
    for (const MOXPixelWord format :
         {MOXPixelWord(ePF_BC4), MOXPixelWord(ePF_BC5), MOXPixelWord(ePF_BC6), MOXPixelWord(ePF_BC7), MOXPixelWord(uint64_t{0x61})})
    {
        CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 4, 4, std::vector<uint8_t>(64, 9));
        EXPECT_FALSE(Transcode(texture, format, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false)) << format.getWord();
        // What the codec left, nothing here, stands in the texture all the same.
        EXPECT_EQ(format, texture.getPixelFormat());
        EXPECT_EQ(std::vector<uint8_t>(texture.getDataSize(), 0), bytesOf(texture));
    }
}

TEST(Transcode, FromAFormatWithoutACodecFails)
{
    CMOXTexture bc4(CMOXTextureHeader{ePF_BC4, 4, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    EXPECT_FALSE(Transcode(bc4, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(k_RGBA8, bc4.getPixelFormat());
    EXPECT_EQ(std::vector<uint8_t>(64, 0), bytesOf(bc4));

    CMOXTexture bc7(CMOXTextureHeader{ePF_BC7, 4, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    EXPECT_EQ(0u, bc7.getDataSize());
    EXPECT_FALSE(Transcode(bc7, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(ePF_BC7, bc7.getPixelFormat().getFormat());
}

TEST(Transcode, RefusesATextureWhoseHeaderWasChangedSinceItsBlockWasTaken)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 2, 1, {1, 2, 3, 4, 5, 6, 7, 8});
    texture.setHeight(2);
    EXPECT_FALSE(Transcode(texture, layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(k_RGBA8, texture.getPixelFormat());
    EXPECT_EQ(8u, texture.getBlockSize());
}

TEST(Transcode, RefusesAResultOfFourGiBUntouched)
{
    CMOXTexture texture(CMOXTextureHeader{layout("r", 8), 32768, 32768, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    EXPECT_FALSE(Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false)); // exactly 4 GiB
    EXPECT_EQ(layout("r", 8), texture.getPixelFormat());
}

TEST(Transcode, ACompressedResultKeepsTheIntermediatesChannelType)
{
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 4, 4, std::vector<uint8_t>(64, 200));
    ASSERT_TRUE(Transcode(texture, ePF_BC1, eCT_SignedShort, eCS_sRGB, 0, false));
    EXPECT_EQ(ePF_BC1, texture.getPixelFormat().getFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_EQ(8u, texture.getBlockSize());
}

TEST(Transcode, GreyChannelsReachTheCodecAsColours)
{
    // l = 255 everywhere: white in 5:6:5, one colour, all indices 0.
    CMOXTexture texture = makeTexture(layout("l", 8), eCT_UnsignedNormalisedByte, 4, 4, std::vector<uint8_t>(16, 255));
    ASSERT_TRUE(Transcode(texture, ePF_BC1, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ((std::vector<uint8_t>{0xFF, 0xFF, 0, 0, 0, 0, 0, 0}), bytesOf(texture));
}

TEST(Transcode, EverySurfaceOfAChainSurvivesTheWayThereAndBack)
{
    // Black and white only: two colours a block at most, which BC1 holds without loss once alpha is opaque.
    const CMOXTextureHeader header(k_RGBA8, 7, 10, 1, 4, 2, 6, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    CMOXTexture texture(header);
    testsupport::CSeededRandom random(3);
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = i % 4 == 3 ? 255 : 0;
    for (uint32_t i = 0; i < texture.getBlockSize(); i += 4)
        if (random.below(2) == 1)
            std::memset(texture.getDataPtr() + i, 255, 3);
    const CMOXTexture original = texture;

    ASSERT_TRUE(Transcode(texture, ePF_BC3, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    ASSERT_TRUE(Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    for (uint32_t uiMember = 0; uiMember < 2; ++uiMember)
        for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            for (uint32_t uiLevel = 0; uiLevel < 4; ++uiLevel)
                EXPECT_EQ(0, std::memcmp(original.getDataPtr(uiLevel, uiMember, uiFace), texture.getDataPtr(uiLevel, uiMember, uiFace),
                                         original.getDataSize(uiLevel, false, false)))
                    << uiLevel << ' ' << uiMember << ' ' << uiFace;
}

TEST(Transcode, FromAFormatToItselfDecompressesAndCompresses)
{
    // A block with color0 below color1 decodes with three colours; the encoder writes four for an opaque block, so bytes change.
    CMOXTexture texture(CMOXTextureHeader{ePF_BC1, 4, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false});
    const uint8_t aui8Block[8] = {0x00, 0x00, 0xFF, 0xFF, 0x44, 0x44, 0x44, 0x44}; // black and white in turn
    std::memcpy(texture.getDataPtr(), aui8Block, 8);
    ASSERT_TRUE(Transcode(texture, ePF_BC1, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ((std::vector<uint8_t>{0xFF, 0xFF, 0x00, 0x00, 0x11, 0x11, 0x11, 0x11}), bytesOf(texture));
}

TEST(Transcode, MetadataAndShapeAreCarriedOver)
{
    CMOXTexture texture(CMOXTextureHeader{k_RGBA8, 4, 8, 2, 2, 3, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, true});
    texture.setBorder(1, 2, 3);
    texture.addMetaData(MetaDataBlock(0x31323334, 9, "abc", 3));
    ASSERT_TRUE(Transcode(texture, ePF_BC2, eCT_UnsignedNormalisedByte, eCS_sRGB, 0, false));
    ASSERT_TRUE(Transcode(texture, layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_sRGB, 0, false));
    EXPECT_EQ(8u, texture.getWidth());
    EXPECT_EQ(4u, texture.getHeight());
    EXPECT_EQ(2u, texture.getDepth());
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    EXPECT_EQ(3u, texture.getNumArrayMembers());
    EXPECT_TRUE(texture.isPreMultiplied());
    EXPECT_EQ(12u + 12 + 12 + 3, texture.getMetaDataSize());
    EXPECT_EQ('b', texture.getMetaData().find(0x31323334)->find(9)->Data[1]);
}

TEST(Transcode, DitherIsIgnoredForTargetsOf32BitsAndMore)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(64, 64);
    CMOXTexture plain = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 64, 64, picture);
    CMOXTexture dithered = plain;
    ASSERT_TRUE(Transcode(plain, layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    ASSERT_TRUE(Transcode(dithered, layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte, eCS_Linear, 0, true));
    EXPECT_EQ(bytesOf(plain), bytesOf(dithered));
}

TEST(Transcode, DitherDiffusesTowardsTheTargetsBits)
{
    // Red in 5 bits: 4 becomes 0 with error 4, and the right neighbour gets 2. There 5 + 2 = 7 is still 0, though 5 alone would
    // round to 1 (5 / 255 * 31 + 0.5 = 1.1); 6 + 2 = 8 is 1.
    CMOXTexture texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 2, 1, {4, 0, 0, 255, 5, 0, 0, 255});
    ASSERT_TRUE(Transcode(texture, layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_Linear, 0, true));
    EXPECT_EQ(0u, loadLE<uint16_t>(texture.getDataPtr()) >> 11);
    EXPECT_EQ(0u, loadLE<uint16_t>(texture.getDataPtr() + 2) >> 11);

    texture = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 2, 1, {4, 0, 0, 255, 6, 0, 0, 255});
    ASSERT_TRUE(Transcode(texture, layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_Linear, 0, true));
    EXPECT_EQ(0u, loadLE<uint16_t>(texture.getDataPtr()) >> 11);
    EXPECT_EQ(1u, loadLE<uint16_t>(texture.getDataPtr() + 2) >> 11);
}

TEST(Transcode, DitherReachesTheCodec)
{
    // Two columns of pixels towards the 5 6 5 of BC1. Without dither every pixel is (4, 0, 0), which 5:6:5 cuts to black. With it each
    // pixel of the left column loses an error of 4: 2 to the right and 1 to each of the two below, so that some reach 8, which
    // stays as 1 in 5 bits.
    CMOXTexture plain = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 4, 4, std::vector<uint8_t>(64, 0));
    for (uint32_t i = 0; i < 64; i += 4)
    {
        plain.getDataPtr()[i] = 4;
        plain.getDataPtr()[i + 3] = 255;
    }
    CMOXTexture dithered = plain;
    ASSERT_TRUE(Transcode(plain, ePF_BC1, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false));
    EXPECT_EQ(std::vector<uint8_t>(8, 0), bytesOf(plain));
    ASSERT_TRUE(Transcode(dithered, ePF_BC1, eCT_UnsignedNormalisedByte, eCS_Linear, 0, true));
    // Two colours: 0x0800 (red 1) and black, so color0 is 0x0800 and black pixels take index 1.
    EXPECT_EQ(0x0800, loadLE<uint16_t>(dithered.getDataPtr()));
    EXPECT_EQ(0x0000, loadLE<uint16_t>(dithered.getDataPtr() + 2));
}

TEST(Transcode, DitherAndAChangeOfSpaceGoThroughLinearBytes)
{
    // Dithering comes first and leaves the space: 255 stays 255 in 5 bits and in sRGB.
    CMOXTexture texture =
        makeTexture(k_RGBA32, eCT_SignedFloatingPoint, 1, 1, {0, 0, 0x80, 0x3F, 0, 0, 0, 0, 0, 0, 0x80, 0x3F, 0, 0, 0x80, 0x3F});
    ASSERT_TRUE(Transcode(texture, layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_sRGB, 0, true));
    EXPECT_EQ(eCS_sRGB, texture.getColourSpace());
    EXPECT_EQ(0xF81F, loadLE<uint16_t>(texture.getDataPtr()));
}

TEST(Transcode, MayLeaveOutThePumpForBytesOnTheWayToACodec)
{
    // Because it gives back every byte in every channel as it was.
    std::vector<uint8_t> bytes(1024);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>(i % 4 == 0 ? i / 4 : 255 - i / 4);
    const CMOXTexture source = makeTexture(k_RGBA8, eCT_UnsignedNormalisedByte, 16, 16, bytes);
    CMOXTexture target(static_cast<const CMOXTextureHeader&>(source));
    const CMOXPixelAccessor accessor(k_RGBA8, eCT_UnsignedNormalisedByte);
    EXPECT_EQ(1024u, convertSurfacesReference(source, target, accessor, accessor, eCS_sRGB, eCS_sRGB));
    EXPECT_EQ(bytes, bytesOf(target));
}
