#include "Codecs/ETC/EacBlock.h"

#include <vector>

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::Each;
using testing::ElementsAre;

namespace
{

/// Table 13 has the modifier 0 at index 4.
constexpr uint32_t k_uiZeroTable = 13;
constexpr uint32_t k_uiZeroIndex = 4;

int32_t signedValue(uint32_t uiBase, uint32_t uiTable, uint32_t uiMultiplier, uint32_t uiIndex)
{
    return static_cast<int16_t>(eacValue(uiBase, uiTable, uiMultiplier, uiIndex, true));
}

/// Indices 0 to 7 twice in stored order: 000 001 010 011 100 101 110 111.
constexpr uint8_t k_aui8EveryIndex[6] = {0x05, 0x39, 0x77, 0x05, 0x39, 0x77};

std::array<uint8_t, 8> makeBlock(uint8_t ui8Base, uint8_t ui8Second)
{
    std::array<uint8_t, 8> block = {ui8Base, ui8Second};
    std::copy(std::begin(k_aui8EveryIndex), std::end(k_aui8EveryIndex), block.begin() + 2);
    return block;
}

} // namespace

TEST(EacBlock, TheGreatestUnsignedValueIsClampedTo65535)
{
    // 255 * 8 + 4 + 14 * 15 * 8 is far above 2047, and 2047 * 32 + (2047 >> 6) = 65504 + 31.
    EXPECT_EQ(65535u, eacValue(255, 0, 15, 7, false));
}

TEST(EacBlock, TheLeastUnsignedValueIsClampedToZero)
{
    EXPECT_EQ(0u, eacValue(0, 0, 15, 3, false));
    EXPECT_EQ(0u, eacValue(0, 0, 1, 0, false)); // 4 - 3 * 8
}

TEST(EacBlock, AnUnsignedValueIsTheBaseAndAHalfTimesEightWithItsModifier)
{
    // The nearest modifiers of table 15 are -3 (index 0) and 2 (index 4). 100 * 8 + 4 + 2 * 5 * 8 = 884, and 884 / 64 = 13;
    // 804 - 3 * 5 * 8 = 684, and 684 / 64 = 10.
    EXPECT_EQ(884u * 32 + 13, eacValue(100, 15, 5, 4, false));
    EXPECT_EQ(684u * 32 + 10, eacValue(100, 15, 5, 0, false));
}

TEST(EacBlock, MultiplierZeroTakesTheBareModifierNotEightTimesIt)
{
    // 16 * 8 + 4 + 14 = 146 and 132 - 3 = 129; both / 64 = 2.
    EXPECT_EQ(146u * 32 + 2, eacValue(16, 0, 0, 7, false));
    EXPECT_EQ(129u * 32 + 2, eacValue(16, 0, 0, 0, false));
    // One eighth of multiplier 1: 132 + 14 * 8 = 244, / 64 = 3.
    EXPECT_EQ(244u * 32 + 3, eacValue(16, 0, 1, 7, false));
    // Signed: 1 * 8 + 14 = 22 and 8 - 15 = -7.
    EXPECT_EQ(704, signedValue(129, 0, 0, 7));
    EXPECT_EQ(-224, signedValue(129, 0, 0, 3));
}

TEST(EacBlock, SignedValuesReach32767AtBothEnds)
{
    // 127 * 8 + 14 * 8 = 1128, clamped to 1023: 1023 * 32 + 31.
    EXPECT_EQ(32767, signedValue(255, 0, 1, 7));
    EXPECT_EQ(-32767, signedValue(0, 0, 1, 3));
    EXPECT_EQ(32767, signedValue(255, 0, 15, 7));
    EXPECT_EQ(-32767, signedValue(0, 0, 15, 3));
}

TEST(EacBlock, ValuesAreClampedFromTheFirstThatIsBeyondTheirRange)
{
    // Multiplier 0, so that the sums go by ones. Unsigned: 255 * 8 + 4 = 2044 and 2, 3 or 4 more; 2046 * 32 + 31 = 65503.
    EXPECT_EQ(65503u, eacValue(255, 0, 0, 4, false));
    EXPECT_EQ(65535u, eacValue(255, 6, 0, 4, false));
    EXPECT_EQ(65535u, eacValue(255, 9, 0, 5, false));
    // 4, and 3, 4 or 6 less.
    EXPECT_EQ(32u, eacValue(0, 0, 0, 0, false));
    EXPECT_EQ(0u, eacValue(0, 6, 0, 0, false));
    EXPECT_EQ(0u, eacValue(0, 0, 0, 1, false));
    // Signed: 127 * 8 = 1016 and 6, 7 or 8 more (table 5); 1022 * 32 + 31 = 32735. The other end: 7 and 8 less.
    EXPECT_EQ(32735, signedValue(255, 5, 0, 5));
    EXPECT_EQ(32767, signedValue(255, 6, 0, 6));
    EXPECT_EQ(32767, signedValue(255, 5, 0, 6));
    EXPECT_EQ(-32767, signedValue(1, 5, 0, 1));
    EXPECT_EQ(-32767, signedValue(1, 6, 0, 2));
}

TEST(EacBlock, ASignedBaseOfMinus128IsMinus127)
{
    // 127 * 8 = 1016, and 1016 * 32 + 1016 / 32 = 32512 + 31.
    EXPECT_EQ(-32543, signedValue(0, k_uiZeroTable, 1, k_uiZeroIndex));
    for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
        for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
            EXPECT_EQ(signedValue(1, uiTable, 3, uiIndex), signedValue(0, uiTable, 3, uiIndex));
}

