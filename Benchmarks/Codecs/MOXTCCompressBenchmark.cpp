#include <benchmark/benchmark.h>

#include "Codecs/MOXTC/MOXTCCompress.h"
#include "Core/Workers.h"
#include "Library/Codecs/MOXTC/ReferenceCompressor.h"
#include "Support/ProcessorCount.h"
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

enum class EForm
{
    eReference,
    eFast,
};

void setRate(benchmark::State& state, uint32_t uiSide)
{
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// The whole way from pixels to blocks.
/// @param state  range 0 is the side of the picture in pixels, range 1 the processors
void compress(benchmark::State& state, EForm eForm, const Format& format, uint32_t uiQuality)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const testsupport::CProcessorCount processors(static_cast<uint32_t>(state.range(1)));
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    const uint32_t uiPasses = uiQuality == 0 ? 0 : 8;
    std::vector<uint8_t> blocks(picture.size() / (format.b2bpp ? 16 : 8));
    for (auto _ : state)
    {
        if (eForm == EForm::eFast)
            benchmark::DoNotOptimize(
                MOXTCCompress(picture.data(), blocks.data(), uiSide, uiSide, true, format.b2bpp, format.bII, uiQuality));
        else if (format.b2bpp)
            blocks = compressortest::compressByReference<BlockRecord2bpp>(picture, uiSide, uiSide, format.bII, uiPasses);
        else
            blocks = compressortest::compressByReference<BlockRecord4bpp>(picture, uiSide, uiSide, format.bII, uiPasses);
        benchmark::ClobberMemory();
    }
    setRate(state, uiSide);
}

/// The pictures and records as they are after the first pass over codes.
template <typename Record>
struct Prepared
{
    explicit Prepared(uint32_t uiSide)
        : images(makeCompressorImages(testsupport::makePicture(uiSide, uiSide).data(), uiSide, uiSide, Record::k_uiBlockWidth)),
          records(images.getBlockCount())
    {
        findStartingColours(images, k_bOverlap);
        upscaleColours(images);
        optimiseModulation(images, records, images.getWholeRegion());
    }

    static constexpr bool k_bOverlap = Record::k_uiBlockWidth == 4; ///< as the compressor has it

    CompressorImages images;
    std::vector<Record> records;
};

/// One step on one thread.
/// @param state  range 0 is the side of the picture in pixels
template <typename Record, typename Step>
void runStep(benchmark::State& state, const Step& runOnce)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    Prepared<Record> prepared(uiSide);
    for (auto _ : state)
    {
        runOnce(prepared);
        benchmark::ClobberMemory();
    }
    setRate(state, uiSide);
}

template <typename Record>
void findColours(benchmark::State& state, EForm eForm)
{
    const auto find = eForm == EForm::eFast ? findStartingColours : findStartingColoursReference;
    runStep<Record>(state, [=](Prepared<Record>& prepared) { find(prepared.images, Prepared<Record>::k_bOverlap); });
}

template <typename Record>
void upscale(benchmark::State& state, EForm eForm)
{
    const auto upscaleAll = eForm == EForm::eFast ? upscaleColours : upscaleColoursReference;
    runStep<Record>(state, [=](Prepared<Record>& prepared) { upscaleAll(prepared.images); });
}

template <typename Record>
void chooseCodes(benchmark::State& state, EForm eForm)
{
    using Optimise = void (*)(const CompressorImages&, std::vector<Record>&, const BlockRegion&);
    const Optimise optimise = eForm == EForm::eFast ? Optimise{optimiseModulation} : Optimise{optimiseModulationReference};
    runStep<Record>(state,
                    [=](Prepared<Record>& prepared) { optimise(prepared.images, prepared.records, prepared.images.getWholeRegion()); });
}

