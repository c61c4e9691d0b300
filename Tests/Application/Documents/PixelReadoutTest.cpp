#include "Documents/PixelReadout.h"

#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

struct Values
{
    bool bRead = false;
    uint32_t aui32[4] = {1000, 1001, 1002, 1003};

    friend bool operator==(const Values& a, const Values& b)
    {
        return a.bRead == b.bRead && std::memcmp(a.aui32, b.aui32, sizeof(a.aui32)) == 0;
    }
    friend std::ostream& operator<<(std::ostream& stream, const Values& values)
    {
        stream << (values.bRead ? "read" : "nothing");
        for (const uint32_t ui32Value : values.aui32)
            stream << ' ' << ui32Value;
        return stream;
    }
};

Values readAt(const CMOXTexture& texture, int32_t x, int32_t y, uint32_t uiLevel = 0, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    Values values;
    values.bRead = readPixelValue(texture, uiLevel, uiMember, uiFace, x, y, values.aui32);
    return values;
}

CMOXTexture makeOne(MOXPixelWord format, const std::vector<uint8_t>& bytes)
{
    return CMOXTexture(CMOXTextureHeader(format, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedByte, false), bytes.data());
}

uint32_t bitsOf(float fValue)
{
    uint32_t ui32Bits = 0;
    std::memcpy(&ui32Bits, &fValue, sizeof(fValue));
    return ui32Bits;
}

std::string format(uint32_t ui32Value, uint32_t ui32Type)
{
    return formatChannelValue(ui32Value, static_cast<EMOXTChannelType>(ui32Type)).toStdString();
}

CMOXTextureHeader makeHeader(uint32_t uiLevels, uint32_t uiMembers, uint32_t uiFaces)
{
    return CMOXTextureHeader(k_RGBA8, 8, 8, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false);
}

ReadoutPlace makePlace(bool bInside)
{
    ReadoutPlace place;
    place.bMouseInside = bInside;
    place.i32PixelX = 12;
    place.i32PixelY = 34;
    place.ui32MIPLevel = 1;
    place.ui32ArrayMember = 2;
    place.ui32Face = 3;
    place.ui32CubeFace = 4;
    return place;
}

} // namespace

TEST(PixelValue, IsThatOfThePixelInItsSurface)
{
    // 3 by 2: the pixel at 2, 1 is the sixth, its bytes are numbers 20 to 23, of value number * 7.
    EXPECT_EQ((Values{true, {140, 147, 154, 161}}), readAt(makeBytes(3, 2), 2, 1));
}

TEST(PixelValue, IsReadFromTheLevelMemberAndFaceTold)
{
    // 2 by 2 and 1 by 1, two members of two faces: level 1 starts behind 4 surfaces of 16 bytes; its fourth surface at 64 + 12 = 76.
    // 76 * 7 = 532 = 2 * 256 + 20.
    EXPECT_EQ((Values{true, {20, 27, 34, 41}}), readAt(makeBytes(2, 2, 0, 2, 2, 2), 0, 0, 1, 1, 1));
}

TEST(PixelValue, IsNoneOutsideTheLevel)
{
    const CMOXTexture texture = makeBytes(4, 2, 0, 2);
    const Values nothing;
    EXPECT_EQ(nothing, readAt(texture, 4, 0));
    EXPECT_EQ(nothing, readAt(texture, 0, 2));
    EXPECT_EQ(nothing, readAt(texture, -1, 0));
    EXPECT_EQ(nothing, readAt(texture, 0, -1));
    EXPECT_EQ(nothing, readAt(texture, 2, 0, 1)) << "the second level is 2 by 1";
    EXPECT_EQ(nothing, readAt(texture, 0, 0, 2));
    EXPECT_EQ(nothing, readAt(texture, 0, 0, 0, 1));
    EXPECT_EQ(nothing, readAt(texture, 0, 0, 0, 0, 1));
}

TEST(PixelValue, OfWideChannelsIsLittleEndian)
{
    EXPECT_EQ((Values{true, {0x0201, 0x0403, 0x0605, 0x0807}}), readAt(makeOne(k_RGBA16, {1, 2, 3, 4, 5, 6, 7, 8}), 0, 0));
    EXPECT_EQ((Values{true, {0x04030201, 0, 0, 0}}), readAt(makeOne(layout("r", 32), {1, 2, 3, 4}), 0, 0));
    EXPECT_EQ((Values{true, {bitsOf(0.5f), bitsOf(-2.0f), 0, bitsOf(1.0f)}}), readAt(makeFloats({0.5f, -2.0f, 0.0f, 1.0f}), 0, 0));
}

TEST(PixelValue, GoesByTheLettersInTheirOrder)
{
    EXPECT_EQ((Values{true, {3, 2, 1, 4}}), readAt(makeOne(layout("bgra", 8, 8, 8, 8), {1, 2, 3, 4}), 0, 0));
    EXPECT_EQ((Values{true, {2, 0, 0, 3}}), readAt(makeOne(layout("xra", 8, 8, 8), {1, 2, 3}), 0, 0)) << "x is passed over";
    EXPECT_EQ((Values{true, {0, 0, 0, 2}}), readAt(makeOne(layout("la", 8, 8), {1, 2}), 0, 0)) << "l is none of the four";
}

TEST(PixelValue, OfOddWidthsReadsAByteAChannelButNotPastTheSurface)
{
    // 16 bits a pixel: the third channel's byte would lie behind it.
    EXPECT_EQ((Values{true, {0x11, 0x22, 0, 0}}), readAt(makeOne(layout("rgb", 5, 6, 5), {0x11, 0x22}), 0, 0));
}

