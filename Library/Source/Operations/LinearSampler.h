#pragma once

#include "Operations/ChannelKind.h"
#include "Operations/ResamplePositions.h"

namespace moxtexture
{

struct LinearFilter
{
    static constexpr size_t kTaps = 2;

    [[nodiscard]] static AxisTaps<kTaps> makeTaps(float fPosition, uint32_t uiSize) { return makeAxisTaps<kTaps>(fPosition, uiSize, 0.0f); }
};

[[nodiscard]] constexpr float interpolateLinear(float a, float b, float f)
{
    return a * (1.0f - f) + b * f;
}

/// The pixel at a position of the source, from the eight pixels around it.
///
/// The weights (1 - f) and f are applied axis by axis, along x, then y, then z: along x for each of the four rows, and so on.
/// Every product and every sum is rounded to float, also those with a weight of 0, so that an infinity beside the position gives
/// no number, which becomes 0.
///
/// @param pSource  size.uiWidth * uiHeight * uiDepth pixels of four elements
/// @param x, y, z  in source pixels
/// @param pPixel   four elements, clamped to 0 and the channel maximum and cut
template <typename T>
void sampleLinear(const T* pSource, const SurfaceSize& size, float x, float y, float z, T* pPixel)
{
    const AxisTaps<2> tapsX = LinearFilter::makeTaps(x, size.uiWidth);
    const AxisTaps<2> tapsY = LinearFilter::makeTaps(y, size.uiHeight);
    const AxisTaps<2> tapsZ = LinearFilter::makeTaps(z, size.uiDepth);
    for (size_t c = 0; c < k_uiWorkingChannels; ++c)
    {
        float afSlices[2];
        for (size_t k = 0; k < 2; ++k)
        {
            float afRows[2];
            for (size_t j = 0; j < 2; ++j)
            {
                const T* pRow = pSource + size.getPixelIndex(0, tapsY.auiIndex[j], tapsZ.auiIndex[k]) * k_uiWorkingChannels + c;
                const float fLeft = static_cast<float>(pRow[size_t{tapsX.auiIndex[0]} * k_uiWorkingChannels]);
                const float fRight = static_cast<float>(pRow[size_t{tapsX.auiIndex[1]} * k_uiWorkingChannels]);
                afRows[j] = interpolateLinear(fLeft, fRight, tapsX.fFraction);
            }
            afSlices[k] = interpolateLinear(afRows[0], afRows[1], tapsY.fFraction);
        }
        pPixel[c] = ChannelKind<T>::clampToElement(interpolateLinear(afSlices[0], afSlices[1], tapsZ.fFraction));
    }
}

} // namespace moxtexture
