#pragma once

#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Decodes a MOXTC1 surface as DecompressMOXTCReference does, and gives the same.
uint32_t DecompressMOXTC(const uint8_t* pSource, size_t uiSourceSize, bool b2bpp, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pTarget);

} // namespace moxtexture
