#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// The older native files (`.mox` version 2): a header of 44 or 52 bytes, which its first word tells, then the data, each array
/// member with its faces, each face with its MIP levels; little-endian, without metadata.

/// Bytes of the shorter header, which has no word for the number of surfaces, and of the one that is written.
inline constexpr uint32_t k_uiLegacyShortHeaderSize = 44;
inline constexpr uint32_t k_uiLegacyHeaderSize = 52;

/// Reads either header, its first word among it, and leaves the file at the data. The block is for the caller to take
/// (takeDataBlock()).
///
/// @param pFile    open for reading, at its start
/// @param texture  a default texture; gets shape and encoding, and metadata for what the flags say of bump map and orientation. A
///                 pixel type that nobody knows gives ePF_Count, so that every size is 0
/// @return false, with the texture as it was, for another first word or a file that ends in the header
[[nodiscard]] bool readLegacyHeader(std::FILE* pFile, CMOXTexture& texture);

/// Reads the surfaces, one read each, into the block, which the header measures.
///
/// @param pFile  where readLegacyHeader() left it
/// @return false if the file ends before the last surface does; what it did not deliver stays as it was
[[nodiscard]] bool readLegacyData(std::FILE* pFile, CMOXTexture& texture);

/// Writes a file with the longer header straight to a path, as it is given; an earlier file there is emptied first. Metadata is
/// dropped but for the flags.
///
/// @param ui32Api  whose pixel types are written, see formatToLegacyType()
/// @return false, with the file removed, if the API has no type for the texture's encoding, the texture is deeper than 1 or has no
///         data, or anything could not be written
///
/// On purpose: any number of faces above 1 is written as the cube flag, with which six are read.
[[nodiscard]] bool saveLegacy(const CMOXTexture& texture, const std::string& strPath, uint32_t ui32Api);

} // namespace moxtexture
