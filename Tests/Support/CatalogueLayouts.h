#pragma once

#include <cstdint>
#include <string_view>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelEncoding.h"

namespace testsupport
{

/// An uncompressed layout that textures may be encoded to, with a channel type that goes with it.
struct CatalogueLayout
{
    std::string_view strLetters; ///< in storage order
    uint8_t auiBits[4];          ///< of each channel, 0 where there is none
    uint32_t uiType;             ///< EMOXTChannelType
    bool bAlsoSRGB;              ///< offered in both colour spaces, not in linear alone

    moxtexture::MOXPixelWord getFormat() const { return moxtexture::layout(strLetters, auiBits[0], auiBits[1], auiBits[2], auiBits[3]); }
    moxtexture::PixelEncoding getEncoding() const { return {getFormat(), static_cast<moxtexture::EMOXTChannelType>(uiType)}; }
};

/// Every pair of layout and type that the encode dialog offers, in its order.
// clang-format off
inline constexpr CatalogueLayout k_aCatalogueLayouts[] = {
//    letters  bits                type  also sRGB
    { "rgba", { 8, 8, 8, 8 },     0, true },
    { "rgba", { 8, 8, 8, 8 },     2, false },
    { "rgba", { 8, 8, 8, 8 },     3, false },
    { "rgba", { 8, 8, 8, 8 },     1, false },
    { "rgba", { 10, 10, 10, 2 },  8, false },
    { "rgba", { 10, 10, 10, 2 },  10, false },
    { "rgba", { 4, 4, 4, 4 },     4, false },
    { "rgba", { 5, 5, 5, 1 },     4, false },
    { "argb", { 4, 4, 4, 4 },     4, false },
    { "argb", { 1, 5, 5, 5 },     4, false },
    { "bgra", { 8, 8, 8, 8 },     0, true },
    { "bgrx", { 8, 8, 8, 8 },     0, true },
    { "rgba", { 16, 16, 16, 16 }, 12, false },
    { "rgba", { 16, 16, 16, 16 }, 6, false },
    { "rgba", { 16, 16, 16, 16 }, 7, false },
    { "rgba", { 16, 16, 16, 16 }, 4, false },
    { "rgba", { 16, 16, 16, 16 }, 5, false },
    { "rgba", { 32, 32, 32, 32 }, 12, false },
    { "rgba", { 32, 32, 32, 32 }, 10, false },
    { "rgba", { 32, 32, 32, 32 }, 11, false },
    { "rgb",  { 8, 8, 8, 0 },     0, true },
    { "rgb",  { 8, 8, 8, 0 },     1, false },
    { "rgb",  { 8, 8, 8, 0 },     2, false },
    { "rgb",  { 8, 8, 8, 0 },     3, false },
    { "rgb",  { 5, 6, 5, 0 },     4, false },
    { "rgb",  { 32, 32, 32, 0 },  12, false },
    { "rgb",  { 32, 32, 32, 0 },  10, false },
    { "rgb",  { 32, 32, 32, 0 },  11, false },
    { "bgr",  { 10, 11, 11, 0 },  13, false },
    { "rg",   { 8, 8, 0, 0 },     2, false },
    { "rg",   { 8, 8, 0, 0 },     3, false },
    { "rg",   { 8, 8, 0, 0 },     0, false },
    { "rg",   { 8, 8, 0, 0 },     1, false },
    { "la",   { 8, 8, 0, 0 },     0, false },
    { "rg",   { 16, 16, 0, 0 },   12, false },
    { "rg",   { 16, 16, 0, 0 },   6, false },
    { "rg",   { 16, 16, 0, 0 },   7, false },
    { "rg",   { 16, 16, 0, 0 },   4, false },
    { "rg",   { 16, 16, 0, 0 },   5, false },
    { "rgb",  { 16, 16, 16, 0 },  12, false },
    { "rgb",  { 16, 16, 16, 0 },  6, false },
    { "rgb",  { 16, 16, 16, 0 },  7, false },
    { "rgb",  { 16, 16, 16, 0 },  4, false },
    { "rgb",  { 16, 16, 16, 0 },  5, false },
    { "rg",   { 32, 32, 0, 0 },   12, false },
    { "rg",   { 32, 32, 0, 0 },   10, false },
    { "rg",   { 32, 32, 0, 0 },   11, false },
    { "r",    { 8, 0, 0, 0 },     2, false },
    { "r",    { 8, 0, 0, 0 },     3, false },
    { "r",    { 8, 0, 0, 0 },     0, false },
    { "r",    { 8, 0, 0, 0 },     1, false },
    { "a",    { 8, 0, 0, 0 },     0, false },
    { "l",    { 8, 0, 0, 0 },     0, false },
    { "r",    { 16, 0, 0, 0 },    12, false },
    { "r",    { 16, 0, 0, 0 },    6, false },
    { "r",    { 16, 0, 0, 0 },    7, false },
    { "r",    { 16, 0, 0, 0 },    4, false },
    { "r",    { 16, 0, 0, 0 },    5, false },
    { "r",    { 32, 0, 0, 0 },    12, false },
    { "r",    { 32, 0, 0, 0 },    10, false },
    { "r",    { 32, 0, 0, 0 },    11, false },
};
// clang-format on

} // namespace testsupport
