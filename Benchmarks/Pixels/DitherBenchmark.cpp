#include <vector>

#include <benchmark/benchmark.h>

#include "Pixels/Dither.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

using Dither = decltype(&ditherSurface);

void runDither(benchmark::State& state, Dither pDither)
{
    const auto uiSize = static_cast<uint32_t>(state.range(0));
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSize, uiSize);
    std::vector<uint8_t> pixels = picture;
    while (state.KeepRunning())
    {
        state.PauseTiming();
        pixels = picture;
        state.ResumeTiming();
        pDither(pixels.data(), layout("rgba", 4, 4, 4, 4), uiSize, uiSize, 1);
        benchmark::ClobberMemory();
    }
    const double fPixels = static_cast<double>(state.iterations()) * uiSize * uiSize;
    state.counters["MP/s"] = benchmark::Counter(fPixels / 1e6, benchmark::Counter::kIsRate);
}

BENCHMARK_CAPTURE(runDither, fast, ditherSurface)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(runDither, reference, ditherSurfaceReference)->Arg(512)->Arg(2048);

} // namespace
