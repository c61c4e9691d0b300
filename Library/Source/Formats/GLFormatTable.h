#pragma once

#include <cstdint>
#include <optional>

#include "Formats/PixelEncoding.h"

namespace moxtexture
{

/// What a file with OpenGL's numbers says of its pixels. All 0 stands for an encoding without a row.
struct GLFormat
{
    uint32_t ui32Type = 0;     ///< glType: of an element of a pixel, or of a whole packed pixel; 0 for formats of blocks
    uint32_t ui32TypeSize = 0; ///< bytes of what ui32Type names, 1 for formats of blocks
    uint32_t ui32Format = 0;   ///< glFormat; 0 for formats of blocks
    uint32_t ui32InternalFormat = 0;
    uint32_t ui32BaseInternalFormat = 0;
};

/// The encoding that OpenGL's numbers stand for, for whoever reads.
///
/// @param ui32InternalFormat  glInternalFormat; alone enough except for the unsized ones (6403, 6406 to 6410, 33319, 32993)
/// @param ui32Type            glType, which tells those apart
/// @return nothing for numbers outside the table
///
/// Published: Khronos OpenGL and OpenGL ES registries.
[[nodiscard]] std::optional<PixelEncoding> findGLFormat(uint32_t ui32InternalFormat, uint32_t ui32Type);

/// The numbers of an encoding, for whoever writes: of several sized internal formats the lowest number, an unsized one only where
/// there is no sized one.
///
/// A colour space without a row of its own gives the row of the other, and with a numbered format the channel type counts only
/// where its rows differ by sign; findGLFormat() of the result tells whether anything was lost.
/// @return nothing for an encoding without a row
[[nodiscard]] std::optional<GLFormat> findGLFormat(const PixelEncoding& encoding);

} // namespace moxtexture
