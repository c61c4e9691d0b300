#pragma once

#include <cstddef>
#include <cstdint>

#include "Pixels/CMOXPixelAccessor.h"

namespace moxtexture
{

/// The values of a run of codes of one channel: readValue() for each.
void readValues(const ChannelPlace& place, const uint32_t* pCodes, size_t uiCount, float* pValues);

/// The codes of a run of values for one channel of up to 32 bits: writeValue() for each, bits above the channel included.
void writeValues(const ChannelPlace& place, const float* pValues, size_t uiCount, uint32_t* pCodes);

} // namespace moxtexture
