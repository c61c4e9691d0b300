#pragma once

#include <array>
#include <cstdint>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"

namespace moxtexture
{

/// One target format on offer: a layout or codec with a channel type and a colour space, and what a search goes by.
struct CMOXSearchObject
{
    MOXPixelWord pixelFormat;
    uint32_t uiAPIs = 0;          ///< bit i: for the i-th of k_aApiGroups
    uint32_t uiStorageClass = 0;  ///< 0 for compressed formats; 1, 2 or 3 grows with the width of the channels
    uint32_t uiChannelCounts = 0; ///< bit n: listed among the formats of n channels
    EMOXTChannelType eChannelType = eCT_UnsignedNormalisedByte;
    uint32_t uiHasAlpha = 0; ///< 0 or 1
    EMOXTColourSpace eColourSpace = eCS_Linear;
    uint32_t uiBitRateIndex = 0; ///< in k_aBitsPerPixel
};

inline constexpr uint32_t k_uiCatalogueSize = 146;

/// All records, in the order in which they are offered.
[[nodiscard]] const std::array<CMOXSearchObject, k_uiCatalogueSize>& getEncodeCatalogue();

/// The channel type that a format gets where none is asked for: that of its first record whose short type name is "UNorm", else
/// of its first record, else type 0.
[[nodiscard]] EMOXTChannelType getDefaultChannelType(MOXPixelWord pixelFormat);

} // namespace moxtexture
