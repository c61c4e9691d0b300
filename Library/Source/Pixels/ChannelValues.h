#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "Formats/ChannelTypes.h"
#include "Pixels/SmallFloats.h"

namespace moxtexture
{

/// How the bits of one channel, its code, stand for a value.
enum class EValueRule : uint8_t
{
    eNothing,       ///< reads as 0.0 and is never written
    eUnsigned,      ///< 0.0 to 1.0
    eSignedElement, ///< sign and magnitude, in an element of its own
    eSignedField,   ///< the same between other channels
    eFloat32,
    eHalf,
    eUnsignedHalf, ///< a half whose sign is written but not read
    eFloat11,
    eFloat10,
};

/// @param bWhole  the channel is an element of its own, not a field of a packed pixel
[[nodiscard]] EValueRule getReadRule(EMOXTChannelType eType, unsigned int uiBits, bool bWhole);
/// As getReadRule() but for "Signed Floating Point" in 10 or 11 bits, which can be read and not written.
[[nodiscard]] EValueRule getWriteRule(EMOXTChannelType eType, unsigned int uiBits, bool bWhole);

/// The lowest uiBits bits.
[[nodiscard]] constexpr uint64_t getLowMask(unsigned int uiBits)
{
    return uiBits >= 64 ? ~uint64_t{0} : (uint64_t{1} << uiBits) - 1;
}

/// Sign and magnitude, not two's complement, with b bits of magnitude: positive numbers divide by 2^b - 1. On purpose: negative ones
/// divide by 2^b - 2 in an element and by 2^b in a field, and the code with nothing but the sign is -0.0.
template <bool bElement>
[[nodiscard]] inline float readSigned(uint64_t ui64Code, unsigned int uiBits)
{
    const unsigned int b = uiBits - 1;
    const bool bNegative = ((ui64Code >> b) & 1) != 0;
    const uint64_t ui64Divisor = (uint64_t{1} << b) - (bNegative ? (bElement ? 2 : 0) : 1);
    if (ui64Divisor == 0)
        return 0.0f; // a field of one bit that is not set
    const float fMagnitude = static_cast<float>(ui64Code & getLowMask(b)) / static_cast<float>(ui64Divisor);
    return bNegative ? -fMagnitude : fMagnitude;
}

/// 0.0 to 1.0 spread over the codes; values outside are clamped, and not-a-number is 0.
[[nodiscard]] inline uint64_t writeUnsigned(float fValue, unsigned int uiBits)
{
    const uint64_t ui64Maximum = getLowMask(uiBits);
    const float fMaximum = static_cast<float>(ui64Maximum); // from 25 bits on rounded up to 2^bits
    const float fScaled = (fValue > 0.0f ? std::min(fValue, 1.0f) : 0.0f) * fMaximum + 0.5f;
    return fScaled < fMaximum ? static_cast<uint64_t>(fScaled) : ui64Maximum;
}

/// The magnitude times 2^b - 1, for negative numbers times 2^b, or'ed with the sign in bit b = uiBits - 1; not-a-number is 0.
///
/// On purpose nothing is clamped: -1.0 has only its sign bit set, and magnitudes above 1 reach into the sign and above the channel,
/// up to 2^31 - 1 (negative: 2^31) or the channel's own largest magnitude, where they saturate.
[[nodiscard]] inline uint64_t writeSigned(float fValue, unsigned int uiBits)
{
    const unsigned int b = uiBits - 1;
    const uint64_t ui64Sign = fValue < 0.0f ? 1 : 0;
    const float fMagnitude = std::fabs(fValue);
    const float fScaled = fMagnitude * static_cast<float>(getLowMask(b) + ui64Sign) + 0.5f;
    if (std::isnan(fScaled))
        return ui64Sign << b;
    // Within -1 to 1 the rounding of large factors may not carry a magnitude out of its field.
    const uint64_t ui64Maximum = getLowMask(fMagnitude <= 1.0f ? b : std::max(b, 31u)) + ui64Sign;
    const uint64_t ui64Magnitude = fScaled < static_cast<float>(ui64Maximum) ? static_cast<uint64_t>(fScaled) : ui64Maximum;
    return ui64Magnitude | ui64Sign << b;
}

/// The value of a code.
/// @param code    unsigned, the channel's bits and no others
/// @param uiBits  of the channel, 1 to 64
template <EValueRule eRule, typename Code>
[[nodiscard]] inline float readValue(Code code, unsigned int uiBits)
{
    static_assert(sizeof(Code) >= 4);
    if constexpr (eRule == EValueRule::eUnsigned)
        return static_cast<float>(code) / static_cast<float>(getLowMask(uiBits));
    if constexpr (eRule == EValueRule::eSignedElement)
        return readSigned<true>(code, uiBits);
    if constexpr (eRule == EValueRule::eSignedField)
        return readSigned<false>(code, uiBits);
    if constexpr (eRule == EValueRule::eFloat32)
        return floatFromBits(static_cast<uint32_t>(code));
    if constexpr (eRule == EValueRule::eHalf)
        return readHalf(static_cast<uint32_t>(code));
    if constexpr (eRule == EValueRule::eUnsignedHalf)
        return readUnsignedSmallFloat<k_uiHalfMantissa>(static_cast<uint32_t>(code));
    if constexpr (eRule == EValueRule::eFloat11)
        return readUnsignedSmallFloat<k_uiFloat11Mantissa>(static_cast<uint32_t>(code));
    if constexpr (eRule == EValueRule::eFloat10)
        return readUnsignedSmallFloat<k_uiFloat10Mantissa>(static_cast<uint32_t>(code));
    return 0.0f;
}

/// The code of a value. It may have bits above the channel: see writeSigned() and writeSmallFloat(). At up to 32 bits a channel it
/// fits 32 bits.
template <EValueRule eRule>
[[nodiscard]] inline uint64_t writeValue(float fValue, unsigned int uiBits)
{
    if constexpr (eRule == EValueRule::eUnsigned)
        return writeUnsigned(fValue, uiBits);
    if constexpr (eRule == EValueRule::eSignedElement || eRule == EValueRule::eSignedField)
        return writeSigned(fValue, uiBits);
    if constexpr (eRule == EValueRule::eFloat32)
        return bitsFromFloat(fValue);
    if constexpr (eRule == EValueRule::eHalf || eRule == EValueRule::eUnsignedHalf)
        return writeSmallFloat<k_uiHalfMantissa>(fValue);
    if constexpr (eRule == EValueRule::eFloat11)
        return writeSmallFloat<k_uiFloat11Mantissa>(fValue);
    if constexpr (eRule == EValueRule::eFloat10)
        return writeSmallFloat<k_uiFloat10Mantissa>(fValue);
    return 0;
}

template <EValueRule eRule>
struct RuleConstant
{
    static constexpr EValueRule value = eRule;
};

/// Calls body with the RuleConstant of a rule that is known only now, and gives what it gives.
template <typename Body>
auto withRule(EValueRule eRule, Body body)
{
    switch (eRule)
    {
    case EValueRule::eUnsigned:
        return body(RuleConstant<EValueRule::eUnsigned>());
    case EValueRule::eSignedElement:
        return body(RuleConstant<EValueRule::eSignedElement>());
    case EValueRule::eSignedField:
        return body(RuleConstant<EValueRule::eSignedField>());
    case EValueRule::eFloat32:
        return body(RuleConstant<EValueRule::eFloat32>());
    case EValueRule::eHalf:
        return body(RuleConstant<EValueRule::eHalf>());
    case EValueRule::eUnsignedHalf:
        return body(RuleConstant<EValueRule::eUnsignedHalf>());
    case EValueRule::eFloat11:
        return body(RuleConstant<EValueRule::eFloat11>());
    case EValueRule::eFloat10:
        return body(RuleConstant<EValueRule::eFloat10>());
    case EValueRule::eNothing:
        break;
    }
    return body(RuleConstant<EValueRule::eNothing>());
}

/// readValue() of a rule that is known only now.
[[nodiscard]] float readValueByRule(EValueRule eRule, uint64_t ui64Code, unsigned int uiBits);
/// writeValue() of a rule that is known only now.
[[nodiscard]] uint64_t writeValueByRule(EValueRule eRule, float fValue, unsigned int uiBits);

} // namespace moxtexture
