#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Brings a texture into another uncompressed layout by moving the bits of every channel to their new place, so that nothing is
/// lost: no value is computed, whatever the bits mean. The colour space and all else stay.
///
/// The layouts must have the same channels with the same numbers of bits; a spare channel 'x' may become alpha, which is what it
/// stands for wherever a texture is shown. Types may differ as far as they only say where the bits lie: those of unsigned normalised
/// values for each other, and so on for each kind of value.
/// @return false for any other pair of layouts, or a header that was changed since its block was taken; the texture is as it was then
[[nodiscard]] bool moveChannels(CMOXTexture& texture, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType);

/// Whether moveChannels() would do it.
[[nodiscard]] bool canMoveChannels(MOXPixelWord format, EMOXTChannelType eChannelType, MOXPixelWord newFormat,
                                   EMOXTChannelType eNewChannelType);

/// Gives every pixel the greatest value, 1.0, in its spare channel 'x': all bits set, but for the sign where there is one.
/// Does nothing to a texture without a spare channel, to floats, and to pixels of more than 64 bits.
void fillSpareChannel(CMOXTexture& texture);

} // namespace moxtexture
