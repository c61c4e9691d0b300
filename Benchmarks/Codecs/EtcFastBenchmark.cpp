#include <benchmark/benchmark.h>

#include "Codecs/ETC/EtcFastBlock.h"
#include "Library/Codecs/ETC/ReferenceEtcFastBlock.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

/// @param state  range 0 is the side of the picture in pixels
void encodeBlocks(benchmark::State& state, double (*pEncode)(const EtcPixels&, EtcBlockWords&))
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<uint8_t> rgb;
    for (size_t i = 0; i < picture.size(); ++i)
        if (i % 4 != 3)
            rgb.push_back(picture[i]);

    for (auto _ : state)
        for (uint32_t y = 0; y < uiSide; y += 4)
            for (uint32_t x = 0; x < uiSide; x += 4)
            {
                EtcBlockWords words;
                benchmark::DoNotOptimize(pEncode(readEtcPixels(rgb.data() + (size_t{y} * uiSide + x) * 3, uiSide), words));
                benchmark::DoNotOptimize(words);
            }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(encodeBlocks, Plain_reference, etcreference::etcFastBlockETC1)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeBlocks, Plain_fast, etcFastBlockETC1)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeBlocks, Perceptual_reference, etcreference::etcFastBlockETC1Perceptual)
    ->Arg(512)
    ->Arg(2048)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeBlocks, Perceptual_fast, etcFastBlockETC1Perceptual)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
