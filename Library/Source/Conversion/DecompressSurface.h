#pragma once

#include <cstdint>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Decompresses one surface of a texture.
///
/// @param source  in eFormat
/// @param target  of the same shape, with its block taken, in the format's intermediate form
/// @return bytes of the target's surface; 0 if the format has no codec, a surface is not there, or the codec fails
[[nodiscard]] uint32_t decompressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember,
                                         uint32_t uiFace, uint32_t uiMIPLevel, bool bSigned);

/// Replaces a compressed texture by its intermediate form, with all metadata.
///
/// @return bytes produced, which are the texture's new data size if all went well; 0, with the texture as it was, where the
///         result would not fit a data block
[[nodiscard]] uint64_t decompressTexture(CMOXTexture& texture);

} // namespace moxtexture
