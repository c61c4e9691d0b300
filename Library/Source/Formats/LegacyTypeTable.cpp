#include "Formats/LegacyTypeTable.h"

#include <algorithm>
#include <iterator>

namespace moxtexture
{
namespace
{

/// How a row is used: the families of APIs that write it, and what they ask for.
enum ELegacyRowUse : uint8_t
{
    eReadOnly = 0,
    eGL = 1,         ///< OpenGL, OpenGL ES 1 and 2
    eD3D9 = 2,       ///< DirectX 11 (9_3), and OpenGL ES 3
    eD3D10 = 4,      ///< DirectX 11 (10_1)
    eD3D11 = 8,      ///< DirectX 11 (11_1)
    eAsksType = 16,  ///< a numbered format is only written with the row's channel type
    eAsksSpace = 32, ///< and with its colour space
    eWriteOnly = 64,
};

struct LegacyTypeRow
{
    uint32_t ui32Type;
    PixelEncoding encoding;
    uint8_t ui8Use; ///< ELegacyRowUse, or'ed
};

/// In the order of the types, so that the first row that fits is the lowest.
constexpr LegacyTypeRow k_aRows[] = {
    // clang-format off
    {   0, { layout("argb", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D9 | eD3D10 },
    {   1, { layout("argb", 1, 5, 5, 5),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D9 | eD3D10 },
    {   2, { layout("rgb", 5, 6, 5),          eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D9 | eD3D10 },
    {   3, { layout("xrgb", 1, 5, 5, 5),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D9 | eD3D10 },
    {   4, { layout("rgb", 8, 8, 8),          eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {   5, { layout("argb", 8, 8, 8, 8),      eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {   6, { layout("argb", 8, 3, 3, 2),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D9 | eD3D10 },
    {   7, { layout("i", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    {   8, { layout("ai", 8, 8),              eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D10 },
    {   9, { ePF_1bpp,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eReadOnly },
    {  10, { ePF_YUY2,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eReadOnly },
    {  11, { ePF_UYVY,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eReadOnly },
    {  12, { ePF_MOXTC_2bpp_RGBA,             eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  12, { ePF_MOXTC_2bpp_RGB,              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 | eWriteOnly },
    {  13, { ePF_MOXTC_4bpp_RGBA,             eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  13, { ePF_MOXTC_4bpp_RGB,              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 | eWriteOnly },
    {  16, { layout("rgba", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eGL | eD3D10 },
    {  17, { layout("rgba", 5, 5, 5, 1),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eGL | eD3D10 },
    {  18, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  19, { layout("rgb", 5, 6, 5),          eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eGL },
    {  20, { layout("rgbx", 5, 5, 5, 1),      eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eGL | eD3D10 },
    {  21, { layout("rgb", 8, 8, 8),          eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eD3D10 },
    {  22, { layout("l", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    {  22, { layout("i", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eWriteOnly },
    {  23, { layout("la", 8, 8),              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    {  23, { layout("ai", 8, 8),              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eWriteOnly },
    {  24, { ePF_MOXTC_2bpp_RGBA,             eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  24, { ePF_MOXTC_2bpp_RGB,              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eWriteOnly },
    {  25, { ePF_MOXTC_4bpp_RGBA,             eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  25, { ePF_MOXTC_4bpp_RGB,              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eWriteOnly },
    {  26, { layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eD3D10 },
    {  27, { layout("a", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL | eD3D10 },
    {  28, { ePF_MOXTCII_4bpp,                eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  29, { ePF_MOXTCII_2bpp,                eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  32, { ePF_BC1,                         eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  33, { ePF_DXT2,                        eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D9 },
    {  34, { ePF_BC2,                         eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  35, { ePF_DXT4,                        eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D9 },
    {  36, { ePF_BC3,                         eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  37, { layout("rgb", 3, 3, 2),          eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  38, { layout("al", 4, 4),              eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  39, { layout("lgr", 6, 5, 5),          eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 },
    {  40, { layout("xlgr", 8, 8, 8, 8),      eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 },
    {  41, { layout("abgr", 8, 8, 8, 8),      eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 },
    {  42, { layout("abgr", 2, 10, 10, 10),   eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  43, { layout("argb", 2, 10, 10, 10),   eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  44, { layout("argb", 2, 10, 10, 10),   eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eReadOnly },
    {  44, { layout("abgr", 2, 10, 10, 10),   eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 | eWriteOnly },
    {  45, { layout("gr", 16, 16),            eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  46, { layout("gr", 16, 16),            eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 },
    {  47, { layout("abgr", 16, 16, 16, 16),  eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  48, { layout("r", 16),                 eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eD3D10 },
    {  49, { layout("gr", 16, 16),            eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eD3D10 },
    {  50, { layout("abgr", 16, 16, 16, 16),  eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eD3D10 },
    {  51, { layout("r", 32),                 eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eD3D10 },
    {  52, { layout("gr", 32, 32),            eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    {  52, { layout("rg", 32, 32),            eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eWriteOnly },
    {  53, { layout("abgr", 32, 32, 32, 32),  eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D9 | eD3D10 },
    {  54, { ePF_ETC1,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eGL },
    {  64, { layout("a", 8),                  eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  65, { layout("gr", 8, 8),              eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D9 },
    {  66, { layout("l", 16),                 eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  67, { layout("l", 8),                  eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  68, { layout("al", 8, 8),              eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D9 | eD3D10 },
    {  69, { ePF_UYVY,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  70, { ePF_YUY2,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D9 },
    {  80, { layout("rgba", 32, 32, 32, 32),  eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    {  81, { layout("rgba", 32, 32, 32, 32),  eCT_UnsignedInteger,            eCS_Linear, false }, eD3D10 },
    {  82, { layout("rgba", 32, 32, 32, 32),  eCT_SignedInteger,              eCS_Linear, false }, eD3D10 },
    {  83, { layout("rgb", 32, 32, 32),       eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    {  84, { layout("rgb", 32, 32, 32),       eCT_UnsignedInteger,            eCS_Linear, false }, eD3D10 },
    {  85, { layout("rgb", 32, 32, 32),       eCT_SignedInteger,              eCS_Linear, false }, eD3D10 },
    {  86, { layout("rgba", 16, 16, 16, 16),  eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    {  87, { layout("rgba", 16, 16, 16, 16),  eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D10 },
    {  88, { layout("rgba", 16, 16, 16, 16),  eCT_UnsignedShort,              eCS_Linear, false }, eD3D10 },
    {  89, { layout("rgba", 16, 16, 16, 16),  eCT_SignedNormalisedShort,      eCS_Linear, false }, eD3D10 },
    {  90, { layout("rgba", 16, 16, 16, 16),  eCT_SignedShort,                eCS_Linear, false }, eD3D10 },
    {  91, { layout("rg", 32, 32),            eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    {  92, { layout("rg", 32, 32),            eCT_UnsignedInteger,            eCS_Linear, false }, eD3D10 },
    {  93, { layout("rg", 32, 32),            eCT_SignedInteger,              eCS_Linear, false }, eD3D10 },
    {  94, { layout("rgba", 10, 10, 10, 2),   eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D10 },
    {  95, { layout("rgba", 10, 10, 10, 2),   eCT_UnsignedInteger,            eCS_Linear, false }, eD3D10 },
    {  96, { layout("bgr", 10, 11, 11),       eCT_UnsignedFloatingPoint,      eCS_Linear, false }, eReadOnly },
    {  97, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    {  98, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 },
    {  99, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedByte,               eCS_Linear, false }, eD3D10 },
    { 100, { layout("rgba", 8, 8, 8, 8),      eCT_SignedNormalisedByte,       eCS_Linear, false }, eD3D10 },
    { 101, { layout("rgba", 8, 8, 8, 8),      eCT_SignedByte,                 eCS_Linear, false }, eD3D10 },
    { 102, { layout("rg", 16, 16),            eCT_SignedFloatingPoint,        eCS_Linear, false }, eD3D10 },
    { 103, { layout("rg", 16, 16),            eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D10 },
    { 104, { layout("rg", 16, 16),            eCT_UnsignedShort,              eCS_Linear, false }, eD3D10 },
    { 105, { layout("rg", 16, 16),            eCT_SignedNormalisedShort,      eCS_Linear, false }, eD3D10 },
    { 106, { layout("rg", 16, 16),            eCT_SignedShort,                eCS_Linear, false }, eD3D10 },
    { 107, { layout("r", 32),                 eCT_SignedFloatingPoint,        eCS_Linear, false }, eReadOnly },
    { 108, { layout("r", 32),                 eCT_UnsignedInteger,            eCS_Linear, false }, eD3D10 },
    { 109, { layout("r", 32),                 eCT_SignedInteger,              eCS_Linear, false }, eD3D10 },
    { 110, { layout("rg", 8, 8),              eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    { 111, { layout("rg", 8, 8),              eCT_UnsignedByte,               eCS_Linear, false }, eD3D10 },
    { 112, { layout("rg", 8, 8),              eCT_SignedNormalisedByte,       eCS_Linear, false }, eD3D10 },
    { 113, { layout("rg", 8, 8),              eCT_SignedByte,                 eCS_Linear, false }, eD3D10 },
    { 114, { layout("r", 16),                 eCT_SignedFloatingPoint,        eCS_Linear, false }, eReadOnly },
    { 115, { layout("r", 16),                 eCT_UnsignedNormalisedShort,    eCS_Linear, false }, eD3D10 },
    { 116, { layout("r", 16),                 eCT_UnsignedShort,              eCS_Linear, false }, eD3D10 },
    { 117, { layout("r", 16),                 eCT_SignedNormalisedShort,      eCS_Linear, false }, eD3D10 },
    { 118, { layout("r", 16),                 eCT_SignedShort,                eCS_Linear, false }, eD3D10 },
    { 119, { layout("r", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    { 120, { layout("r", 8),                  eCT_UnsignedByte,               eCS_Linear, false }, eD3D10 },
    { 121, { layout("r", 8),                  eCT_SignedNormalisedByte,       eCS_Linear, false }, eD3D10 },
    { 122, { layout("r", 8),                  eCT_SignedByte,                 eCS_Linear, false }, eD3D10 },
    { 123, { layout("r", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eReadOnly },
    { 124, { ePF_1bpp,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eReadOnly },
    { 125, { ePF_Shared_Exponent_RGB999_E5,   eCT_SignedFloatingPoint,        eCS_Linear, false }, eReadOnly },
    { 126, { ePF_2_Planar_RGBG_8_8_8_8,       eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    { 127, { ePF_2_Planar_GRGB_8_8_8_8,       eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 },
    { 128, { ePF_BC1,                         eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D10 | eAsksType | eAsksSpace },
    { 129, { ePF_BC1,                         eCT_UnsignedNormalisedInteger,  eCS_sRGB,   false }, eD3D10 | eAsksType | eAsksSpace },
    { 130, { ePF_BC2,                         eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D10 | eAsksType | eAsksSpace },
    { 131, { ePF_BC2,                         eCT_UnsignedNormalisedInteger,  eCS_sRGB,   false }, eD3D10 | eAsksType | eAsksSpace },
    { 132, { ePF_BC3,                         eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D10 | eAsksType | eAsksSpace },
    { 133, { ePF_BC3,                         eCT_UnsignedNormalisedInteger,  eCS_sRGB,   false }, eD3D10 | eAsksType | eAsksSpace },
    { 134, { ePF_BC4,                         eCT_UnsignedNormalisedInteger,  eCS_sRGB,   false }, eD3D10 | eAsksType },
    { 135, { ePF_BC4,                         eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D10 | eAsksType },
    { 136, { ePF_BC5,                         eCT_UnsignedNormalisedInteger,  eCS_Linear, false }, eD3D10 | eAsksType },
    { 137, { ePF_BC5,                         eCT_SignedNormalisedInteger,    eCS_Linear, false }, eD3D10 | eAsksType },
    { 144, { layout("rgbx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 145, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D11 },
    { 146, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   true  }, eD3D10 | eD3D11 },
    { 147, { layout("rgb", 5, 6, 5),          eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 148, { layout("rgba", 5, 5, 5, 1),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 149, { layout("rgba", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 150, { layout("l", 8),                  eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 151, { layout("rgbx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 152, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D11 },
    { 153, { layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D10 | eD3D11 },
    { 154, { layout("l", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D11 },
    { 155, { layout("a", 8),                  eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D11 },
    { 156, { ePF_1bpp,                        eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D11 },
    { 157, { layout("xrgb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 158, { layout("argb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 159, { layout("argb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   true  }, eD3D10 | eD3D11 },
    { 160, { layout("argb", 1, 5, 5, 5),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 161, { layout("argb", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 162, { layout("xrgb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 163, { layout("argb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 164, { layout("argb", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D10 | eD3D11 },
    { 165, { layout("bgrx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 166, { layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 167, { layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   true  }, eD3D10 | eD3D11 },
    { 168, { layout("bgr", 5, 6, 5),          eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 169, { layout("bgra", 5, 5, 5, 1),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 170, { layout("bgrx", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 171, { layout("bgrx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 172, { layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D11 },
    { 173, { layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D10 | eD3D11 },
    { 174, { layout("xbgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 175, { layout("abgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 176, { layout("abgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_sRGB,   true  }, eD3D10 | eD3D11 },
    { 177, { layout("abgr", 1, 5, 5, 5),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 178, { layout("xbgr", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,    eCS_sRGB,   false }, eD3D10 | eD3D11 },
    { 179, { layout("xbgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 180, { layout("abgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, false }, eD3D10 | eD3D11 },
    { 181, { layout("abgr", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,     eCS_Linear, true  }, eD3D10 | eD3D11 },
    // clang-format on
};

constexpr uint8_t k_aui8FamilyOfApi[] = {0, eGL, eGL, eD3D9, eGL, eD3D9, eD3D10, eD3D11};

/// The unsigned normalised types of every size as one.
constexpr EMOXTChannelType joinSizes(EMOXTChannelType eType)
{
    return eType == eCT_UnsignedNormalisedByte || eType == eCT_UnsignedNormalisedShort ? eCT_UnsignedNormalisedInteger : eType;
}

constexpr bool fitsNumber(const LegacyTypeRow& row, const PixelEncoding& encoding)
{
    return ((row.ui8Use & eAsksType) == 0 || row.encoding.eChannelType == encoding.eChannelType) &&
           ((row.ui8Use & eAsksSpace) == 0 || row.encoding.eColourSpace == encoding.eColourSpace);
}

constexpr bool fitsLayout(const LegacyTypeRow& row, const PixelEncoding& encoding, uint8_t ui8Family)
{
    switch (ui8Family)
    {
    case eGL:
        return row.encoding.eChannelType == encoding.eChannelType;
    case eD3D9:
        return joinSizes(row.encoding.eChannelType) == joinSizes(encoding.eChannelType);
    default:
        return row.encoding == encoding;
    }
}

constexpr bool fits(const LegacyTypeRow& row, const PixelEncoding& encoding, uint8_t ui8Family)
{
    if ((row.ui8Use & ui8Family) == 0 || row.encoding.pixelFormat != encoding.pixelFormat)
        return false;
    return encoding.pixelFormat.isCompressed() ? fitsNumber(row, encoding) : fitsLayout(row, encoding, ui8Family);
}

} // namespace

PixelEncoding legacyTypeToFormat(uint32_t ui32Type)
{
    const auto isIt = [&](const LegacyTypeRow& row) { return row.ui32Type == ui32Type && (row.ui8Use & eWriteOnly) == 0; };
    const auto* pRow = std::find_if(std::begin(k_aRows), std::end(k_aRows), isIt);
    if (pRow != std::end(k_aRows))
        return pRow->encoding;
    return {ePF_Count, static_cast<EMOXTChannelType>(k_uiChannelTypeCount), eCS_Linear, false};
}

int32_t formatToLegacyType(const PixelEncoding& encoding, uint32_t ui32Api)
{
    if (ui32Api >= std::size(k_aui8FamilyOfApi))
        return -1;
    const uint8_t ui8Family = k_aui8FamilyOfApi[ui32Api];
    const auto isIt = [&](const LegacyTypeRow& row) { return fits(row, encoding, ui8Family); };
    const auto* pRow = std::find_if(std::begin(k_aRows), std::end(k_aRows), isIt);
    return pRow != std::end(k_aRows) ? static_cast<int32_t>(pRow->ui32Type) : -1;
}

} // namespace moxtexture
