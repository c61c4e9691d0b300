#pragma once

#include <cstddef>
#include <cstdint>

#include "Formats/PixelFormats.h"

namespace moxtexture
{

/// What the formats of this folder are made of.
struct EtcFormatRow
{
    uint32_t uiFormat;
    size_t uiBlockBytes; ///< of a block of 4 by 4 pixels in the stream
    size_t uiPixelBytes; ///< of a pixel as it is encoded from and decoded to
};

inline constexpr EtcFormatRow k_aEtcFormats[] = {
    // clang-format off
    {ePF_ETC1,         8, 3}, // R, G, B bytes
    {ePF_ETC2_RGB,     8, 3},
    {ePF_ETC2_RGBA,   16, 4}, // R, G, B, A bytes; the alpha block comes before the colour block
    {ePF_ETC2_RGB_A1,  8, 4},
    {ePF_EAC_R11,      8, 2}, // a 16-bit word
    {ePF_EAC_RG11,    16, 4}, // two 16-bit words, R and G; R's block comes before G's
    // clang-format on
};

/// The row of a format, or null for a format of another folder.
[[nodiscard]] constexpr const EtcFormatRow* findEtcFormat(uint32_t uiFormat)
{
    for (const EtcFormatRow& row : k_aEtcFormats)
        if (row.uiFormat == uiFormat)
            return &row;
    return nullptr;
}

} // namespace moxtexture
