#include <cstring>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Core/ByteOrder.h"
#include "Library/Pixels/PixelSamples.h"
#include "Pixels/ConversionRoute.h"
#include "Pixels/SurfacePump.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;

namespace
{

struct Shape
{
    uint32_t uiWidth, uiHeight, uiDepth, uiLevels, uiMembers, uiFaces;
};

constexpr Shape k_OnePixel = {1, 1, 1, 1, 1, 1};

CMOXTexture makeTexture(const PixelKind& kind, const Shape& shape)
{
    return CMOXTexture(CMOXTextureHeader(kind.format, shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels, shape.uiMembers,
                                         shape.uiFaces, eCS_Linear, kind.eType, false));
}

void fill(CMOXTexture& texture, const std::vector<uint8_t>& bytes)
{
    if (texture.getBlockSize() != 0)
        std::memcpy(texture.getDataPtr(), bytes.data(), texture.getBlockSize());
}

std::vector<uint8_t> bytesOf(const CMOXTexture& texture)
{
    const uint8_t* pData = texture.getDataPtr();
    return pData == nullptr ? std::vector<uint8_t>() : std::vector<uint8_t>(pData, pData + texture.getBlockSize());
}

/// Both ways on the same source; they must agree in bytes and count. Target blocks start as 0xEE, so that what is left out shows.
void expectEqualWays(const CMOXTexture& source, const PixelKind& from, const PixelKind& to, const Shape& shape, EMOXTColourSpace eNewSpace,
                     EMOXTColourSpace eOldSpace)
{
    CMOXTexture expected = makeTexture(to, shape);
    CMOXTexture fast = expected;
    for (CMOXTexture* pTexture : {&expected, &fast})
        if (pTexture->getBlockSize() != 0)
            std::memset(pTexture->getDataPtr(), 0xEE, pTexture->getBlockSize());
    const uint64_t ui64Expected = convertSurfacesReference(source, expected, from.makeAccessor(), to.makeAccessor(), eNewSpace, eOldSpace);
    const uint64_t ui64Fast = convertSurfaces(source, fast, from.makeAccessor(), to.makeAccessor(), eNewSpace, eOldSpace);
    ASSERT_EQ(ui64Expected, ui64Fast) << from << " to " << to;
    ASSERT_TRUE(bytesOf(expected) == bytesOf(fast)) << from << " to " << to << ", space " << eOldSpace << " to " << eNewSpace;
}

void expectEqualWaysInAllSpaces(const CMOXTexture& source, const PixelKind& from, const PixelKind& to, const Shape& shape)
{
    expectEqualWays(source, from, to, shape, eCS_Linear, eCS_Linear);
    expectEqualWays(source, from, to, shape, eCS_sRGB, eCS_Linear);
    expectEqualWays(source, from, to, shape, eCS_Linear, eCS_sRGB);
}

std::vector<PixelKind> getAllKinds()
{
    std::vector<PixelKind> kinds = getOfferedKinds();
    for (const auto& more : {getOddKinds(), getFaultyKinds()})
        kinds.insert(kinds.end(), more.begin(), more.end());
    return kinds;
}

/// One pixel through convertSurfaces().
std::vector<uint8_t> convertPixel(const PixelKind& from, const PixelKind& to, const std::vector<uint8_t>& bytes,
                                  EMOXTColourSpace eNewSpace = eCS_Linear)
{
    CMOXTexture source = makeTexture(from, k_OnePixel);
    fill(source, bytes);
    CMOXTexture target = makeTexture(to, k_OnePixel);
    EXPECT_EQ(target.getDataSize(), convertSurfaces(source, target, from.makeAccessor(), to.makeAccessor(), eNewSpace, eCS_Linear));
    return bytesOf(target);
}

/// Red from luminance that counts from 1 through two levels of 2 and 1 pixels, two members and three faces.
std::vector<uint8_t> convertCounted(const Shape& targetShape, decltype(convertSurfaces)* pConvert)
{
    const PixelKind luminance = {layout("l", 8), eCT_UnsignedNormalisedByte};
    const PixelKind red = {layout("r", 8), eCT_UnsignedNormalisedByte};
    CMOXTexture source = makeTexture(luminance, {2, 1, 1, 2, 2, 3});
    fill(source, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18});
    CMOXTexture target = makeTexture(red, targetShape);
    pConvert(source, target, luminance.makeAccessor(), red.makeAccessor(), eCS_Linear, eCS_Linear);
    return bytesOf(target);
}

