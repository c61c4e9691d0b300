#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Turns an uncompressed texture into 8-bit RGBA whose errors towards newFormat are diffused, colour space unchanged. Where
/// newFormat holds one grey value a pixel, red, green and blue carry that value.
///
/// @return false, with the texture as it was, where the result would not fit a data block
[[nodiscard]] bool ditherTexture(CMOXTexture& texture, MOXPixelWord newFormat);

} // namespace moxtexture
