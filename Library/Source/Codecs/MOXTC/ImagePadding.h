#pragma once

#include <cstdint>
#include <vector>

namespace moxtexture
{

/// Enlarges a picture at the right and below; the margin repeats the last columns and then the last rows as a block.
///
/// Column x of the right margin is column x - (padded width - width), row y of the bottom margin is the whole padded row
/// y - (padded height - height). A side shorter than its margin repeats as often as it takes.
///
/// @param pui8Source  uiHeight rows of uiWidth pixels of four bytes, without padding; zeros take the place of one without pixels
/// @param uiPaddedWidth, uiPaddedHeight  at least the width and the height
/// @return the padded picture, rows without padding; throws std::bad_alloc where memory is refused
[[nodiscard]] std::vector<uint8_t> padImage(const uint8_t* pui8Source, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiPaddedWidth,
                                            uint32_t uiPaddedHeight);

} // namespace moxtexture
