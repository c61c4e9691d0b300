#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <vector>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"
#include "Pixels/CMOXPixelAccessor.h"
#include "Support/SeededPictures.h"

namespace moxtexture
{

/// A layout with its channel type, as the tests list them.
struct PixelKind
{
    MOXPixelWord format;
    EMOXTChannelType eType;

    CMOXPixelAccessor makeAccessor() const { return {format, eType}; }
};

inline std::ostream& operator<<(std::ostream& out, const PixelKind& kind)
{
    for (unsigned int i = 0; i < 4 && kind.format.getChannelLetter(i) != 0; ++i)
        out << kind.format.getChannelLetter(i) << +kind.format.getChannelBits(i);
    return out << " type " << kind.eType;
}

constexpr EMOXTChannelType k_eUnknownType = static_cast<EMOXTChannelType>(0xFFFFFFFF);

/// Every layout that is on offer as a target.
inline std::vector<PixelKind> getOfferedKinds()
{
    std::vector<PixelKind> kinds;
    const auto add = [&](MOXPixelWord format, std::initializer_list<uint32_t> types)
    {
        for (const uint32_t uiType : types)
            kinds.push_back({format, static_cast<EMOXTChannelType>(uiType)});
    };
    add(k_RGBA8, {0, 1, 2, 3});
    add(layout("rgba", 10, 10, 10, 2), {8, 10});
    add(layout("rgba", 4, 4, 4, 4), {4});
    add(layout("rgba", 5, 5, 5, 1), {4});
    add(layout("argb", 4, 4, 4, 4), {4});
    add(layout("argb", 1, 5, 5, 5), {4});
    add(layout("bgra", 8, 8, 8, 8), {0});
    add(layout("bgrx", 8, 8, 8, 8), {0});
    add(k_RGBA16, {4, 5, 6, 7, 12});
    add(k_RGBA32, {10, 11, 12});
    add(layout("rgb", 8, 8, 8), {0, 1, 2, 3});
    add(layout("rgb", 5, 6, 5), {4});
    add(layout("rgb", 32, 32, 32), {10, 11, 12});
    add(layout("bgr", 10, 11, 11), {13});
    add(layout("rg", 8, 8), {0, 1, 2, 3});
    add(layout("la", 8, 8), {0});
    add(layout("rg", 16, 16), {4, 5, 6, 7, 12});
    add(layout("rgb", 16, 16, 16), {4, 5, 6, 7, 12});
    add(layout("rg", 32, 32), {10, 11, 12});
    add(layout("r", 8), {0, 1, 2, 3});
    add(layout("a", 8), {0});
    add(layout("l", 8), {0});
    add(layout("r", 16), {4, 5, 6, 7, 12});
    add(layout("r", 32), {10, 11, 12});
    return kinds;
}

/// Layouts that only files and calls bring: packed, mixed, too large, with channels in odd places.
inline std::vector<PixelKind> getOddKinds()
{
    return {
        {layout("i", 8), eCT_UnsignedNormalisedByte},
        {layout("li", 8, 8), eCT_UnsignedNormalisedByte},
        {layout("ai", 8, 8), eCT_SignedNormalisedByte},
        {layout("ia", 4, 4), eCT_UnsignedNormalisedByte},
        {layout("x", 8), eCT_UnsignedNormalisedByte},
        {layout("lrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("xrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedByte},
        {layout("xrgb", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger},
        {layout("argb", 2, 10, 10, 10), eCT_UnsignedNormalisedInteger},
        {layout("argb", 2, 10, 10, 10), eCT_SignedNormalisedInteger},
        {layout("lgr", 6, 5, 5), eCT_SignedNormalisedInteger},
        {layout("rgb", 11, 11, 10), eCT_UnsignedFloatingPoint},
        {layout("rgb", 11, 11, 10), eCT_SignedFloatingPoint},
        {layout("rgba", 4, 4, 4, 4), eCT_UnsignedNormalisedByte},
        {layout("rgb", 3, 3, 2), eCT_UnsignedNormalisedInteger},
        {layout("argb", 1, 5, 5, 5), eCT_SignedShort},
        {layout("rgba", 1, 5, 5, 5), eCT_UnsignedNormalisedShort},
        {layout("rgba", 16, 16, 16, 16), eCT_UnsignedFloatingPoint},
        {layout("l", 16), eCT_UnsignedFloatingPoint},
        {layout("l", 16), eCT_SignedFloatingPoint},
        {layout("la", 32, 32), eCT_SignedFloatingPoint},
        {k_RGBA32, eCT_UnsignedNormalisedInteger},
        {k_RGBA32, eCT_SignedNormalisedInteger},
        {layout("rx", 24, 8), eCT_UnsignedNormalisedInteger},
        {layout("xr", 8, 24), eCT_SignedNormalisedInteger},
        // 32-bit unsigned floats hold nothing.
        {k_RGBA32, eCT_UnsignedFloatingPoint},
        // Elements and fields in one pixel; elements over fields; an element past the end of the pixel.
        {layout("argb", 8, 3, 3, 2), eCT_UnsignedNormalisedByte},
        {layout("argb", 8, 3, 3, 2), eCT_SignedByte},
        {layout("rgb", 16, 8, 8), eCT_UnsignedNormalisedShort},
        {layout("rgb", 8, 8, 16), eCT_SignedShort},
        {layout("rg", 8, 16), eCT_UnsignedNormalisedShort},
        {layout("rg", 32, 16), eCT_SignedFloatingPoint},
        {layout("rgba", 32, 32, 16, 16), eCT_SignedFloatingPoint},
        {layout("rgba", 16, 32, 32, 32), eCT_SignedFloatingPoint},
        // Fields above bit 63, and wider ones than elements are.
        {layout("rgb", 24, 24, 24), eCT_UnsignedNormalisedInteger},
        {layout("rgb", 24, 24, 24), eCT_SignedNormalisedInteger},
        {layout("rg", 40, 24), eCT_UnsignedNormalisedInteger},
        {layout("rg", 40, 24), eCT_SignedInteger},
        {layout("r", 64), eCT_UnsignedInteger},
        {layout("r", 64), eCT_SignedInteger},
        {layout("rg", 64, 64), eCT_SignedInteger},
        {layout("r", 128), eCT_UnsignedInteger},
        {layout("ra", 72, 56), eCT_UnsignedInteger},
        {k_RGBA32, eCT_UnsignedNormalisedShort},
        // Types that are none.
        {k_RGBA8, static_cast<EMOXTChannelType>(14)},
        {layout("rgb", 5, 6, 5), k_eUnknownType},
    };
}

inline std::vector<PixelKind> getFaultyKinds()
{
    return {
        {layout("rr", 8, 8), eCT_UnsignedNormalisedByte},      {layout("rg", 8, 0), eCT_UnsignedNormalisedByte},
        {layout("rz", 8, 8), eCT_UnsignedNormalisedByte},      {MOXPixelWord('r', 0, 'g', 0, 8, 0, 8, 0), eCT_UnsignedNormalisedByte},
        {layout("rg", 5, 5), eCT_UnsignedNormalisedShort},     {layout("rg", 2, 1), eCT_UnsignedNormalisedShort},
        {layout("rgba", 64, 64, 64, 64), eCT_UnsignedInteger}, {layout("rgba", 255, 255, 255, 255), eCT_UnsignedInteger},
    };
}

/// Bytes of pixels with what conversions stumble over: at random whole pixels of random bits, or 32-bit floats among which are
/// small and large ones, negative ones, denormals, infinities and not-a-number.
inline std::vector<uint8_t> makeHardBytes(size_t uiCount, uint64_t ui64Seed)
{
    constexpr uint32_t aui32Hard[] = {0x00000000, 0x80000000, 0x3F800000, 0xBF800000, 0x3F7FFFFF, 0x3F800001, 0x7F800000, 0xFF800000,
                                      0x7FC00000, 0xFFC12345, 0x7F812345, 0x00000001, 0x807FFFFF, 0x00800000, 0x7F7FFFFF, 0xFF7FFFFF,
                                      0x3B000000, 0x3B471000, 0x38800000, 0x387FFFFF, 0x38000000, 0x477FE000, 0x477FF000, 0x47800000,
                                      0x4F000000, 0x4F800000, 0xCF000000, 0x5F000000, 0x3D20E411, 0x3D20E412, 0x40000000, 0xC0000000};
    testsupport::CSeededRandom random(ui64Seed);
    std::vector<uint8_t> bytes = random.bytes(uiCount);
    for (size_t i = 0; i + 4 <= uiCount; i += 4)
    {
        const uint32_t uiKind = random.below(4);
        uint32_t ui32Bits = 0;
        if (uiKind == 0)
            continue;
        if (uiKind == 1)
            ui32Bits = aui32Hard[random.below(static_cast<uint32_t>(std::size(aui32Hard)))];
        else
            ui32Bits = bitsFromFloat(random.nextFloat() * (uiKind == 2 ? 1.0f : 3.0f) - (uiKind == 2 ? 0.0f : 1.5f));
        std::memcpy(&bytes[i], &ui32Bits, 4);
    }
    return bytes;
}

} // namespace moxtexture
