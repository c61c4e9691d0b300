#include "Codecs/ETC/EacCompressBlock.h"

#include <gtest/gtest.h>

#include <cstring>

#include "ReferenceEacCompressBlock.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;
using testsupport::CSeededRandom;

using EacPixels = std::array<uint16_t, 16>;
using EacBlock = std::array<uint8_t, 8>;
using Encoder = void (*)(const uint16_t (&)[16], uint8_t*, bool);

EacBlock encode(Encoder pEncode, const EacPixels& pixels, bool bSigned)
{
    uint16_t aui16Pixels[16];
    std::memcpy(aui16Pixels, pixels.data(), sizeof(aui16Pixels));
    EacBlock block{};
    pEncode(aui16Pixels, block.data(), bSigned);
    return block;
}

EacBlock encode(const EacPixels& pixels, bool bSigned)
{
    return encode(eacCompressBlock, pixels, bSigned);
}

EacPixels makeFlat(uint16_t ui16Value)
{
    EacPixels pixels;
    pixels.fill(ui16Value);
    return pixels;
}

uint16_t toWord(int32_t iValue)
{
    return static_cast<uint16_t>(std::clamp(iValue, 0, 65535));
}

int32_t around(CSeededRandom& random, int32_t iReach)
{
    return static_cast<int32_t>(random.below(static_cast<uint32_t>(2 * iReach + 1))) - iReach;
}

enum EBlockKind
{
    eRandom,
    eFlat,
    eNearFlat,
    eGradient,
    eTwoValues,
    eBothEnds,
    ePhoto,
    eSomeRange,
    eOpposites,
    eBlockKindCount
};

EacPixels makeBlock(CSeededRandom& random, EBlockKind eKind)
{
    static const std::vector<uint8_t> picture = testsupport::makePicture(256, 256, 6);
    constexpr uint16_t k_aui16Hard[8] = {0, 65535, 32768, 32767, 1, 32769, 16384, 49152};
    const auto iBase = static_cast<int32_t>(random.below(65536));
    const auto iOther = static_cast<int32_t>(random.below(65536));
    const int32_t iAcross = around(random, 3000);
    const int32_t iDown = around(random, 3000);
    const int32_t iRange = 1 << (4 + random.below(12));
    const uint32_t uiX = random.below(253);
    const uint32_t uiY = random.below(253);
    EacPixels pixels;
    for (uint32_t i = 0; i < 16; ++i)
    {
        const auto x = static_cast<int32_t>(i % 4);
        const auto y = static_cast<int32_t>(i / 4);
        switch (eKind)
        {
        case eRandom:
            pixels[i] = toWord(static_cast<int32_t>(random.below(65536)));
            break;
        case eFlat:
            pixels[i] = toWord(iBase);
            break;
        case eNearFlat:
            // These go round the ends of the numbers, others stop there.
            pixels[i] = static_cast<uint16_t>(iBase + around(random, 200));
            break;
        case eGradient:
            pixels[i] = toWord(iBase + x * iAcross + y * iDown);
            break;
        case eTwoValues:
            pixels[i] = toWord(random.below(2) == 0 ? iBase : iOther);
            break;
        case eBothEnds:
            pixels[i] = random.below(2) == 0 ? 0 : 65535;
            break;
        case ePhoto:
            pixels[i] = toWord(257 * picture[((uiY + i / 4) * 256 + uiX + i % 4) * 4]);
            break;
        case eSomeRange:
            pixels[i] = static_cast<uint16_t>(iBase + around(random, iRange));
            break;
        default:
            pixels[i] = k_aui16Hard[random.below(8)];
            break;
        }
    }
    return pixels;
}

class EacCompressBlockOfKind : public testing::TestWithParam<std::tuple<EBlockKind, bool>>
{
};

TEST_P(EacCompressBlockOfKind, GivesTheReferenceBytes)
{
    const auto [eKind, bSigned] = GetParam();
    CSeededRandom random(100 + static_cast<uint64_t>(eKind));
    std::vector<EacPixels> blocks;
    std::vector<EacBlock> expected;
    for (size_t i = 0; i < 80; ++i)
    {
        blocks.push_back(makeBlock(random, eKind));
        expected.push_back(encode(etcreference::eacCompressBlock, blocks.back(), bSigned));
    }
    forEachInstructionSet(
        [&, bIsSigned = bSigned]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
                ASSERT_EQ(expected[i], encode(blocks[i], bIsSigned)) << testing::PrintToString(blocks[i]);
        });
}

class EacCompressBlockOfBothSigns : public testing::TestWithParam<bool>
{
};

