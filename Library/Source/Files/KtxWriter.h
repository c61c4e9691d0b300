#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Writes a KTX file of version 1, little-endian, straight to a path; an earlier file there is emptied first.
///
/// Its one key is the orientation; other metadata is not kept. Rows of pixels are padded to 4 bytes. Sizes of 1 (but for the width)
/// are written as 0, and an encoding without a row in the format table leaves 0 for its numbers, so that no reader takes the file:
/// findGLFormat() tells beforehand. A texture that measures 0 bytes gives a file that ends behind the key.
///
/// @return false, with the file removed, if anything could not be written, if the header measures more than the texture holds, or
///         for a level whose padded size does not fit 32 bits
[[nodiscard]] bool writeKtx(const CMOXTexture& texture, const std::string& strPath);

} // namespace moxtexture
