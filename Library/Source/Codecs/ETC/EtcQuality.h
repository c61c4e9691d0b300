#pragma once

#include <cstdint>

namespace moxtexture
{

/// How etcCompressImage searches. Formats with one search only (punch-through and EAC) take it at every quality.
enum EEtcQuality : uint32_t
{
    eEtcFast = 0,
    eEtcFastPerceptual = 1,
    eEtcSlow = 2,
    eEtcSlowPerceptual = 3,
    eEtcSlowUnchecked = 4,           ///< as eEtcSlow; on purpose: the signed flag isn't compared with the format
    eEtcSlowPerceptualUnchecked = 5, ///< as eEtcSlowPerceptual; the same
};

} // namespace moxtexture
