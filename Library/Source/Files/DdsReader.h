#pragma once

#include <cstdio>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Reads a DDS file, with or without the extended header. Its surfaces come by array member, then face, then MIP level.
///
/// @param pFile    open for reading; read from its start, whatever its position. Null fails
/// @param texture  a default texture; afterwards the block that it holds is what its header measures in any case
/// @return true if all of the data was there. Data that ends early gives false, and a texture with zeros for what is missing. All
///         other failures (an unknown format number, no data to read, what takeDataBlock() refuses) leave the format ePF_Count, so
///         that every size is 0; what was read of the shape stays.
[[nodiscard]] bool readDds(std::FILE* pFile, CMOXTexture& texture);

} // namespace moxtexture
