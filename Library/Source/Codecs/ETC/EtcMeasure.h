#pragma once

#include <array>
#include <cstdint>

#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcTryTables.h"

namespace moxtexture
{

/// What the exhaustive searches minimise, always in whole numbers.
enum class EEtcMeasure
{
    ePlain,     ///< blockErrorRGB
    ePerceptual ///< 1000 times blockErrorPerceptual
};

template <EEtcMeasure>
struct EtcMeasure;

template <>
struct EtcMeasure<EEtcMeasure::ePlain>
{
    static constexpr std::array<uint32_t, 3> k_auiWeights = {1, 1, 1}; ///< of a squared difference in red, green and blue
    static constexpr uint32_t k_uiMaxError = k_uiEtcMaxPlainError;

    static EtcHalfFit<uint32_t> fitHalf(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
    {
        return tryAllTables(pixels, eHalf, base);
    }
};

template <>
struct EtcMeasure<EEtcMeasure::ePerceptual>
{
    static constexpr std::array<uint32_t, 3> k_auiWeights = {299, 587, 114};
    static constexpr uint32_t k_uiMaxError = k_uiEtcMaxPerceptualError;

    static EtcHalfFit<uint32_t> fitHalf(const EtcPixels& pixels, EEtcHalf eHalf, const EtcColour& base)
    {
        return tryAllTablesWeighted(pixels, eHalf, base);
    }
};

} // namespace moxtexture