template <typename Record>
void moveColours(benchmark::State& state, EForm eForm)
{
    using Optimise = void (*)(CompressorImages&, const std::vector<Record>&, const BlockRegion&);
    const Optimise optimise = eForm == EForm::eFast ? Optimise{optimiseColours} : Optimise{optimiseColoursReference};
    runStep<Record>(state,
                    [=](Prepared<Record>& prepared) { optimise(prepared.images, prepared.records, prepared.images.getWholeRegion()); });
}

void step(benchmark::State& state, void (*run)(benchmark::State&, EForm), EForm eForm)
{
    run(state, eForm);
}

void chooseSizesAndProcessors(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->ArgsProduct({{512, 2048}, {1, 2}})->ArgNames({"side", "processors"})->Unit(benchmark::kMillisecond)->UseRealTime();
}

void chooseSizes(benchmark::internal::Benchmark* pBenchmark)
{
    pBenchmark->Arg(512)->Arg(2048)->Unit(benchmark::kMillisecond);
}

} // namespace

// MOXTCII at 4bpp and quality 0 has a coder of its own and is measured in MOXTCIIBlockCoderBenchmark.
BENCHMARK_CAPTURE(compress, MOXTC1_2bpp_quality0_reference, EForm::eReference, k_MOXTC1At2bpp, 0)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_2bpp_quality0_fast, EForm::eFast, k_MOXTC1At2bpp, 0)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_4bpp_quality0_reference, EForm::eReference, k_MOXTC1At4bpp, 0)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_4bpp_quality0_fast, EForm::eFast, k_MOXTC1At4bpp, 0)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_2bpp_quality0_reference, EForm::eReference, k_MOXTCIIAt2bpp, 0)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_2bpp_quality0_fast, EForm::eFast, k_MOXTCIIAt2bpp, 0)->Apply(chooseSizesAndProcessors);

BENCHMARK_CAPTURE(compress, MOXTC1_2bpp_quality1_reference, EForm::eReference, k_MOXTC1At2bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_2bpp_quality1_fast, EForm::eFast, k_MOXTC1At2bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_4bpp_quality1_reference, EForm::eReference, k_MOXTC1At4bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTC1_4bpp_quality1_fast, EForm::eFast, k_MOXTC1At4bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_2bpp_quality1_reference, EForm::eReference, k_MOXTCIIAt2bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_2bpp_quality1_fast, EForm::eFast, k_MOXTCIIAt2bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_4bpp_quality1_reference, EForm::eReference, k_MOXTCIIAt4bpp, 1)->Apply(chooseSizesAndProcessors);
BENCHMARK_CAPTURE(compress, MOXTCII_4bpp_quality1_fast, EForm::eFast, k_MOXTCIIAt4bpp, 1)->Apply(chooseSizesAndProcessors);

BENCHMARK_CAPTURE(step, findColours_2bpp_reference, findColours<BlockRecord2bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, findColours_2bpp_fast, findColours<BlockRecord2bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, findColours_4bpp_reference, findColours<BlockRecord4bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, findColours_4bpp_fast, findColours<BlockRecord4bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, upscale_2bpp_reference, upscale<BlockRecord2bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, upscale_2bpp_fast, upscale<BlockRecord2bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, upscale_4bpp_reference, upscale<BlockRecord4bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, upscale_4bpp_fast, upscale<BlockRecord4bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, chooseCodes_2bpp_reference, chooseCodes<BlockRecord2bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, chooseCodes_2bpp_fast, chooseCodes<BlockRecord2bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, chooseCodes_4bpp_reference, chooseCodes<BlockRecord4bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, chooseCodes_4bpp_fast, chooseCodes<BlockRecord4bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, moveColours_2bpp_reference, moveColours<BlockRecord2bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, moveColours_2bpp_fast, moveColours<BlockRecord2bpp>, EForm::eFast)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, moveColours_4bpp_reference, moveColours<BlockRecord4bpp>, EForm::eReference)->Apply(chooseSizes);
BENCHMARK_CAPTURE(step, moveColours_4bpp_fast, moveColours<BlockRecord4bpp>, EForm::eFast)->Apply(chooseSizes);
