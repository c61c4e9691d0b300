#include <benchmark/benchmark.h>

#include "Codecs/MOXTC/MOXTC1Decoder.h"
#include "Codecs/MOXTC/MOXTC1DecoderReference.h"
#include "Codecs/MOXTC/MOXTCCompress.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Codecs/MOXTC/MOXTCIIDecoder.h"
#include "Codecs/MOXTC/MOXTCIIDecoderReference.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

struct Format
{
    bool b2bpp;
    bool bII;
};

constexpr Format k_MOXTC1At2bpp = {true, false};
constexpr Format k_MOXTC1At4bpp = {false, false};
constexpr Format k_MOXTCIIAt2bpp = {true, true};
constexpr Format k_MOXTCIIAt4bpp = {false, true};

/// Random blocks have every mode and hard cells side by side; those of a picture are what textures have.
enum class EData
{
    eRandom,
    ePicture,
};

enum class EForm
{
    eReference,
    eFast,
};

std::vector<uint8_t> makeData(uint32_t uiSide, const Format& format, EData eData)
{
    const auto uiSize = static_cast<size_t>(getMOXTCDataSize(uiSide, uiSide, format.b2bpp, format.bII));
    if (eData == EData::eRandom)
        return testsupport::CSeededRandom(uiSide).bytes(uiSize);
    std::vector<uint8_t> data(uiSize);
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    if (MOXTCCompress(picture.data(), data.data(), uiSide, uiSide, true, format.b2bpp, format.bII, 1) != uiSize)
        data.clear();
    return data;
}

/// @param state  range 0 is the side of the picture in pixels
void decode(benchmark::State& state, EForm eForm, const Format& format, EData eData)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const std::vector<uint8_t> data = makeData(uiSide, format, eData);
    std::vector<uint8_t> pixels(size_t{uiSide} * uiSide * 4);
    if (data.empty())
        state.SkipWithError("nothing was encoded");
    const auto decodeMOXTC1 = eForm == EForm::eFast ? DecompressMOXTC : DecompressMOXTCReference;
    const auto decodeMOXTCII = eForm == EForm::eFast ? DecompressMOXTCII : DecompressMOXTCIIReference;
    for (auto _ : state)
    {
        if (format.bII)
            benchmark::DoNotOptimize(decodeMOXTCII(data.data(), data.size(), pixels.data(), uiSide, uiSide, true, format.b2bpp));
        else
            benchmark::DoNotOptimize(decodeMOXTC1(data.data(), data.size(), format.b2bpp, uiSide, uiSide, pixels.data()));
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

void chooseSides(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(decode, MOXTC1_2bpp_random_reference, EForm::eReference, k_MOXTC1At2bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_2bpp_random_fast, EForm::eFast, k_MOXTC1At2bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_4bpp_random_reference, EForm::eReference, k_MOXTC1At4bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_4bpp_random_fast, EForm::eFast, k_MOXTC1At4bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_2bpp_random_reference, EForm::eReference, k_MOXTCIIAt2bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_2bpp_random_fast, EForm::eFast, k_MOXTCIIAt2bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_4bpp_random_reference, EForm::eReference, k_MOXTCIIAt4bpp, EData::eRandom)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_4bpp_random_fast, EForm::eFast, k_MOXTCIIAt4bpp, EData::eRandom)->Apply(chooseSides);

BENCHMARK_CAPTURE(decode, MOXTC1_2bpp_picture_reference, EForm::eReference, k_MOXTC1At2bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_2bpp_picture_fast, EForm::eFast, k_MOXTC1At2bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_4bpp_picture_reference, EForm::eReference, k_MOXTC1At4bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTC1_4bpp_picture_fast, EForm::eFast, k_MOXTC1At4bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_2bpp_picture_reference, EForm::eReference, k_MOXTCIIAt2bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_2bpp_picture_fast, EForm::eFast, k_MOXTCIIAt2bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_4bpp_picture_reference, EForm::eReference, k_MOXTCIIAt4bpp, EData::ePicture)->Apply(chooseSides);
BENCHMARK_CAPTURE(decode, MOXTCII_4bpp_picture_fast, EForm::eFast, k_MOXTCIIAt4bpp, EData::ePicture)->Apply(chooseSides);
