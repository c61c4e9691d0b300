#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t rgba(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiAlpha)
{
    return uiRed | uiGreen << 8 | uiBlue << 16 | uiAlpha << 24;
}

constexpr uint32_t k_uiWhite = rgba(255, 255, 255, 255);
constexpr uint32_t k_uiBlack = rgba(0, 0, 0, 255);
constexpr uint32_t k_uiOpaqueFlag = 0x80000000;
constexpr uint32_t k_uiHardFlag = 0x8000;
constexpr uint32_t k_uiModeFlag = 1;

CodedPixels fillBlock(uint32_t uiPixel)
{
    CodedPixels pixels;
    pixels.fill(uiPixel);
    return pixels;
}

/// 16 pixels by a function of a number.
template <typename MakePixel>
CodedPixels makeBlock(const CodedPixels& numbers, const MakePixel& makePixel)
{
    CodedPixels pixels;
    std::transform(numbers.begin(), numbers.end(), pixels.begin(), makePixel);
    return pixels;
}

void expectBlock(uint32_t uiModulation, uint32_t uiColours, const CodedPixels& pixels)
{
    const BlockWord block = codeMOXTCIIBlock(pixels);
    EXPECT_EQ(uiModulation, block.ui32Modulation) << std::hex << uiModulation << " " << block.ui32Modulation;
    EXPECT_EQ(uiColours, block.ui32Colours) << std::hex << uiColours << " " << block.ui32Colours;
}

/// Blocks of six kinds: 0 random; 1 random and opaque; 2 corners and middles of the colour cube, opaque; 3 alpha 0 or 255;
/// 4 near one colour; 5 alpha 0, 90 or 255.
CodedPixels makeSeededBlock(testsupport::CSeededRandom& random, uint32_t uiKind)
{
    CodedPixels pixels;
    for (uint32_t& uiPixel : pixels)
    {
        std::array<uint32_t, 4> channels;
        for (uint32_t& uiChannel : channels)
            uiChannel = random.below(256);
        if (uiKind == 1)
            channels[3] = 255;
        if (uiKind == 2)
        {
            for (uint32_t& uiChannel : channels)
                uiChannel = std::array<uint32_t, 3>{0, 128, 255}[uiChannel % 3];
            channels[3] = 255;
        }
        if (uiKind == 3)
            channels[3] = channels[3] < 64 ? 0 : 255;
        if (uiKind == 4)
            for (uint32_t& uiChannel : channels)
                uiChannel = 100 + (uiChannel & 7);
        if (uiKind == 5)
            channels[3] = std::array<uint32_t, 3>{0, 90, 255}[channels[3] % 3];
        uiPixel = rgba(channels[0], channels[1], channels[2], channels[3]);
    }
    return pixels;
}

} // namespace

TEST(MOXTCIIBlockCoder, GivesOneColourToBothAndCode0)
{
    // A: r 31, g 1, b 1 (of 4 bits): 31 << 10 | 1 << 5 | 1 << 1 = 0x7C22. B: r 31, g 1, b 3: 31 << 26 | 1 << 21 | 3 << 16 = 0x7C230000.
    expectBlock(0, k_uiOpaqueFlag | k_uiHardFlag | 0x7C237C22, fillBlock(rgba(255, 8, 31, 255)));
    // A: a 4, r 15, g 0, b 0: 0x4F00. B: a 4, r 15, g 0, b 1: 0x4F010000.
    expectBlock(0, k_uiHardFlag | 0x4F014F00, fillBlock(rgba(255, 8, 31, 128)));
}

TEST(MOXTCIIBlockCoder, IsOpaqueOnlyForAlpha255)
{
    EXPECT_EQ(0u, codeMOXTCIIBlock(fillBlock(rgba(1, 2, 3, 254))).ui32Colours & k_uiOpaqueFlag);
    EXPECT_EQ(k_uiOpaqueFlag, codeMOXTCIIBlock(fillBlock(rgba(1, 2, 3, 255))).ui32Colours & k_uiOpaqueFlag);
}

