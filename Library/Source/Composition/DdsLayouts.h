#pragma once

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// In some rows of the format tables for DDS files the letters disagree with the bytes that everybody else writes. The reader and
/// the writer keep to the tables; here is what goes between them and whoever wants to see the right colours. Bits are moved or
/// labels changed, and nothing is lost.

/// To be called with every texture as readDds() left it: gives it the layout that its bytes have, and sets the spare bits of layouts
/// with an 'x' (where files hold anything, mostly zeros) to what is shown opaque.
void correctLoadedDds(CMOXTexture& texture);

/// Whether prepareForDds() would change anything.
[[nodiscard]] bool needsDdsPreparation(const CMOXTextureHeader& header);

/// To be called before writeDds(): gives the texture the layout and bytes with which its file shows the same colours everywhere, and
/// reads back through correctLoadedDds().
///
/// A single float of 16 bits becomes one of 32: the number that others know it by is read as 32 bits. Layouts that open but that the writer
/// has no number for become others that it has. What has no number even then is left as it is: the writer refuses it.
/// @return false if the texture would grow beyond what a texture can hold, or memory is refused
[[nodiscard]] bool prepareForDds(CMOXTexture& texture);

/// Whether the writer has a number for a texture, prepared or not.
[[nodiscard]] bool hasDdsFormat(const CMOXTextureHeader& header);

} // namespace moxtexture