TEST(PixelValue, OfACompressedTextureIsNone)
{
    CMOXTextureHeader header = makeBytes(4, 4);
    header.setPixelFormat(ePF_BC1);
    EXPECT_EQ(Values{}, readAt(CMOXTexture(header), 0, 0));
}

TEST(ChannelText, IsUnsignedForEvenTypesAndSignedForOddOnes)
{
    for (uint32_t ui32Type = 0; ui32Type <= 10; ui32Type += 2)
        EXPECT_EQ("4294967295", format(0xFFFFFFFF, ui32Type)) << ui32Type;
    for (uint32_t ui32Type = 1; ui32Type <= 11; ui32Type += 2)
        EXPECT_EQ("-1", format(0xFFFFFFFF, ui32Type)) << ui32Type;
    EXPECT_EQ("200", format(200, 0));
    EXPECT_EQ("200", format(200, 1)) << "a byte is shown as it was read";
}

TEST(ChannelText, OfFloatTypesHasSixDecimals)
{
    for (const uint32_t ui32Type : {12u, 13u})
    {
        EXPECT_EQ("0.500000", format(0x3F000000, ui32Type));
        EXPECT_EQ("-2.000000", format(0xC0000000, ui32Type));
        EXPECT_EQ("inf", format(0x7F800000, ui32Type));
    }
}

TEST(ChannelText, OfAnyOtherTypeIsEmpty)
{
    for (const uint32_t ui32Type : {14u, 15u, 0xFFFFFFFFu})
        EXPECT_EQ("", format(1, ui32Type)) << ui32Type;
}

TEST(ChannelDifference, IsTheLargerLessTheSmallerInTheType)
{
    EXPECT_EQ(5u, getChannelDifference(10, 5, eCT_UnsignedNormalisedByte));
    EXPECT_EQ(5u, getChannelDifference(5, 10, eCT_UnsignedNormalisedByte));
    EXPECT_EQ(0xFFFFFFFEu, getChannelDifference(1, 0xFFFFFFFF, eCT_UnsignedInteger));
    EXPECT_EQ(2u, getChannelDifference(1, 0xFFFFFFFF, eCT_SignedInteger)) << "1 and -1";
    EXPECT_EQ(0xFFFFFFFFu, getChannelDifference(0x80000000, 0x7FFFFFFF, eCT_SignedInteger)) << "modulo 2^32";
    EXPECT_EQ(bitsOf(2.5f), getChannelDifference(bitsOf(-0.5f), bitsOf(2.0f), eCT_SignedFloatingPoint));
    EXPECT_EQ(bitsOf(2.5f), getChannelDifference(bitsOf(2.0f), bitsOf(-0.5f), eCT_UnsignedFloatingPoint));
}

TEST(ColourTexts, OfASingleViewAreFourWithEightEmpty)
{
    const ColourTexts expected = {"1", "2", "3", "255", "", "", "", "", "", "", "", ""};
    EXPECT_EQ(expected, getColourTexts({1, 2, 3, 255}, eCT_UnsignedNormalisedByte));
}

TEST(ColourTexts, OfAComparisonAreInputOutputAndDifference)
{
    const ColourTexts expected = {"1", "2", "3", "255", "4", "2", "1", "0", "3", "0", "2", "255"};
    EXPECT_EQ(expected, getColourTexts({1, 2, 3, 255}, {4, 2, 1, 0}, eCT_UnsignedNormalisedByte));
}

TEST(PositionText, TellsThePixel)
{
    EXPECT_EQ("12, 34", getPositionString(makePlace(true)));
    EXPECT_EQ("Position: 12, 34", getPositionText(makePlace(true)));
}

TEST(SurfaceText, TellsOnlyOfWhatThereIsMoreThanOne)
{
    const ReadoutPlace place = makePlace(true);
    EXPECT_EQ("", getSurfaceText(makeHeader(1, 1, 1), place));
    EXPECT_EQ("MIP Map: 1   ", getSurfaceText(makeHeader(2, 1, 1), place));
    EXPECT_EQ("Surface: 2   ", getSurfaceText(makeHeader(1, 3, 1), place));
    EXPECT_EQ("Face: -Y", getSurfaceText(makeHeader(1, 1, 6), place));
    EXPECT_EQ("MIP Map: 1   Surface: 2   Face: -Y", getSurfaceText(makeHeader(2, 3, 6), place));
}

TEST(SurfaceText, NamesTheFaceUnderTheMouseInACube)
{
    ReadoutPlace place = makePlace(true);
    place.eMode = eViewCube;
    EXPECT_EQ("Face: +Z", getSurfaceText(makeHeader(1, 1, 6), place));
    place.eMode = eViewTiled;
    EXPECT_EQ("Face: -Y", getSurfaceText(makeHeader(1, 1, 6), place));
}

TEST(SurfaceText, NamesFacesByTheTexturesOwnOrder)
{
    CMOXTextureHeader header = makeHeader(1, 1, 6);
    header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataCubeMapOrder, "ZzYyXx", 6));
    ReadoutPlace place = makePlace(true);
    place.ui32Face = 0;
    EXPECT_EQ("Face: +Z", getSurfaceText(header, place));
    place.ui32Face = 5;
    EXPECT_EQ("Face: -X", getSurfaceText(header, place));
}

TEST(DockPositionText, IsThePixelAndTheFaceWhileTheMouseIsInside)
{
    EXPECT_EQ("12, 34\n", getDockPositionText(makeHeader(4, 4, 1), makePlace(true)));
    EXPECT_EQ("12, 34\nFace: -Y", getDockPositionText(makeHeader(1, 1, 6), makePlace(true)));
    EXPECT_EQ("\n", getDockPositionText(makeHeader(1, 1, 1), makePlace(false)));
    EXPECT_EQ("\nFace: ", getDockPositionText(makeHeader(1, 1, 6), makePlace(false)));
}
