#pragma once

#include <cstdint>

#include "Formats/ChannelTypes.h"
#include "Pixels/CMOXPixelAccessor.h"
#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Converts every pixel of every surface from one uncompressed layout and colour space to another.
///
/// Pixels are taken in the order in which they lie, as many as both surfaces have; target surfaces that the texture has not are left
/// out. Where either layout has a fault nothing is converted: each target pixel takes what the target accessor holds, zeros in a new
/// one, and zeros beyond its 16 bytes. Spaces other than linear and sRGB leave colours as they are.
///
/// @param source, target  of one shape; their formats are those of the accessors
/// @return bytes of the target pixels that were written
uint64_t convertSurfaces(const CMOXTexture& source, CMOXTexture& target, const CMOXPixelAccessor& sourceAccessor,
                         const CMOXPixelAccessor& targetAccessor, EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace);

/// The plain form, pixel by pixel through the accessors, which convertSurfaces() equals byte for byte.
uint64_t convertSurfacesReference(const CMOXTexture& source, CMOXTexture& target, const CMOXPixelAccessor& sourceAccessor,
                                  const CMOXPixelAccessor& targetAccessor, EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace);

} // namespace moxtexture
