#pragma once

#include <cstdint>

#include "Formats/PixelEncoding.h"

namespace moxtexture
{

/// What a pixel type of the older native headers stands for.
///
/// @param ui32Type  the low 8 bits of the header's flags word; the types end at 181
/// @return for numbers that name no type the format ePF_Count, which measures nothing, with the channel type 14
[[nodiscard]] PixelEncoding legacyTypeToFormat(uint32_t ui32Type);

/// The pixel type that an API writes for an encoding: of several the lowest, unless the API has one of its own.
///
/// @param ui32Api  1 "OpenGL ES 1", 2 "OpenGL ES 2", 3 "OpenGL ES 3", 4 "OpenGL", 5 "DirectX 11 (9_3)", 6 "DirectX 11 (10_1)",
///                 7 "DirectX 11 (11_1)"
/// @return -1 where the API has no type for it, or is none of these
///
/// On purpose: APIs 1 to 5 do not ask for colour space and pre-multiplication, and no API asks a numbered format for its channel type,
/// but 6 for the BC formats, which it has with types 8 and 9 only. What is read back then carries the type's own.
/// A few share a type with another that reading gives: "i" and "ai" with "l" and "la", the MOXTC formats without alpha with those that
/// have it, "rg" of floats with "gr", signed "abgr" 2 10 10 10 with unsigned "argb". APIs 3 and 5 write the unsigned normalised types
/// of every size alike.
[[nodiscard]] int32_t formatToLegacyType(const PixelEncoding& encoding, uint32_t ui32Api);

} // namespace moxtexture
