#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Brings a texture into a form that every edit takes, with as many bits as its channels have, and undoes its orientation.
///
/// RGBA of 8 bits for channel types of bytes, of 16 bits for shorts, of 32 bits for integers, all unsigned normalised, and of
/// 32-bit floats for both float types; a compressed texture counts as its codec's intermediate. The colour space stays.
///
/// @return false for a channel type that is none, or where a conversion or flip failed; the texture may be spoiled then
[[nodiscard]] bool toWorkingForm(CMOXTexture& texture);

} // namespace moxtexture
