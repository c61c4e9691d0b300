#include <benchmark/benchmark.h>

#include "Codecs/MOXTC/MOXTCIIBlockCoder.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

/// @param state  range 0 is the side of the picture in pixels
void code(benchmark::State& state, decltype(&codeMOXTCIIBlocks) codeBlocks)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<uint8_t> blocks(picture.size() / 8);
    for (auto _ : state)
    {
        codeBlocks(picture.data(), uiSide, uiSide, blocks.data());
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(code, reference, codeMOXTCIIBlocksReference)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(code, fast, codeMOXTCIIBlocks)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