TEST(MOXTCIIBlockCoder, GivesOneColourWithAlpha0TheCodes1And2)
{
    // All of alpha 0: code 2 sixteen times. A: r 0, g 1, b 0. B: r 0, g 1, b 1.
    expectBlock(0xAAAAAAAA, k_uiModeFlag | 0x00110010, fillBlock(rgba(10, 20, 30, 0)));
}

TEST(MOXTCIIBlockCoder, TakesNothingAndFullAlphaForOneColourAndKeepsTheFirstPixelMet)
{
    // The opaque pixel first: A: r 1, g 2, b 1: 0x442. B: r 1, g 2, b 3: 0x04430000. Pixel 15 has code 2, the others 1.
    CodedPixels pixels = fillBlock(rgba(10, 20, 30, 255));
    pixels[15] = rgba(10, 20, 30, 0);
    expectBlock(0x95555555, k_uiOpaqueFlag | k_uiModeFlag | 0x04430442, pixels);
    // The other first: both colours have alpha 0.
    std::reverse(pixels.begin(), pixels.end());
    expectBlock(0x55555556, k_uiModeFlag | 0x00110010, pixels);
}

TEST(MOXTCIIBlockCoder, TakesOtherAlphasForOtherColours)
{
    // 254 is not extreme: two colours, 254 the first. A: a 7, r 0, g 1, b 0: 0x7010. B: a 7, r 0, g 1, b 1: 0x70110000.
    CodedPixels pixels = fillBlock(rgba(10, 20, 30, 254));
    pixels[1] = rgba(10, 20, 30, 255);
    expectBlock(3 << 2, k_uiHardFlag | 0x70117010, pixels);
    // Nor does 1 equal 0: here 0 has code 2, and 1 equals B. A: 0x10. B: 0x00110000.
    pixels = fillBlock(rgba(10, 20, 30, 0));
    pixels[1] = rgba(10, 20, 30, 1);
    expectBlock(0xAAAAAAAE, k_uiModeFlag | 0x00110010, pixels);
}

TEST(MOXTCIIBlockCoder, GivesTwoColoursTheCodes0And3InTheOrderTheyAreMet)
{
    // White is met first and so is A, though it is the brighter one: 31 << 10 | 31 << 5 | 15 << 1 = 0x7FFE. B is 0.
    CodedPixels pixels = fillBlock(k_uiWhite);
    for (const uint32_t i : {2u, 3u, 6u, 7u, 10u, 11u, 14u, 15u})
        pixels[i] = k_uiBlack;
    expectBlock(0xF0F0F0F0, k_uiOpaqueFlag | k_uiHardFlag | 0x7FFE, pixels);
}

// Blocks whose axis settles slowly, by an independent program of the same steps.

TEST(MOXTCIIBlockCoder, SeeksTheAxisForNoMoreThanAHundredRounds)
{
    // 99 and 101 rounds both give others.
    expectBlock(0x56EE290E, 0xDDFEB260,
                {0xFF9E65DF, 0xFFFFCEBB, 0xFF3E5E29, 0xFF0DE673, 0xFF618C6E, 0xFFD5431C, 0xFFA6B7F6, 0xFF076EA2, 0xFFAF594E, 0xFFBE50EB,
                 0xFF99A368, 0xFFECB9B8, 0xFFAE2458, 0xFF3837FD, 0xFF54E5D7, 0xFF50F477});
}

