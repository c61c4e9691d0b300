// One surface to half, to two thirds, or to one and a half times its size, with each filter, of every
// kind of channel, plain and fast.

#include "Operations/ResampleSurface.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

template <typename T>
std::vector<T> makeElements(uint32_t uiSize)
{
    std::vector<T> elements;
    for (const uint8_t uiByte : testsupport::makePicture(uiSize, uiSize))
        elements.push_back(std::is_floating_point_v<T> ? static_cast<T>(uiByte) / T(255) : static_cast<T>(uiByte));
    return elements;
}

/// Megapixels are those of the larger surface.
template <typename T>
void resample(benchmark::State& state, decltype(&resampleSurface<T>) routine, uint32_t uiFrom, uint32_t uiTo, EResizeMode eMode)
{
    const std::vector<T> source = makeElements<T>(uiFrom);
    std::vector<T> destination(size_t{4} * uiTo * uiTo);
    for (auto _ : state)
    {
        if (!routine(source.data(), destination.data(), {uiFrom, uiFrom, 1}, {uiTo, uiTo, 1}, eMode))
            std::abort();
        benchmark::ClobberMemory();
    }
    const double dPixels = static_cast<double>(uiFrom > uiTo ? uiFrom : uiTo);
    state.counters["MP/s"] = benchmark::Counter(dPixels * dPixels * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

template <typename T>
bool registerKind(const std::string& strKind)
{
    const std::pair<const char*, EResizeMode> aFilters[] = {
        {"nearest", eResizeNearest}, {"linear", eResizeLinear}, {"cubic", eResizeCubic}};
    const std::pair<uint32_t, uint32_t> aSizes[] = {{2048, 1024}, {2048, 1365}, {1024, 1536}};
    for (const auto& [uiFrom, uiTo] : aSizes)
        for (const auto& [pFilter, eMode] : aFilters)
        {
            const std::string strName = strKind + "/" + std::to_string(uiFrom) + "to" + std::to_string(uiTo) + "/" + pFilter;
            benchmark::RegisterBenchmark((strName + "/plain").c_str(), resample<T>, resampleSurfaceReference<T>, uiFrom, uiTo, eMode)
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark((strName + "/fast").c_str(), resample<T>, resampleSurface<T>, uiFrom, uiTo, eMode)
                ->Unit(benchmark::kMillisecond);
        }
    return true;
}

const bool k_bRegistered =
    registerKind<uint8_t>("byte") && registerKind<uint16_t>("short") && registerKind<uint32_t>("integer") && registerKind<float>("float");

} // namespace
