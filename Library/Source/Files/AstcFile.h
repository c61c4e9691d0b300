#pragma once

#include <iosfwd>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Reads an `.astc` file: 16 bytes of header, then the blocks of one surface, 16 bytes each.
///
/// @param stream   over the whole file, which is read from the stream's position on; seeking tells its length
/// @param texture  a default texture; the block that it holds is what its header measures in any case
/// @return false for another magic number, block sizes that no format has, or sizes that takeDataBlock() refuses (no data then), and
///         for a file that ends in the blocks, whose missing bytes are 0. A stream that throws on a short read throws here
///
/// Published: the file header of ARM's ASTC encoder. It tells neither colour space nor kind of channel: linear unsigned bytes.
[[nodiscard]] bool readASTC(std::istream& stream, CMOXTexture& texture);

/// Writes the first surface of a texture with that header straight to a path, for the external encoder.
///
/// A format without blocks goes out with block sizes of 0.
/// @return false, with the file removed, if anything could not be written, also for a texture without data and for sides of 2^24
///         and more, for which the header has no room
[[nodiscard]] bool writeASTC(const CMOXTexture& texture, const std::string& strPath);

} // namespace moxtexture
