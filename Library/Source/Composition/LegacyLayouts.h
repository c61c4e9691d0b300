#pragma once

#include <cstdint>
#include <string>

#include "Formats/PixelEncoding.h"
#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// The encoding under which a texture goes into an older native file, so that it comes back as it was: the types of APIs 3 and 5
/// are read with one channel type whatever the texture had, and that tells where the channels lie; the BC types of API 6 have a
/// channel type that no freshly encoded texture has.
///
/// @param ui32Api  see formatToLegacyType()
/// @return the encoding itself, or that with another channel type
[[nodiscard]] PixelEncoding getLegacyEncoding(const PixelEncoding& encoding, uint32_t ui32Api);

/// Saves an older native file as saveLegacy() does, of a copy in getLegacyEncoding() where that is another one. Nothing is lost.
///
/// @param strPath  where to write; an earlier file may not survive a failure (see COutputFile)
/// @return false if the API has no type for the texture, it is deeper than 1, memory is refused, or the file could not be written;
///         what was begun is removed
[[nodiscard]] bool saveLegacyForOthers(const CMOXTexture& texture, const std::string& strPath, uint32_t ui32Api);

} // namespace moxtexture