TEST(EacBlock, ASignedZeroIsZeroAndSignsAreSymmetric)
{
    EXPECT_EQ(0, signedValue(128, k_uiZeroTable, 7, k_uiZeroIndex));
    for (uint32_t uiBase = 1; uiBase < 256; ++uiBase)
        EXPECT_EQ(-signedValue(256 - uiBase, k_uiZeroTable, 1, k_uiZeroIndex), signedValue(uiBase, k_uiZeroTable, 1, k_uiZeroIndex));
}

TEST(EacBlock, TheTwoFormsFillTheirRangesByDifferentShifts)
{
    // Unsigned 1020 (127 * 8 + 4): 1020 * 32 + 1020 / 64 = 32640 + 15; signed 1016: 32512 + 1016 / 32.
    EXPECT_EQ(32655u, eacValue(127, k_uiZeroTable, 1, k_uiZeroIndex, false));
    EXPECT_EQ(32543, signedValue(255, k_uiZeroTable, 1, k_uiZeroIndex));
}

TEST(EacBlock, TheStoredBaseOfSignedDataIsASignedByte)
{
    EXPECT_EQ(128u, getEacBase(0, true));
    EXPECT_EQ(255u, getEacBase(0x7F, true));
    EXPECT_EQ(0u, getEacBase(0x80, true));
    EXPECT_EQ(127u, getEacBase(0xFF, true));
    EXPECT_EQ(0xFFu, getEacBase(0xFF, false));
}

TEST(EacBlock, IndicesAreStoredMostSignificantBitFirst)
{
    const std::array<uint8_t, 8> block = makeBlock(0, 0);
    const std::array<uint8_t, 16> indices = readEacIndices(block.data());
    EXPECT_THAT(indices, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7));
    std::array<uint8_t, 8> written = {200, 201};
    writeEacIndices(written.data(), indices);
    EXPECT_THAT(written, ElementsAre(200, 201, 0x05, 0x39, 0x77, 0x05, 0x39, 0x77));
}

TEST(EacBlock, IndicesGoColumnByColumn)
{
    // Base 100, multiplier 1, table 0: modifiers -3, -6, -9, -15, 2, 5, 8, 14 down columns 0 and 1, and again down 2 and 3.
    EXPECT_THAT(decodeEtcAlphas(makeBlock(100, 0x10).data()).aui8, ElementsAre(97, 102, 97, 102, //
                                                                               94, 105, 94, 105, //
                                                                               91, 108, 91, 108, //
                                                                               85, 114, 85, 114));
}

TEST(EacBlock, AlphasAreClampedAtBothEnds)
{
    // Multiplier 15: 15 * 3 = 45 below is -40, 15 * 2 above is 35.
    EXPECT_THAT(decodeEtcAlphas(makeBlock(5, 0xF0).data()).aui8, ElementsAre(0, 35, 0, 35, 0, 80, 0, 80, 0, 125, 0, 125, 0, 215, 0, 215));
    EXPECT_THAT(decodeEtcAlphas(makeBlock(250, 0xF0).data()).aui8,
                ElementsAre(205, 255, 205, 255, 160, 255, 160, 255, 115, 255, 115, 255, 25, 255, 25, 255));
}

TEST(EacBlock, AlphasOfMultiplierZeroAreTheBase)
{
    EXPECT_THAT(decodeEtcAlphas(makeBlock(77, 0x0A).data()).aui8, Each(77));
}

TEST(EacBlock, ElevenBitBlocksHaveTheMultiplierInTheUpperHalfOfByteOne)
{
    // Base 16, multiplier 1, table 0: 132 - 24, 132 + 16 in the first row; 132 - 120, 132 + 112 in the last.
    const std::array<uint16_t, 16> values = decodeEacValues(makeBlock(16, 0x10).data(), false);
    EXPECT_EQ(108 * 32 + 1, values[0]);
    EXPECT_EQ(148 * 32 + 2, values[1]);
    EXPECT_EQ(12 * 32, values[14]);
    EXPECT_EQ(244 * 32 + 3, values[15]);
}

TEST(EacBlock, SignedElevenBitBlocksReadTheirBaseAsSigned)
{
    // -16 * 8 = -128; less 24 is -152 (152 / 32 = 4), and 16 more is -112 (3).
    const std::array<uint16_t, 16> values = decodeEacValues(makeBlock(0xF0, 0x10).data(), true);
    EXPECT_EQ(-(152 * 32 + 4), static_cast<int16_t>(values[0]));
    EXPECT_EQ(-(112 * 32 + 3), static_cast<int16_t>(values[1]));
    EXPECT_EQ(decodeEacValues(makeBlock(0x81, 0x35).data(), true), decodeEacValues(makeBlock(0x80, 0x35).data(), true));
}

TEST(EacBlock, BlocksAreWrittenAtTheirPlaceAndNowhereElse)
{
    constexpr uint32_t kStride = 6;
    const std::array<uint8_t, 8> block = makeBlock(100, 0x1C);
    const EtcAlphas alphas = decodeEtcAlphas(block.data());
    const std::array<uint16_t, 16> values = decodeEacValues(block.data(), true);
    std::vector<uint8_t> bytes(kStride * 7, 99);
    std::vector<uint16_t> words(kStride * 7, 99);
    etcDecodeAlphaBlock(block.data(), bytes.data(), kStride, 1, 2);
    eacDecodeBlock(block.data(), words.data(), kStride, 1, 2, true);
    for (size_t y = 0; y < 7; ++y)
        for (size_t x = 0; x < kStride; ++x)
        {
            const bool bInside = x >= 1 && x < 5 && y >= 2 && y < 6;
            const size_t uiInside = (y - 2) * 4 + x - 1;
            EXPECT_EQ(bInside ? alphas.aui8[uiInside] : 99, bytes[y * kStride + x]);
            EXPECT_EQ(bInside ? values[uiInside] : 99, words[y * kStride + x]);
        }
}
