#include "Operations/ChannelCopies.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Values of all sizes with the hard ones among them.
template <typename T>
std::vector<T> makeElements(size_t uiCount, uint64_t ui64Seed)
{
    testsupport::CSeededRandom random(ui64Seed);
    std::vector<T> elements(uiCount);
    for (T& element : elements)
    {
        if constexpr (std::is_same_v<T, float>)
        {
            const float afHard[] = {0.0f, -0.0f, 1.0f, 3.4028235e38f, -3.4028235e38f, kInfinity, -kInfinity, kNaN, 1e-45f, 2.5e37f};
            if (random.below(4) == 0)
                element = afHard[random.below(10)];
            else
                element = (2.0f * random.nextFloat() - 1.0f) * 3.4e38f;
        }
        else
        {
            const T aHard[] = {0, 1, std::numeric_limits<T>::max(), static_cast<T>(std::numeric_limits<T>::max() - 1)};
            element = random.below(4) == 0 ? aHard[random.below(4)] : static_cast<T>(random.next32());
        }
    }
    return elements;
}

/// An element's bits. Any NaN is as good as another: its bits depend on the order of operands.
template <typename T>
uint32_t bitsOf(T element)
{
    if constexpr (std::is_same_v<T, float>)
    {
        uint32_t uiBits;
        std::memcpy(&uiBits, &element, sizeof(uiBits));
        return std::isnan(element) ? 0x7FC00000 : uiBits;
    }
    else
        return element;
}

template <typename T>
bool areEqual(const std::vector<T>& a, const std::vector<T>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](T x, T y) { return bitsOf(x) == bitsOf(y); });
}

template <typename Source, typename Destination>
void expectReferenceElements()
{
    testsupport::CSeededRandom random(sizeof(Source) * 16 + sizeof(Destination));
    for (uint32_t uiTurn = 0; uiTurn < 150; ++uiTurn)
    {
        const size_t uiPixels = uiTurn < 20 ? uiTurn : 230 + random.below(600);
        const uint32_t uiPairs = random.below(7);
        std::vector<EChannelName> to(uiPairs);
        std::vector<EChannelName> from(uiPairs);
        for (uint32_t i = 0; i < uiPairs; ++i)
        {
            to[i] = static_cast<EChannelName>(random.below(9));
            from[i] = static_cast<EChannelName>(random.below(9));
        }
        const std::vector<Source> source = makeElements<Source>(4 * uiPixels, uiTurn);
        const std::vector<Destination> before = makeElements<Destination>(4 * uiPixels, uiTurn + 1000);
        const ChannelPlan plan = makeChannelPlan(uiPairs, to.data(), from.data());

        std::vector<Destination> expected = before;
        std::vector<Destination> actual = before;
        copyPixelChannelsReference(source.data(), expected.data(), uiPixels, uiPairs, to.data(), from.data());
        copyPixelChannels(source.data(), actual.data(), uiPixels, plan);
        ASSERT_TRUE(areEqual(expected, actual)) << "turn " << uiTurn;

        if constexpr (std::is_same_v<Source, Destination>)
        {
            expected = before;
            actual = before;
            copyPixelChannelsReference(expected.data(), expected.data(), uiPixels, uiPairs, to.data(), from.data());
            copyPixelChannels(actual.data(), actual.data(), uiPixels, plan);
            ASSERT_TRUE(areEqual(expected, actual)) << "turn " << uiTurn << ", in place";
        }
    }
}

template <typename Source>
void expectReferenceElementsFrom()
{
    expectReferenceElements<Source, uint8_t>();
    expectReferenceElements<Source, uint16_t>();
    expectReferenceElements<Source, uint32_t>();
    expectReferenceElements<Source, float>();
}

} // namespace

TEST(ChannelCopies, GiveTheReferenceElementsBetweenAllKinds)
{
    expectReferenceElementsFrom<uint8_t>();
    expectReferenceElementsFrom<uint16_t>();
    expectReferenceElementsFrom<uint32_t>();
    expectReferenceElementsFrom<float>();
}