TEST(MOXTCIIBlockCoder, StopsSeekingTheAxisAtAChangeOfAHundredThousandth)
{
    // A limit of 2e-5 gives others than the first, one of 5e-6 others than the second.
    expectBlock(0x41754339, 0x9BC2C91E,
                {0xFF9D782C, 0xFF88DD19, 0xFF64F704, 0xFFFB499D, 0xFF06F65E, 0xFFFE6291, 0xFFE2468C, 0xFF7E316B, 0xFFD5E9A7, 0xFF2129BF,
                 0xFF1FDF5C, 0xFFBD754E, 0xFF5C6AA2, 0xFFFF81B6, 0xFFFC4358, 0xFFA9AB6A});
    expectBlock(0x17356ED6, 0xAB88DC18,
                {0xFFA0B6CC, 0xFF2C4AB2, 0xFF4C033A, 0xFF459F1B, 0xFFD1B83F, 0xFF3DEE6B, 0xFF67B343, 0xFFD3679C, 0xFFEDBEF7, 0xFF8A1240,
                 0xFF51C854, 0xFFE31FD3, 0xFF70FE80, 0xFF3E5CCF, 0xFF2042EA, 0xFFFB246D});
}

TEST(MOXTCIIBlockCoder, GivesTwoColoursWithAlpha0TheCodes0And2And3)
{
    // Black is met with alpha 0, so B has it, and A (a 7, r 15, g 15, b 7: 0x7FFE) is translucent with it. Opaque black equals B.
    CodedPixels pixels = fillBlock(k_uiWhite);
    pixels[1] = rgba(0, 0, 0, 0);
    pixels[2] = k_uiBlack;
    pixels[3] = rgba(255, 255, 255, 0); // equal to A, but of alpha 0
    expectBlock(2 << 2 | 3 << 4 | 2 << 6, k_uiModeFlag | 0x7FFE, pixels);
}

TEST(MOXTCIIBlockCoder, FitsALineThroughMoreColours)
{
    // A grey ramp from 0 to 255: A is black; B white, or 254 by truncation, with the same upper bits. t is grey / 255: below 0.1875 are
    // 0, 17, 34; below 0.5 those up to 119; below 0.8175 those up to 204.
    CodedPixels pixels;
    for (uint32_t i = 0; i < 16; ++i)
        pixels[i] = rgba(17 * i, 17 * i, 17 * i, 255);
    expectBlock(0xFEAA5540, k_uiOpaqueFlag | k_uiHardFlag | 0x7FFF0000, pixels);
}

TEST(MOXTCIIBlockCoder, ChangesCodesAtThreeSixteenthsAndAHalfAndAt0_8175)
{
    // Red only, so that the axis is red itself. The sum is 1104, that of squares 108944, and 16 * 108944 - 1104 * 1104 = 2^19, whose
    // root and reciprocal are exact: A is exactly red 0, B exactly 128. t is red / 128: code 0 up to 23, 1 from 24 (3 / 16), 2 from 64,
    // 3 from 105 (0.8203; 104 has 0.8125).
    // A: g 5, b 2: 5 << 5 | 2 << 1 = 0xA4. B: r 16, g 5, b 5: 16 << 26 | 5 << 21 | 5 << 16 = 0x40A50000.
    const CodedPixels reds{0, 1, 13, 23, 24, 36, 63, 64, 83, 104, 105, 105, 108, 123, 124, 128};
    const CodedPixels pixels = makeBlock(reds, [](uint32_t uiRed) { return rgba(uiRed, 40, 40, 255); });
    expectBlock(0xFFFA9500, k_uiOpaqueFlag | k_uiHardFlag | 0x40A500A4, pixels);
}

TEST(MOXTCIIBlockCoder, GivesTransparentPixelsTheCodeOfHalfWayAndPixelsHalfWayThatOfTransparentOnes)
{
    // Alpha only. The sum is 768, that of squares 69632, and 16 * 69632 - 768 * 768 = 2^19: A has alpha 0, B 128, exactly. t is
    // alpha / 128: code 0 up to 31, 2 from 32 (a quarter), 3 from 96 (three quarters); and code 1 for alpha 0.
    // A: a 0, r 2, g 5, b 3: 2 << 8 | 5 << 4 | 3 << 1 = 0x256. B: a 4, r 2, g 5, b 7: 0x42570000.
    const CodedPixels alphas{0, 1, 2, 6, 14, 19, 20, 28, 31, 32, 62, 95, 96, 114, 120, 128};
    const CodedPixels pixels = makeBlock(alphas, [](uint32_t uiAlpha) { return rgba(40, 80, 120, uiAlpha); });
    expectBlock(0xFFA80001, k_uiModeFlag | 0x42570256, pixels);
}

