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
/// @return false for an empty texture, one whose header was changed since its block was taken, or ePF_Count: the texture is as it
///         was. False as well where a result would not fit a data block, or a codec produced another number of bytes than the format
///         takes (none, for a format without a codec): the texture then holds whatever step it had come to, so whoever may need the
///         old content keeps a copy
[[nodiscard]] bool Transcode(CMOXTexture& texture, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType,
                             EMOXTColourSpace eNewColourSpace, uint32_t uiQuality, bool bDoDither);

} // namespace moxtexture
