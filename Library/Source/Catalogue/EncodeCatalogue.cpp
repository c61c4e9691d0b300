#include "Catalogue/EncodeCatalogue.h"

#include <cstddef>
#include <string_view>

#include "Catalogue/ApiGroups.h"
#include "Formats/FormatNames.h"

namespace moxtexture
{
namespace
{

/// Of a row: rows that stand for two records give the linear one first.
enum ERowSpace : uint8_t
{
    eLinear,
    eSRGB,
    eBoth,
};

struct CatalogueRow
{
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType;
    uint32_t uiAPIs, uiStorageClass, uiChannelCounts, uiHasAlpha;
    ERowSpace eSpace;
    std::string_view strBitsPerPixel;
};

// On purpose: 48-bit RGB is listed with the formats of two channels.
constexpr CatalogueRow k_aRows[] = {
    // clang-format off
//    format                             channel type                  APIs  class counts alpha space bits per pixel
    { ePF_MOXTC_2bpp_RGBA,              eCT_UnsignedNormalisedByte,    0x8F, 0, 16, 1, eLinear, "2" },
    { ePF_MOXTC_2bpp_RGB,               eCT_UnsignedNormalisedByte,    0x0F, 0,  8, 0, eLinear, "2" },
    { ePF_MOXTCII_2bpp,                 eCT_UnsignedNormalisedByte,    0x86, 0, 24, 1, eBoth,   "2" },
    { ePF_MOXTC_4bpp_RGBA,              eCT_UnsignedNormalisedByte,    0x8F, 0, 16, 1, eLinear, "4" },
    { ePF_MOXTC_4bpp_RGB,               eCT_UnsignedNormalisedByte,    0x0F, 0,  8, 0, eLinear, "4" },
    { ePF_MOXTCII_4bpp,                 eCT_UnsignedNormalisedByte,    0x86, 0, 24, 1, eBoth,   "4" },
    { ePF_MOXTC_2bpp_RGBA,              eCT_UnsignedNormalisedByte,    0x8E, 0, 16, 1, eSRGB,   "2" },
    { ePF_MOXTC_2bpp_RGB,               eCT_UnsignedNormalisedByte,    0x0E, 0,  8, 0, eSRGB,   "2" },
    { ePF_MOXTC_4bpp_RGBA,              eCT_UnsignedNormalisedByte,    0x8E, 0, 16, 1, eSRGB,   "4" },
    { ePF_MOXTC_4bpp_RGB,               eCT_UnsignedNormalisedByte,    0x0E, 0,  8, 0, eSRGB,   "4" },
    { ePF_BC1,                          eCT_UnsignedNormalisedByte,    0xF0, 0,  8, 0, eBoth,   "4" },
    { ePF_BC2,                          eCT_UnsignedNormalisedByte,    0xF0, 0, 16, 1, eBoth,   "8" },
    { ePF_BC3,                          eCT_UnsignedNormalisedByte,    0xF0, 0, 16, 1, eBoth,   "8" },
    { ePF_ETC1,                         eCT_UnsignedNormalisedByte,    0x07, 0,  8, 0, eLinear, "4" },
    { ePF_ETC2_RGB,                     eCT_UnsignedNormalisedByte,    0x84, 0,  8, 0, eBoth,   "4" },
    { ePF_ETC2_RGBA,                    eCT_UnsignedNormalisedByte,    0x84, 0, 16, 1, eBoth,   "8" },
    { ePF_ETC2_RGB_A1,                  eCT_UnsignedNormalisedByte,    0x84, 0, 16, 1, eBoth,   "4" },
    { ePF_EAC_R11,                      eCT_UnsignedNormalisedInteger, 0x84, 0,  2, 0, eLinear, "4" },
    { ePF_EAC_R11,                      eCT_SignedNormalisedInteger,   0x84, 0,  2, 0, eLinear, "4" },
    { ePF_EAC_RG11,                     eCT_UnsignedNormalisedInteger, 0x84, 0,  4, 0, eLinear, "8" },
    { ePF_EAC_RG11,                     eCT_SignedNormalisedInteger,   0x84, 0,  4, 0, eLinear, "8" },
    { ePF_ASTC_4x4,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "8" },
    { ePF_ASTC_5x4,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "6.4" },
    { ePF_ASTC_5x5,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "5.12" },
    { ePF_ASTC_6x5,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "4.27" },
    { ePF_ASTC_6x6,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "3.56" },
    { ePF_ASTC_8x5,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "3.2" },
    { ePF_ASTC_8x6,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "2.67" },
    { ePF_ASTC_8x8,                     eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "2" },
    { ePF_ASTC_10x5,                    eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "2.56" },
    { ePF_ASTC_10x6,                    eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "2.13" },
    { ePF_ASTC_10x8,                    eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "1.6" },
    { ePF_ASTC_10x10,                   eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "1.28" },
    { ePF_ASTC_12x10,                   eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "1.07" },
    { ePF_ASTC_12x12,                   eCT_UnsignedNormalisedByte,    0x84, 0, 30, 1, eBoth,   "0.89" },
    { ePF_ASTC_3x3x3,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "4.74" },
    { ePF_ASTC_4x3x3,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "3.56" },
    { ePF_ASTC_4x4x3,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "2.67" },
    { ePF_ASTC_4x4x4,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "2" },
    { ePF_ASTC_5x4x4,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "1.6" },
    { ePF_ASTC_5x5x4,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "1.28" },
    { ePF_ASTC_5x5x5,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "1.02" },
    { ePF_ASTC_6x5x5,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "0.85" },
    { ePF_ASTC_6x6x5,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "0.71" },
    { ePF_ASTC_6x6x6,                   eCT_UnsignedNormalisedByte,    0x04, 0, 30, 1, eBoth,   "0.59" },
    { ePF_2_Planar_GRGB_8_8_8_8,        eCT_UnsignedNormalisedByte,    0x60, 0,  8, 0, eLinear, "16" },
    { ePF_2_Planar_RGBG_8_8_8_8,        eCT_UnsignedNormalisedByte,    0x60, 0,  8, 0, eLinear, "16" },
    { ePF_Shared_Exponent_RGB999_E5,    eCT_UnsignedFloatingPoint,     0xE4, 3,  8, 0, eLinear, "32" },
    { layout("rgba", 8, 8, 8, 8),       eCT_UnsignedNormalisedByte,    0xFF, 1, 16, 1, eLinear, "32" },
    { layout("rgba", 8, 8, 8, 8),       eCT_UnsignedNormalisedByte,    0x84, 1, 16, 1, eSRGB,   "32" },
    { layout("rgba", 8, 8, 8, 8),       eCT_UnsignedByte,              0xE4, 1, 16, 1, eLinear, "32" },
    { layout("rgba", 8, 8, 8, 8),       eCT_SignedByte,                0xE4, 1, 16, 1, eLinear, "32" },
    { layout("rgba", 8, 8, 8, 8),       eCT_SignedNormalisedByte,      0xE4, 1, 16, 1, eLinear, "32" },
    { layout("rgba", 10, 10, 10, 2),    eCT_UnsignedNormalisedInteger, 0x64, 2, 16, 1, eLinear, "32" },
    { layout("rgba", 10, 10, 10, 2),    eCT_UnsignedInteger,           0x64, 2, 16, 1, eLinear, "32" },
    { layout("rgba", 4, 4, 4, 4),       eCT_UnsignedNormalisedShort,   0x8F, 1, 16, 1, eLinear, "16" },
    { layout("rgba", 5, 5, 5, 1),       eCT_UnsignedNormalisedShort,   0x8F, 1, 16, 1, eLinear, "16" },
    { layout("argb", 4, 4, 4, 4),       eCT_UnsignedNormalisedShort,   0x70, 1, 16, 1, eLinear, "16" },
    { layout("argb", 1, 5, 5, 5),       eCT_UnsignedNormalisedShort,   0xF0, 1, 16, 1, eLinear, "16" },
    { layout("bgra", 8, 8, 8, 8),       eCT_UnsignedNormalisedByte,    0xFF, 1, 16, 1, eLinear, "32" },
    { layout("bgra", 8, 8, 8, 8),       eCT_UnsignedNormalisedByte,    0xF0, 1, 16, 1, eSRGB,   "32" },
    { layout("bgrx", 8, 8, 8, 8),       eCT_UnsignedNormalisedByte,    0x60, 1, 16, 0, eBoth,   "32" },
    { layout("rgba", 16, 16, 16, 16),   eCT_SignedFloatingPoint,       0xF4, 2, 16, 1, eLinear, "64" },
    { layout("rgba", 16, 16, 16, 16),   eCT_UnsignedShort,             0xE4, 2, 16, 1, eLinear, "64" },
    { layout("rgba", 16, 16, 16, 16),   eCT_SignedShort,               0xE4, 2, 16, 1, eLinear, "64" },
    { layout("rgba", 16, 16, 16, 16),   eCT_UnsignedNormalisedShort,   0xF0, 2, 16, 1, eLinear, "64" },
    { layout("rgba", 16, 16, 16, 16),   eCT_SignedNormalisedShort,     0xE0, 2, 16, 1, eLinear, "64" },
    { layout("rgba", 32, 32, 32, 32),   eCT_SignedFloatingPoint,       0xFE, 3, 16, 1, eLinear, "128" },
    { layout("rgba", 32, 32, 32, 32),   eCT_UnsignedInteger,           0xE4, 3, 16, 1, eLinear, "128" },
    { layout("rgba", 32, 32, 32, 32),   eCT_SignedInteger,             0xE4, 3, 16, 1, eLinear, "128" },
    { layout("rgb", 8, 8, 8),           eCT_UnsignedNormalisedByte,    0x8F, 1,  8, 0, eLinear, "24" },
    { layout("rgb", 8, 8, 8),           eCT_UnsignedNormalisedByte,    0x84, 1,  8, 0, eSRGB,   "24" },
    { layout("rgb", 8, 8, 8),           eCT_SignedNormalisedByte,      0x84, 1,  8, 0, eLinear, "24" },
    { layout("rgb", 8, 8, 8),           eCT_UnsignedByte,              0x84, 1,  8, 0, eLinear, "24" },
    { layout("rgb", 8, 8, 8),           eCT_SignedByte,                0x84, 1,  8, 0, eLinear, "24" },
    { layout("rgb", 5, 6, 5),           eCT_UnsignedNormalisedShort,   0xFF, 1,  8, 0, eLinear, "16" },
    { layout("rgb", 32, 32, 32),        eCT_SignedFloatingPoint,       0xE4, 3,  8, 0, eLinear, "96" },
    { layout("rgb", 32, 32, 32),        eCT_UnsignedInteger,           0xE4, 3,  8, 0, eLinear, "96" },
    { layout("rgb", 32, 32, 32),        eCT_SignedInteger,             0xE4, 3,  8, 0, eLinear, "96" },
    { layout("bgr", 10, 11, 11),        eCT_UnsignedFloatingPoint,     0xE4, 2,  8, 0, eLinear, "32" },
    { layout("rg", 8, 8),               eCT_UnsignedByte,              0xE4, 1,  4, 0, eLinear, "16" },
    { layout("rg", 8, 8),               eCT_SignedByte,                0xE4, 1,  4, 0, eLinear, "16" },
    { layout("rg", 8, 8),               eCT_UnsignedNormalisedByte,    0xE4, 1,  4, 0, eLinear, "16" },
    { layout("rg", 8, 8),               eCT_SignedNormalisedByte,      0xF4, 1,  4, 0, eLinear, "16" },
    { layout("la", 8, 8),               eCT_UnsignedNormalisedByte,    0x0F, 1,  4, 1, eLinear, "16" },
    { layout("rg", 16, 16),             eCT_SignedFloatingPoint,       0xF4, 2,  4, 0, eLinear, "32" },
    { layout("rg", 16, 16),             eCT_UnsignedShort,             0xE4, 2,  4, 0, eLinear, "32" },
    { layout("rg", 16, 16),             eCT_SignedShort,               0xE4, 2,  4, 0, eLinear, "32" },
    { layout("rg", 16, 16),             eCT_UnsignedNormalisedShort,   0xF0, 2,  4, 0, eLinear, "32" },
    { layout("rg", 16, 16),             eCT_SignedNormalisedShort,     0xF0, 2,  4, 0, eLinear, "32" },
    { layout("rgb", 16, 16, 16),        eCT_SignedFloatingPoint,       0xF4, 2,  4, 0, eLinear, "48" },
    { layout("rgb", 16, 16, 16),        eCT_UnsignedShort,             0xE4, 2,  4, 0, eLinear, "48" },
    { layout("rgb", 16, 16, 16),        eCT_SignedShort,               0xE4, 2,  4, 0, eLinear, "48" },
    { layout("rgb", 16, 16, 16),        eCT_UnsignedNormalisedShort,   0xF0, 2,  4, 0, eLinear, "48" },
    { layout("rgb", 16, 16, 16),        eCT_SignedNormalisedShort,     0xF0, 2,  4, 0, eLinear, "48" },
    { layout("rg", 32, 32),             eCT_SignedFloatingPoint,       0xF4, 3,  4, 0, eLinear, "64" },
    { layout("rg", 32, 32),             eCT_UnsignedInteger,           0xE4, 3,  4, 0, eLinear, "64" },
    { layout("rg", 32, 32),             eCT_SignedInteger,             0xE4, 3,  4, 0, eLinear, "64" },
    { ePF_1bpp,                         eCT_UnsignedNormalisedByte,    0x60, 1,  2, 0, eLinear, "1" },
    { layout("r", 8),                   eCT_UnsignedByte,              0xE4, 1,  2, 0, eLinear, "8" },
    { layout("r", 8),                   eCT_SignedByte,                0xE4, 1,  2, 0, eLinear, "8" },
    { layout("r", 8),                   eCT_UnsignedNormalisedByte,    0xF4, 1,  2, 0, eLinear, "8" },
    { layout("r", 8),                   eCT_SignedNormalisedByte,      0xE4, 1,  2, 0, eLinear, "8" },
    { layout("a", 8),                   eCT_UnsignedNormalisedByte,    0x7F, 1,  2, 1, eLinear, "8" },
    { layout("l", 8),                   eCT_UnsignedNormalisedByte,    0x0F, 1,  2, 0, eLinear, "8" },
    { layout("r", 16),                  eCT_SignedFloatingPoint,       0xE4, 2,  2, 0, eLinear, "16" },
    { layout("r", 16),                  eCT_UnsignedShort,             0xE4, 2,  2, 0, eLinear, "16" },
    { layout("r", 16),                  eCT_SignedShort,               0xE4, 2,  2, 0, eLinear, "16" },
    { layout("r", 16),                  eCT_UnsignedNormalisedShort,   0xF0, 2,  2, 0, eLinear, "16" },
    { layout("r", 16),                  eCT_SignedNormalisedShort,     0xE0, 2,  2, 0, eLinear, "16" },
    { layout("r", 32),                  eCT_SignedFloatingPoint,       0xF4, 3,  2, 0, eLinear, "32" },
    { layout("r", 32),                  eCT_UnsignedInteger,           0xE4, 3,  2, 0, eLinear, "32" },
    { layout("r", 32),                  eCT_SignedInteger,             0xE4, 3,  2, 0, eLinear, "32" },
    // clang-format on
};

constexpr size_t countRecords()
{
    size_t uiCount = 0;
    for (const CatalogueRow& row : k_aRows)
        uiCount += row.eSpace == eBoth ? 2 : 1;
    return uiCount;
}
static_assert(countRecords() == k_uiCatalogueSize);

constexpr std::array<CMOXSearchObject, k_uiCatalogueSize> makeRecords()
{
    std::array<CMOXSearchObject, k_uiCatalogueSize> aRecords{};
    size_t uiNext = 0;
    for (const CatalogueRow& row : k_aRows)
        for (const EMOXTColourSpace eSpace : {eCS_Linear, eCS_sRGB})
            if (row.eSpace == eBoth || (row.eSpace == eSRGB) == (eSpace == eCS_sRGB))
                aRecords[uiNext++] = {row.pixelFormat,
                                      row.uiAPIs,
                                      row.uiStorageClass,
                                      row.uiChannelCounts,
                                      row.eChannelType,
                                      row.uiHasAlpha,
                                      eSpace,
                                      findBitRate(row.strBitsPerPixel)};
    return aRecords;
}

constexpr std::array<CMOXSearchObject, k_uiCatalogueSize> k_aRecords = makeRecords();

} // namespace

const std::array<CMOXSearchObject, k_uiCatalogueSize>& getEncodeCatalogue()
{
    return k_aRecords;
}

EMOXTChannelType getDefaultChannelType(MOXPixelWord pixelFormat)
{
    const CMOXSearchObject* pFirst = nullptr;
    for (const CMOXSearchObject& record : k_aRecords)
    {
        if (record.pixelFormat != pixelFormat)
            continue;
        if (getChannelTypeName(record.eChannelType, true) == "UNorm")
            return record.eChannelType;
        if (pFirst == nullptr)
            pFirst = &record;
    }
    return pFirst != nullptr ? pFirst->eChannelType : eCT_UnsignedNormalisedByte;
}

} // namespace moxtexture
