#pragma once

#include "Operations/ChannelKind.h"
#include "Operations/ResamplePositions.h"

namespace moxtexture
{

struct CubicFilter
{
    static constexpr size_t kTaps = 4;

    [[nodiscard]] static AxisTaps<kTaps> makeTaps(float fPosition, uint32_t uiSize)
    {
        return makeAxisTaps<kTaps>(fPosition, uiSize, -1.0f);
    }
};

/// The Catmull-Rom spline through a, b, c, d at f of the way from b to c.
[[nodiscard]] constexpr float interpolateCubic(float a, float b, float c, float d, float f)
{
    return 0.5f * ((((3.0f * b - a - 3.0f * c + d) * f + (2.0f * a - 5.0f * b + 4.0f * c - d)) * f + (c - a)) * f + 2.0f * b);
}

/// The pixel at a position of the source: along x for each of the 16 rows around it, along y for each slice, then along z.
///
/// Nothing is clamped between the three. A source of one slice has no step along z.
/// Parameters and result as sampleLinear().
template <typename T>
void sampleCubic(const T* pSource, const SurfaceSize& size, float x, float y, float z, T* pPixel)
{
    const AxisTaps<4> tapsX = CubicFilter::makeTaps(x, size.uiWidth);
    const AxisTaps<4> tapsY = CubicFilter::makeTaps(y, size.uiHeight);
    const AxisTaps<4> tapsZ = CubicFilter::makeTaps(z, size.uiDepth);
    const size_t uiSliceCount = size.uiDepth == 1 ? 1 : 4;
    for (size_t c = 0; c < k_uiWorkingChannels; ++c)
    {
        const auto along = [](const float(&afSamples)[4], float f)
        { return interpolateCubic(afSamples[0], afSamples[1], afSamples[2], afSamples[3], f); };
        float afSlices[4];
        for (size_t k = 0; k < uiSliceCount; ++k)
        {
            float afRows[4];
            for (size_t j = 0; j < 4; ++j)
            {
                const T* pRow = pSource + size.getPixelIndex(0, tapsY.auiIndex[j], tapsZ.auiIndex[k]) * k_uiWorkingChannels + c;
                float afSamples[4];
                for (size_t i = 0; i < 4; ++i)
                    afSamples[i] = static_cast<float>(pRow[size_t{tapsX.auiIndex[i]} * k_uiWorkingChannels]);
                afRows[j] = along(afSamples, tapsX.fFraction);
            }
            afSlices[k] = along(afRows, tapsY.fFraction);
        }
        pPixel[c] = ChannelKind<T>::clampToElement(uiSliceCount == 1 ? afSlices[0] : along(afSlices, tapsZ.fFraction));
    }
}

} // namespace moxtexture
