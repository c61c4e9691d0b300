#pragma once

#include <cstdio>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Reads a native file (`.mox`): 52 bytes of header, the metadata blocks one after the other, the data block; little-endian.
///
/// @param pFile    open for reading; read from its start, whatever its position. Null fails
/// @param texture  a default texture; afterwards the block that it holds is what its header measures in any case
/// @return false if no data was read. A header that ends in the metadata, or that claims what takeDataBlock() refuses, leaves
///         the format ePF_Count, so that every size is 0. Data that ends early is not a failure: what the file does not deliver
///         is 0. With no byte of data at all the texture has its zeros and the result is false.
///
/// On purpose: a metadata block without a byte of data fails the load; one that reaches past the end of the section as the header
/// tells it is dropped, and the data is then read from behind the blocks that were kept, not from the section's end.
/// A file of more than 32,768 metadata blocks fails the load.
[[nodiscard]] bool readNative(std::FILE* pFile, CMOXTexture& texture);

/// Writes a native file straight to a path; an earlier file there is emptied first.
///
/// @return false, with the file removed, if anything could not be written, which is also so for a texture without data or with a
///         metadata block of no bytes, which no reader would accept
[[nodiscard]] bool writeNative(const CMOXTexture& texture, const std::string& strPath);

} // namespace moxtexture
