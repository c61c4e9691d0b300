#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// The two words of a colour block, in host order; the bit numbers of the Khronos Data Format Specification (ETC1, ETC2) apply
/// to them. A stream stores each most significant byte first, the high word before the low one.
struct EtcBlockWords
{
    uint32_t ui32High = 0;
    uint32_t ui32Low = 0;
};

constexpr bool operator==(const EtcBlockWords& a, const EtcBlockWords& b)
{
    return a.ui32High == b.ui32High && a.ui32Low == b.ui32Low;
}

/// Red, green, blue: either levels of 4 or 5 bits (6 and 7 in planar mode) or bytes, as the user says.
using EtcColour = std::array<uint8_t, 3>;

} // namespace moxtexture
