#pragma once

#include <cstdint>

namespace moxtexture
{

/// Formats with a number instead of a channel layout: block codecs and packed formats. The numbers stand in files.
enum EMOXTPixelFormat : uint32_t
{
    ePF_MOXTC_2bpp_RGB = 0,
    ePF_MOXTC_2bpp_RGBA = 1,
    ePF_MOXTC_4bpp_RGB = 2,
    ePF_MOXTC_4bpp_RGBA = 3,
    ePF_MOXTCII_2bpp = 4,
    ePF_MOXTCII_4bpp = 5,
    ePF_ETC1 = 6,
    ePF_BC1 = 7,
    ePF_DXT2 = 8,
    ePF_BC2 = 9,
    ePF_DXT4 = 10,
    ePF_BC3 = 11,
    ePF_BC4 = 12,
    ePF_BC5 = 13,
    ePF_BC6 = 14,
    ePF_BC7 = 15,
    ePF_UYVY = 16,
    ePF_YUY2 = 17,
    ePF_1bpp = 18,
    ePF_Shared_Exponent_RGB999_E5 = 19,
    ePF_2_Planar_RGBG_8_8_8_8 = 20,
    ePF_2_Planar_GRGB_8_8_8_8 = 21,
    ePF_ETC2_RGB = 22,
    ePF_ETC2_RGBA = 23,
    ePF_ETC2_RGB_A1 = 24,
    ePF_EAC_R11 = 25,
    ePF_EAC_RG11 = 26,
    ePF_ASTC_4x4 = 27,
    ePF_ASTC_5x4 = 28,
    ePF_ASTC_5x5 = 29,
    ePF_ASTC_6x5 = 30,
    ePF_ASTC_6x6 = 31,
    ePF_ASTC_8x5 = 32,
    ePF_ASTC_8x6 = 33,
    ePF_ASTC_8x8 = 34,
    ePF_ASTC_10x5 = 35,
    ePF_ASTC_10x6 = 36,
    ePF_ASTC_10x8 = 37,
    ePF_ASTC_10x10 = 38,
    ePF_ASTC_12x10 = 39,
    ePF_ASTC_12x12 = 40,
    ePF_ASTC_3x3x3 = 41,
    ePF_ASTC_4x3x3 = 42,
    ePF_ASTC_4x4x3 = 43,
    ePF_ASTC_4x4x4 = 44,
    ePF_ASTC_5x4x4 = 45,
    ePF_ASTC_5x5x4 = 46,
    ePF_ASTC_5x5x5 = 47,
    ePF_ASTC_6x5x5 = 48,
    ePF_ASTC_6x6x5 = 49,
    ePF_ASTC_6x6x6 = 50,
    ePF_Count = 51, ///< no format: a texture of this one measures 0 bytes and stands for the absence of a texture
};

/// What is known of a numbered format.
struct PixelFormatRow
{
    const char* strName;            ///< as users see it
    uint8_t uiBitsPerPixel;         ///< 0: the size is not to be had from a bit count
    uint8_t uiMinX, uiMinY, uiMinZ; ///< the smallest surface in pixels; every surface's size rounds up to multiples of it
};

/// The row of a number; for numbers that name no format a row with the empty name, 0 bits and 1 by 1 by 1.
[[nodiscard]] const PixelFormatRow& getPixelFormatRow(uint32_t ui32Format);

/// True for the formats whose surfaces are runs of 128-bit blocks, counted by block and not by bits a pixel.
[[nodiscard]] constexpr bool isASTC(uint32_t ui32Format)
{
    return ui32Format >= ePF_ASTC_4x4 && ui32Format <= ePF_ASTC_6x6x6;
}

} // namespace moxtexture
