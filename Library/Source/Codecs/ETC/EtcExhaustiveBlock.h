#pragma once

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// Encodes a block by searching all codewords of individual and differential mode, after the fast search.
/// Keeps no state; memory refused throws std::bad_alloc.
void etcExhaustiveBlockETC1(const EtcPixels& pixels, EtcBlockWords& words);

/// The same by the perceptual measure.
void etcExhaustiveBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words);

/// Encodes a block by searching all codewords of ETC2's five opaque modes, after the fast searches. Equal errors keep the earlier
/// of: fast, differential, individual, planar, H, T.
///
/// On purpose: a differential block counts with the error that its search returned, which may be less than the block's own.
void etcExhaustiveBlockETC2(const EtcPixels& pixels, EtcBlockWords& words);

/// The same by the perceptual measure. On purpose the order is another one: fast, planar, differential, individual, H, T.
void etcExhaustiveBlockETC2Perceptual(const EtcPixels& pixels, EtcBlockWords& words);

} // namespace moxtexture
