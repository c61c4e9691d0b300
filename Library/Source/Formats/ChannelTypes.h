#pragma once

#include <cstdint>

namespace moxtexture
{

/// How the bits of a channel are to be read. The numbers stand in files.
enum EMOXTChannelType : uint32_t
{
    eCT_UnsignedNormalisedByte = 0,
    eCT_SignedNormalisedByte = 1,
    eCT_UnsignedByte = 2,
    eCT_SignedByte = 3,
    eCT_UnsignedNormalisedShort = 4,
    eCT_SignedNormalisedShort = 5,
    eCT_UnsignedShort = 6,
    eCT_SignedShort = 7,
    eCT_UnsignedNormalisedInteger = 8,
    eCT_SignedNormalisedInteger = 9,
    eCT_UnsignedInteger = 10,
    eCT_SignedInteger = 11,
    eCT_SignedFloatingPoint = 12,
    eCT_UnsignedFloatingPoint = 13,
};

inline constexpr uint32_t k_uiChannelTypeCount = 14;

/// Bits of the storage element of a channel: 8, 16 or 32; 0 for a number that names no type.
[[nodiscard]] constexpr uint8_t getStorageBits(EMOXTChannelType eType)
{
    if (eType <= eCT_SignedByte)
        return 8;
    if (eType <= eCT_SignedShort)
        return 16;
    return eType < k_uiChannelTypeCount ? 32 : 0;
}

/// True for the types with negative values. "Unsigned Floating Point" and unknown numbers are not among them.
[[nodiscard]] constexpr bool isSignedChannelType(EMOXTChannelType eType)
{
    constexpr uint32_t ui32SignedTypes = 1u << eCT_SignedNormalisedByte | 1u << eCT_SignedByte | 1u << eCT_SignedNormalisedShort |
                                         1u << eCT_SignedShort | 1u << eCT_SignedNormalisedInteger | 1u << eCT_SignedInteger |
                                         1u << eCT_SignedFloatingPoint;
    return eType < eCT_UnsignedFloatingPoint && ((ui32SignedTypes >> eType) & 1) != 0;
}

/// The numbers stand in files.
enum EMOXTColourSpace : uint32_t
{
    eCS_Linear = 0,
    eCS_sRGB = 1,
};

enum EMOXTAxis : uint32_t
{
    eAxisX = 0,
    eAxisY = 1,
    eAxisZ = 2,
};

/// A channel by what it means; the letters of a layout map to these.
enum EChannelName : uint32_t
{
    eChannelNone = 0,
    eChannelRed = 1,
    eChannelGreen = 2,
    eChannelBlue = 3,
    eChannelAlpha = 4,
    eChannelLuminance = 5,
    eChannelIntensity = 6,
    eChannelUnspecified = 7, ///< a spare channel that keeps a place
};

/// r, g, b, a, l, i, x; any other letter is eChannelNone.
[[nodiscard]] constexpr EChannelName getChannelName(char cLetter)
{
    switch (cLetter)
    {
    case 'r':
        return eChannelRed;
    case 'g':
        return eChannelGreen;
    case 'b':
        return eChannelBlue;
    case 'a':
        return eChannelAlpha;
    case 'l':
        return eChannelLuminance;
    case 'i':
        return eChannelIntensity;
    case 'x':
        return eChannelUnspecified;
    default:
        return eChannelNone;
    }
}

/// The filter of everything that resamples, in the order in which it is offered.
enum EResizeMode : uint32_t
{
    eResizeNearest = 0,
    eResizeLinear = 1,
    eResizeCubic = 2,
};

} // namespace moxtexture
