#include <cmath>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Library/Pixels/PixelSamples.h"
#include "Pixels/CMOXPixelAccessor.h"

using namespace moxtexture;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace
{

CMOXPixelAccessor accessorWith(MOXPixelWord format, EMOXTChannelType eType, std::initializer_list<uint8_t> bytes)
{
    CMOXPixelAccessor accessor(format, eType);
    std::vector<uint8_t> padded(bytes);
    padded.resize(128);
    accessor.setPixel(padded.data());
    return accessor;
}

/// The bytes of a pixel that count.
std::vector<uint8_t> bytesOf(const CMOXPixelAccessor& accessor)
{
    return {accessor.getPixel(), accessor.getPixel() + accessor.getBytes()};
}

std::vector<uint8_t> convert(const CMOXPixelAccessor& source, MOXPixelWord format, EMOXTChannelType eType)
{
    CMOXPixelAccessor target(format, eType);
    EXPECT_TRUE(target.convertFrom(source));
    return bytesOf(target);
}

uint32_t getFlags(MOXPixelWord format)
{
    return CMOXPixelAccessor(format, eCT_UnsignedNormalisedByte).getFlags();
}

} // namespace

TEST(CMOXPixelAccessor, APackedPixelHasItsFirstLetterInTheHighestBits)
{
    // red 17, green 33, blue 5: 10001 100001 00101 is 0x8C25
    const auto accessor = accessorWith(layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort, {0x25, 0x8C});
    EXPECT_EQ(17.0f / 31.0f, accessor.readChannel(eChannelRed));
    EXPECT_EQ(33.0f / 63.0f, accessor.readChannel(eChannelGreen));
    EXPECT_EQ(5.0f / 31.0f, accessor.readChannel(eChannelBlue));
    EXPECT_EQ(11u, accessor.getPlace(0).uiShift);
    EXPECT_EQ(0xF800u, accessor.getPlace(0).ui64Access);
    EXPECT_EQ(0x1Fu, accessor.getPlace(2).ui64Access);
}

TEST(CMOXPixelAccessor, ElementsLieInMemoryInTheOrderOfTheirLetters)
{
    const auto accessor = accessorWith(layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte, {1, 2, 3, 4});
    EXPECT_EQ(1.0f / 255.0f, accessor.readChannel(eChannelBlue));
    EXPECT_EQ(2.0f / 255.0f, accessor.readChannel(eChannelGreen));
    EXPECT_EQ(3.0f / 255.0f, accessor.readChannel(eChannelRed));
    EXPECT_EQ(4.0f / 255.0f, accessor.readChannel(eChannelAlpha));
    EXPECT_EQ(2u, accessor.getPlace(2).ui64Access);
}

