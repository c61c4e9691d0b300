#include <benchmark/benchmark.h>

#include "Codecs/BC/BcCompress.h"
#include "Codecs/BC/BcDecompress.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

/// @param state  range 0 is the side of the picture in pixels
void decompress(benchmark::State& state, decltype(&bcDecompressImage) decode, uint32_t uiType)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<uint8_t> blocks(picture.size() / 4);
    if (bcCompressImage(picture.data(), blocks.data(), uiSide, uiSide, uiType) == 0)
        state.SkipWithError("nothing was encoded");
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(decode(blocks.data(), picture.data(), uiSide, uiSide, uiType));
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(decompress, BC1_reference, bcDecompressImageReference, 1)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decompress, BC1_fast, bcDecompressImage, 1)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decompress, BC2_reference, bcDecompressImageReference, 3)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decompress, BC2_fast, bcDecompressImage, 3)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decompress, BC3_reference, bcDecompressImageReference, 5)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(decompress, BC3_fast, bcDecompressImage, 5)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
