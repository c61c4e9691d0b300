#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Flips every axis that the orientation record says is mirrored and sets the record to zero on all axes.
///
/// @param texture  in one of the working forms that edits take
/// @return false if a flip failed; the record is set all the same
[[nodiscard]] bool undoOrientation(CMOXTexture& texture);

/// Brings a texture into the form in which it is displayed or exported as a picture: linear 8-bit RGBA, orientation undone.
///
/// @return false if the conversion or a flip failed; the texture may be spoiled then
[[nodiscard]] bool toRGBA8Canonical(CMOXTexture& texture);

/// The same with four 32-bit floats a pixel.
[[nodiscard]] bool toRGBAFloatCanonical(CMOXTexture& texture);

} // namespace moxtexture