TEST(MOXTCIIBlockCoder, MakesTheDarkerEndPointA)
{
    // The axis points to more red and less green, where it is darker: (30 * 132 + 59 * 68 + 11 * 4) / 100 = 80 against 84. So A is there:
    // r 16, g 8, b 0: 0x4100. B: r 0, g 17, b 0: 0x02200000. The rows are at t = 0, 1/4, 3/4 and 1.
    CodedPixels pixels;
    constexpr std::array<uint32_t, 4> auiRows{rgba(132, 68, 4, 255), rgba(100, 86, 4, 255), rgba(36, 122, 4, 255), rgba(4, 140, 4, 255)};
    for (size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = auiRows[i / 4];
    expectBlock(0xFFAA5500, k_uiOpaqueFlag | k_uiHardFlag | 0x02204100, pixels);
}

TEST(MOXTCIIBlockCoder, MakesTheSmallerNumberAWhereBothEndPointsAreEquallyBright)
{
    // The axis points to more blue and less alpha. Brightness is 88 / 100 and 0 / 100, 0 both; the number with less alpha is the smaller
    // one, so A has alpha 100 and blue 8, and B alpha 104 and blue 0. Both pack as alpha 3.
    CodedPixels pixels = fillBlock(rgba(0, 0, 0, 104)); // code 3
    for (size_t i = 0; i < 8; ++i)
        pixels[i] = rgba(0, 0, 8, 100); // code 0
    pixels[15] = rgba(0, 0, 2, 103);    // code 2
    expectBlock(0xBFFF0000, k_uiHardFlag | 0x30003000, pixels);
}

TEST(MOXTCIIBlockCoder, KeepsAStartingVectorThatTheCovarianceMapsTo0)
{
    // Red rises as green falls, so all ones lie across the line, every projection is 0 and both end points are the mean, (100, 100, 50).
    // Both ways are 0 then, and 0 / 0 counts as 0. A: 12, 12, 3: 0x3186. B: 12, 12, 6: 0x31860000.
    CodedPixels pixels = fillBlock(rgba(100, 100, 50, 255));
    for (size_t i = 0; i < 4; ++i)
    {
        pixels[i] = rgba(108, 92, 50, 255);
        pixels[i + 4] = rgba(92, 108, 50, 255);
    }
    expectBlock(0, k_uiOpaqueFlag | k_uiHardFlag | 0x31863186, pixels);

    // The same of red and alpha, which is 0 twice. The mean is (100, 0, 50, 30): A: a 0, r 6, g 0, b 1: 0x602. B: 0x06030000.
    pixels = fillBlock(rgba(100, 0, 50, 30));
    pixels[0] = pixels[1] = rgba(130, 0, 50, 0);
    pixels[2] = pixels[3] = rgba(70, 0, 50, 60);
    expectBlock(1 | 1 << 2, k_uiModeFlag | 0x06030602, pixels);
}

TEST(MOXTCIIBlockCoder, TruncatesAMeanThatIsAnEndPoint)
{
    // As above, but for one pixel of red 101 and green 103: the mean is (100.0625, 103.9375), and 103 is 12 in 5 bits where 104 is 13.
    CodedPixels pixels = fillBlock(rgba(100, 104, 50, 255));
    for (size_t i = 0; i < 3; ++i)
    {
        pixels[i] = rgba(108, 96, 50, 255);
        pixels[i + 4] = rgba(92, 112, 50, 255);
    }
    pixels[15] = rgba(101, 103, 50, 255);
    expectBlock(0, k_uiOpaqueFlag | k_uiHardFlag | 0x31863186, pixels);
}

TEST(MOXTCIIBlockCoder, GivesTheBlocksOfAnIndependentProgram)
{
    // Worked out in Python, with floats rounded to 32 bits after every operation, for the same seeded blocks. End points are clamped in
    // many of them.
    constexpr std::array<BlockWord, 24> aExpected{{
        {0x922B79ED, 0x6B91972E}, {0xCF539799, 0xF6E28918}, {0x4AC2998C, 0x87E0F81E}, {0x6080A098, 0x1FFE7335}, {0x558BD7B5, 0x3666B666},
        {0x94510911, 0x069C7963}, {0x8B8DFA0C, 0x06C97705}, {0xF35D9105, 0x9322D518}, {0xC5A55F23, 0x83F3FCA8}, {0x40601045, 0x06AF7877},
        {0xB15E6A86, 0x3666B666}, {0x90410182, 0x0C57738B}, {0x1DE94792, 0x0CB6F288}, {0x87CD2CA8, 0xCE1DB4E0}, {0x819E1F71, 0x83FDFC00},
        {0x2012A040, 0x1E70758D}, {0x921576F5, 0x3666B666}, {0xB80E66A7, 0x0D7A6283}, {0x6609E566, 0x72CEAC30}, {0xA9A79CA9, 0xFAE698FE},
        {0x86912D3A, 0xFE5F80A2}, {0xDFDFDDDF, 0x78870575}, {0x26412AC9, 0x3666B666}, {0x9CDED9EB, 0x78860759},
    }};
    testsupport::CSeededRandom random(2024);
    for (uint32_t i = 0; i < aExpected.size(); ++i)
    {
        SCOPED_TRACE("block " + std::to_string(i));
        expectBlock(aExpected[i].ui32Modulation, aExpected[i].ui32Colours, makeSeededBlock(random, i % 6));
    }
}

TEST(MOXTCIIBlockCoder, WritesTheBlocksOfAPictureInRows)
{
    // 12 by 8 pixels: blocks of six reds, 32 apart.
    constexpr uint32_t uiWidth = 12;
    std::vector<uint8_t> picture(4 * uiWidth * 8);
    for (uint32_t y = 0; y < 8; ++y)
        for (uint32_t x = 0; x < uiWidth; ++x)
            storeLE(picture.data() + 4 * size_t{y * uiWidth + x}, rgba(32 * (y / 4 * 3 + x / 4), 0, 0, 255));
    for (const auto code : {codeMOXTCIIBlocksReference, codeMOXTCIIBlocks})
    {
        std::vector<uint8_t> blocks(6 * 8 + 1, 0xEE);
        code(picture.data(), uiWidth, 8, blocks.data());
        for (uint32_t i = 0; i < 6; ++i)
        {
            // Red of 5 bits is 4 * i in both colours.
            const BlockWord block = loadBlock(blocks.data() + 8 * size_t{i});
            EXPECT_EQ(0u, block.ui32Modulation);
            EXPECT_EQ(k_uiOpaqueFlag | k_uiHardFlag | 4 * i << 10 | 4 * i << 26, block.ui32Colours) << "block " << i;
        }
        EXPECT_EQ(0xEE, blocks.back());
    }
}

TEST(MOXTCIIBlockCoder, GivesTheReferenceBytesInEveryInstructionSetForBlocksOfEveryKind)
{
    // Pictures of one block to some, of uneven counts, so that groups of every kind and length occur.
    testsupport::CSeededRandom random(77);
    for (uint32_t uiCase = 0; uiCase < 400; ++uiCase)
    {
        const uint32_t uiBlocksX = 1 + random.below(uiCase % 8 == 0 ? 40 : 6);
        const uint32_t uiBlocksY = 1 + random.below(4);
        const uint32_t uiWidth = 4 * uiBlocksX;
        std::vector<uint8_t> picture(size_t{uiWidth} * uiBlocksY * 16);
        for (uint32_t uiBlock = 0; uiBlock < uiBlocksX * uiBlocksY; ++uiBlock)
        {
            CodedPixels pixels = makeSeededBlock(random, random.below(6));
            // Some blocks have few colours, or two that alpha 0 and 255 make one, or reds and greens across all ones.
            const uint32_t uiShape = random.below(6);
            for (uint32_t i = 0; uiShape < 3 && i < 16; ++i)
                pixels[i] = pixels[random.below(uiShape + 1)];
            for (uint32_t i = 0; uiShape == 3 && i < 16; ++i)
                pixels[i] = (pixels[0] & 0xFFFFFF) | std::array<uint32_t, 4>{0, 255, 255, 254}[random.below(4)] << 24;
            for (uint32_t i = 0; uiShape == 4 && i < 16; ++i)
                pixels[i] = rgba(100 + i % 5, 104 - i % 5, 50, 255);
            const size_t uiFirst = size_t{uiBlock / uiBlocksX} * 4 * uiWidth + size_t{uiBlock % uiBlocksX} * 4;
            for (size_t i = 0; i < 16; ++i)
                storeLE(picture.data() + 4 * (uiFirst + i / 4 * uiWidth + i % 4), pixels[i]);
        }
        std::vector<uint8_t> expected(size_t{uiBlocksX} * uiBlocksY * 8);
        codeMOXTCIIBlocksReference(picture.data(), uiWidth, 4 * uiBlocksY, expected.data());
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> blocks(expected.size() + 8, 0xEE);
                codeMOXTCIIBlocks(picture.data(), uiWidth, 4 * uiBlocksY, blocks.data());
                ASSERT_TRUE(std::equal(expected.begin(), expected.end(), blocks.begin())) << uiBlocksX << " x " << uiBlocksY;
                ASSERT_EQ(std::vector<uint8_t>(8, 0xEE), std::vector<uint8_t>(blocks.end() - 8, blocks.end()));
            });
    }
}

