#include "Codecs/Packed/SharedExponent.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "Core/ByteOrder.h"
#include "PackedTestSurfaces.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace packedtest;
using testing::Each;
using testing::ElementsAre;

namespace
{

using Entry = decltype(&encodeSharedExponent);

constexpr float k_fNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float k_fInfinity = std::numeric_limits<float>::infinity();
constexpr float k_fDenormal = std::numeric_limits<float>::denorm_min();

constexpr uint32_t word(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiExponent)
{
    return uiRed | uiGreen << 9 | uiBlue << 18 | uiExponent << 27;
}

template <typename T>
Bytes toBytes(const std::vector<T>& values)
{
    Bytes bytes(values.size() * 4);
    for (size_t i = 0; i < values.size(); ++i)
        storeLE(bytes.data() + 4 * i, values[i]);
    return bytes;
}

Bytes convertRow(Entry entry, const Bytes& source, uint32_t uiCount, uint32_t uiBytesPerPixel)
{
    return convert(entry, source, size_t{uiCount} * uiBytesPerPixel, uiCount, 1, 8 * uiBytesPerPixel);
}

/// By the reference; the fast form gets a whole row of the same pixel, so that it fills vectors.
uint32_t encode(float fRed, float fGreen, float fBlue)
{
    const Bytes pixel = toBytes<float>({fRed, fGreen, fBlue});
    const auto uiWord = loadLE<uint32_t>(convertRow(encodeSharedExponentReference, pixel, 1, 4).data());
    Bytes row;
    for (int i = 0; i < 33; ++i)
        row.insert(row.end(), pixel.begin(), pixel.end());
    forEachInstructionSet([&] { EXPECT_EQ(toBytes(std::vector<uint32_t>(33, uiWord)), convertRow(encodeSharedExponent, row, 33, 4)); });
    return uiWord;
}

std::vector<float> decode(uint32_t uiWord)
{
    const Bytes bytes = convertRow(decodeSharedExponentReference, toBytes<uint32_t>({uiWord}), 1, 12);
    return {loadLE<float>(bytes.data()), loadLE<float>(bytes.data() + 4), loadLE<float>(bytes.data() + 8)};
}

} // namespace

TEST(SharedExponent, NoLightIsTheWordOfZero)
{
    EXPECT_EQ(0u, encode(0.0f, 0.0f, 0.0f));
    EXPECT_THAT(decode(0), ElementsAre(0.0f, 0.0f, 0.0f));
}

TEST(SharedExponent, TheGreatestValueEncodesWithoutOverflow)
{
    // 65408 = 511 * 2^7; its exponent is 15, e = 31 and scale 2^7.
    EXPECT_EQ(word(511, 0, 0, 31), encode(65408.0f, 0.0f, 0.0f));
    EXPECT_THAT(decode(word(511, 0, 0, 31)), ElementsAre(65408.0f, 0.0f, 0.0f));
}

TEST(SharedExponent, WhatIsGreaterOrInfiniteIsClamped)
{
    EXPECT_EQ(word(511, 511, 511, 31), encode(65536.0f, std::numeric_limits<float>::max(), k_fInfinity));
}

TEST(SharedExponent, NaNAndNegativeValuesAreZero)
{
    EXPECT_EQ(0u, encode(k_fNaN, -1.0f, -k_fInfinity));
    EXPECT_EQ(0u, encode(-0.0f, -k_fNaN, -k_fDenormal));
    // 1.0 has the exponent 0: e = 16, scale 2^-8, 256 steps.
    EXPECT_EQ(word(0, 256, 0, 16), encode(k_fNaN, 1.0f, k_fNaN));
    EXPECT_EQ(word(256, 0, 0, 16), encode(1.0f, k_fNaN, -65408.0f));
    EXPECT_EQ(word(0, 0, 256, 16), encode(k_fNaN, -5.0f, 1.0f));
}

TEST(SharedExponent, TheGreatestOfThreeGivesTheExponentAndEachRoundsAHalfUp)
{
    // 3.0 has the exponent 1: e = 17, scale 2^-7. 3 * 128 = 384; 0.50390625 * 128 = 64.5, up to 65; 0.001 * 128 = 0.128, down to 0.
    EXPECT_EQ(word(384, 65, 0, 17), encode(3.0f, 0.50390625f, 0.001f));
    EXPECT_EQ(word(65, 0, 384, 17), encode(0.50390625f, 0.001f, 3.0f));
    EXPECT_EQ(word(0, 384, 65, 17), encode(0.001f, 3.0f, 0.50390625f));
}

TEST(SharedExponent, WhatWouldRoundTo512TakesTheNextExponent)
{
    // 511.5 / 256 has the exponent 0, scale 2^-8: 511.5 rounds to 512. So e = 17 and scale 2^-7: 255.75 rounds to 256, and 128.5 / 256
    // to 64.25, so 64.
    EXPECT_EQ(word(256, 64, 0, 17), encode(511.5f / 256.0f, 128.5f / 256.0f, 0.0f));
    // A hair less stays: 511 of e = 16, and the other rounds up to 129.
    EXPECT_EQ(word(511, 129, 0, 16), encode(std::nextafter(511.5f / 256.0f, 0.0f), 128.5f / 256.0f, 0.0f));
}

