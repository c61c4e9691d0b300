#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"
#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// How a float becomes a channel of an integer element.
template <typename T, uint64_t ui64ChannelMaximum>
struct IntegerChannelKind
{
    static constexpr float kMaximum = static_cast<float>(ui64ChannelMaximum);

    /// Cut to a whole number, never rounded; saturates at both ends of the element, and NaN gives 0.
    static constexpr T toElement(float fValue)
    {
        // Compared before the conversion: 2^32 and more do not fit the element.
        if (!(fValue > 0.0f))
            return 0;
        return fValue < kMaximum ? static_cast<T>(fValue) : std::numeric_limits<T>::max();
    }

    /// Between 0 and kMaximum, then cut.
    static constexpr T clampToElement(float fValue) { return toElement(fValue); }
};

/// The working form of the texture operations: four channels in the order red, green, blue, alpha, each one element of type T.
///
/// kMaximum is what a full channel counts in the arithmetic of the operations. On purpose: for integers it is 2^32, one more than
/// an element holds, and for floats the largest float, not 1.0.
template <typename T>
struct ChannelKind;

template <>
struct ChannelKind<uint8_t> : IntegerChannelKind<uint8_t, 255>
{
    static constexpr MOXPixelWord kPixelFormat = k_RGBA8;
    static constexpr EMOXTChannelType kChannelType = eCT_UnsignedNormalisedByte;
};

template <>
struct ChannelKind<uint16_t> : IntegerChannelKind<uint16_t, 65535>
{
    static constexpr MOXPixelWord kPixelFormat = k_RGBA16;
    static constexpr EMOXTChannelType kChannelType = eCT_UnsignedNormalisedShort;
};

template <>
struct ChannelKind<uint32_t> : IntegerChannelKind<uint32_t, 4294967296>
{
    static constexpr MOXPixelWord kPixelFormat = k_RGBA32;
    static constexpr EMOXTChannelType kChannelType = eCT_UnsignedNormalisedInteger;
};

template <>
struct ChannelKind<float>
{
    static constexpr MOXPixelWord kPixelFormat = k_RGBA32;
    static constexpr EMOXTChannelType kChannelType = eCT_SignedFloatingPoint;
    static constexpr float kMaximum = std::numeric_limits<float>::max();

    /// The value itself: floats are not cut to whole numbers.
    static constexpr float toElement(float fValue) { return fValue; }

    /// Between 0 and kMaximum. NaN gives 0 as in the other kinds, so that no result depends on the bits of a NaN, which differ
    /// with the order of operands.
    static constexpr float clampToElement(float fValue)
    {
        if (!(fValue > 0.0f))
            return 0.0f;
        return fValue < kMaximum ? fValue : kMaximum;
    }
};

inline constexpr uint32_t k_uiWorkingChannels = 4;

template <typename T>
[[nodiscard]] bool isOfChannelKind(const CMOXTextureHeader& header)
{
    return header.getPixelFormat() == ChannelKind<T>::kPixelFormat && header.getChannelType() == ChannelKind<T>::kChannelType;
}

/// Calls operation(T()) with the element type of a texture in working form.
///
/// @param operation  gives a bool, which is the result
/// @return false for every other pixel format and channel type; operation is not called then
template <typename Operation>
[[nodiscard]] bool withChannelKind(const CMOXTextureHeader& header, Operation operation)
{
    if (isOfChannelKind<uint8_t>(header))
        return operation(uint8_t());
    if (isOfChannelKind<uint16_t>(header))
        return operation(uint16_t());
    if (isOfChannelKind<uint32_t>(header))
        return operation(uint32_t());
    if (isOfChannelKind<float>(header))
        return operation(float());
    return false;
}

/// A pixel of 4, 8 or 16 bytes that only moves; may lie at any address.
template <size_t uiSize>
struct WholePixel
{
    uint8_t aui8Bytes[uiSize];
};

/// Calls operation(WholePixel<n>()) with the pixel size of a texture in working form; otherwise as withChannelKind.
template <typename Operation>
[[nodiscard]] bool withWholePixel(const CMOXTextureHeader& header, Operation operation)
{
    return withChannelKind(header, [&](auto element) { return operation(WholePixel<k_uiWorkingChannels * sizeof(element)>()); });
}

} // namespace moxtexture
