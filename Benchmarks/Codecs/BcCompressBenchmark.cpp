#include <benchmark/benchmark.h>

#include "Codecs/BC/BcCompress.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

/// @param state  range 0 is the side of the picture in pixels
void compress(benchmark::State& state, decltype(&bcCompressImage) encode, uint32_t uiType)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<uint8_t> blocks(picture.size() / 4);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(encode(picture.data(), blocks.data(), uiSide, uiSide, uiType));
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(compress, BC1_reference, bcCompressImageReference, 1)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compress, BC1_fast, bcCompressImage, 1)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compress, BC2_reference, bcCompressImageReference, 3)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compress, BC2_fast, bcCompressImage, 3)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compress, BC3_reference, bcCompressImageReference, 5)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(compress, BC3_fast, bcCompressImage, 5)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