TEST(MOXTCIIBlockCoder, GivesTheReferenceBytesInEveryInstructionSetForPicturesAndNoise)
{
    constexpr uint32_t uiSide = 512;
    for (const std::vector<uint8_t>& picture :
         {testsupport::makePicture(uiSide, uiSide), testsupport::CSeededRandom(78).bytes(uiSide * uiSide * 4)})
    {
        std::vector<uint8_t> expected(uiSide * uiSide / 2);
        codeMOXTCIIBlocksReference(picture.data(), uiSide, uiSide, expected.data());
        forEachInstructionSet(
            [&]
            {
                std::vector<uint8_t> blocks(expected.size());
                codeMOXTCIIBlocks(picture.data(), uiSide, uiSide, blocks.data());
                EXPECT_TRUE(expected == blocks);
            });
    }
}

TEST(MOXTCIIBlockCoder, ComparesBrightnessAsIntegersForEveryEndPoint)
{
    // Two end points of every brightness that reds and greens make: blocks of three colours on a line.
    constexpr uint32_t uiCount = 256;
    std::vector<uint8_t> picture(size_t{uiCount} * 4 * 16);
    for (uint32_t x = 0; x < uiCount; ++x)
        for (size_t i = 0; i < 16; ++i)
            storeLE(picture.data() + 4 * (i / 4 * uiCount * 4 + x * 4 + i % 4),
                    i < 8 ? rgba(x, 255 - x, 0, 255) : rgba(255 - x, x / 2, static_cast<uint32_t>(i) * 8, 255));
    std::vector<uint8_t> expected(size_t{uiCount} * 8);
    codeMOXTCIIBlocksReference(picture.data(), uiCount * 4, 4, expected.data());
    forEachInstructionSet(
        [&]
        {
            std::vector<uint8_t> blocks(expected.size());
            codeMOXTCIIBlocks(picture.data(), uiCount * 4, 4, blocks.data());
            EXPECT_TRUE(expected == blocks);
        });
}