TEST(CMOXPixelAccessor, EightBitsUnderALargerTypeAreFieldsInTheOtherOrder)
{
    const auto accessor = accessorWith(layout("xrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger, {1, 2, 3, 4});
    EXPECT_EQ(1.0f / 255.0f, accessor.readChannel(eChannelBlue));
    EXPECT_EQ(3.0f / 255.0f, accessor.readChannel(eChannelRed));
    EXPECT_EQ(4.0f / 255.0f, accessor.readChannel(eChannelUnspecified));
}

TEST(CMOXPixelAccessor, EachPositionByItselfIsAnElementOrAField)
{
    // Red is the element 0 of 16 bits and lies over green and blue, which are fields in the lower half of 32 bits.
    auto accessor = accessorWith(layout("rgb", 16, 8, 8), eCT_UnsignedNormalisedShort, {0x34, 0x12, 0xFF, 0xFF});
    EXPECT_EQ(static_cast<float>(0x1234) / 65535.0f, accessor.readChannel(eChannelRed));
    EXPECT_EQ(static_cast<float>(0x12) / 255.0f, accessor.readChannel(eChannelGreen));
    EXPECT_EQ(static_cast<float>(0x34) / 255.0f, accessor.readChannel(eChannelBlue));
    accessor.writeChannel(eChannelGreen, 1.0f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(0x34, 0xFF, 0xFF, 0xFF));
    accessor.writeChannel(eChannelRed, 0.0f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(0, 0, 0xFF, 0xFF));
}

TEST(CMOXPixelAccessor, AnElementPastTheEndOfThePixelReadsAsZeroAndIsNotWritten)
{
    // Green would be the second element of 16 bits, bytes 2 and 3 of a pixel of three bytes.
    auto accessor = accessorWith(layout("rg", 8, 16), eCT_UnsignedNormalisedShort, {1, 2, 3});
    EXPECT_EQ(0.0f, accessor.readChannel(eChannelGreen));
    accessor.writeChannel(eChannelGreen, 1.0f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(1, 2, 3));
    EXPECT_EQ(0, accessor.getPixel()[3]);
}

TEST(CMOXPixelAccessor, MissingChannelsReadAsZeroButAlphaAndSpareAsOne)
{
    const auto accessor = accessorWith(layout("r", 8), eCT_UnsignedNormalisedByte, {9});
    EXPECT_EQ(0.0f, accessor.readChannel(eChannelGreen));
    EXPECT_EQ(0.0f, accessor.readChannel(eChannelLuminance));
    EXPECT_EQ(0.0f, accessor.readChannel(eChannelNone));
    EXPECT_EQ(0.0f, accessor.readChannel(static_cast<EChannelName>(99)));
    EXPECT_EQ(1.0f, accessor.readChannel(eChannelAlpha));
    EXPECT_EQ(1.0f, accessor.readChannel(eChannelUnspecified));
}

TEST(CMOXPixelAccessor, WritingAMissingChannelDoesNothing)
{
    auto accessor = accessorWith(layout("r", 8), eCT_UnsignedNormalisedByte, {9});
    accessor.writeChannel(eChannelGreen, 1.0f);
    accessor.writeChannel(static_cast<EChannelName>(99), 1.0f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(9));
}

TEST(CMOXPixelAccessor, AnUnsignedByteOf255ReadsAsOneAndBecomes65535)
{
    const auto source = accessorWith(layout("r", 8), eCT_UnsignedByte, {255});
    EXPECT_EQ(1.0f, source.readChannel(eChannelRed));
    EXPECT_THAT(convert(source, layout("r", 16), eCT_UnsignedNormalisedShort), ElementsAre(0xFF, 0xFF));
}

TEST(CMOXPixelAccessor, ASignedByteReadsAsSignAndMagnitude)
{
    const auto source = accessorWith(layout("rg", 8, 8), eCT_SignedNormalisedByte, {0x80, 0xFF});
    EXPECT_EQ(0x80000000u, bitsFromFloat(source.readChannel(eChannelRed)));
    EXPECT_EQ(-127.0f / 126.0f, source.readChannel(eChannelGreen));
}

TEST(CMOXPixelAccessor, FaultsOfALayout)
{
    EXPECT_EQ(0u, getFlags(k_RGBA8));
    EXPECT_EQ(uint32_t{eFaultNameTwice}, getFlags(layout("rr", 8, 8)));
    EXPECT_EQ(uint32_t{eFaultNameWithoutBits}, getFlags(layout("rg", 8, 0)));
    EXPECT_EQ(uint32_t{eFaultBitsWithoutName}, getFlags(layout("rz", 8, 8)));
    EXPECT_EQ(uint32_t{eFaultNameAfterGap}, getFlags(MOXPixelWord('r', 0, 'g', 0, 8, 0, 8, 0)));
    EXPECT_EQ(uint32_t{eFaultPartOfAByte}, getFlags(layout("rgb", 5, 5, 5)));
    EXPECT_EQ(uint32_t{eFaultTooWide}, getFlags(layout("rg", 64, 72)));
    EXPECT_EQ(uint32_t{eFaultBitsWithoutName | eFaultNameAfterGap | eFaultPartOfAByte}, getFlags(layout("?r", 3, 8)));
    EXPECT_EQ(uint32_t{eFaultPartOfAByte | eFaultTooWide}, getFlags(layout("rgba", 255, 255, 255, 255)));
    EXPECT_EQ(0u, getFlags(layout("rgba", 32, 32, 32, 32)));
}

TEST(CMOXPixelAccessor, TheNumbersOfAFaultAreOneTwoFourEightSixteen)
{
    EXPECT_EQ(1, eFaultNameTwice);
    EXPECT_EQ(2, eFaultNameWithoutBits);
    EXPECT_EQ(4, eFaultBitsWithoutName);
    EXPECT_EQ(8, eFaultNameAfterGap);
    EXPECT_EQ(16, eFaultPartOfAByte);
}

TEST(CMOXPixelAccessor, ANumberedFormatHasNoChannelsAndNoBytes)
{
    const CMOXPixelAccessor accessor(ePF_BC1, eCT_UnsignedNormalisedByte);
    EXPECT_EQ(0u, accessor.getFlags());
    EXPECT_EQ(0u, accessor.getChannelCount());
    EXPECT_EQ(0u, accessor.getBytes());
}

TEST(CMOXPixelAccessor, AFaultyLayoutChangesNothing)
{
    const auto source = accessorWith(k_RGBA8, eCT_UnsignedNormalisedByte, {1, 2, 3, 4});
    auto target = accessorWith(layout("rr", 8, 8), eCT_UnsignedNormalisedByte, {7, 8});
    EXPECT_FALSE(target.convertFrom(source));
    EXPECT_THAT(bytesOf(target), ElementsAre(7, 8));
    target.applyColourSpace(eCS_sRGB, eCS_Linear);
    EXPECT_THAT(bytesOf(target), ElementsAre(7, 8));

    auto good = accessorWith(k_RGBA8, eCT_UnsignedNormalisedByte, {1, 2, 3, 4});
    EXPECT_FALSE(good.convertFrom(target));
    EXPECT_THAT(bytesOf(good), ElementsAre(1, 2, 3, 4));
}

TEST(CMOXPixelAccessor, AConversionStartsFromZeroBytes)
{
    const auto source = accessorWith(layout("r", 8), eCT_UnsignedNormalisedByte, {255});
    auto target = accessorWith(layout("r", 8), static_cast<EMOXTChannelType>(14), {9}); // a type that is never written
    EXPECT_TRUE(target.convertFrom(source));
    EXPECT_THAT(bytesOf(target), ElementsAre(0));
}

TEST(CMOXPixelAccessor, ThreeChannelsIntoFourGiveOpaqueAlpha)
{
    const auto source = accessorWith(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, {10, 20, 30});
    EXPECT_THAT(convert(source, k_RGBA8, eCT_UnsignedNormalisedByte), ElementsAre(10, 20, 30, 255));
}

TEST(CMOXPixelAccessor, LuminanceAndIntensityIntoColoursGiveGrey)
{
    const auto luminance = accessorWith(layout("l", 8), eCT_UnsignedNormalisedByte, {77});
    EXPECT_THAT(convert(luminance, layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte), ElementsAre(77, 77, 77));
    const auto intensity = accessorWith(layout("i", 8), eCT_UnsignedNormalisedByte, {78});
    EXPECT_THAT(convert(intensity, k_RGBA8, eCT_UnsignedNormalisedByte), ElementsAre(78, 78, 78, 255));
}

TEST(CMOXPixelAccessor, ColoursIntoLuminanceAreWeighted)
{
    const auto source = accessorWith(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, {200, 100, 50});
    // 0.2126 * 200 + 0.7152 * 100 + 0.0722 * 50 = 42.52 + 71.52 + 3.61 = 117.65
    EXPECT_THAT(convert(source, layout("l", 8), eCT_UnsignedNormalisedByte), ElementsAre(118));
    // 71.52 alone: the weights are not raised for what is missing.
    const auto green = accessorWith(layout("g", 8), eCT_UnsignedNormalisedByte, {100});
    EXPECT_THAT(convert(green, layout("l", 8), eCT_UnsignedNormalisedByte), ElementsAre(72));
}

TEST(CMOXPixelAccessor, ColoursIntoIntensityAreTheirMean)
{
    const auto source = accessorWith(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, {200, 100, 51});
    EXPECT_THAT(convert(source, layout("i", 8), eCT_UnsignedNormalisedByte), ElementsAre(117)); // 351 / 3
    const auto two = accessorWith(layout("rg", 8, 8), eCT_UnsignedNormalisedByte, {200, 100});
    EXPECT_THAT(convert(two, layout("i", 8), eCT_UnsignedNormalisedByte), ElementsAre(150));
    const auto none = accessorWith(layout("a", 8), eCT_UnsignedNormalisedByte, {200});
    EXPECT_THAT(convert(none, layout("i", 8), eCT_UnsignedNormalisedByte), ElementsAre(0));
}

TEST(CMOXPixelAccessor, LuminanceAndIntensityStandInForEachOther)
{
    const auto luminance = accessorWith(layout("l", 8), eCT_UnsignedNormalisedByte, {40});
    const auto intensity = accessorWith(layout("i", 8), eCT_UnsignedNormalisedByte, {50});
    const auto both = accessorWith(layout("li", 8, 8), eCT_UnsignedNormalisedByte, {60, 70});
    const auto lrgb = layout("lrgb", 8, 8, 8, 8);
    const auto irgb = layout("irgb", 8, 8, 8, 8);
    const auto type = eCT_UnsignedNormalisedByte;
    EXPECT_THAT(convert(luminance, irgb, type), ElementsAre(40, 40, 40, 40));
    EXPECT_THAT(convert(intensity, lrgb, type), ElementsAre(50, 50, 50, 50));
    EXPECT_THAT(convert(both, lrgb, type), ElementsAre(60, 60, 60, 60));
    EXPECT_THAT(convert(both, irgb, type), ElementsAre(70, 70, 70, 70));
    EXPECT_THAT(convert(both, layout("rgb", 8, 8, 8), type), ElementsAre(70, 70, 70)); // intensity goes before luminance here
}

TEST(CMOXPixelAccessor, ATargetWithBothGreysGetsOnlyOne)
{
    const auto li = layout("li", 8, 8);
    const auto type = eCT_UnsignedNormalisedByte;
    EXPECT_THAT(convert(accessorWith(layout("l", 8), type, {40}), li, type), ElementsAre(40, 0));
    EXPECT_THAT(convert(accessorWith(layout("i", 8), type, {50}), li, type), ElementsAre(0, 50));
    EXPECT_THAT(convert(accessorWith(layout("rgb", 8, 8, 8), type, {100, 100, 100}), li, type), ElementsAre(100, 0));
}

TEST(CMOXPixelAccessor, GreyFillsOnlyTheColoursThatTheSourceHasNot)
{
    const auto source = accessorWith(layout("lg", 8, 8), eCT_UnsignedNormalisedByte, {40, 90});
    EXPECT_THAT(convert(source, layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte), ElementsAre(40, 90, 40));
}

TEST(CMOXPixelAccessor, ColoursThatNothingSuppliesAreZero)
{
    const auto source = accessorWith(layout("r", 8), eCT_UnsignedNormalisedByte, {40});
    EXPECT_THAT(convert(source, k_RGBA8, eCT_UnsignedNormalisedByte), ElementsAre(40, 0, 0, 255));
}

TEST(CMOXPixelAccessor, AlphaAndTheSpareChannelStandInForEachOther)
{
    const auto type = eCT_UnsignedNormalisedByte;
    const auto alpha = accessorWith(k_RGBA8, type, {1, 2, 3, 4});
    const auto spare = accessorWith(layout("rgbx", 8, 8, 8, 8), type, {1, 2, 3, 5});
    const auto both = accessorWith(layout("ax", 8, 8), type, {6, 7});
    const auto none = accessorWith(layout("r", 8), type, {1});
    EXPECT_THAT(convert(alpha, layout("ax", 8, 8), type), ElementsAre(4, 4));
    EXPECT_THAT(convert(spare, layout("ax", 8, 8), type), ElementsAre(5, 5));
    EXPECT_THAT(convert(both, layout("xa", 8, 8), type), ElementsAre(7, 6));
    EXPECT_THAT(convert(none, layout("ax", 8, 8), type), ElementsAre(255, 255));
}

TEST(CMOXPixelAccessor, Full32BitIntegersSaturate)
{
    const auto one = accessorWith(layout("r", 8), eCT_UnsignedNormalisedByte, {255});
    EXPECT_THAT(convert(one, layout("r", 32), eCT_UnsignedNormalisedInteger), ElementsAre(0xFF, 0xFF, 0xFF, 0xFF));
    EXPECT_THAT(convert(one, layout("r", 32), eCT_SignedNormalisedInteger), ElementsAre(0xFF, 0xFF, 0xFF, 0x7F));
    const auto two = accessorWith(layout("r", 32), eCT_SignedFloatingPoint, {0, 0, 0, 0x40});
    EXPECT_THAT(convert(two, layout("r", 32), eCT_UnsignedNormalisedInteger), ElementsAre(0xFF, 0xFF, 0xFF, 0xFF));
    EXPECT_THAT(convert(two, layout("r", 32), eCT_SignedNormalisedInteger), ElementsAre(0xFF, 0xFF, 0xFF, 0x7F));
}

TEST(CMOXPixelAccessor, MinusOneIsTheSignAlone)
{
    const auto source = accessorWith(layout("r", 32), eCT_SignedFloatingPoint, {0, 0, 0x80, 0xBF});
    EXPECT_THAT(convert(source, layout("r", 8), eCT_SignedNormalisedByte), ElementsAre(0x80));
    EXPECT_THAT(convert(source, layout("r", 16), eCT_SignedNormalisedShort), ElementsAre(0, 0x80));
    EXPECT_THAT(convert(source, layout("r", 32), eCT_SignedNormalisedInteger), ElementsAre(0, 0, 0, 0x80));
    EXPECT_THAT(convert(source, layout("r", 8), eCT_UnsignedNormalisedByte), ElementsAre(0));
}

TEST(CMOXPixelAccessor, ANegativeUnsignedFloatSetsTheLowestBitOfItsNeighbour)
{
    const auto packed = layout("bgr", 10, 11, 11); // red lowest
    CMOXPixelAccessor target(packed, eCT_UnsignedFloatingPoint);
    target.writeChannel(eChannelBlue, 1.0f);
    target.writeChannel(eChannelGreen, 1.0f);
    target.writeChannel(eChannelRed, -1.0f);
    // 15 << 5 << 22 is 0x78000000, 15 << 6 << 11 is 0x1E0000, 15 << 6 is 0x3C0, and the sign of red is 0x800.
    EXPECT_THAT(bytesOf(target), ElementsAre(0xC0, 0x0B, 0x1E, 0x78));
    EXPECT_EQ(1.0f + 1.0f / 64, target.readChannel(eChannelGreen));
}

TEST(CMOXPixelAccessor, TheSignOfTheHighestFieldFallsOutOfThePixel)
{
    CMOXPixelAccessor target(layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint);
    target.writeChannel(eChannelBlue, -1.0f);
    const std::vector<uint8_t> raw(target.getPixel(), target.getPixel() + 16);
    EXPECT_THAT(raw, ElementsAre(0, 0, 0, 0x78, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(CMOXPixelAccessor, ALargeSignedFieldReachesIntoItsNeighbour)
{
    CMOXPixelAccessor target(layout("rg", 4, 4), eCT_SignedNormalisedByte);
    target.writeChannel(eChannelGreen, 3.0f); // 3 * 7 = 21, 0x15
    EXPECT_THAT(bytesOf(target), ElementsAre(0x15));
    target.writeChannel(eChannelGreen, 0.0f); // clears its own field only
    EXPECT_THAT(bytesOf(target), ElementsAre(0x10));
}

TEST(CMOXPixelAccessor, ChannelsAreWrittenInStorageOrder)
{
    // Red overlaps as the first 16 bits; green and blue come after it and stay.
    const auto source = accessorWith(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, {255, 0, 0});
    EXPECT_THAT(convert(source, layout("rgb", 16, 8, 8), eCT_UnsignedNormalisedShort), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(convert(source, layout("gbr", 8, 8, 16), eCT_UnsignedNormalisedShort), ElementsAre(0, 0, 0, 0)); // element 2: outside
    const auto green = accessorWith(layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte, {0, 255, 0});
    EXPECT_THAT(convert(green, layout("gr", 8, 8), eCT_UnsignedNormalisedShort), ElementsAre(0, 255));
    EXPECT_THAT(convert(green, layout("rgb", 16, 8, 8), eCT_UnsignedNormalisedShort), ElementsAre(0, 255, 0, 0));
}

TEST(CMOXPixelAccessor, UnsignedFloatsOf32BitsHoldNothing)
{
    auto accessor = accessorWith(layout("r", 32), eCT_UnsignedFloatingPoint, {0, 0, 0x80, 0x3F});
    EXPECT_EQ(0.0f, accessor.readChannel(eChannelRed));
    accessor.writeChannel(eChannelRed, 0.5f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(0, 0, 0x80, 0x3F));
}

TEST(CMOXPixelAccessor, BitsAbove64ReadAsZeroAndAreNotWritten)
{
    // 72 bits: red in bits 48 to 71, of which 48 to 63 are reached.
    auto accessor =
        accessorWith(layout("rgb", 24, 24, 24), eCT_UnsignedNormalisedInteger, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(65535.0f / 16777215.0f, accessor.readChannel(eChannelRed));
    EXPECT_EQ(1.0f, accessor.readChannel(eChannelBlue));
    accessor.writeChannel(eChannelRed, 0.0f);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0xFF));

    // 128 bits of fields: the first two lie wholly above.
    auto wide = accessorWith(k_RGBA32, eCT_UnsignedNormalisedShort, {});
    wide.writeChannel(eChannelRed, 1.0f);
    wide.writeChannel(eChannelGreen, 1.0f);
    EXPECT_THAT(bytesOf(wide), ElementsAreArray(std::vector<uint8_t>(16, 0)));
    wide.writeChannel(eChannelAlpha, 1.0f);
    EXPECT_EQ(1.0f, wide.readChannel(eChannelAlpha));
    EXPECT_EQ(0.0f, wide.readChannel(eChannelRed));
}

TEST(CMOXPixelAccessor, TheColourSpaceStepWorksOnTheQuantisedPixel)
{
    // 8 bits of linear 0.5 are 128; 128/255 to the power 0.41666666 times 1.0556 less 0.0556 is 0.73647, times 255 187.8.
    const auto source = accessorWith(layout("r", 32), eCT_SignedFloatingPoint, {0, 0, 0, 0x3F});
    CMOXPixelAccessor target(layout("r", 4), eCT_UnsignedNormalisedByte);
    CMOXPixelAccessor bytes(layout("ra", 8, 8), eCT_UnsignedNormalisedByte);
    ASSERT_TRUE(bytes.convertFrom(source));
    EXPECT_THAT(bytesOf(bytes), ElementsAre(128, 255));
    bytes.applyColourSpace(eCS_sRGB, eCS_Linear);
    EXPECT_THAT(bytesOf(bytes), ElementsAre(188, 255));

    // 4 bits of 0.5 are 8, 8/15 = 0.5333, whose curve is 0.75675, times 15 11.35: from 0.5 itself it would be 11.03.
    CMOXPixelAccessor nibbles(layout("ra", 4, 4), eCT_UnsignedNormalisedByte);
    ASSERT_TRUE(nibbles.convertFrom(source));
    nibbles.applyColourSpace(eCS_sRGB, eCS_Linear);
    EXPECT_THAT(bytesOf(nibbles), ElementsAre(0xBF));
}

TEST(CMOXPixelAccessor, TheColourSpaceStepLeavesAlphaAndTheSpareChannel)
{
    auto accessor = accessorWith(layout("rlax", 8, 8, 8, 8), eCT_UnsignedNormalisedByte, {128, 128, 128, 128});
    accessor.applyColourSpace(eCS_sRGB, eCS_Linear);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(188, 188, 128, 128));
    // 188/255: ((0.737255 + 0.0556) / 1.0556) to the power 2.4 is 0.503124, times 255 128.3
    accessor.applyColourSpace(eCS_Linear, eCS_sRGB);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(128, 128, 128, 128));
    accessor.applyColourSpace(eCS_Linear, eCS_Linear);
    accessor.applyColourSpace(static_cast<EMOXTColourSpace>(7), eCS_Linear);
    EXPECT_THAT(bytesOf(accessor), ElementsAre(128, 128, 128, 128));
}

TEST(CMOXPixelAccessor, NotANumberBecomesZeroInIntegers)
{
    const auto source = accessorWith(layout("r", 32), eCT_SignedFloatingPoint, {0, 0, 0xC0, 0x7F});
    EXPECT_THAT(convert(source, layout("r", 8), eCT_UnsignedNormalisedByte), ElementsAre(0));
    EXPECT_THAT(convert(source, layout("r", 16), eCT_SignedShort), ElementsAre(0, 0));
    EXPECT_THAT(convert(source, layout("r", 32), eCT_SignedFloatingPoint), ElementsAre(0, 0, 0xC0, 0x7F)); // its bits as they are
}

TEST(CMOXPixelAccessor, AnyWordAndTypeIsReadAndWrittenWithinItsBytes)
{
    testsupport::CSeededRandom random(7);
    constexpr char acLetters[] = {'r', 'g', 'b', 'a', 'l', 'i', 'x', '\0', 'z', '\x80'};
    const std::vector<uint8_t> bytes(128, 0xA5);
    for (int i = 0; i < 20000; ++i)
    {
        const auto letter = [&] { return acLetters[random.below(10)]; };
        const auto bits = [&] { return static_cast<uint8_t>(random.below(random.below(2) != 0 ? 33 : 256)); };
        const MOXPixelWord format(letter(), letter(), letter(), letter(), bits(), bits(), bits(), bits());
        const auto eType = static_cast<EMOXTChannelType>(random.below(8) != 0 ? random.below(16) : random.next32());
        CMOXPixelAccessor accessor(format, eType);
        accessor.setPixel(bytes.data());
        for (uint32_t uiName = 0; uiName < 9; ++uiName)
        {
            const auto eName = static_cast<EChannelName>(uiName);
            const float fValue = accessor.readChannel(eName);
            accessor.writeChannel(eName, fValue * 3.0f - 1.0f);
            accessor.writeChannel(eName, -std::numeric_limits<float>::infinity());
        }
        accessor.applyColourSpace(eCS_sRGB, eCS_Linear);
        for (uint32_t uiByte = accessor.getBytes(); uiByte < 16; ++uiByte)
            ASSERT_EQ(0, accessor.getPixel()[uiByte]) << PixelKind{format, eType};
    }
}
