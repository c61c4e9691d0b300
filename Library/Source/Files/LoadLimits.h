#pragma once

#include <cstdint>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Takes the data block, all zeros, of a texture whose header was read from a file.
///
/// Every reader takes its block here, as the header is not to be trusted. Refused are
/// - a block that does not fit 32 bits,
/// - more than 32 MIP levels, beyond which sizes only repeat,
/// - a block of more than 256 MiB that is also more than 16 times the length of the file,
/// - pixels that would take more than 1 GiB as 8-bit RGBA and also more than 64 times the length of the file, which is beyond the
///   densest format: a few bytes must not grow to gigabytes as soon as they are looked at,
/// - more than 65,536 surfaces that are also more than the bytes of the file: they would take an age to walk over.
/// A file that holds all of its data is refused for none but the first two, as long as each of its surfaces takes a byte or more.
///
/// @param ui64FileSize  bytes of the whole file
/// @return false for a refusal or where memory is not to be had; the texture is left as by leaveWithoutData() then
[[nodiscard]] bool takeDataBlock(CMOXTexture& texture, uint64_t ui64FileSize);

/// How a load ends that did not come to its data: format ePF_Count and no block, so that every size is 0; what else was read
/// of the header stays.
void leaveWithoutData(CMOXTexture& texture);

} // namespace moxtexture
