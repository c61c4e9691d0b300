#pragma once

#include <cstdint>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"

namespace moxtexture
{

/// What a codec is told of a surface beside its two buffers.
struct CodecSurface
{
    EMOXTPixelFormat eFormat = ePF_Count;
    uint32_t uiWidth = 0, uiHeight = 0; ///< pixels, at least the format's smallest surface unless the codec takes small ones
    uint32_t uiDepth = 1;               ///< above 1 only for codecs that take a depth
    uint32_t uiQuality = 0;             ///< of compression; the codec's own scale
    bool bSigned = false;               ///< the intermediate's channel type is a signed one
    EMOXTColourSpace eColourSpace = eCS_Linear;
};

/// Encodes or decodes one surface (one depth slice of it where the codec takes no depth).
///
/// @param pSource  pixels in the intermediate form, rows without padding, or the format's blocks
/// @param pTarget  room for the result
/// @return bytes written, 0 for failure
using CodecEntry = uint32_t (*)(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface);

/// A class of formats that share their entries: all that a codec needs to be reached.
struct CodecRow
{
    EMOXTPixelFormat eFirstFormat, eLastFormat; ///< a run of numbers; several rows may name the same entries
    CodecEntry pCompress;
    CodecEntry pDecompress;
    bool bTakesDepth;          ///< false: called once a depth slice
    bool bDecodesSmallSurface; ///< true: its decoder takes surfaces below the smallest of the format as they are
};

/// The row of a format, or null for one that has no codec.
[[nodiscard]] const CodecRow* findCodec(EMOXTPixelFormat eFormat);

/// The uncompressed form that a format's compressor takes and its decompressor gives.
struct Intermediate
{
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType;
};

/// @param eTextureChannelType  of the texture; only its sign matters, and only for the EAC formats
[[nodiscard]] Intermediate getIntermediate(EMOXTPixelFormat eFormat, EMOXTChannelType eTextureChannelType);

} // namespace moxtexture
