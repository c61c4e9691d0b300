// Pixels that move: flips, quarter turns and channel copies, each beside its plain form, and a plain copy of the bytes as the measure.

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "Operations/ChannelCopies.h"
#include "Operations/FlipSurface.h"
#include "Operations/RotateSurface.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiSide = 2048;
constexpr SurfaceSize k_Size = {k_uiSide, k_uiSide, 1};

/// Bytes that count as pixels of any kind: the picture, as often as it takes.
std::vector<uint8_t> makeBytes(size_t uiPixelBytes)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(k_uiSide, k_uiSide);
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < uiPixelBytes; i += 4)
        bytes.insert(bytes.end(), picture.begin(), picture.end());
    return bytes;
}

template <typename Work>
void measure(benchmark::State& state, Work work)
{
    for (auto _ : state)
    {
        work();
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * k_uiSide * k_uiSide / 1e6, benchmark::Counter::kIsRate);
}

template <size_t uiPixelBytes>
void plainCopy(benchmark::State& state)
{
    const std::vector<uint8_t> source = makeBytes(uiPixelBytes);
    std::vector<uint8_t> target(source.size());
    measure(state, [&] { std::memcpy(target.data(), source.data(), source.size()); });
}

template <size_t uiPixelBytes, uint32_t uiAxis>
void flip(benchmark::State& state)
{
    std::vector<uint8_t> pixels = makeBytes(uiPixelBytes);
    measure(state, [&] { flipSurface<uiPixelBytes>(pixels.data(), k_Size, uiAxis); });
}

template <size_t uiPixelBytes, uint32_t uiAxis>
void flipReference(benchmark::State& state)
{
    std::vector<uint8_t> pixels = makeBytes(uiPixelBytes);
    measure(state, [&] { flipSurfaceReference<uiPixelBytes>(pixels.data(), k_Size, uiAxis); });
}

template <size_t uiPixelBytes>
void rotate(benchmark::State& state)
{
    const std::vector<uint8_t> source = makeBytes(uiPixelBytes);
    std::vector<uint8_t> target(source.size());
    measure(state, [&] { rotateSurface<uiPixelBytes>(source.data(), target.data(), k_Size, true); });
}

template <size_t uiPixelBytes>
void rotateReference(benchmark::State& state)
{
    const std::vector<uint8_t> source = makeBytes(uiPixelBytes);
    std::vector<uint8_t> target(source.size());
    measure(state, [&] { rotateSurfaceReference<uiPixelBytes>(source.data(), target.data(), k_Size, true); });
}

constexpr EChannelName k_aSwapTargets[] = {eChannelRed, eChannelBlue};
constexpr EChannelName k_aSwapSources[] = {eChannelBlue, eChannelRed};
constexpr EChannelName k_aGreyTargets[] = {eChannelLuminance};
constexpr EChannelName k_aGreySources[] = {eChannelLuminance};

enum class EPairs
{
    eSwap, ///< red and blue change places
    eGrey, ///< red, green and blue become the luminance
};

/// Source pixels are the picture, as whole numbers; the targets start as zeros.
template <typename Source, typename Destination, EPairs ePairs, bool bReference>
void copyChannels(benchmark::State& state)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(k_uiSide, k_uiSide);
    const std::vector<Source> source(picture.begin(), picture.end());
    std::vector<Destination> target(source.size());
    uint32_t uiCount = ePairs == EPairs::eSwap ? 2 : 1;
    const EChannelName* pTargets = ePairs == EPairs::eSwap ? k_aSwapTargets : k_aGreyTargets;
    const EChannelName* pSources = ePairs == EPairs::eSwap ? k_aSwapSources : k_aGreySources;
    // As for a caller's lists, which no compiler knows.
    benchmark::DoNotOptimize(uiCount);
    benchmark::DoNotOptimize(pTargets);
    benchmark::DoNotOptimize(pSources);
    measure(state,
            [&]
            {
                constexpr size_t uiPixels = size_t{k_uiSide} * k_uiSide;
                if (bReference)
                    copyPixelChannelsReference(source.data(), target.data(), uiPixels, uiCount, pTargets, pSources);
                else
                    copyPixelChannels(source.data(), target.data(), uiPixels, makeChannelPlan(uiCount, pTargets, pSources));
            });
}

} // namespace

BENCHMARK(plainCopy<4>);
BENCHMARK(flipReference<4, eAxisX>);
BENCHMARK(flip<4, eAxisX>);
BENCHMARK(flipReference<4, eAxisY>);
BENCHMARK(flip<4, eAxisY>);
BENCHMARK(rotateReference<4>);
BENCHMARK(rotate<4>);

BENCHMARK(plainCopy<8>);
BENCHMARK(flipReference<8, eAxisX>);
BENCHMARK(flip<8, eAxisX>);
BENCHMARK(rotateReference<8>);
BENCHMARK(rotate<8>);

BENCHMARK(plainCopy<16>);
BENCHMARK(flipReference<16, eAxisX>);
BENCHMARK(flip<16, eAxisX>);
BENCHMARK(rotateReference<16>);
BENCHMARK(rotate<16>);

BENCHMARK(copyChannels<uint8_t, uint8_t, EPairs::eSwap, true>);
BENCHMARK(copyChannels<uint8_t, uint8_t, EPairs::eSwap, false>);
BENCHMARK(copyChannels<uint8_t, uint8_t, EPairs::eGrey, true>);
BENCHMARK(copyChannels<uint8_t, uint8_t, EPairs::eGrey, false>);
BENCHMARK(copyChannels<uint16_t, uint8_t, EPairs::eSwap, true>);
BENCHMARK(copyChannels<uint16_t, uint8_t, EPairs::eSwap, false>);
BENCHMARK(copyChannels<float, uint8_t, EPairs::eSwap, true>);
BENCHMARK(copyChannels<float, uint8_t, EPairs::eSwap, false>);
BENCHMARK(copyChannels<float, float, EPairs::eSwap, true>);
BENCHMARK(copyChannels<float, float, EPairs::eSwap, false>);
BENCHMARK(copyChannels<float, float, EPairs::eGrey, true>);
BENCHMARK(copyChannels<float, float, EPairs::eGrey, false>);
