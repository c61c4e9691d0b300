#include <benchmark/benchmark.h>

#include <algorithm>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcExhaustivePlanar.h"
#include "Codecs/ETC/EtcFastETC2.h"
#include "Codecs/ETC/EtcPlanarFit.h"
#include "Codecs/ETC/EtcPunchThrough.h"
#include "Library/Codecs/ETC/ReferenceEtcExhaustivePlanar.h"
#include "Library/Codecs/ETC/ReferenceEtcPunchThrough.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

struct Block
{
    EtcPixels pixels;
    EtcAlphas alphas;
};

/// The blocks of a picture of uiSide by uiSide pixels.
std::vector<Block> makeBlocks(uint32_t uiSide)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<Block> blocks;
    for (size_t y = 0; y < uiSide; y += 4)
        for (size_t x = 0; x < uiSide; x += 4)
        {
            Block& block = blocks.emplace_back();
            for (size_t i = 0; i < 16; ++i)
            {
                const uint8_t* const pui8Pixel = picture.data() + ((y + i / 4) * uiSide + x + i % 4) * 4;
                block.pixels.aui8Red[i] = pui8Pixel[0];
                block.pixels.aui8Green[i] = pui8Pixel[1];
                block.pixels.aui8Blue[i] = pui8Pixel[2];
                block.alphas.aui8[i] = pui8Pixel[3] < 128 ? 0 : 255;
            }
        }
    return blocks;
}

/// @param state  range 0 is the side of the picture in pixels
template <typename Encode>
void encodeBlocks(benchmark::State& state, Encode encode)
{
    const std::vector<Block> blocks = makeBlocks(static_cast<uint32_t>(state.range(0)));
    EtcBlockWords words;
    for (auto _ : state)
        for (const Block& block : blocks)
        {
            encode(block, words);
            benchmark::DoNotOptimize(words);
        }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(blocks.size()) * 16e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// Of colours alone.
void encodeColours(benchmark::State& state, void (*pEncode)(const EtcPixels&, EtcBlockWords&))
{
    encodeBlocks(state, [=](const Block& block, EtcBlockWords& words) { pEncode(block.pixels, words); });
}

void encodeA1(benchmark::State& state, void (*pEncode)(const EtcPixels&, const EtcAlphas&, EtcBlockWords&))
{
    encodeBlocks(state, [=](const Block& block, EtcBlockWords& words) { pEncode(block.pixels, block.alphas, words); });
}

/// The planar blocks with the fit's errors as limits.
template <typename Search>
void searchPlanar(benchmark::State& state, Search search)
{
    encodeBlocks(state,
                 [=](const Block& block, EtcBlockWords& words)
                 {
                     const EtcPixels decoded = decodeEtcPixelsPlanar(planarFit(block.pixels));
                     const auto error = [](const std::array<uint8_t, 16>& a, const std::array<uint8_t, 16>& b)
                     {
                         uint32_t uiSum = 0;
                         for (size_t i = 0; i < 16; ++i)
                             uiSum += static_cast<uint32_t>((a[i] - b[i]) * (a[i] - b[i]));
                         return uiSum;
                     };
                     search(block.pixels,
                            std::array{error(block.pixels.aui8Red, decoded.aui8Red), error(block.pixels.aui8Green, decoded.aui8Green),
                                       error(block.pixels.aui8Blue, decoded.aui8Blue)},
                            words);
                 });
}

void searchPlanarReference(const EtcPixels& pixels, const std::array<uint32_t, 3>& errors, EtcBlockWords& words)
{
    words = etcreference::searchPlanarExhaustive(pixels, k_uiEtcMaxPlainError, errors, {1, 1, 1}).value_or(words);
}

void searchPlanarFast(const EtcPixels& pixels, const std::array<uint32_t, 3>& errors, EtcBlockWords& words)
{
    benchmark::DoNotOptimize(searchPlanarExhaustive(pixels, k_uiEtcMaxPlainError, errors[0], errors[1], errors[2], words));
}

} // namespace

BENCHMARK_CAPTURE(encodeColours, ETC2_reference, etcreference::etcFastBlockETC2)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeColours, ETC2_fast, etcFastBlockETC2)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeColours, ETC2_perceptual_reference, etcreference::etcFastBlockETC2Perceptual)
    ->Arg(512)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeColours, ETC2_perceptual_fast, etcFastBlockETC2Perceptual)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeA1, ETC2_A1_reference, etcreference::etcFastBlockETC2A1)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(encodeA1, ETC2_A1_fast, etcFastBlockETC2A1)->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchPlanar, planar_exhaustive_reference, searchPlanarReference)->Arg(64)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchPlanar, planar_exhaustive_fast, searchPlanarFast)->Arg(64)->Arg(256)->Unit(benchmark::kMillisecond);
