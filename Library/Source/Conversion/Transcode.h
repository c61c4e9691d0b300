#pragma once

#include <cstdint>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Turns a whole texture into another pixel format, channel type and colour space, in place: the only road between formats.
///
/// A compressed texture is decompressed first, also where the target is the same format; a compressed target is made from the
/// format's intermediate form and keeps the channel type of that form, whatever was asked for.
///
/// @param uiQuality  of a compressed target, on the codec's own scale; others ignore it
/// @param bDoDither  diffuse the error of targets below 32 bits a pixel; goes through 8-bit RGBA
/// @return false for an empty texture, for ePF_Count or a result that would not fit a data block (the texture is as it was then,
///         unless it had to be decompressed first), or where a codec produced another number of bytes than the format takes: what
///         the codec left then stands in the texture, so whoever may need the old content keeps a copy
[[nodiscard]] bool Transcode(CMOXTexture& texture, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType,
                             EMOXTColourSpace eNewColourSpace, uint32_t uiQuality, bool bDoDither);

} // namespace moxtexture