constexpr PixelKind k_RGBA8Kind = {k_RGBA8, eCT_UnsignedNormalisedByte};
constexpr PixelKind k_RGBA32Float = {k_RGBA32, eCT_SignedFloatingPoint};

} // namespace

TEST(SurfacePump, EveryPairOfLayoutsGivesTheReferenceBytes)
{
    constexpr Shape shape = {37, 9, 1, 1, 1, 1}; // more than a block of pixels and than the codes of a byte
    for (const PixelKind& from : getAllKinds())
    {
        CMOXTexture source = makeTexture(from, shape);
        fill(source, makeHardBytes(source.getBlockSize(), from.format.getWord() + from.eType));
        for (const PixelKind& to : getAllKinds())
            ASSERT_NO_FATAL_FAILURE(expectEqualWaysInAllSpaces(source, from, to, shape));
    }
}

TEST(SurfacePump, ElementsOnBothSidesGiveTheReferenceBytesOnEveryInstructionSet)
{
    const std::vector<PixelKind> kinds = {
        k_RGBA8Kind,
        {layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("argb", 8, 8, 8, 8), eCT_UnsignedByte},
        {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("bgrx", 8, 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("l", 8), eCT_UnsignedNormalisedByte},
        {layout("la", 8, 8), eCT_UnsignedNormalisedByte},
        {layout("a", 8), eCT_UnsignedNormalisedByte},
        {layout("r", 8), eCT_UnsignedNormalisedByte},
        {layout("rg", 8, 8), eCT_UnsignedNormalisedByte},
        {k_RGBA16, eCT_UnsignedNormalisedShort},
        {layout("bgr", 16, 16, 16), eCT_UnsignedShort},
        {k_RGBA16, eCT_SignedFloatingPoint},
        {layout("la", 16, 16), eCT_SignedFloatingPoint},
        k_RGBA32Float,
        {layout("rgb", 32, 32, 32), eCT_SignedFloatingPoint},
        {layout("a", 32), eCT_SignedFloatingPoint},
    };
    constexpr Shape shape = {61, 5, 1, 1, 1, 1};
    for (const PixelKind& from : kinds)
    {
        CMOXTexture source = makeTexture(from, shape);
        fill(source, makeHardBytes(source.getBlockSize(), 99));
        for (const PixelKind& to : kinds)
            forEachInstructionSet([&] { ASSERT_NO_FATAL_FAILURE(expectEqualWaysInAllSpaces(source, from, to, shape)); });
    }
}

TEST(SurfacePump, EveryCodeOfUpToSixteenBitsGivesTheReferenceBytes)
{
    const PixelKind aFrom[] = {
        {layout("r", 16), eCT_UnsignedNormalisedShort},
        {layout("r", 16), eCT_SignedShort},
        {layout("l", 16), eCT_SignedFloatingPoint},
        {layout("i", 16), eCT_UnsignedFloatingPoint},
        {layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort},
        {layout("argb", 1, 5, 5, 5), eCT_SignedNormalisedShort},
        {layout("argb", 8, 3, 3, 2), eCT_UnsignedNormalisedByte},
        {layout("rg", 8, 8), eCT_SignedNormalisedByte},
    };
    const PixelKind aTo[] = {
        k_RGBA8Kind,
        {k_RGBA8, eCT_SignedNormalisedByte},
        {k_RGBA16, eCT_UnsignedNormalisedShort},
        {layout("r", 16), eCT_SignedNormalisedShort},
        {layout("r", 16), eCT_SignedFloatingPoint},
        {layout("l", 16), eCT_UnsignedFloatingPoint},
        {layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint},
        {layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort},
        {layout("rgb", 5, 6, 5), eCT_SignedNormalisedShort},
        {layout("r", 32), eCT_SignedFloatingPoint},
        {layout("argb", 2, 10, 10, 10), eCT_UnsignedNormalisedInteger},
    };
    constexpr Shape shape = {256, 256, 1, 1, 1, 1};
    std::vector<uint8_t> codes(2 * 65536);
    for (size_t i = 0; i < 65536; ++i)
        storeLE(&codes[2 * i], static_cast<uint16_t>(i));
    for (const PixelKind& from : aFrom)
    {
        CMOXTexture source = makeTexture(from, shape);
        fill(source, codes);
        for (const PixelKind& to : aTo)
            ASSERT_NO_FATAL_FAILURE(expectEqualWaysInAllSpaces(source, from, to, shape));
    }
}

TEST(SurfacePump, EveryShapeGivesTheReferenceBytes)
{
    constexpr Shape aShapes[] = {k_OnePixel,           {3, 1, 1, 1, 1, 1}, {1, 3, 1, 2, 1, 1}, {5, 4, 3, 3, 1, 1},
                                 {16, 16, 1, 5, 1, 6}, {7, 3, 1, 3, 5, 1}, {4, 4, 1, 3, 2, 6}, {257, 1, 1, 9, 1, 1}};
    const PixelKind aKinds[] = {k_RGBA8Kind,
                                k_RGBA32Float,
                                {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte},
                                {layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort},
                                {layout("l", 8), eCT_SignedNormalisedByte},
                                {layout("rg", 5, 5), eCT_UnsignedNormalisedShort},   // pixels of ten bits
                                {layout("rg", 64, 72), eCT_UnsignedNormalisedShort}, // pixels of 17 bytes
                                {layout("rg", 2, 1), eCT_UnsignedNormalisedShort}};  // pixels of less than a byte
    for (const Shape& shape : aShapes)
        for (const PixelKind& from : aKinds)
        {
            CMOXTexture source = makeTexture(from, shape);
            fill(source, makeHardBytes(source.getBlockSize(), 21));
            for (const PixelKind& to : aKinds)
                ASSERT_NO_FATAL_FAILURE(expectEqualWaysInAllSpaces(source, from, to, shape));
        }
}

TEST(SurfacePump, AnyWordsAndTypesGiveTheReferenceBytes)
{
    testsupport::CSeededRandom random(31);
    constexpr char acLetters[] = {'r', 'g', 'b', 'a', 'l', 'i', 'x', '\0', 'q'};
    const auto makeKind = [&]
    {
        uint8_t auiBits[4];
        char acNames[4];
        const uint32_t uiCount = 1 + random.below(4);
        const uint32_t uiStyle = random.below(4);
        for (uint32_t i = 0; i < 4; ++i)
        {
            constexpr uint8_t auiUsual[] = {8, 16, 32};
            const uint32_t uiAny = uiStyle == 0 ? random.below(256) : 1 + random.below(16);
            auiBits[i] = uiStyle == 3 ? auiUsual[random.below(3)] : static_cast<uint8_t>(uiAny);
            acNames[i] = uiStyle == 0 ? acLetters[random.below(9)] : acLetters[(random.below(7))];
            if (i >= uiCount)
                acNames[i] = 0, auiBits[i] = 0;
        }
        if (uiStyle == 1) // whole bytes, so that most of them are good
        {
            const int iRest = (auiBits[0] + auiBits[1] + auiBits[2] + auiBits[3]) % 8;
            auiBits[0] = static_cast<uint8_t>(auiBits[0] + (8 - iRest) % 8);
        }
        const auto eType = static_cast<EMOXTChannelType>(random.below(15));
        return PixelKind{MOXPixelWord(acNames[0], acNames[1], acNames[2], acNames[3], auiBits[0], auiBits[1], auiBits[2], auiBits[3]),
                         eType};
    };
    constexpr Shape shape = {19, 17, 1, 2, 1, 1};
    uint32_t uiGood = 0;
    for (int i = 0; i < 3000; ++i)
    {
        const PixelKind from = makeKind();
        const PixelKind to = makeKind();
        uiGood += from.makeAccessor().getFlags() == 0 && to.makeAccessor().getFlags() == 0 ? 1 : 0;
        CMOXTexture source = makeTexture(from, shape);
        fill(source, makeHardBytes(source.getBlockSize(), static_cast<uint64_t>(i)));
        ASSERT_NO_FATAL_FAILURE(expectEqualWays(source, from, to, shape, random.below(2) != 0 ? eCS_sRGB : eCS_Linear,
                                                random.below(2) != 0 ? eCS_sRGB : eCS_Linear));
    }
    EXPECT_GT(uiGood, 300u);
}

TEST(SurfacePump, CommonPairsHaveARouteOfTheirOwn)
{
    const auto hasRoute = [](auto pMake, const PixelKind& from, const PixelKind& to, EColourMapping eMapping)
    {
        const ConversionPlan plan(from.makeAccessor(), to.makeAccessor(), eMapping);
        return pMake(plan, 65536) != nullptr;
    };
    const PixelKind rgb565 = {layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort};
    const PixelKind luminance = {layout("l", 8), eCT_UnsignedNormalisedByte};
    EXPECT_TRUE(hasRoute(makeElementRoute, k_RGBA8Kind, k_RGBA32Float, EColourMapping::eNone));
    EXPECT_TRUE(hasRoute(makeElementRoute, luminance, k_RGBA8Kind, EColourMapping::eNone));
    EXPECT_TRUE(hasRoute(makeTableRoute, k_RGBA8Kind, rgb565, EColourMapping::eNone));
    EXPECT_TRUE(hasRoute(makeTableRoute, rgb565, k_RGBA8Kind, EColourMapping::eNone));
    EXPECT_TRUE(hasRoute(makeTableRoute, k_RGBA8Kind, k_RGBA8Kind, EColourMapping::eLinearToSRGB));
    EXPECT_FALSE(hasRoute(makeElementRoute, k_RGBA8Kind, luminance, EColourMapping::eNone)); // a sum of channels
    EXPECT_TRUE(hasRoute(makePlaneRoute, k_RGBA8Kind, luminance, EColourMapping::eNone));
    // Negative values set a bit of the next channel: no table by channel.
    const PixelKind half = {k_RGBA16, eCT_SignedFloatingPoint};
    const PixelKind packedFloat = {layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint};
    EXPECT_FALSE(hasRoute(makeTableRoute, half, packedFloat, EColourMapping::eNone));
    EXPECT_TRUE(hasRoute(makePlaneRoute, half, packedFloat, EColourMapping::eNone));
}

TEST(SurfacePump, ReturnsTheBytesOfAllTargetPixels)
{
    constexpr Shape shape = {4, 4, 1, 3, 2, 6}; // 16 + 4 + 1 pixels, 12 times
    const PixelKind rgb = {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte};
    const CMOXTexture source = makeTexture(k_RGBA8Kind, shape);
    CMOXTexture target = makeTexture(rgb, shape);
    EXPECT_EQ(21u * 12 * 3, convertSurfaces(source, target, k_RGBA8Kind.makeAccessor(), rgb.makeAccessor(), eCS_Linear, eCS_Linear));
    EXPECT_EQ(21u * 12 * 3, target.getDataSize());
}

TEST(SurfacePump, UnsignedBytesBecomeUnsignedShorts)
{
    EXPECT_THAT(convertPixel({layout("r", 8), eCT_UnsignedByte}, {layout("r", 16), eCT_UnsignedNormalisedShort}, {255}),
                ElementsAre(0xFF, 0xFF));
}

TEST(SurfacePump, ThreeChannelsBecomeOpaque)
{
    EXPECT_THAT(convertPixel({layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte}, k_RGBA8Kind, {1, 2, 3}), ElementsAre(1, 2, 3, 255));
}

TEST(SurfacePump, LuminanceBecomesGreyAndColoursBecomeLuminanceOrTheirMean)
{
    const PixelKind rgb = {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte};
    const PixelKind luminance = {layout("l", 8), eCT_UnsignedNormalisedByte};
    const PixelKind intensity = {layout("i", 8), eCT_UnsignedNormalisedByte};
    EXPECT_THAT(convertPixel(luminance, rgb, {99}), ElementsAre(99, 99, 99));
    EXPECT_THAT(convertPixel(rgb, luminance, {200, 100, 50}), ElementsAre(118)); // 42.52 + 71.52 + 3.61
    EXPECT_THAT(convertPixel(rgb, intensity, {200, 100, 51}), ElementsAre(117));
}

TEST(SurfacePump, HalfOfLinearLightBecomes188)
{
    // 128/255 to the power 0.41666666 times 1.0556 less 0.0556 is 0.73647, times 255 187.8; alpha stays.
    EXPECT_THAT(convertPixel(k_RGBA8Kind, k_RGBA8Kind, {128, 0, 255, 128}, eCS_sRGB), ElementsAre(188, 0, 255, 128));
}

TEST(SurfacePump, ALetterTwiceConvertsNothing)
{
    EXPECT_THAT(convertPixel({layout("rr", 8, 8), eCT_UnsignedNormalisedByte}, k_RGBA8Kind, {1, 2}), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(convertPixel(k_RGBA8Kind, {layout("rr", 8, 8), eCT_UnsignedNormalisedByte}, {1, 2, 3, 4}), ElementsAre(0, 0));
}

TEST(SurfacePump, FaultyPixelsTakeWhatTheAccessorLastHeldInEverySpace)
{
    const PixelKind twice = {layout("rr", 8, 8), eCT_UnsignedNormalisedByte};
    constexpr Shape shape = {2, 1, 1, 1, 1, 1};
    const CMOXTexture source = makeTexture(twice, shape);
    CMOXTexture target = makeTexture(k_RGBA8Kind, shape);
    CMOXPixelAccessor held = k_RGBA8Kind.makeAccessor();
    const uint8_t aui8Held[] = {10, 20, 30, 40};
    held.setPixel(aui8Held);
    EXPECT_EQ(8u, convertSurfaces(source, target, twice.makeAccessor(), held, eCS_sRGB, eCS_Linear));
    EXPECT_THAT(bytesOf(target), ElementsAre(10, 20, 30, 40, 10, 20, 30, 40));
}

TEST(SurfacePump, BytesBeyondSixteenOfAWidePixelAreZero)
{
    const PixelKind wide = {layout("rgba", 40, 40, 40, 40), eCT_UnsignedInteger}; // 20 bytes
    constexpr Shape shape = {3, 1, 1, 1, 1, 1};
    const CMOXTexture source = makeTexture(k_RGBA8Kind, shape);
    CMOXTexture target = makeTexture(wide, shape);
    std::memset(target.getDataPtr(), 0xEE, target.getBlockSize());
    EXPECT_EQ(60u, convertSurfaces(source, target, k_RGBA8Kind.makeAccessor(), wide.makeAccessor(), eCS_Linear, eCS_Linear));
    EXPECT_THAT(bytesOf(target), Each(0));
}

TEST(SurfacePump, SurfacesWithNothingBetweenThemKeepTheirPlaces)
{
    // Two levels of 2 and 1 pixels, two members, three faces: 12 pixels, then 6.
    constexpr Shape shape = {2, 1, 1, 2, 2, 3};
    for (const auto pConvert : {convertSurfaces, convertSurfacesReference})
        EXPECT_THAT(convertCounted(shape, pConvert), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18));
}

TEST(SurfacePump, ATargetOfFewerFacesTakesEachFromItsMemberAndLevel)
{
    // Of three faces two: 5 6 and 11 12 are left out of the first level, 15 and 18 of the second.
    for (const auto pConvert : {convertSurfaces, convertSurfacesReference})
        EXPECT_THAT(convertCounted({2, 1, 1, 2, 2, 2}, pConvert), ElementsAre(1, 2, 3, 4, 7, 8, 9, 10, 13, 14, 16, 17));
}

TEST(SurfacePump, ATargetOfLargerSurfacesKeepsTheRestOfEach)
{
    // Three pixels wide, of which two come; the second level has one pixel in both.
    for (const auto pConvert : {convertSurfaces, convertSurfacesReference})
        EXPECT_THAT(convertCounted({3, 1, 1, 2, 2, 3}, pConvert),
                    ElementsAre(1, 2, 0, 3, 4, 0, 5, 6, 0, 7, 8, 0, 9, 10, 0, 11, 12, 0, 13, 14, 15, 16, 17, 18));
}

TEST(SurfacePump, ATargetOfAnotherShapeIsFilledAsFarAsItGoes)
{
    CMOXTexture source = makeTexture(k_RGBA8Kind, {4, 4, 1, 3, 2, 6});
    fill(source, std::vector<uint8_t>(source.getBlockSize(), 7));
    CMOXTexture target = makeTexture(k_RGBA8Kind, {3, 1, 1, 2, 3, 1}); // levels of 3 and 1 pixels, members 0 and 1 of which there are
    EXPECT_EQ((3u + 1) * 2 * 4,
              convertSurfaces(source, target, k_RGBA8Kind.makeAccessor(), k_RGBA8Kind.makeAccessor(), eCS_Linear, eCS_Linear));
    for (uint32_t uiMember = 0; uiMember < 3; ++uiMember)
        for (uint32_t uiLevel = 0; uiLevel < 2; ++uiLevel)
            EXPECT_EQ(uiMember < 2 ? 7 : 0, *target.getDataPtr(uiLevel, uiMember)) << uiMember << " " << uiLevel;
}

TEST(SurfacePump, TexturesWithoutDataAreLeft)
{
    const CMOXTexture nothing;
    CMOXTexture target = makeTexture(k_RGBA8Kind, k_OnePixel);
    CMOXTexture alsoNothing;
    const CMOXPixelAccessor accessor = k_RGBA8Kind.makeAccessor();
    EXPECT_EQ(0u, convertSurfaces(nothing, target, accessor, accessor, eCS_sRGB, eCS_Linear));
    EXPECT_EQ(0u, convertSurfaces(target, alsoNothing, accessor, accessor, eCS_sRGB, eCS_Linear));
}

TEST(SurfacePump, AccessorsLargerThanTheirTexturesStayInside)
{
    constexpr Shape shape = {4, 1, 1, 1, 1, 1};
    const PixelKind byte = {layout("r", 8), eCT_UnsignedNormalisedByte};
    const CMOXTexture source = makeTexture(byte, shape);  // 4 bytes, one pixel of the accessor's
    CMOXTexture target = makeTexture(k_RGBA8Kind, shape); // 16 bytes
    EXPECT_EQ(4u, convertSurfaces(source, target, k_RGBA8Kind.makeAccessor(), k_RGBA8Kind.makeAccessor(), eCS_Linear, eCS_Linear));
    EXPECT_EQ(16u, convertSurfaces(source, target, byte.makeAccessor(), k_RGBA32Float.makeAccessor(), eCS_Linear, eCS_Linear));
}
