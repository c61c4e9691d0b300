#pragma once

#include <cstdint>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Compresses one surface of a texture.
///
/// A surface below the smallest of the format is enlarged first: the rows of the larger picture start where those of the
/// smaller one do and run on into whatever bytes follow in the source, up to the end of its block, zeros from there on.
///
/// @param source   in the format's intermediate form
/// @param target   of the same shape, with its block taken, in eFormat
/// @param bSigned  the source's channel type is a signed one
/// @return bytes written; 0 if the format has no codec, a surface is not there, or the codec fails
[[nodiscard]] uint32_t compressSurface(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember,
                                       uint32_t uiFace, uint32_t uiMIPLevel, uint32_t uiQuality, bool bSigned);

} // namespace moxtexture