TEST(ChannelCopies, KeepTheBitsOfFloatsThatOnlyMove)
{
    const uint32_t auiBits[4] = {0x7FA00001, 0xFFC12345, 0x00000001, 0x80000000}; // a signalling NaN, a NaN, the least float, -0
    float afPixel[4];
    std::memcpy(afPixel, auiBits, sizeof(afPixel));
    const EChannelName aTo[] = {eChannelRed, eChannelAlpha};
    const EChannelName aFrom[] = {eChannelAlpha, eChannelRed};
    copyPixelChannels(afPixel, afPixel, 1, makeChannelPlan(2, aTo, aFrom));
    uint32_t auiResult[4];
    std::memcpy(auiResult, afPixel, sizeof(auiResult));
    const uint32_t auiExpected[4] = {0x80000000, 0xFFC12345, 0x00000001, 0x7FA00001};
    for (size_t c = 0; c < 4; ++c)
        EXPECT_EQ(auiExpected[c], auiResult[c]) << c;
}

TEST(TruncateToElement, CutsTheFraction)
{
    EXPECT_EQ(254, truncateToElement<uint8_t>(254.99f));
    EXPECT_EQ(0, truncateToElement<uint8_t>(-0.99f));
    EXPECT_EQ(65534, truncateToElement<uint16_t>(65534.5f));
    EXPECT_EQ(1.75f, truncateToElement<float>(1.75f)); // floats stay
}

TEST(TruncateToElement, WrapsWholeNumbersThatDoNotFit)
{
    EXPECT_EQ(0, truncateToElement<uint8_t>(256.5f));
    EXPECT_EQ(44, truncateToElement<uint8_t>(300.0f));
    EXPECT_EQ(255, truncateToElement<uint8_t>(-1.5f));
    EXPECT_EQ(4464, truncateToElement<uint16_t>(70000.0f));
    EXPECT_EQ(705032704u, truncateToElement<uint32_t>(5e9f)); // 5000000000 - 4294967296
    EXPECT_EQ(0xFFFFFFFFu, truncateToElement<uint32_t>(-1.0f));
}

TEST(TruncateToElement, The32BitMaximumIsTheFullChannel)
{
    EXPECT_EQ(0xFFFFFFFFu, truncateToElement<uint32_t>(4294967296.0f));
    EXPECT_EQ(0xFFFFFF00u, truncateToElement<uint32_t>(4294967040.0f)); // the float below
    EXPECT_EQ(512u, truncateToElement<uint32_t>(4294967808.0f));        // the float above
}

TEST(TruncateToElement, GivesZeroForWhatDoesNotFit64Bits)
{
    for (const float fValue : {9223372036854775808.0f, -9223372036854775808.0f, 1e30f, -1e30f, kInfinity, -kInfinity, kNaN})
    {
        EXPECT_EQ(0, truncateToElement<uint8_t>(fValue));
        EXPECT_EQ(0, truncateToElement<uint16_t>(fValue));
        EXPECT_EQ(0u, truncateToElement<uint32_t>(fValue));
    }
}

TEST(ChannelPlan, HasForEachChannelTheLastCopyIntoIt)
{
    const EChannelName aTo[] = {eChannelLuminance, eChannelGreen, eChannelUnspecified, eChannelNone, eChannelBlue};
    const EChannelName aFrom[] = {eChannelIntensity, eChannelAlpha, eChannelLuminance, eChannelRed, eChannelNone};
    const ChannelPlan expected = {eQuantityIntensity, eQuantityAlpha, eQuantityIntensity, eQuantityLuminance};
    EXPECT_EQ(expected, makeChannelPlan(5, aTo, aFrom));
    const ChannelPlan nothing = {eQuantityNone, eQuantityNone, eQuantityNone, eQuantityNone};
    EXPECT_EQ(nothing, makeChannelPlan(0, nullptr, nullptr));
}
