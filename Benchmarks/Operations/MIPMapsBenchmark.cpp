// The full MIP chain of a 2048 by 2048 RGBA 8888 texture: by the plain resampler level by level, and by GenerateMIPMaps.

#include "Operations/MIPMaps.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

#include "Operations/ResampleSurface.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiSize = 2048;

CMOXTexture makeTexture(uint32_t uiLevels)
{
    const CMOXTextureHeader header(k_RGBA8, k_uiSize, k_uiSize, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    CMOXTexture texture(header, testsupport::makePicture(k_uiSize, k_uiSize).data());
    if (uiLevels > 1 && !GenerateMIPMaps(texture, eResizeNearest, uiLevels))
        std::abort();
    return texture;
}

void setRate(benchmark::State& state)
{
    state.counters["MP/s"] = benchmark::Counter(double{k_uiSize} * k_uiSize * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

void plainChain(benchmark::State& state, EResizeMode eMode)
{
    CMOXTexture texture = makeTexture(12);
    for (auto _ : state)
    {
        for (uint32_t uiLevel = 1; uiLevel < 12; ++uiLevel)
            if (!resampleSurfaceReference(texture.getDataPtr(uiLevel - 1), texture.getDataPtr(uiLevel),
                                          {k_uiSize >> (uiLevel - 1), k_uiSize >> (uiLevel - 1), 1},
                                          {k_uiSize >> uiLevel, k_uiSize >> uiLevel, 1}, eMode))
                std::abort();
        benchmark::ClobberMemory();
    }
    setRate(state);
}

/// With the new texture's memory, which the plain form above is spared.
void fastChain(benchmark::State& state, EResizeMode eMode)
{
    CMOXTexture texture = makeTexture(1);
    for (auto _ : state)
    {
        if (!GenerateMIPMaps(texture, eMode, k_uiFullMIPChain))
            std::abort();
        benchmark::ClobberMemory();
    }
    setRate(state);
}

BENCHMARK_CAPTURE(plainChain, Nearest, eResizeNearest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fastChain, Nearest, eResizeNearest)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainChain, Linear, eResizeLinear)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fastChain, Linear, eResizeLinear)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainChain, Cubic, eResizeCubic)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fastChain, Cubic, eResizeCubic)->Unit(benchmark::kMillisecond);

} // namespace
