#pragma once

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"

namespace moxtexture
{

/// All that says how the bytes of a pixel or block are to be read.
struct PixelEncoding
{
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType = eCT_UnsignedNormalisedByte;
    EMOXTColourSpace eColourSpace = eCS_Linear;
    bool bPreMultiplied = false;

    friend constexpr bool operator==(const PixelEncoding& a, const PixelEncoding& b)
    {
        return a.pixelFormat == b.pixelFormat && a.eChannelType == b.eChannelType && a.eColourSpace == b.eColourSpace &&
               a.bPreMultiplied == b.bPreMultiplied;
    }
    friend constexpr bool operator!=(const PixelEncoding& a, const PixelEncoding& b) { return !(a == b); }
};

} // namespace moxtexture
