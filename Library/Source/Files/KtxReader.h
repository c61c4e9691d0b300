#pragma once

#include <istream>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Reads a KTX file of version 1, little-endian, from the start of a stream that can seek; readThroughStream() calls it.
///
/// Of the keys only the orientation is kept; a file with any other key gets an orientation record too, of what was told so far.
/// A key-value size of 0, or one past the end of its section or of the file, ends the keys. Rows of pixels may stand with or without
/// padding, which each level's imageSize tells, and padding that is missing at the very end of the file is not missed.
///
/// @param texture  a default texture; afterwards the block that it holds is what its header measures in any case
/// @return false, without data, for what is no such file, for numbers outside the format table, for a header that claims what
///         takeDataBlock() refuses, and where the levels would start past the end of the file. A file of 0 levels gives true.
/// @throw std::ios_base::failure, a std::runtime_error, where the stream ends early; pixels as far as they were read stay, the rest
///        is 0
[[nodiscard]] bool readKtx(std::istream& stream, CMOXTexture& texture);

} // namespace moxtexture
