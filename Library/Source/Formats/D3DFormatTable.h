#pragma once

#include <array>
#include <cstdint>

#include "Formats/PixelEncoding.h"
#include "Formats/RowUse.h"

namespace moxtexture
{

/// Flags of the pixel format block in a DDS header.
enum ED3DPixelFlags : uint32_t
{
    eD3DPixelsHaveAlpha = 1,
    eD3DPixelsAlphaOnly = 2,
    eD3DPixelsFourCC = 4,
    eD3DPixelsRGB = 0x40,
    eD3DPixelsLuminance = 0x20000,
    eD3DPixelsBumpLuminance = 0x40000, ///< two signed channels and a luminance
    eD3DPixelsBump = 0x80000,          ///< signed channels
};

/// Four letters as a 32-bit number: the first in the lowest byte.
[[nodiscard]] constexpr uint32_t makeFourCC(const char (&strLetters)[5])
{
    uint32_t ui32Number = 0;
    for (unsigned int i = 0; i < 4; ++i)
        ui32Number |= static_cast<uint32_t>(static_cast<uint8_t>(strLetters[i])) << (8 * i);
    return ui32Number;
}

/// The FourCC of files that have the extended header.
inline constexpr uint32_t k_ui32FourCCExtended = makeFourCC("DX10");

/// What the pixel format block of a DDS header says, its own size apart.
struct D3DPixelFormat
{
    uint32_t ui32Flags = eD3DPixelsFourCC;
    uint32_t ui32FourCC = k_ui32FourCCExtended;
    uint32_t ui32BitCount = 0;
    std::array<uint32_t, 4> aui32Masks = {}; ///< red, green, blue, alpha
};

/// How the rows of a number ask about the alpha flag.
enum class ED3DAlphaFlag : uint8_t
{
    eAny,
    eAnyWritten, ///< any when read, set when written
    eSet,
    eClear,
};

/// A D3D format number or FourCC and what it stands for. Published: the D3DFORMAT enumeration and the DDS pixel format block.
struct D3DFormatRow
{
    uint32_t ui32Number;
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType; ///< when read; the colour space is linear
    EMOXTChannelType eFurtherType; ///< a second type that is written under the number; eChannelType where there is none
    ERowUse eUse;
    bool bPreMultiplied; ///< set from FourCCs alone
    uint32_t ui32Flags;  ///< without the alpha flag; eD3DPixelsFourCC: the number stands in the FourCC field
    ED3DAlphaFlag eAlphaFlag;
    std::array<uint32_t, 4> aui32Masks; ///< those that are not 0 are compared when read
    uint32_t ui32RefusedAlpha;          ///< an alpha mask with which the row is not meant; 0: none

    /// True for the letters of a FourCC: such a row sets the pre-multiplied flag, and is written for every type and space.
    [[nodiscard]] constexpr bool isFourCC() const { return pixelFormat.isCompressed(); }
};

/// For readers: what a number or FourCC stands for, or null.
[[nodiscard]] const D3DFormatRow* findD3DFormat(uint32_t ui32Number);

/// For readers: the number or FourCC that the pixel format block of a plain header means; 0 for none.
[[nodiscard]] uint32_t findD3DNumber(const D3DPixelFormat& format);

/// For writers: the row for an encoding, or null where the plain header has none. Numbered formats go by their number alone,
/// layouts by their channel type too; a plain header does not know of colour spaces.
[[nodiscard]] const D3DFormatRow* findD3DFormat(const PixelEncoding& encoding);

/// For writers: the pixel format block of a row. On purpose: where masks tell the layout, the FourCC field keeps "DX10".
[[nodiscard]] D3DPixelFormat describeD3DFormat(const D3DFormatRow& row);

} // namespace moxtexture
