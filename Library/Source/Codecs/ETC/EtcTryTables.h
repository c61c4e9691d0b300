#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// The halves into which a block splits: two columns of 2 by 4 pixels, or with the flip bit two rows of 4 by 2.
enum EEtcHalf
{
    eEtcLeft,
    eEtcRight,
    eEtcTop,
    eEtcBottom
};

/// How a half is best painted from one base colour.
template <typename E>
struct EtcHalfFit
{
    uint32_t uiTable = 0;     ///< of modifiers, 0 to 7
    uint32_t ui32Indices = 0; ///< both planes as packIndividual() takes them; only bits of this half are set
    E error = 0;              ///< of the half's eight pixels
};

/// Finds the table of modifiers, and for each pixel the modifier, that come nearest to a half's pixels.
///
/// A modifier is added to the three channels of the base, each clamped to a byte. Of equal errors the earlier modifier and the
/// earlier table stay.
///
/// @param base  bytes, expanded from the block's levels
/// @return the error is the sum of the squared differences
[[nodiscard]] EtcHalfFit<uint32_t> tryAllTables(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base);

/// The same with weights of 0.299, 0.587 and 0.114 for red, green and blue, in single precision: a pixel's weighted squares are
/// summed red first, and the pixels column by column. Which of two near errors is the lesser hangs on that order.
[[nodiscard]] EtcHalfFit<float> tryAllTablesPerceptual(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base);

/// The same with weights of 299, 587 and 114, in whole numbers.
[[nodiscard]] EtcHalfFit<uint32_t> tryAllTablesWeighted(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base);

} // namespace moxtexture
