#include "Formats/GLFormatTable.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "Formats/RowUse.h"

namespace moxtexture
{
namespace
{

/// glType of a row: what the elements' kind tells, or the type of a packed pixel.
constexpr uint32_t k_uiOfElements = 0;
constexpr uint32_t k_uiByte = 5120;
constexpr uint32_t k_uiUnsignedByte = 5121;
constexpr uint32_t k_uiByte332 = 32818;
constexpr uint32_t k_uiShort4444 = 32819;
constexpr uint32_t k_uiShort5551 = 32820;
constexpr uint32_t k_uiInt1010102 = 32822;
constexpr uint32_t k_uiShort565 = 33635;
constexpr uint32_t k_uiInt2101010Rev = 33640;
constexpr uint32_t k_uiInt101111Rev = 35899;
constexpr uint32_t k_uiInt5999Rev = 35902;

/// Base internal formats, also the glFormat of uncompressed pixels.
enum EGLBase : uint32_t
{
    eRed = 6403,
    eAlpha = 6406,
    eRGB = 6407,
    eRGBA = 6408,
    eLuminance = 6409,
    eLuminanceAlpha = 6410,
    eBGRA = 32993,
    eRG = 33319,
    eRGInteger = 33320,
    eRedInteger = 36244,
    eRGBInteger = 36248,
    eRGBAInteger = 36249,
};

struct GLFormatRow
{
    uint32_t ui32InternalFormat;
    uint32_t uiCount; ///< internal formats and format numbers that follow each other one by one, all of this row
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType;
    EMOXTColourSpace eColourSpace;
    uint32_t ui32Base;
    uint32_t ui32Type;
    ERowUse eUse;
    bool bOfType = false;    ///< read only where the glType is the row's
    uint32_t ui32Format = 0; ///< glFormat where it is not the base
};

constexpr EMOXTChannelType k_eUN8 = eCT_UnsignedNormalisedByte;
constexpr EMOXTChannelType k_eSN8 = eCT_SignedNormalisedByte;
constexpr EMOXTChannelType k_eU8 = eCT_UnsignedByte;
constexpr EMOXTChannelType k_eS8 = eCT_SignedByte;
constexpr EMOXTChannelType k_eUN16 = eCT_UnsignedNormalisedShort;
constexpr EMOXTChannelType k_eSN16 = eCT_SignedNormalisedShort;
constexpr EMOXTChannelType k_eU16 = eCT_UnsignedShort;
constexpr EMOXTChannelType k_eS16 = eCT_SignedShort;
constexpr EMOXTChannelType k_eUN32 = eCT_UnsignedNormalisedInteger;
constexpr EMOXTChannelType k_eU32 = eCT_UnsignedInteger;
constexpr EMOXTChannelType k_eS32 = eCT_SignedInteger;
constexpr EMOXTChannelType k_eFloat = eCT_SignedFloatingPoint;
constexpr EMOXTChannelType k_eUFloat = eCT_UnsignedFloatingPoint;

// Ascending numbers: the first row that suits is the one that is written. The two formats that are only written share the number of
// the formats that they differ from in pre-multiplication alone.
// clang-format off
constexpr GLFormatRow k_aGLFormats[] = {
//    internal count layout                   type      space       base             glType             use, of that type, glFormat
    {  6407,  1, layout("rgb", 5, 6, 5),        k_eUN16,  eCS_Linear, eRGB,            k_uiShort565,      ERowUse::eReadOnly, true },
    {  6407,  1, layout("rgb", 3, 3, 2),        k_eUN8,   eCS_Linear, eRGB,            k_uiByte332,       ERowUse::eReadOnly, true },
    {  6408,  1, layout("rgba", 4, 4, 4, 4),    k_eUN16,  eCS_Linear, eRGBA,           k_uiShort4444,     ERowUse::eReadOnly, true },
    {  6408,  1, layout("rgba", 5, 5, 5, 1),    k_eUN16,  eCS_Linear, eRGBA,           k_uiShort5551,     ERowUse::eReadOnly, true },
    { 10768,  1, layout("rgb", 3, 3, 2),        k_eUN8,   eCS_Linear, eRGB,            k_uiByte332,       ERowUse::eBoth },
    { 32828,  1, layout("a", 8),                k_eUN8,   eCS_Linear, eAlpha,          k_uiOfElements,    ERowUse::eBoth },
    // On purpose: a and l of 16 bits are of the byte types under their sized numbers, signed and not, where they are not floats.
    { 32830,  1, layout("a", 16),               k_eUN8,   eCS_Linear, eAlpha,          k_uiUnsignedByte,  ERowUse::eBoth },
    { 32832,  1, layout("l", 8),                k_eUN8,   eCS_Linear, eLuminance,      k_uiOfElements,    ERowUse::eBoth },
    { 32834,  1, layout("l", 16),               k_eUN8,   eCS_Linear, eLuminance,      k_uiUnsignedByte,  ERowUse::eBoth },
    { 32837,  1, layout("la", 8, 8),            k_eUN8,   eCS_Linear, eLuminanceAlpha, k_uiOfElements,    ERowUse::eBoth },
    { 32849,  1, layout("rgb", 8, 8, 8),        k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    // OpenGL takes pixels of 10 10 10 2 bits with four letters alone, also for an internal format of three.
    { 32850,  1, layout("rgbx", 10, 10, 10, 2), k_eUN32,  eCS_Linear, eRGB,            k_uiInt1010102,    ERowUse::eBoth, false, eRGBA },
    { 32852,  1, layout("rgb", 16, 16, 16),     k_eUN16,  eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 32854,  1, layout("rgba", 4, 4, 4, 4),    k_eUN16,  eCS_Linear, eRGBA,           k_uiShort4444,     ERowUse::eBoth },
    { 32855,  1, layout("rgba", 5, 5, 5, 1),    k_eUN16,  eCS_Linear, eRGBA,           k_uiShort5551,     ERowUse::eBoth },
    { 32856,  1, k_RGBA8,                       k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 32857,  1, layout("abgr", 2, 10, 10, 10), k_eUN32,  eCS_Linear, eRGBA,           k_uiInt2101010Rev, ERowUse::eBoth },
    { 32859,  1, k_RGBA16,                      k_eUN16,  eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 32993,  1, layout("bgra", 8, 8, 8, 8),    k_eUN8,   eCS_Linear, eBGRA,           k_uiUnsignedByte,  ERowUse::eBoth, true },
    { 33321,  1, layout("r", 8),                k_eUN8,   eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 33322,  1, layout("r", 16),               k_eUN16,  eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 33323,  1, layout("rg", 8, 8),            k_eUN8,   eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 33324,  1, layout("rg", 16, 16),          k_eUN16,  eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 33325,  1, layout("r", 16),               k_eFloat, eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 33326,  1, layout("r", 32),               k_eFloat, eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 33327,  1, layout("rg", 16, 16),          k_eFloat, eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 33328,  1, layout("rg", 32, 32),          k_eFloat, eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 33329,  1, layout("r", 8),                k_eS8,    eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33330,  1, layout("r", 8),                k_eU8,    eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33331,  1, layout("r", 16),               k_eS16,   eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33332,  1, layout("r", 16),               k_eU16,   eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33333,  1, layout("r", 32),               k_eS32,   eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33334,  1, layout("r", 32),               k_eU32,   eCS_Linear, eRedInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 33335,  1, layout("rg", 8, 8),            k_eS8,    eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33336,  1, layout("rg", 8, 8),            k_eU8,    eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33337,  1, layout("rg", 16, 16),          k_eS16,   eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33338,  1, layout("rg", 16, 16),          k_eU16,   eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33339,  1, layout("rg", 32, 32),          k_eS32,   eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33340,  1, layout("rg", 32, 32),          k_eU32,   eCS_Linear, eRGInteger,      k_uiOfElements,    ERowUse::eBoth },
    { 33776,  1, ePF_BC1,                       k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 33777,  1, ePF_BC1,                       k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eReadOnly },
    { 33778,  1, ePF_BC2,                       k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 33778,  1, ePF_DXT2,                      k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eWriteOnly },
    { 33779,  1, ePF_BC3,                       k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 33779,  1, ePF_DXT4,                      k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eWriteOnly },
    { 34836,  1, k_RGBA32,                      k_eFloat, eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 34837,  1, layout("rgb", 32, 32, 32),     k_eFloat, eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 34838,  1, layout("a", 32),               k_eFloat, eCS_Linear, eAlpha,          k_uiOfElements,    ERowUse::eBoth },
    { 34840,  1, layout("l", 32),               k_eFloat, eCS_Linear, eLuminance,      k_uiOfElements,    ERowUse::eBoth },
    { 34841,  1, layout("la", 32, 32),          k_eFloat, eCS_Linear, eLuminanceAlpha, k_uiOfElements,    ERowUse::eBoth },
    { 34842,  1, k_RGBA16,                      k_eFloat, eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 34843,  1, layout("rgb", 16, 16, 16),     k_eFloat, eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 34844,  1, layout("a", 16),               k_eFloat, eCS_Linear, eAlpha,          k_uiOfElements,    ERowUse::eBoth },
    { 34846,  1, layout("l", 16),               k_eFloat, eCS_Linear, eLuminance,      k_uiOfElements,    ERowUse::eBoth },
    { 34847,  1, layout("la", 16, 16),          k_eFloat, eCS_Linear, eLuminanceAlpha, k_uiOfElements,    ERowUse::eBoth },
    { 35412,  1, ePF_MOXTC_2bpp_RGB,            k_eUN8,   eCS_sRGB,   eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 35413,  1, ePF_MOXTC_4bpp_RGB,            k_eUN8,   eCS_sRGB,   eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 35414,  1, ePF_MOXTC_2bpp_RGBA,           k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 35415,  1, ePF_MOXTC_4bpp_RGBA,           k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 35840,  1, ePF_MOXTC_4bpp_RGB,            k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 35841,  1, ePF_MOXTC_2bpp_RGB,            k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 35842,  1, ePF_MOXTC_4bpp_RGBA,           k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 35843,  1, ePF_MOXTC_2bpp_RGBA,           k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 35898,  1, layout("bgr", 10, 11, 11),     k_eUFloat,eCS_Linear, eRGB,            k_uiInt101111Rev,  ERowUse::eBoth },
    { 35901,  1, ePF_Shared_Exponent_RGB999_E5, k_eUFloat,eCS_Linear, eRGB,            k_uiInt5999Rev,    ERowUse::eBoth },
    { 35905,  1, layout("rgb", 8, 8, 8),        k_eUN8,   eCS_sRGB,   eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 35907,  1, k_RGBA8,                       k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 35916,  1, ePF_BC1,                       k_eUN8,   eCS_sRGB,   eRGB,            k_uiOfElements,    ERowUse::eReadOnly },
    { 35917,  1, ePF_BC1,                       k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eReadOnly },
    { 35918,  1, ePF_BC2,                       k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eReadOnly },
    { 35919,  1, ePF_BC3,                       k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eReadOnly },
    { 36194,  1, layout("rgb", 5, 6, 5),        k_eUN16,  eCS_Linear, eRGB,            k_uiShort565,      ERowUse::eBoth },
    { 36196,  1, ePF_ETC1,                      k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    // On purpose: of the four 32-bit rows, the two of rgba name the other sign than OpenGL does, and 36227 and 36209 do not.
    { 36208,  1, k_RGBA32,                      k_eS32,   eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36209,  1, layout("rgb", 32, 32, 32),     k_eU32,   eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36214,  1, k_RGBA16,                      k_eU16,   eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36215,  1, layout("rgb", 16, 16, 16),     k_eU16,   eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36220,  1, k_RGBA8,                       k_eU8,    eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36221,  1, layout("rgb", 8, 8, 8),        k_eU8,    eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36226,  1, k_RGBA32,                      k_eU32,   eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36227,  1, layout("rgb", 32, 32, 32),     k_eS32,   eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36232,  1, k_RGBA16,                      k_eS16,   eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36233,  1, layout("rgb", 16, 16, 16),     k_eS16,   eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36238,  1, k_RGBA8,                       k_eS8,    eCS_Linear, eRGBAInteger,    k_uiOfElements,    ERowUse::eBoth },
    { 36239,  1, layout("rgb", 8, 8, 8),        k_eS8,    eCS_Linear, eRGBInteger,     k_uiOfElements,    ERowUse::eBoth },
    { 36756,  1, layout("r", 8),                k_eSN8,   eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 36757,  1, layout("rg", 8, 8),            k_eSN8,   eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 36758,  1, layout("rgb", 8, 8, 8),        k_eSN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 36759,  1, k_RGBA8,                       k_eSN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 36760,  1, layout("r", 16),               k_eSN16,  eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 36761,  1, layout("rg", 16, 16),          k_eSN16,  eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 36762,  1, layout("rgb", 16, 16, 16),     k_eSN16,  eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 36763,  1, k_RGBA16,                      k_eSN16,  eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 36884,  1, layout("a", 8),                k_eSN8,   eCS_Linear, eAlpha,          k_uiOfElements,    ERowUse::eBoth },
    { 36885,  1, layout("l", 8),                k_eSN8,   eCS_Linear, eLuminance,      k_uiOfElements,    ERowUse::eBoth },
    { 36886,  1, layout("la", 8, 8),            k_eSN8,   eCS_Linear, eLuminanceAlpha, k_uiOfElements,    ERowUse::eBoth },
    { 36888,  1, layout("a", 16),               k_eSN8,   eCS_Linear, eAlpha,          k_uiByte,          ERowUse::eBoth },
    { 36889,  1, layout("l", 16),               k_eSN8,   eCS_Linear, eLuminance,      k_uiByte,          ERowUse::eBoth },
    { 36975,  1, layout("rgba", 10, 10, 10, 2), k_eU32,   eCS_Linear, eRGBAInteger,    k_uiInt1010102,    ERowUse::eBoth },
    { 37175,  2, ePF_MOXTCII_2bpp,              k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37488,  1, ePF_EAC_R11,                   k_eUN8,   eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 37489,  1, ePF_EAC_R11,                   k_eSN8,   eCS_Linear, eRed,            k_uiOfElements,    ERowUse::eBoth },
    { 37490,  1, ePF_EAC_RG11,                  k_eUN8,   eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 37491,  1, ePF_EAC_RG11,                  k_eSN8,   eCS_Linear, eRG,             k_uiOfElements,    ERowUse::eBoth },
    { 37492,  1, ePF_ETC2_RGB,                  k_eUN8,   eCS_Linear, eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 37493,  1, ePF_ETC2_RGB,                  k_eUN8,   eCS_sRGB,   eRGB,            k_uiOfElements,    ERowUse::eBoth },
    { 37494,  1, ePF_ETC2_RGB_A1,               k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37495,  1, ePF_ETC2_RGB_A1,               k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37496,  1, ePF_ETC2_RGBA,                 k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37497,  1, ePF_ETC2_RGBA,                 k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37808, 14, ePF_ASTC_4x4,                  k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37824, 10, ePF_ASTC_3x3x3,                k_eUN8,   eCS_Linear, eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37840, 14, ePF_ASTC_4x4,                  k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37856, 10, ePF_ASTC_3x3x3,                k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
    { 37872,  2, ePF_MOXTCII_2bpp,              k_eUN8,   eCS_sRGB,   eRGBA,           k_uiOfElements,    ERowUse::eBoth },
};

/// Internal formats that name letters and leave the elements to glType.
struct UnsizedRow
{
    EGLBase eBase; ///< also the internal format
    std::string_view strLetters;
};

constexpr UnsizedRow k_aUnsizedFormats[] = {
    { eRed, "r" }, { eAlpha, "a" }, { eRGB, "rgb" }, { eRGBA, "rgba" }, { eLuminance, "l" }, { eLuminanceAlpha, "la" }, { eRG, "rg" },
};

struct ElementRow
{
    EMOXTChannelType eChannelType;
    uint8_t uiBits;
    uint32_t ui32Type;
    bool bUnsized; ///< what the glType means to an unsized internal format
};

constexpr ElementRow k_aElements[] = {
    { k_eUN8,                      8, k_uiUnsignedByte, true },
    { k_eSN8,                      8, k_uiByte,         true },
    { k_eU8,                       8, k_uiUnsignedByte, false },
    { k_eS8,                       8, k_uiByte,         false },
    { k_eUN16,                    16, 5123,             true },
    { k_eSN16,                    16, 5122,             true },
    { k_eU16,                     16, 5123,             false },
    { k_eS16,                     16, 5122,             false },
    { k_eUN32,                    32, 5125,             true },
    { eCT_SignedNormalisedInteger, 32, 5124,            true },
    { k_eU32,                     32, 5125,             false },
    { k_eS32,                     32, 5124,             false },
    { k_eFloat,                   16, 5131,             false },
    { k_eFloat,                   32, 5126,             false },
};
// clang-format on

/// Bytes of what a glType names.
constexpr uint32_t getTypeSize(uint32_t ui32Type)
{
    switch (ui32Type)
    {
    case k_uiByte:
    case k_uiUnsignedByte:
    case k_uiByte332:
        return 1;
    case 5122:
    case 5123:
    case 5131:
    case k_uiShort4444:
    case k_uiShort5551:
    case k_uiShort565:
        return 2;
    default:
        return 4;
    }
}

template <typename Row, size_t N, typename Condition>
const Row* findRow(const Row (&aRows)[N], Condition isIt)
{
    const auto* pRow = std::find_if(std::begin(aRows), std::end(aRows), isIt);
    return pRow != std::end(aRows) ? pRow : nullptr;
}

/// As many elements of uiBits as there are letters.
constexpr MOXPixelWord getLayout(std::string_view strLetters, uint8_t uiBits)
{
    const auto bits = [&](size_t uiIndex) { return uiIndex < strLetters.size() ? uiBits : uint8_t{0}; };
    return layout(strLetters, bits(0), bits(1), bits(2), bits(3));
}

/// True for one of the numbers that count up from the first.
constexpr bool isWithin(uint64_t ui64Value, uint64_t ui64First, uint32_t uiCount)
{
    return ui64Value >= ui64First && ui64Value - ui64First < uiCount;
}

const GLFormatRow* findRowToWrite(const PixelEncoding& encoding)
{
    const MOXPixelWord word = encoding.pixelFormat;
    const EMOXTColourSpace eSpace = encoding.eColourSpace == eCS_sRGB ? eCS_sRGB : eCS_Linear;
    const auto isOfFormat = [&](const GLFormatRow& row)
    { return mayBeWritten(row.eUse) && isWithin(word.getWord(), row.pixelFormat.getWord(), row.uiCount); };
    // Elements are of one type; blocks are what they are, and their type says no more than whether there are signs.
    const auto isOfType = [&](const GLFormatRow& row)
    {
        return word.isCompressed() ? isSignedChannelType(row.eChannelType) == isSignedChannelType(encoding.eChannelType)
                                   : row.eChannelType == encoding.eChannelType;
    };
    const auto isOfSpace = [&](const GLFormatRow& row) { return row.eColourSpace == eSpace; };

    if (const auto* pRow = findRow(k_aGLFormats, [&](const auto& row) { return isOfFormat(row) && isOfType(row) && isOfSpace(row); }))
        return pRow;
    if (const auto* pRow = findRow(k_aGLFormats, [&](const auto& row) { return isOfFormat(row) && isOfType(row); }))
        return pRow;
    if (!word.isCompressed())
        return nullptr;
    if (const auto* pRow = findRow(k_aGLFormats, [&](const auto& row) { return isOfFormat(row) && isOfSpace(row); }))
        return pRow;
    return findRow(k_aGLFormats, isOfFormat);
}

/// @return 0 for elements that OpenGL has no type for
uint32_t getElementType(const PixelEncoding& encoding)
{
    const auto isIt = [&](const ElementRow& row)
    { return row.eChannelType == encoding.eChannelType && row.uiBits == encoding.pixelFormat.getChannelBits(0); };
    const ElementRow* pRow = findRow(k_aElements, isIt);
    return pRow != nullptr ? pRow->ui32Type : 0;
}

std::optional<GLFormat> findUnsizedToWrite(const PixelEncoding& encoding)
{
    const auto isElement = [&](const ElementRow& row) { return row.bUnsized && row.eChannelType == encoding.eChannelType; };
    const ElementRow* pElement = findRow(k_aElements, isElement);
    if (pElement == nullptr)
        return {};
    const auto isLayout = [&](const UnsizedRow& row) { return getLayout(row.strLetters, pElement->uiBits) == encoding.pixelFormat; };
    const UnsizedRow* pRow = findRow(k_aUnsizedFormats, isLayout);
    if (pRow == nullptr)
        return {};
    return GLFormat{pElement->ui32Type, getTypeSize(pElement->ui32Type), pRow->eBase, pRow->eBase, pRow->eBase};
}

} // namespace

std::optional<PixelEncoding> findGLFormat(uint32_t ui32InternalFormat, uint32_t ui32Type)
{
    const auto isRow = [&](const GLFormatRow& row)
    {
        return isWithin(ui32InternalFormat, row.ui32InternalFormat, row.uiCount) && mayBeRead(row.eUse) &&
               (!row.bOfType || row.ui32Type == ui32Type);
    };
    if (const GLFormatRow* pRow = findRow(k_aGLFormats, isRow))
        return PixelEncoding{MOXPixelWord(pRow->pixelFormat.getWord() + (ui32InternalFormat - pRow->ui32InternalFormat)),
                             pRow->eChannelType, pRow->eColourSpace};

    const UnsizedRow* pUnsized = findRow(k_aUnsizedFormats, [&](const UnsizedRow& row) { return row.eBase == ui32InternalFormat; });
    const ElementRow* pElement = findRow(k_aElements, [&](const ElementRow& row) { return row.bUnsized && row.ui32Type == ui32Type; });
    if (pUnsized == nullptr || pElement == nullptr)
        return {};
    return PixelEncoding{getLayout(pUnsized->strLetters, pElement->uiBits), pElement->eChannelType};
}

std::optional<GLFormat> findGLFormat(const PixelEncoding& encoding)
{
    const GLFormatRow* pRow = findRowToWrite(encoding);
    if (pRow == nullptr)
        return findUnsizedToWrite(encoding);

    const uint32_t ui32Step = static_cast<uint32_t>(encoding.pixelFormat.getWord() - pRow->pixelFormat.getWord());
    GLFormat format;
    format.ui32InternalFormat = pRow->ui32InternalFormat + ui32Step;
    format.ui32BaseInternalFormat = pRow->ui32Base;
    format.ui32Type = pRow->ui32Type;
    if (!encoding.pixelFormat.isCompressed() && format.ui32Type == k_uiOfElements)
        format.ui32Type = getElementType(encoding);
    if (format.ui32Type == 0) // blocks
    {
        format.ui32TypeSize = 1;
        return format;
    }
    format.ui32TypeSize = getTypeSize(format.ui32Type);
    format.ui32Format = pRow->ui32Format != 0 ? pRow->ui32Format : pRow->ui32Base;
    return format;
}

} // namespace moxtexture
