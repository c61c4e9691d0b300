#include "Formats/D3DFormatTable.h"

#include <algorithm>
#include <iterator>

namespace moxtexture
{
namespace
{

// Short, so that a row of the table fits a line.
constexpr auto eByte = eCT_UnsignedNormalisedByte;
constexpr auto eShort = eCT_UnsignedNormalisedShort;
constexpr auto eUNorm = eCT_UnsignedNormalisedInteger;
constexpr auto eSNorm = eCT_SignedNormalisedInteger;
constexpr auto eFloat = eCT_SignedFloatingPoint;
constexpr auto eBoth = ERowUse::eBoth;
constexpr auto eReadOnly = ERowUse::eReadOnly;
constexpr auto eWriteOnly = ERowUse::eWriteOnly;
constexpr auto eAny = ED3DAlphaFlag::eAny;
constexpr auto eAnySet = ED3DAlphaFlag::eAnyWritten;
constexpr auto eSet = ED3DAlphaFlag::eSet;
constexpr auto eClear = ED3DAlphaFlag::eClear;
constexpr uint32_t uiRGB = eD3DPixelsRGB;
constexpr uint32_t uiBumpL = eD3DPixelsBumpLuminance;
constexpr uint32_t uiBump = eD3DPixelsBump;
constexpr uint32_t uiLum = eD3DPixelsLuminance;
constexpr uint32_t uiAlpha = eD3DPixelsAlphaOnly;

/// A number that masks tell.
constexpr D3DFormatRow masked(uint32_t ui32Number, MOXPixelWord pixelFormat, EMOXTChannelType eType, EMOXTChannelType eFurtherType,
                              ERowUse eUse, uint32_t ui32Flags, ED3DAlphaFlag eAlphaFlag, uint32_t ui32Red, uint32_t ui32Green = 0,
                              uint32_t ui32Blue = 0, uint32_t ui32Alpha = 0, uint32_t ui32RefusedAlpha = 0)
{
    return {
        ui32Number,      pixelFormat, eType, eFurtherType, eUse, false, ui32Flags, eAlphaFlag, {ui32Red, ui32Green, ui32Blue, ui32Alpha},
        ui32RefusedAlpha};
}

/// A number that stands in the FourCC field.
constexpr D3DFormatRow numbered(uint32_t ui32Number, MOXPixelWord pixelFormat, EMOXTChannelType eType, EMOXTChannelType eFurtherType,
                                ERowUse eUse = ERowUse::eBoth)
{
    return {ui32Number, pixelFormat, eType, eFurtherType, eUse, false, eD3DPixelsFourCC, ED3DAlphaFlag::eAny, {}, 0};
}

constexpr D3DFormatRow lettered(const char (&strFourCC)[5], EMOXTPixelFormat eFormat, bool bPreMultiplied, ERowUse eUse = ERowUse::eBoth)
{
    return {makeFourCC(strFourCC), eFormat, eByte, eByte, eUse, bPreMultiplied, eD3DPixelsFourCC, ED3DAlphaFlag::eAny, {}, 0};
}

// The first row that fits is taken, so where two numbers share a layout the one that is written comes first.
// clang-format off
constexpr D3DFormatRow k_aD3DFormats[] = {
//        no. layout                         read    also    use        flags    alpha    red         green       blue        alpha mask
    masked(20, layout("rgb", 8, 8, 8),        eUNorm, eByte,  eBoth,     uiRGB,   eAny,    0xFF0000,   0xFF00,     0xFF),
    masked(21, layout("argb", 8, 8, 8, 8),    eUNorm, eByte,  eBoth,     uiRGB,   eSet,    0xFF0000,   0xFF00,     0xFF,       0xFF000000),
    // On purpose: files of 22, 32 and 33 are common enough to be read, but are not made here.
    masked(22, layout("xrgb", 8, 8, 8, 8),    eUNorm, eByte,  eReadOnly, uiRGB,   eClear,  0xFF0000,   0xFF00,     0xFF),
    masked(23, layout("rgb", 5, 6, 5),        eUNorm, eShort, eBoth,     uiRGB,   eClear,  0xF800,     0x7E0,      0x1F),
    masked(24, layout("xrgb", 1, 5, 5, 5),    eUNorm, eShort, eBoth,     uiRGB,   eClear,  0x7C00,     0x3E0,      0x1F),
    masked(25, layout("argb", 1, 5, 5, 5),    eUNorm, eShort, eBoth,     uiRGB,   eSet,    0x7C00,     0x3E0,      0x1F,       0x8000),
    masked(26, layout("argb", 4, 4, 4, 4),    eUNorm, eShort, eBoth,     uiRGB,   eSet,    0xF00,      0xF0,       0xF,        0xF000),
    masked(27, layout("rgb", 3, 3, 2),        eUNorm, eByte,  eBoth,     uiRGB,   eAny,    0xE0,       0x1C,       0x3),
    masked(28, layout("a", 8),                eUNorm, eByte,  eBoth,     uiAlpha, eAny,    0,          0,          0,          0xFF),
    masked(29, layout("argb", 8, 3, 3, 2),    eUNorm, eShort, eBoth,     uiRGB,   eSet,    0xE0,       0x1C,       0x3,        0xFF00),
    numbered(30,  layout("argb", 4, 4, 4, 4),   eUNorm, eUNorm, eReadOnly),
    masked(31, layout("abgr", 2, 10, 10, 10), eUNorm, eUNorm, eBoth,     uiRGB,   eSet,    0x3FF00000, 0xFFC00,    0x3FF,      0xC0000000),
    masked(32, layout("abgr", 8, 8, 8, 8),    eUNorm, eUNorm, eReadOnly, uiRGB,   eSet,    0xFF,       0xFF00,     0xFF0000,   0xFF000000),
    masked(33, layout("xbgr", 8, 8, 8, 8),    eUNorm, eUNorm, eReadOnly, uiRGB,   eClear,  0xFF,       0xFF00,     0xFF0000),
    masked(34, layout("gr", 16, 16),          eUNorm, eShort, eBoth,     uiRGB,   eClear,  0xFFFF,     0xFFFF0000),
    masked(35, layout("argb", 2, 10, 10, 10), eUNorm, eUNorm, eBoth,     uiRGB,   eSet,    0x3FF,      0xFFC00,    0x3FF00000, 0xC0000000),
    numbered(36,  layout("abgr", 16, 16, 16, 16),eUNorm, eShort),
    masked(50, layout("l", 8),                eUNorm, eByte,  eBoth,     uiLum,   eClear,  0xFF),
    masked(51, layout("al", 8, 8),            eUNorm, eByte,  eBoth,     uiLum,   eSet,    0xFF,       0,          0,          0xFF00),
    masked(52, layout("al", 4, 4),            eUNorm, eByte,  eBoth,     uiLum,   eSet,    0xF,        0,          0,          0xF0),
    masked(60, layout("gr", 8, 8),            eSNorm, eSNorm, eBoth,     uiBump,  eAny,    0xFF,       0xFF00),
    masked(61, layout("lgr", 6, 5, 5),        eSNorm, eSNorm, eBoth,     uiBumpL, eAny,    0x1F,       0x3E0,      0xFC00),
    masked(62, layout("xlgr", 8, 8, 8, 8),    eSNorm, eSNorm, eBoth,     uiBumpL, eAny,    0xFF,       0xFF00,     0xFF0000),
    masked(63, layout("abgr", 8, 8, 8, 8),    eSNorm, eSNorm, eBoth,     uiBump,  eAny,    0xFF,       0xFF00,     0xFF0000,   0xFF000000),
    // The last mask is the alpha with which 64 is not meant.
    masked(64, layout("gr", 16, 16),          eSNorm, eSNorm, eBoth,     uiBump,  eAny,    0xFFFF,     0xFFFF0000, 0, 0, 0xC0000000),
    masked(67, layout("abgr", 2, 10, 10, 10), eSNorm, eSNorm, eBoth,     uiBump,  eAnySet, 0x3FF00000, 0xFFC00,    0x3FF,      0xC0000000),
    masked(81, layout("l", 16),               eUNorm, eShort, eBoth,     uiLum,   eClear,  0xFFFF),
    numbered(110, layout("abgr", 16, 16, 16, 16),eSNorm, eSNorm, eReadOnly),
    // On purpose: 111 is read as 32 bits, like 114, and written for 16.
    numbered(111, layout("r", 32),              eFloat, eFloat, eReadOnly),
    numbered(111, layout("r", 16),              eFloat, eFloat, eWriteOnly),
    numbered(112, layout("gr", 16, 16),         eFloat, eFloat),
    numbered(113, layout("rgba", 16, 16, 16, 16),eFloat, eFloat),
    numbered(114, layout("r", 32),              eFloat, eFloat),
    // On purpose: 115 is written for the letters in the other order.
    numbered(115, layout("gr", 32, 32),         eFloat, eFloat, eReadOnly),
    numbered(115, layout("rg", 32, 32),         eFloat, eFloat, eWriteOnly),
    numbered(116, layout("abgr", 32, 32, 32, 32),eFloat, eFloat),

    lettered("DXT1", ePF_BC1,                   false),
    lettered("DXT2", ePF_DXT2,                  true),
    lettered("DXT3", ePF_BC2,                   false),
    lettered("DXT4", ePF_DXT4,                  true),
    lettered("DXT5", ePF_BC3,                   false),
    lettered("PTC2", ePF_MOXTC_2bpp_RGBA,       false),
    lettered("PTC4", ePF_MOXTC_4bpp_RGBA,       false),
    // On purpose: the FourCC does not tell whether there is alpha, and is read as if there were.
    lettered("PTC2", ePF_MOXTC_2bpp_RGB,        false, eWriteOnly),
    lettered("PTC4", ePF_MOXTC_4bpp_RGB,        false, eWriteOnly),
    lettered("UYVY", ePF_UYVY,                  false),
    lettered("YUY2", ePF_YUY2,                  false),
    lettered("RGBG", ePF_2_Planar_RGBG_8_8_8_8, false),
    lettered("GRGB", ePF_2_Planar_GRGB_8_8_8_8, false),
};
// clang-format on

template <typename Fits>
const D3DFormatRow* findRow(Fits fits)
{
    const auto* pRow = std::find_if(std::begin(k_aD3DFormats), std::end(k_aD3DFormats), fits);
    return pRow != std::end(k_aD3DFormats) ? pRow : nullptr;
}

uint32_t countBits(MOXPixelWord pixelFormat)
{
    uint32_t uiBits = 0;
    for (unsigned int i = 0; i < 4; ++i)
        uiBits += pixelFormat.getChannelBits(i);
    return uiBits;
}

/// The flag that says of what kind the masks are; the first of these counts where a file sets several.
uint32_t getMaskKind(uint32_t ui32Flags)
{
    for (const uint32_t ui32Kind : {uiRGB, uiBumpL, uiBump, uiLum, uint32_t{eD3DPixelsAlphaOnly}})
        if ((ui32Flags & ui32Kind) != 0)
            return ui32Kind;
    return 0;
}

bool fitsAlphaFlag(ED3DAlphaFlag eAlphaFlag, bool bSet)
{
    return eAlphaFlag != (bSet ? ED3DAlphaFlag::eClear : ED3DAlphaFlag::eSet);
}

bool fitsMasks(const D3DFormatRow& row, const std::array<uint32_t, 4>& aui32Masks)
{
    for (size_t i = 0; i < aui32Masks.size(); ++i)
        if (row.aui32Masks[i] != 0 && row.aui32Masks[i] != aui32Masks[i])
            return false;
    return row.ui32RefusedAlpha == 0 || row.ui32RefusedAlpha != aui32Masks[3];
}

} // namespace

const D3DFormatRow* findD3DFormat(uint32_t ui32Number)
{
    return findRow([&](const D3DFormatRow& row) { return mayBeRead(row.eUse) && row.ui32Number == ui32Number; });
}

uint32_t findD3DNumber(const D3DPixelFormat& format)
{
    if ((format.ui32Flags & eD3DPixelsFourCC) != 0)
        return format.ui32FourCC;
    const uint32_t ui32Kind = getMaskKind(format.ui32Flags);
    const bool bAlpha = (format.ui32Flags & eD3DPixelsHaveAlpha) != 0;
    const D3DFormatRow* pRow = findRow(
        [&](const D3DFormatRow& row)
        {
            return mayBeRead(row.eUse) && row.ui32Flags == ui32Kind && countBits(row.pixelFormat) == format.ui32BitCount &&
                   fitsAlphaFlag(row.eAlphaFlag, bAlpha) && fitsMasks(row, format.aui32Masks);
        });
    return pRow != nullptr ? pRow->ui32Number : 0;
}

const D3DFormatRow* findD3DFormat(const PixelEncoding& encoding)
{
    const auto fits = [&](const D3DFormatRow& row)
    {
        return mayBeWritten(row.eUse) && row.pixelFormat == encoding.pixelFormat &&
               (row.isFourCC() || row.eChannelType == encoding.eChannelType || row.eFurtherType == encoding.eChannelType);
    };
    return findRow(fits);
}

D3DPixelFormat describeD3DFormat(const D3DFormatRow& row)
{
    D3DPixelFormat format;
    if (row.ui32Flags == eD3DPixelsFourCC)
    {
        format.ui32FourCC = row.ui32Number;
        return format;
    }
    const bool bAlpha = row.eAlphaFlag == ED3DAlphaFlag::eSet || row.eAlphaFlag == ED3DAlphaFlag::eAnyWritten;
    format.ui32Flags = row.ui32Flags;
    if (bAlpha)
        format.ui32Flags |= eD3DPixelsHaveAlpha;
    format.ui32BitCount = countBits(row.pixelFormat);
    format.aui32Masks = row.aui32Masks;
    return format;
}

} // namespace moxtexture
