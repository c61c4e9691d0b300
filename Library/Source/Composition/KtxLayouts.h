#pragma once

#include <optional>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// The encoding in which a texture is best put into a KTX file: its own, if OpenGL has numbers for it and they keep its colour space;
/// else one with the same channels and bits in another order, or of another storage type with the same kind of values, whose numbers
/// do. Where none keeps the colour space, the first that has numbers at all. A spare channel 'x' may become alpha, as which it is
/// shown.
/// @return nothing for an encoding without any
[[nodiscard]] std::optional<PixelEncoding> findKtxEncoding(const PixelEncoding& encoding);

/// Brings a texture into the encoding of findKtxEncoding(); bits are moved, and nothing is lost.
/// @return false, with the texture as it was, if there is none
[[nodiscard]] bool prepareForKtx(CMOXTexture& texture);

} // namespace moxtexture