TEST_P(EacCompressBlockOfBothSigns, GivesTheReferenceBytesWhereOnePixelHasTheWholeError)
{
    // What one triple decodes to, but for one pixel that is moved half-way to the next value: the search may pass over no base that
    // reaches it just so.
    const bool bSigned = GetParam();
    CSeededRandom random(17);
    std::vector<EacPixels> blocks;
    std::vector<EacBlock> expected;
    for (size_t i = 0; i < 250; ++i)
    {
        EacBlock block;
        for (uint8_t& ui8Byte : block)
            ui8Byte = static_cast<uint8_t>(random.below(256));
        EacPixels pixels = decodeEacValues(block.data(), bSigned);
        uint16_t& ui16Moved = pixels[random.below(16)];
        ui16Moved = static_cast<uint16_t>(ui16Moved + around(random, 128));
        blocks.push_back(pixels);
        expected.push_back(encode(etcreference::eacCompressBlock, pixels, bSigned));
    }
    forEachInstructionSet(
        [&]
        {
            for (size_t i = 0; i < blocks.size(); ++i)
                ASSERT_EQ(expected[i], encode(blocks[i], bSigned)) << testing::PrintToString(blocks[i]);
        });
}

INSTANTIATE_TEST_SUITE_P(Signs, EacCompressBlockOfBothSigns, testing::Bool());

INSTANTIATE_TEST_SUITE_P(Kinds, EacCompressBlockOfKind,
                         testing::Combine(testing::Range(eRandom, eBlockKindCount, static_cast<EBlockKind>(1)), testing::Bool()));

} // namespace

TEST(EacCompressBlock, AFlat0IsClampedAtTheFirstTriple)
{
    // Base 0, table 0, multiplier 0: 4 - 3 = 1, 4 - 6 is clamped to 0. Index 1 all over: 001001001...
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{0, 0, 0x24, 0x92, 0x49, 0x24, 0x92, 0x49}), encode(makeFlat(0), false)); });
}

TEST(EacCompressBlock, AFlat65535TakesTheLeastBaseThatReachesIt)
{
    // Only values of 2047 and more give 65535: the widest reach is 14 * 15 * 8 = 1680 of table 0 with multiplier 15, index 7.
    // 45 * 8 + 4 + 1680 = 2044, 46 * 8 + 4 + 1680 = 2052.
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{46, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), encode(makeFlat(65535), false)); });
}

TEST(EacCompressBlock, OfTheEqualSignedBases0And1TheFirstIsChosen)
{
    // Stored base -128 stands for -127, so base 0 (stored 128) and 1 have the same values: -1016 - 3, - 6 and - 9. The last one
    // is clamped to -1023, which is -32767: index 2 all over, 010010010...
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{0x80, 0, 0x49, 0x24, 0x92, 0x49, 0x24, 0x92}), encode(makeFlat(0x8001), true)); });
}

TEST(EacCompressBlock, ASigned32767TakesTheLeastBaseThatReachesIt)
{
    // -82 * 8 + 1680 = 1024, -83 * 8 + 1680 = 1016. Base -82 is stored as 174.
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{174, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), encode(makeFlat(32767), true)); });
}

TEST(EacCompressBlock, BothEndsAreMetByTheFirstTripleThatIsClampedAtBoth)
{
    // As for 65535 alone, base 46 is the first; 46 * 8 + 4 - 3 * 15 * 8 = 12, - 6 * 15 * 8 is clamped to 0: index 1.
    EacPixels pixels = makeFlat(0);
    pixels[4] = 65535; // (0, 1): the second index
    forEachInstructionSet([&] { EXPECT_EQ((EacBlock{46, 0xF0, 0x3C, 0x92, 0x49, 0x24, 0x92, 0x49}), encode(pixels, false)); });
}

TEST(EacCompressBlock, OnTheCircle65535IsOneStepFrom0ForUnsignedDataToo)
{
    // 32, 64 and 96 are the values 1, 2 and 3, which only multiplier 0 and table 13 (-1 -2 -3 -10 ...) have with base 0: 3, 2, 1
    // and, clamped, 0. Then 65535 is 1 away, and no other triple has these four better.
    EacPixels pixels = makeFlat(32);
    pixels[1] = 64;    // (1, 0): the fifth index
    pixels[2] = 96;    // (2, 0): the ninth
    pixels[3] = 65535; // (3, 0): the thirteenth
    forEachInstructionSet(
        [&]
        {
            const EacBlock block = encode(pixels, false);
            EXPECT_EQ(0, block[0]);
            EXPECT_EQ(13, block[1]);
            EXPECT_EQ((std::array<uint8_t, 16>{2, 2, 2, 2, 1, 2, 2, 2, 0, 2, 2, 2, 3, 2, 2, 2}), readEacIndices(block.data()));
        });
}

