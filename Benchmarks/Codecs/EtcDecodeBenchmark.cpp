#include <benchmark/benchmark.h>

#include "Codecs/ETC/EtcCompressImage.h"
#include "Codecs/ETC/EtcDecompressImage.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Codecs/ETC/EtcQuality.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

/// The blocks of a picture. 11-bit channels aren't encoded, which is slow, but drawn: every block of them takes the same time.
std::vector<uint8_t> makeBlocks(uint32_t uiSide, const EtcFormatRow& form)
{
    const size_t uiBytes = size_t{uiSide} * uiSide / 16 * form.uiBlockBytes;
    if (form.uiFormat == ePF_EAC_R11 || form.uiFormat == ePF_EAC_RG11)
        return testsupport::CSeededRandom(1).bytes(uiBytes);
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<uint8_t> pixels;
    pixels.reserve(picture.size());
    for (size_t i = 0; i < picture.size(); ++i)
        if (i % 4 < form.uiPixelBytes)
            pixels.push_back(picture[i]);
    std::vector<uint8_t> blocks(uiBytes);
    static_cast<void>(etcCompressImage(pixels.data(), blocks.data(), uiSide, uiSide, eEtcFast, form.uiFormat, false));
    return blocks;
}

/// @param state  range 0 is the side of the picture in pixels
void decode(benchmark::State& state, decltype(&etcDecompressImage) decoder, uint32_t uiFormat, bool bSigned)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const EtcFormatRow& form = *findEtcFormat(uiFormat);
    const std::vector<uint8_t> blocks = makeBlocks(uiSide, form);
    std::vector<uint8_t> pixels(size_t{uiSide} * uiSide * form.uiPixelBytes);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(decoder(blocks.data(), pixels.data(), uiSide, uiSide, uiFormat, bSigned));
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

#define HALVANE_ETC_DECODE(NAME, FORMAT, SIGNED)                                                                                           \
    BENCHMARK_CAPTURE(decode, NAME##_reference, etcDecompressImageReference, FORMAT, SIGNED)                                               \
        ->Arg(512)                                                                                                                         \
        ->Arg(1024)                                                                                                                        \
        ->Unit(benchmark::kMillisecond);                                                                                                   \
    BENCHMARK_CAPTURE(decode, NAME##_fast, etcDecompressImage, FORMAT, SIGNED)->Arg(512)->Arg(1024)->Unit(benchmark::kMillisecond)

HALVANE_ETC_DECODE(ETC1, ePF_ETC1, false);
HALVANE_ETC_DECODE(ETC2_RGB, ePF_ETC2_RGB, false);
HALVANE_ETC_DECODE(ETC2_RGBA, ePF_ETC2_RGBA, false);
HALVANE_ETC_DECODE(ETC2_RGB_A1, ePF_ETC2_RGB_A1, false);
HALVANE_ETC_DECODE(EAC_R11, ePF_EAC_R11, false);
HALVANE_ETC_DECODE(EAC_R11_signed, ePF_EAC_R11, true);
HALVANE_ETC_DECODE(EAC_RG11, ePF_EAC_RG11, false);
HALVANE_ETC_DECODE(EAC_RG11_signed, ePF_EAC_RG11, true);
