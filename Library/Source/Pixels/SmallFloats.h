#pragma once

#include <cstdint>
#include <cstring>

namespace moxtexture
{

[[nodiscard]] inline float floatFromBits(uint32_t ui32Bits)
{
    float fValue;
    std::memcpy(&fValue, &ui32Bits, sizeof(fValue));
    return fValue;
}

[[nodiscard]] inline uint32_t bitsFromFloat(float fValue)
{
    uint32_t ui32Bits;
    std::memcpy(&ui32Bits, &fValue, sizeof(ui32Bits));
    return ui32Bits;
}

// Floating point numbers with an exponent of five bits above a mantissa of 10, 6 or 5: the half, and the unsigned floats of 11 and
// 10 bits. The exponent's bias is 15, so it lies 112 below that of a 32-bit float.
inline constexpr unsigned int k_uiHalfMantissa = 10;
inline constexpr unsigned int k_uiFloat11Mantissa = 6;
inline constexpr unsigned int k_uiFloat10Mantissa = 5;

/// The value of exponent and mantissa; bits above them are not looked at.
///
/// Zero is 0.0 and exponent 31 is infinity or not a number, as usual. On purpose: any other number of exponent 0 is read as if its
/// mantissa had the leading one, so that it is never renormalised: the half 0x0001 is 2^-15 * (1 + 1/1024).
template <unsigned int uiMantissaBits>
[[nodiscard]] inline float readUnsignedSmallFloat(uint32_t ui32Code)
{
    constexpr uint32_t ui32MantissaMask = (1u << uiMantissaBits) - 1;
    const uint32_t ui32Exponent = (ui32Code >> uiMantissaBits) & 31;
    const uint32_t ui32Mantissa = (ui32Code & ui32MantissaMask) << (23 - uiMantissaBits);
    if ((ui32Exponent | ui32Mantissa) == 0)
        return 0.0f;
    return floatFromBits((ui32Exponent == 31 ? 0x7F800000 : (ui32Exponent + 112) << 23) | ui32Mantissa);
}

/// Half with its sign in bit 15. On purpose: only 0x0000 is zero; 0x8000 goes by the rule for exponent 0 and is -2^-15.
[[nodiscard]] inline float readHalf(uint32_t ui32Code)
{
    if (ui32Code == 0x8000)
        return floatFromBits(0x80000000 | (112u << 23));
    const uint32_t ui32Sign = (ui32Code & 0x8000) << 16;
    return floatFromBits(ui32Sign | bitsFromFloat(readUnsignedSmallFloat<k_uiHalfMantissa>(ui32Code)));
}

/// Exponent and mantissa, and above them the sign: bit 15 of a half, bit 11 and bit 10 of the unsigned floats.
///
/// The mantissa is cut, not rounded. What is too small becomes a zero of its sign, what is too large the largest number. On purpose:
/// infinity and not-a-number become exponent 30 with the top of their own mantissa, and the unsigned floats keep the sign, which
/// then lies outside their field.
template <unsigned int uiMantissaBits>
[[nodiscard]] inline uint32_t writeSmallFloat(float fValue)
{
    const uint32_t ui32Bits = bitsFromFloat(fValue);
    const uint32_t ui32Sign = (ui32Bits >> 31) << (uiMantissaBits + 5);
    const uint32_t ui32Exponent = (ui32Bits >> 23) & 0xFF;
    if (ui32Exponent <= 112)
        return ui32Sign;

    constexpr uint32_t ui32MantissaMask = (1u << uiMantissaBits) - 1;
    const uint32_t ui32Mantissa = (ui32Bits >> (23 - uiMantissaBits)) & ui32MantissaMask;
    if (ui32Exponent - 112 <= 30)
        return ui32Sign | (ui32Exponent - 112) << uiMantissaBits | ui32Mantissa;
    return ui32Sign | 30u << uiMantissaBits | (ui32Exponent == 0xFF ? ui32Mantissa : ui32MantissaMask);
}

} // namespace moxtexture