TEST(SharedExponent, TheLeastExponentIsMinus16)
{
    // Steps of 2^-24. 2^-16 has the exponent -16: 256 steps with e = 0. 2^-20 has a lesser one and is 16 steps.
    EXPECT_EQ(word(256, 16, 0, 0), encode(0x1p-16f, 0x1p-20f, 0.0f));
    EXPECT_EQ(word(16, 1, 0, 0), encode(0x1p-20f, 0x1p-25f, 0.0f));
    EXPECT_EQ(0u, encode(0x1.fp-26f, 0.0f, 0.0f));
    // One bit below half a step: 0.5 - 2^-25 + 0.5 lies between the floats 1 - 2^-24 and 1, and goes to the even one.
    EXPECT_EQ(1u, encode(0x1.fffffep-26f, 0.0f, 0.0f));
    EXPECT_EQ(0u, encode(k_fDenormal, std::numeric_limits<float>::min(), 0.0f));
    // 511.5 steps round to 512, so e = 1 and 256 steps of 2^-23.
    EXPECT_EQ(word(256, 0, 0, 1), encode(511.5f * 0x1p-24f, 0.0f, 0.0f));
}

TEST(SharedExponent, DecodingMultipliesByTwoToTheExponentLess24)
{
    EXPECT_THAT(decode(word(256, 128, 1, 16)), ElementsAre(1.0f, 0.5f, 1.0f / 256.0f));
    EXPECT_THAT(decode(word(1, 2, 511, 0)), ElementsAre(0x1p-24f, 0x1p-23f, 511.0f * 0x1p-24f));
    EXPECT_THAT(decode(0xFFFFFFFF), ElementsAre(65408.0f, 65408.0f, 65408.0f));
}

TEST(SharedExponent, WordsComeBackIfTheirGreatestChannelUsesAllNineBits)
{
    testsupport::CSeededRandom random(335);
    std::vector<uint32_t> words(4096);
    for (uint32_t& uiWord : words)
        uiWord = random.next32() | 1u << 9 * random.below(3) << 8;
    const Bytes floats = convertRow(decodeSharedExponent, toBytes(words), 4096, 12);
    EXPECT_EQ(toBytes(words), convertRow(encodeSharedExponent, floats, 4096, 4));
}

TEST(SharedExponent, AllRowsOfASurfaceAreConverted)
{
    const Bytes floats = toBytes(std::vector<float>(3 * 5 * 3, 1.0f));
    Bytes words(3 * 5 * 4 + 1, 7);
    EXPECT_EQ(60u, encodeSharedExponent(floats.data(), words.data(), 5, 3));
    EXPECT_EQ(toBytes(std::vector<uint32_t>(15, word(256, 256, 256, 16))), Bytes(words.begin(), words.end() - 1));
    EXPECT_EQ(7, words.back());
    Bytes decoded(3 * 5 * 12 + 1, 7);
    EXPECT_EQ(180u, decodeSharedExponent(words.data(), decoded.data(), 5, 3));
    EXPECT_EQ(floats, Bytes(decoded.begin(), decoded.end() - 1));
    EXPECT_EQ(7, decoded.back());
}

TEST(SharedExponent, NullPointersAndEmptySurfacesGiveNothing)
{
    const Bytes source(64, 1);
    Bytes target(64, 7);
    for (const Entry entry : {encodeSharedExponent, encodeSharedExponentReference, decodeSharedExponent, decodeSharedExponentReference})
    {
        EXPECT_EQ(0u, entry(nullptr, target.data(), 2, 2));
        EXPECT_EQ(0u, entry(source.data(), nullptr, 2, 2));
        EXPECT_EQ(0u, entry(source.data(), target.data(), 0, 2));
        EXPECT_EQ(0u, entry(source.data(), target.data(), 2, 0));
    }
    EXPECT_THAT(target, Each(7));
}

TEST(SharedExponent, TheFastFormsGiveTheReferenceBytesOfAnyBitsAtEveryCount)
{
    testsupport::CSeededRandom random(336);
    for (uint32_t uiCount = 1; uiCount <= 600; ++uiCount)
    {
        // Any bits, and in every other round floats of the format's own range.
        Bytes floats = random.bytes(size_t{uiCount} * 12);
        if (uiCount % 2 == 0)
            for (size_t i = 0; i < size_t{uiCount} * 3; ++i)
                storeLE(floats.data() + 4 * i, std::ldexp(random.nextFloat(), static_cast<int>(random.below(46)) - 28));
        const Bytes words = random.bytes(size_t{uiCount} * 4);
        const Bytes encoded = convertRow(encodeSharedExponentReference, floats, uiCount, 4);
        const Bytes decoded = convertRow(decodeSharedExponentReference, words, uiCount, 12);
        forEachInstructionSet(
            [&]
            {
                EXPECT_EQ(encoded, convertRow(encodeSharedExponent, floats, uiCount, 4));
                EXPECT_EQ(decoded, convertRow(decodeSharedExponent, words, uiCount, 12));
            });
    }
}

TEST(SharedExponent, TheFastFormRoundsEveryNeighbourOfAHalfAsTheReferenceDoes)
{
    std::vector<float> floats;
    for (int iExponent = -26; iExponent <= 8; ++iExponent)
        for (int iHalves = 1; iHalves <= 1024; ++iHalves)
        {
            const float fHalf = std::ldexp(static_cast<float>(iHalves), iExponent);
            floats.insert(floats.end(), {std::nextafter(fHalf, 0.0f), fHalf, std::nextafter(fHalf, k_fInfinity)});
        }
    const auto uiCount = static_cast<uint32_t>(floats.size() / 3);
    const Bytes source = toBytes(floats);
    const Bytes encoded = convertRow(encodeSharedExponentReference, source, uiCount, 4);
    forEachInstructionSet([&] { EXPECT_TRUE(encoded == convertRow(encodeSharedExponent, source, uiCount, 4)); });
}
