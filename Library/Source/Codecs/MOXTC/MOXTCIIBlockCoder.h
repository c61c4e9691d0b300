#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Codecs/MOXTC/Block/BlockWord.h"

namespace moxtexture
{

constexpr size_t k_uiCodedPixels = 16;

/// The search for the line ends after so many rounds, or with one that moves its direction (of length 1) by less than this.
constexpr uint32_t k_uiAxisRounds = 100;
constexpr float k_fAxisTolerance = 1e-5f;

/// 4 rows of 4 pixels, each its bytes as a little-endian number: red in the lowest, alpha in the highest.
using CodedPixels = std::array<uint32_t, k_uiCodedPixels>;

/// Encodes a MOXTCII 4bpp block without a look at other blocks.
///
/// The block carries the mode flag (punch-through) if any pixel has alpha 0, and otherwise the hard flag. One or two colours are kept
/// as they are, for more the end points of a line through them stand in. Arithmetic is in 32-bit floats.
[[nodiscard]] BlockWord codeMOXTCIIBlock(const CodedPixels& pixels);

/// Encodes a picture block by block in rows: the fastest way to MOXTCII 4bpp.
///
/// The fast form fits several blocks side by side, each in the reference's order of operations, and gives the same bytes.
///
/// @param pui8Source         uiHeight rows of uiWidth pixels, four bytes each, red first, without padding or need of alignment
/// @param uiWidth, uiHeight  multiples of 4
/// @param pui8Target         k_uiBlockBytes a block
///
/// Keep no state; any thread may call them.
void codeMOXTCIIBlocksReference(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pui8Target);
void codeMOXTCIIBlocks(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint8_t* pui8Target);

} // namespace moxtexture
