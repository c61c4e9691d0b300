#include <benchmark/benchmark.h>

#include "Codecs/ETC/EtcAlphaBlock.h"
#include "Library/Codecs/ETC/ReferenceEtcAlphaBlock.h"
#include "Support/SeededPictures.h"

namespace
{

using moxtexture::EtcAlphas;

/// The blocks of one channel of a picture.
std::vector<EtcAlphas> makeBlocks(uint32_t uiSide, uint32_t uiChannel)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<EtcAlphas> blocks;
    for (uint32_t y = 0; y < uiSide; y += 4)
        for (uint32_t x = 0; x < uiSide; x += 4)
        {
            EtcAlphas alphas;
            for (uint32_t i = 0; i < 16; ++i)
                alphas.aui8[i] = picture[((y + i / 4) * uiSide + x + i % 4) * 4 + uiChannel];
            blocks.push_back(alphas);
        }
    return blocks;
}

/// @param state  range 0 is the side of the picture in pixels; range 1 its channel: 3 for alpha, which is opaque, cut out and soft in
///               turn, 0 for red, where few blocks are flat
void encode(benchmark::State& state, void (*pEncode)(const EtcAlphas&, uint8_t*))
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const std::vector<EtcAlphas> blocks = makeBlocks(uiSide, static_cast<uint32_t>(state.range(1)));
    std::vector<uint8_t> bytes(blocks.size() * 8);
    for (auto _ : state)
    {
        for (size_t i = 0; i < blocks.size(); ++i)
            pEncode(blocks[i], bytes.data() + i * 8);
        benchmark::DoNotOptimize(bytes.data());
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(encode, fast_reference, etcreference::alphaBlockFast)->ArgsProduct({{512, 2048}, {0, 3}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, fast, moxtexture::alphaBlockFast)->ArgsProduct({{512, 2048}, {0, 3}})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, thorough_reference, etcreference::alphaBlockThorough)
    ->ArgsProduct({{512}, {0, 3}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encode, thorough, moxtexture::alphaBlockThorough)->ArgsProduct({{512}, {0, 3}})->Unit(benchmark::kMillisecond);
