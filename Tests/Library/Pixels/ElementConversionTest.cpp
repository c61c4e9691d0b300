#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Core/ByteOrder.h"
#include "Library/Pixels/PixelSamples.h"
#include "Pixels/ElementConversion.h"
#include "Support/EveryInstructionSet.h"

using namespace moxtexture;

namespace
{

constexpr EElement k_aeElements[] = {EElement::eUnsigned8, EElement::eUnsigned16, EElement::eHalf, EElement::eFloat32};

std::vector<uint8_t> convertBy(decltype(&convertElements) pConvert, EElement eFrom, EElement eTo, const uint8_t* pSource, size_t uiCount)
{
    std::vector<uint8_t> target(uiCount * getElementBytes(eTo));
    pConvert(eFrom, eTo, pSource, target.data(), uiCount);
    return target;
}

/// Every code of 8 and 16 bits, hard floats, and floats around every step of an 8-bit and 16-bit channel.
std::vector<uint8_t> makeCodes(EElement eElement)
{
    std::vector<uint8_t> bytes;
    if (eElement != EElement::eFloat32)
    {
        const size_t uiBytes = getElementBytes(eElement);
        for (uint32_t i = 0; i < (1u << (8 * uiBytes)); ++i)
            for (size_t uiByte = 0; uiByte < uiBytes; ++uiByte)
                bytes.push_back(static_cast<uint8_t>(i >> (8 * uiByte)));
        return bytes;
    }
    bytes = makeHardBytes(65536, 3);
    for (uint32_t i = 0; i < 65536; ++i)
    {
        const float fStep = (static_cast<float>(i) + 0.5f) / 65535.0f;
        for (const uint32_t ui32Bits : {bitsFromFloat(fStep) - 1, bitsFromFloat(fStep), bitsFromFloat(fStep) + 1})
        {
            bytes.resize(bytes.size() + 4);
            storeLE(&bytes[bytes.size() - 4], ui32Bits);
        }
    }
    return bytes;
}

} // namespace

TEST(ElementConversion, GivesTheReferenceBytesForEveryCode)
{
    for (const EElement eFrom : k_aeElements)
    {
        const std::vector<uint8_t> source = makeCodes(eFrom);
        const size_t uiCount = source.size() / getElementBytes(eFrom);
        for (const EElement eTo : k_aeElements)
        {
            const auto expected = convertBy(convertElementsReference, eFrom, eTo, source.data(), uiCount);
            forEachInstructionSet(
                [&]
                {
                    EXPECT_TRUE(expected == convertBy(convertElements, eFrom, eTo, source.data(), uiCount))
                        << static_cast<int>(eFrom) << " to " << static_cast<int>(eTo);
                });
        }
    }
}

TEST(ElementConversion, GivesTheReferenceBytesAtEveryLengthAndAlignment)
{
    const std::vector<uint8_t> source = makeHardBytes(512, 4);
    forEachInstructionSet(
        [&]
        {
            for (const EElement eFrom : k_aeElements)
                for (const EElement eTo : k_aeElements)
                    for (size_t uiCount = 0; uiCount < 70; ++uiCount)
                    {
                        const uint8_t* pSource = source.data() + uiCount % 5;
                        ASSERT_EQ(convertBy(convertElementsReference, eFrom, eTo, pSource, uiCount),
                                  convertBy(convertElements, eFrom, eTo, pSource, uiCount))
                            << uiCount;
                    }
        });
}

TEST(ElementConversion, ElementsThatAreKeptByAFloatComeBack)
{
    for (const EElement eElement : k_aeElements)
    {
        const std::vector<uint8_t> source = makeCodes(eElement);
        const auto back = convertBy(convertElements, eElement, eElement, source.data(), source.size() / getElementBytes(eElement));
        EXPECT_EQ(isKeptByFloat(eElement), source == back) << static_cast<int>(eElement);
    }
}

TEST(ElementConversion, BytesBecomeExactlyTheirQuotients)
{
    const std::vector<uint8_t> source = makeCodes(EElement::eUnsigned8);
    const auto target = convertBy(convertElements, EElement::eUnsigned8, EElement::eFloat32, source.data(), source.size());
    for (size_t i = 0; i < 256; ++i)
        EXPECT_EQ(static_cast<float>(i) / 255.0f, loadLE<float>(&target[4 * i]));
}