TEST(EacCompressBlock, ADifferenceOf32768CountsAsMinus32768)
{
    // Half the circle either way has the same square.
    EXPECT_EQ(1073741824.0, etcreference::squareOnCircle(0, 32768));
    EXPECT_EQ(1073741824.0, etcreference::squareOnCircle(32768, 0));
}

TEST(EacCompressBlock, ZeroAnd32768TogetherTakeTheFirstTripleThatIsNearest)
{
    // With multipliers of 1 or more values are 4 and a multiple of 8: next to 32768 stand 1020 * 32 + 15 = 32655 and 1028 * 32 + 16 =
    // 32912. The first is 127 places of 8 up: not from base 0, as no table has 127 times 1; from base 1 by 126 = 9 * 14, index 7
    // of table 0. 1 - 9 * 3 lies below, so all of the others are 0 by index 0.
    EacPixels pixels = makeFlat(0);
    pixels[0] = 32768;
    forEachInstructionSet([&] { EXPECT_EQ((EacBlock{1, 0x90, 0xE0, 0, 0, 0, 0, 0}), encode(pixels, false)); });
    // Half of each comes to the same: eight times 113 * 113, and nothing nearer that has the zeros too.
    for (size_t i = 0; i < 16; ++i)
        pixels[i] = i % 4 < 2 ? 32768 : 0;
    forEachInstructionSet([&] { EXPECT_EQ((EacBlock{1, 0x90, 0xFF, 0xFF, 0xFF, 0, 0, 0}), encode(pixels, false)); });
}

TEST(EacCompressBlock, ABaseThatReachesThePixelsByAHairIsFound)
{
    // 40971 lies 120 above 159 steps (1276 * 32 + 19 = 40851) and 137 below 160. 159, 158 and 157 are no multiplier times a modifier
    // (3 * 53, 2 * 79, a prime), so base 3 is the first: 156 = 13 * 12, index 7 of table 1. 3 - 13 * 3 lies below: 0 by index 0.
    EacPixels pixels = makeFlat(0);
    pixels[0] = 40971;
    forEachInstructionSet([&] { EXPECT_EQ((EacBlock{3, 0xD1, 0xE0, 0, 0, 0, 0, 0}), encode(pixels, false)); });
}

TEST(EacCompressBlock, OfEqualTriplesTheLeastBaseThenTheLeastTableThenTheLeastMultiplierIsChosen)
{
    // 28 * 32 = 896: 4 + 24, so 3 steps up from base 0. Table 0 has the steps 2 5 8 14, table 1 has 2 6 9 12, table 2 has 1 4 7 12:
    // multiplier 3, index 4. Table 3 (1 3 5 12) has it with multiplier 1, and base 1 has it by table 0 with multiplier 1.
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{0, 0x32, 0x92, 0x49, 0x24, 0x92, 0x49, 0x24}), encode(makeFlat(896), false)); });
    // 132 * 32 + 2 = 4226 is 16 steps up from base 0: 2 * 8 and 8 * 2 by table 0, of which multiplier 2 (index 6) comes first.
    forEachInstructionSet([] { EXPECT_EQ((EacBlock{0, 0x20, 0xDB, 0x6D, 0xB6, 0xDB, 0x6D, 0xB6}), encode(makeFlat(4226), false)); });
}

TEST(EacCompressBlock, TheChosenTripleHasTheErrorThatTheReferenceFinds)
{
    // The decoded pixels are as far away as the least sum over all triples, taken without any bound.
    CSeededRandom random(9);
    const EacPixels pixels = makeBlock(random, eSomeRange);
    uint16_t aui16Pixels[16];
    std::memcpy(aui16Pixels, pixels.data(), sizeof(aui16Pixels));
    double fLeast = 1e30;
    const std::vector<uint16_t>& values = etcreference::getEacValues(false);
    for (size_t i = 0; i < values.size(); i += 8)
        fLeast = std::min(fLeast, etcreference::eacBlockError(aui16Pixels, values.data() + i, 1e30));
    const std::array<uint16_t, 16> decoded = decodeEacValues(encode(pixels, false).data(), false);
    double fError = 0.0;
    for (size_t i = 0; i < 16; ++i)
        fError += etcreference::squareOnCircle(pixels[i], decoded[i]);
    EXPECT_EQ(fLeast, fError);
}
