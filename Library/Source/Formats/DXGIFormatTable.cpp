#include "Formats/DXGIFormatTable.h"

#include <algorithm>
#include <iterator>

namespace moxtexture
{
namespace
{

// Where a format, type and space have several numbers, the first that may be written is.
// clang-format off
constexpr DXGIFormatRow k_aDXGIFormats[] = {
//    number format                       channel type                      space       use
    { 2,  layout("rgba", 32, 32, 32, 32),  eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 3,  layout("rgba", 32, 32, 32, 32),  eCT_UnsignedInteger,              eCS_Linear, ERowUse::eBoth },
    { 4,  layout("rgba", 32, 32, 32, 32),  eCT_SignedInteger,                eCS_Linear, ERowUse::eBoth },
    { 6,  layout("rgb", 32, 32, 32),       eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 7,  layout("rgb", 32, 32, 32),       eCT_UnsignedInteger,              eCS_Linear, ERowUse::eBoth },
    { 8,  layout("rgb", 32, 32, 32),       eCT_SignedInteger,                eCS_Linear, ERowUse::eBoth },
    { 10, layout("rgba", 16, 16, 16, 16),  eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 11, layout("rgba", 16, 16, 16, 16),  eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
    { 12, layout("rgba", 16, 16, 16, 16),  eCT_UnsignedShort,                eCS_Linear, ERowUse::eBoth },
    { 13, layout("rgba", 16, 16, 16, 16),  eCT_SignedNormalisedShort,        eCS_Linear, ERowUse::eBoth },
    { 14, layout("rgba", 16, 16, 16, 16),  eCT_SignedShort,                  eCS_Linear, ERowUse::eBoth },
    { 16, layout("rg", 32, 32),            eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 17, layout("rg", 32, 32),            eCT_UnsignedInteger,              eCS_Linear, ERowUse::eBoth },
    { 18, layout("rg", 32, 32),            eCT_SignedInteger,                eCS_Linear, ERowUse::eBoth },
    { 24, layout("rgba", 10, 10, 10, 2),   eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 25, layout("rgba", 10, 10, 10, 2),   eCT_UnsignedInteger,              eCS_Linear, ERowUse::eBoth },
    { 26, layout("bgr", 10, 11, 11),       eCT_UnsignedFloatingPoint,        eCS_Linear, ERowUse::eBoth },
    { 28, layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 29, layout("rgba", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_sRGB,   ERowUse::eBoth },
    { 30, layout("rgba", 8, 8, 8, 8),      eCT_UnsignedByte,                 eCS_Linear, ERowUse::eBoth },
    { 31, layout("rgba", 8, 8, 8, 8),      eCT_SignedNormalisedByte,         eCS_Linear, ERowUse::eBoth },
    { 32, layout("rgba", 8, 8, 8, 8),      eCT_SignedByte,                   eCS_Linear, ERowUse::eBoth },
    { 34, layout("rg", 16, 16),            eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 35, layout("rg", 16, 16),            eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
    { 36, layout("rg", 16, 16),            eCT_UnsignedShort,                eCS_Linear, ERowUse::eBoth },
    { 37, layout("rg", 16, 16),            eCT_SignedNormalisedShort,        eCS_Linear, ERowUse::eBoth },
    { 38, layout("rg", 16, 16),            eCT_SignedShort,                  eCS_Linear, ERowUse::eBoth },
    { 41, layout("r", 32),                 eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 42, layout("r", 32),                 eCT_UnsignedInteger,              eCS_Linear, ERowUse::eBoth },
    { 43, layout("r", 32),                 eCT_SignedInteger,                eCS_Linear, ERowUse::eBoth },
    { 49, layout("rg", 8, 8),              eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 50, layout("rg", 8, 8),              eCT_UnsignedByte,                 eCS_Linear, ERowUse::eBoth },
    { 51, layout("rg", 8, 8),              eCT_SignedNormalisedByte,         eCS_Linear, ERowUse::eBoth },
    { 52, layout("rg", 8, 8),              eCT_SignedByte,                   eCS_Linear, ERowUse::eBoth },
    { 54, layout("r", 16),                 eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 56, layout("r", 16),                 eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
    { 57, layout("r", 16),                 eCT_UnsignedShort,                eCS_Linear, ERowUse::eBoth },
    { 58, layout("r", 16),                 eCT_SignedNormalisedShort,        eCS_Linear, ERowUse::eBoth },
    { 59, layout("r", 16),                 eCT_SignedShort,                  eCS_Linear, ERowUse::eBoth },
    { 61, layout("r", 8),                  eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 62, layout("r", 8),                  eCT_UnsignedByte,                 eCS_Linear, ERowUse::eBoth },
    { 63, layout("r", 8),                  eCT_SignedNormalisedByte,         eCS_Linear, ERowUse::eBoth },
    { 64, layout("r", 8),                  eCT_SignedByte,                   eCS_Linear, ERowUse::eBoth },
    // On purpose: the one channel of 65 is read as red, for which 61 is written.
    { 65, layout("r", 8),                  eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eReadOnly },
    { 66, ePF_1bpp,                        eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 67, ePF_Shared_Exponent_RGB999_E5,   eCT_SignedFloatingPoint,          eCS_Linear, ERowUse::eBoth },
    { 68, ePF_2_Planar_RGBG_8_8_8_8,       eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 69, ePF_2_Planar_GRGB_8_8_8_8,       eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 71, ePF_BC1,                         eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 72, ePF_BC1,                         eCT_UnsignedNormalisedInteger,    eCS_sRGB,   ERowUse::eBoth },
    { 74, ePF_BC2,                         eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 75, ePF_BC2,                         eCT_UnsignedNormalisedInteger,    eCS_sRGB,   ERowUse::eBoth },
    { 77, ePF_BC3,                         eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 78, ePF_BC3,                         eCT_UnsignedNormalisedInteger,    eCS_sRGB,   ERowUse::eBoth },
    // On purpose: 80 is sRGB where 81 is not, and 96 is what 98 and 99 are; that is how the files are taken.
    { 80, ePF_BC4,                         eCT_UnsignedNormalisedInteger,    eCS_sRGB,   ERowUse::eBoth },
    { 81, ePF_BC4,                         eCT_SignedNormalisedInteger,      eCS_Linear, ERowUse::eBoth },
    { 83, ePF_BC5,                         eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 84, ePF_BC5,                         eCT_SignedNormalisedInteger,      eCS_Linear, ERowUse::eBoth },
    { 85, layout("rgb", 5, 6, 5),          eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
    { 86, layout("argb", 1, 5, 5, 5),      eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
    { 87, layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 88, layout("bgrx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 91, layout("bgra", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_sRGB,   ERowUse::eBoth },
    { 93, layout("bgrx", 8, 8, 8, 8),      eCT_UnsignedNormalisedByte,       eCS_sRGB,   ERowUse::eBoth },
    { 96, ePF_BC7,                         eCT_SignedFloatingPoint,          eCS_sRGB,   ERowUse::eBoth },
    { 98, ePF_BC7,                         eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 99, ePF_BC7,                         eCT_UnsignedNormalisedInteger,    eCS_sRGB,   ERowUse::eBoth },
    { 107,ePF_YUY2,                        eCT_UnsignedNormalisedInteger,    eCS_Linear, ERowUse::eBoth },
    { 111,layout("ai", 4, 4),              eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 112,layout("ia", 4, 4),              eCT_UnsignedNormalisedByte,       eCS_Linear, ERowUse::eBoth },
    { 115,layout("argb", 4, 4, 4, 4),      eCT_UnsignedNormalisedShort,      eCS_Linear, ERowUse::eBoth },
};
// clang-format on

template <typename Fits>
const DXGIFormatRow* findRow(Fits fits)
{
    const auto* pRow = std::find_if(std::begin(k_aDXGIFormats), std::end(k_aDXGIFormats), fits);
    return pRow != std::end(k_aDXGIFormats) ? pRow : nullptr;
}

} // namespace

const DXGIFormatRow* findDXGIFormat(uint32_t ui32Number)
{
    return findRow([&](const DXGIFormatRow& row) { return mayBeRead(row.eUse) && row.ui32Number == ui32Number; });
}

const DXGIFormatRow* findDXGIFormat(const PixelEncoding& encoding)
{
    const auto findFor = [&](bool bAnyType, bool bAnySpace)
    {
        return findRow(
            [&](const DXGIFormatRow& row)
            {
                return mayBeWritten(row.eUse) && row.pixelFormat == encoding.pixelFormat &&
                       (bAnyType || row.eChannelType == encoding.eChannelType) && (bAnySpace || row.eColourSpace == encoding.eColourSpace);
            });
    };
    if (const DXGIFormatRow* pRow = findFor(false, false))
        return pRow;
    // A codec's blocks are the same whatever the type says; the letters and bits of a layout are not.
    if (!encoding.pixelFormat.isCompressed())
        return findFor(false, true);
    const DXGIFormatRow* pRow = findFor(true, false);
    return pRow != nullptr ? pRow : findFor(true, true);
}

} // namespace moxtexture
