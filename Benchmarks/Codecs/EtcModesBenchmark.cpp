#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcFastModes.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcTModes.h"
#include "Codecs/ETC/EtcTwoColours.h"
#include "Library/Codecs/ETC/ReferenceEtcHModes.h"
#include "Library/Codecs/ETC/ReferenceEtcTModes.h"
#include "Library/Codecs/ETC/ReferenceEtcTwoColours.h"
#include "Support/SeededPictures.h"

// The clustering of two colours and the T and H modes, step by step and as the library has them, on the blocks of a picture of 512 by
// 512 pixels.

namespace
{

using namespace moxtexture;

constexpr uint32_t k_uiSide = 512;

std::vector<EtcPixels> makeBlocks()
{
    const std::vector<uint8_t> picture = testsupport::makePicture(k_uiSide, k_uiSide);
    std::vector<EtcPixels> blocks;
    for (size_t y = 0; y < k_uiSide; y += 4)
        for (size_t x = 0; x < k_uiSide; x += 4)
        {
            EtcPixels& pixels = blocks.emplace_back();
            for (size_t i = 0; i < 16; ++i)
            {
                const uint8_t* const pui8Pixel = picture.data() + ((y + i / 4) * k_uiSide + x + i % 4) * 4;
                pixels.aui8Red[i] = pui8Pixel[0];
                pixels.aui8Green[i] = pui8Pixel[1];
                pixels.aui8Blue[i] = pui8Pixel[2];
            }
        }
    return blocks;
}

/// @param run  takes a block and gives something that keeps the work from being left out
template <typename Run>
void overBlocks(benchmark::State& state, Run run)
{
    const std::vector<EtcPixels> blocks = makeBlocks();
    for (auto _ : state)
        for (const EtcPixels& block : blocks)
            benchmark::DoNotOptimize(run(block));
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(blocks.size()) * 16e-6, benchmark::Counter::kIsIterationInvariantRate);
}

using Cluster = EtcColourPair (*)(const EtcPixels&);
using Fast = uint32_t (*)(const EtcPixels&, EtcBlockWords&);
using Refine = EtcBlockWords (*)(const EtcPixels&);

void cluster(benchmark::State& state, Cluster pCluster)
{
    overBlocks(state, pCluster);
}

void fast(benchmark::State& state, Fast pFast)
{
    overBlocks(state,
               [&](const EtcPixels& block)
               {
                   EtcBlockWords compact;
                   return pFast(block, compact) + compact.ui32Low;
               });
}

void refine(benchmark::State& state, Refine pRefine)
{
    overBlocks(state, [&](const EtcPixels& block) { return pRefine(block).ui32Low; });
}

/// What both tFast and hFast find.
void fastModes(benchmark::State& state)
{
    overBlocks(state,
               [](const EtcPixels& block)
               {
                   const EtcFastModes fits = fitFastModes(block, lbgHalfIntensity(block), false);
                   return makeFastT(block, fits.t, false).ui32Low + makeFastH(block, fits.h, false).ui32Low;
               });
}

} // namespace

BENCHMARK_CAPTURE(cluster, halfIntensityReference, etcreference::lbgHalfIntensity)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cluster, halfIntensity, lbgHalfIntensity)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cluster, noIntensityHReference, etcreference::lbgNoIntensityH)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cluster, noIntensityH, lbgNoIntensityH)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cluster, RGBHReference, etcreference::lbgRGBH)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(cluster, RGBH, lbgRGBH)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, tReference, etcreference::tFast)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, t, static_cast<Fast>(tFast))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, hReference, etcreference::hFast)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, h, static_cast<Fast>(hFast))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, tPerceptualReference, etcreference::tFastPerceptual)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fast, tPerceptual, static_cast<Fast>(tFastPerceptual))->Unit(benchmark::kMillisecond);
BENCHMARK(fastModes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refine, tReference, etcreference::tRefine)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refine, t, static_cast<Refine>(tRefine))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refine, hReference, etcreference::hRefine)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refine, h, hRefine)->Unit(benchmark::kMillisecond);
