#pragma once

#include <cstdint>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// Gives a texture the one padding record with which the data of its native file starts at a multiple of ui32Alignment.
///
/// An older padding record is taken out first, so saving again and again leaves one. Where no bytes are missing the record gets
/// a whole step of them: a native file cannot hold a record without data. An alignment of 0 or 1 changes nothing.
///
/// On purpose: the length is counted modulo 2^32, so alignments that are no powers of two are not met.
void setSavePadding(CMOXTextureHeader& header, uint32_t ui32Alignment);

} // namespace moxtexture
