#include <benchmark/benchmark.h>

#include "../Tests/Library/Codecs/ETC/ReferenceEtcExhaustiveBlock.h"
#include "Codecs/ETC/EtcExhaustiveBlock.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

constexpr uint32_t k_uiSide = 64;

/// A crop in the middle of a picture, which has some of all that there is in photos.
std::vector<EtcPixels> makePhotoBlocks()
{
    constexpr uint32_t uiPictureSide = 256;
    const std::vector<uint8_t> picture = testsupport::makePicture(uiPictureSide, uiPictureSide);
    std::vector<uint8_t> rgb;
    for (size_t i = 0; i < picture.size(); ++i)
        if (i % 4 != 3)
            rgb.push_back(picture[i]);
    std::vector<EtcPixels> blocks;
    for (uint32_t y = 0; y < k_uiSide; y += 4)
        for (uint32_t x = 0; x < k_uiSide; x += 4)
            blocks.push_back(readEtcPixels(rgb.data() + (size_t{y + 96} * uiPictureSide + x + 96) * 3, uiPictureSide));
    return blocks;
}

std::vector<EtcPixels> makeNoiseBlocks()
{
    const std::vector<uint8_t> rgb = testsupport::CSeededRandom(3).bytes(size_t{k_uiSide} * k_uiSide * 3);
    std::vector<EtcPixels> blocks;
    for (uint32_t y = 0; y < k_uiSide; y += 4)
        for (uint32_t x = 0; x < k_uiSide; x += 4)
            blocks.push_back(readEtcPixels(rgb.data() + (size_t{y} * k_uiSide + x) * 3, k_uiSide));
    return blocks;
}

void encodeBlocks(benchmark::State& state, void (*pEncode)(const EtcPixels&, EtcBlockWords&), std::vector<EtcPixels> (*pMakeBlocks)())
{
    const std::vector<EtcPixels> blocks = pMakeBlocks();
    for (auto _ : state)
        for (const EtcPixels& pixels : blocks)
        {
            EtcBlockWords words;
            pEncode(pixels, words);
            benchmark::DoNotOptimize(words);
        }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(blocks.size()) * 16e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

#define HALVANE_ETC_EXHAUSTIVE(NAME, ENCODE)                                                                                               \
    BENCHMARK_CAPTURE(encodeBlocks, NAME##_photo_reference, etcreference::ENCODE<>, makePhotoBlocks)->Unit(benchmark::kMillisecond);       \
    BENCHMARK_CAPTURE(encodeBlocks, NAME##_photo_fast, ENCODE, makePhotoBlocks)->Unit(benchmark::kMillisecond);                            \
    BENCHMARK_CAPTURE(encodeBlocks, NAME##_noise_reference, etcreference::ENCODE<>, makeNoiseBlocks)->Unit(benchmark::kMillisecond);       \
    BENCHMARK_CAPTURE(encodeBlocks, NAME##_noise_fast, ENCODE, makeNoiseBlocks)->Unit(benchmark::kMillisecond)

HALVANE_ETC_EXHAUSTIVE(ETC1, etcExhaustiveBlockETC1);
HALVANE_ETC_EXHAUSTIVE(ETC1_perceptual, etcExhaustiveBlockETC1Perceptual);
HALVANE_ETC_EXHAUSTIVE(ETC2, etcExhaustiveBlockETC2);
HALVANE_ETC_EXHAUSTIVE(ETC2_perceptual, etcExhaustiveBlockETC2Perceptual);
