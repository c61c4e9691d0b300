#include "Composition/EncodeTexture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "Conversion/Transcode.h"
#include "Operations/Flip.h"
#include "Operations/MIPMaps.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

CMOXTexture makeWorking(uint32_t uiWidth, uint32_t uiHeight)
{
    const std::vector<uint8_t> pixels = testsupport::makePicture(uiWidth, uiHeight, 7);
    return CMOXTexture(CMOXTextureHeader(k_RGBA8, uiHeight, uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false),
                       pixels.data());
}

/// Red bytes of one column, a row each.
CMOXTexture makeColumn(const std::vector<uint8_t>& reds)
{
    CMOXTexture texture(
        CMOXTextureHeader(k_RGBA8, static_cast<uint32_t>(reds.size()), 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    for (size_t i = 0; i < reds.size(); ++i)
        texture.getDataPtr()[4 * i] = reds[i];
    return texture;
}

std::vector<uint8_t> redsOf(const CMOXTexture& texture, uint32_t uiPixelSize = 4)
{
    std::vector<uint8_t> reds;
    for (uint32_t i = 0; i < texture.getHeight(); ++i)
        reds.push_back(texture.getDataPtr()[i * uiPixelSize]);
    return reds;
}

EncodeRequest ask(MOXPixelWord pixelFormat, EMOXTChannelType eType = eCT_UnsignedNormalisedByte, EMOXTColourSpace eSpace = eCS_Linear)
{
    EncodeRequest request;
    request.target = {pixelFormat, eType, eSpace};
    return request;
}

std::vector<uint8_t> bytesOf(const CMOXTexture& texture)
{
    return std::vector<uint8_t>(texture.getDataPtr(), texture.getDataPtr() + texture.getBlockSize());
}

void expectFailed(EEncodeResult eExpected, const EncodedTexture& encoded)
{
    EXPECT_EQ(eExpected, encoded.eResult);
    EXPECT_EQ(0u, encoded.stored.getBlockSize());
    EXPECT_EQ(0u, encoded.working.getBlockSize());
}

} // namespace

TEST(EncodeTexture, GivesTheTargetAndAnEightBitCopyOfWhatBecameOfIt)
{
    const CMOXTexture source = makeWorking(16, 12);
    const EncodedTexture encoded = encodeTexture(source, ask(ePF_BC1, eCT_UnsignedNormalisedByte, eCS_sRGB));
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ(MOXPixelWord(ePF_BC1), encoded.stored.getPixelFormat());
    EXPECT_EQ(eCS_sRGB, encoded.stored.getColourSpace());
    EXPECT_EQ(1u, encoded.stored.getNumMIPLevels());
    EXPECT_EQ(12u * 8, encoded.stored.getBlockSize()); // 4 by 3 blocks
    EXPECT_EQ(k_RGBA8, encoded.working.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, encoded.working.getChannelType());
    EXPECT_EQ(eCS_Linear, encoded.working.getColourSpace());

    CMOXTexture display = encoded.stored;
    ASSERT_TRUE(Transcode(display, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 2, false));
    EXPECT_EQ(bytesOf(display), bytesOf(encoded.working));
}

TEST(EncodeTexture, LeavesItsSourceAlone)
{
    const CMOXTexture source = makeWorking(8, 8);
    const std::vector<uint8_t> before = bytesOf(source);
    EncodeRequest request = ask(ePF_BC3);
    request.bVerticalFlip = request.bGenerateMIPMaps = request.bDither = true;
    ASSERT_EQ(eEncodeDone, encodeTexture(source, request).eResult);
    EXPECT_EQ(before, bytesOf(source));
    EXPECT_EQ(0u, source.getOrientation(eAxisY));
    EXPECT_EQ(1u, source.getNumMIPLevels());
}

TEST(EncodeTexture, FlippedIsStoredBottomRowFirstAndDisplayedAsItWas)
{
    EncodeRequest request = ask(layout("r", 8));
    request.bVerticalFlip = true;
    const EncodedTexture encoded = encodeTexture(makeColumn({10, 20, 30}), request);
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ((std::vector<uint8_t>{30, 20, 10}), redsOf(encoded.stored, 1));
    EXPECT_EQ(2u, encoded.stored.getOrientation(eAxisY));
    EXPECT_EQ((std::vector<uint8_t>{10, 20, 30}), redsOf(encoded.working));
    EXPECT_EQ(0u, encoded.working.getOrientation(eAxisY));
}

TEST(EncodeTexture, OneThatIsMarkedAsFlippedIsNotFlippedAgain)
{
    CMOXTexture source = makeColumn({10, 20, 30});
    source.setOrientation(2);
    EncodeRequest request = ask(layout("r", 8));
    request.bVerticalFlip = true;
    const EncodedTexture encoded = encodeTexture(source, request);
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ((std::vector<uint8_t>{10, 20, 30}), redsOf(encoded.stored, 1));
    EXPECT_EQ(2u, encoded.stored.getOrientation(eAxisY));
}

TEST(EncodeTexture, TheFlipKeepsWhatIsSaidOfTheOtherAxes)
{
    CMOXTexture source = makeColumn({10, 20});
    source.setOrientation(1 | 4);
    EncodeRequest request = ask(layout("r", 8));
    request.bVerticalFlip = true;
    const EncodedTexture encoded = encodeTexture(source, request);
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ(1u, encoded.stored.getOrientation(eAxisX));
    EXPECT_EQ(2u, encoded.stored.getOrientation(eAxisY));
    EXPECT_EQ(4u, encoded.stored.getOrientation(eAxisZ));
}

TEST(EncodeTexture, MakesAllLevelsByTheLinearFilter)
{
    EncodeRequest request = ask(k_RGBA8);
    request.bGenerateMIPMaps = true;
    const CMOXTexture source = makeWorking(16, 4);
    const EncodedTexture encoded = encodeTexture(source, request);
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ(5u, encoded.stored.getNumMIPLevels()); // 16, 8, 4, 2, 1

    CMOXTexture expected = source;
    ASSERT_TRUE(GenerateMIPMaps(expected, eResizeLinear, k_uiFullMIPChain));
    EXPECT_EQ(bytesOf(expected), bytesOf(encoded.stored));
}

TEST(EncodeTexture, FlipsBeforeItMakesTheLevels)
{
    EncodeRequest request = ask(k_RGBA8);
    request.bGenerateMIPMaps = request.bVerticalFlip = true;
    const CMOXTexture source = makeWorking(5, 7);
    const EncodedTexture encoded = encodeTexture(source, request);
    ASSERT_EQ(eEncodeDone, encoded.eResult);

    CMOXTexture expected = source;
    ASSERT_TRUE(Flip(expected, eAxisY));
    ASSERT_TRUE(GenerateMIPMaps(expected, eResizeLinear, k_uiFullMIPChain));
    EXPECT_EQ(bytesOf(expected), bytesOf(encoded.stored));
}

TEST(EncodeTexture, DithersWhereAsked)
{
    EncodeRequest request = ask(layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort);
    const CMOXTexture source = makeWorking(32, 32);
    for (const bool bDither : {false, true})
    {
        request.bDither = bDither;
        const EncodedTexture encoded = encodeTexture(source, request);
        ASSERT_EQ(eEncodeDone, encoded.eResult);
        CMOXTexture expected = source;
        ASSERT_TRUE(Transcode(expected, layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, eCS_Linear, 0, bDither));
        EXPECT_EQ(bytesOf(expected), bytesOf(encoded.stored)) << bDither;
    }
}

TEST(EncodeTexture, OfFloatsIsDisplayedWithEightBits)
{
    CMOXTexture source(CMOXTextureHeader(k_RGBA32, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_SignedFloatingPoint, false));
    const float afPixel[4] = {4.0f, 0.0f, 1.0f, 1.0f};
    std::memcpy(source.getDataPtr(), afPixel, sizeof(afPixel));
    const EncodedTexture encoded = encodeTexture(source, ask(k_RGBA16, eCT_SignedFloatingPoint));
    ASSERT_EQ(eEncodeDone, encoded.eResult);
    EXPECT_EQ(8u, encoded.stored.getBlockSize());
    EXPECT_EQ((std::vector<uint8_t>{255, 0, 255, 255}), bytesOf(encoded.working));
}

TEST(EncodeTexture, TellsThatTheFlipFailed)
{
    // Packed pixels are no working form.
    CMOXTexture source(CMOXTextureHeader(layout("rgb", 5, 6, 5), 2, 2, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedShort, false));
    EncodeRequest request = ask(ePF_BC1);
    request.bVerticalFlip = true;
    expectFailed(eEncodeFlipFailed, encodeTexture(source, request));
    request.bGenerateMIPMaps = true;
    expectFailed(eEncodeFlipFailed, encodeTexture(source, request));
}

TEST(EncodeTexture, TellsThatTheLevelsFailed)
{
    CMOXTexture source(CMOXTextureHeader(layout("rgb", 5, 6, 5), 2, 2, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedShort, false));
    EncodeRequest request = ask(ePF_BC1);
    request.bGenerateMIPMaps = true;
    expectFailed(eEncodeMIPMapsFailed, encodeTexture(source, request));
}

TEST(EncodeTexture, TellsThatTheConversionFailed)
{
    // A format without a codec or size, none at all, and no texture to begin with.
    expectFailed(eEncodeFailed, encodeTexture(makeWorking(4, 4), ask(ePF_BC7)));
    expectFailed(eEncodeFailed, encodeTexture(makeWorking(4, 4), ask(ePF_Count)));
    expectFailed(eEncodeFailed, encodeTexture(CMOXTexture(), ask(ePF_BC1)));
}

TEST(EncodedName, IsTheSourcesTitleAndTheFormat)
{
    EXPECT_EQ("/home/me/photo.png (Encoded:BC1)", getEncodedName("/home/me/photo.png", ePF_BC1));
    EXPECT_EQ("photo.png * (Encoded:ETC2 RGB A1)", getEncodedName("photo.png *", ePF_ETC2_RGB_A1));
    // The name of a layout ends in a blank.
    EXPECT_EQ("a (Encoded:RGB 5 6 5 )", getEncodedName("a", layout("rgb", 5, 6, 5)));
}
