#pragma once

#include <cstdint>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// Sets format, channel type and colour space (linear) from a D3D format number or FourCC; a FourCC also sets the pre-multiplied flag.
/// On purpose: a FourCC that is not pre-multiplied clears all flags.
/// @return false, with nothing changed, for a number that is not known
[[nodiscard]] bool setFromD3DFormat(CMOXTextureHeader& header, uint32_t ui32Number);

/// Sets format, channel type and colour space from a DXGI format number. On purpose: a number that is not known changes nothing
/// and goes unnoticed.
void setFromDXGIFormat(CMOXTextureHeader& header, uint32_t ui32Number);

} // namespace moxtexture
