#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Pixels/SurfacePump.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiSize = 2048;

struct Encoding
{
    MOXPixelWord format;
    EMOXTChannelType eType;
};

constexpr Encoding k_RGBA8Unsigned = {k_RGBA8, eCT_UnsignedNormalisedByte};
constexpr Encoding k_BGRA8Unsigned = {layout("bgra", 8, 8, 8, 8), eCT_UnsignedNormalisedByte};
constexpr Encoding k_RGB8Unsigned = {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte};
constexpr Encoding k_L8Unsigned = {layout("l", 8), eCT_UnsignedNormalisedByte};
constexpr Encoding k_RGBA8Signed = {k_RGBA8, eCT_SignedNormalisedByte};
constexpr Encoding k_RGB565 = {layout("rgb", 5, 6, 5), eCT_UnsignedNormalisedShort};
constexpr Encoding k_RGBA16Unsigned = {k_RGBA16, eCT_UnsignedNormalisedShort};
constexpr Encoding k_RGBA16Half = {k_RGBA16, eCT_SignedFloatingPoint};
constexpr Encoding k_RGBA32Float = {k_RGBA32, eCT_SignedFloatingPoint};
constexpr Encoding k_RGBA32Unsigned = {k_RGBA32, eCT_UnsignedNormalisedInteger};
constexpr Encoding k_BGR101111 = {layout("bgr", 10, 11, 11), eCT_UnsignedFloatingPoint};

CMOXTextureHeader makeHeader(const Encoding& encoding, uint32_t uiSize)
{
    return {encoding.format, uiSize, uiSize, 1, 1, 1, 1, eCS_Linear, encoding.eType, false};
}

using Pump = decltype(&convertSurfaces);

void runPump(benchmark::State& state, Pump pPump, Encoding from, Encoding to, EMOXTColourSpace eNewSpace, uint32_t uiSize)
{
    const CMOXTexture picture(makeHeader(k_RGBA8Unsigned, uiSize), testsupport::makePicture(uiSize, uiSize).data());
    CMOXTexture source(makeHeader(from, uiSize));
    convertSurfaces(picture, source, CMOXPixelAccessor(k_RGBA8Unsigned.format, k_RGBA8Unsigned.eType),
                    CMOXPixelAccessor(from.format, from.eType), eCS_Linear, eCS_Linear);
    CMOXTexture target(makeHeader(to, uiSize));
    std::memset(target.getDataPtr(), 1, target.getBlockSize()); // so that no page is touched for the first time while measured
    const CMOXPixelAccessor sourceAccessor(from.format, from.eType);
    const CMOXPixelAccessor targetAccessor(to.format, to.eType);

    uint64_t ui64Bytes = 0;
    while (state.KeepRunning())
    {
        ui64Bytes += pPump(source, target, sourceAccessor, targetAccessor, eNewSpace, eCS_Linear);
        benchmark::ClobberMemory();
    }
    const double fPixels = static_cast<double>(state.iterations()) * uiSize * uiSize;
    state.counters["MP/s"] = benchmark::Counter(fPixels / 1e6, benchmark::Counter::kIsRate);
    state.SetBytesProcessed(static_cast<int64_t>(ui64Bytes)); // of output
}

/// What the fastest conversion has to be compared with: a plain copy of as many bytes as it writes.
void runCopy(benchmark::State& state, Encoding to, uint32_t uiSize)
{
    const CMOXTextureHeader header = makeHeader(to, uiSize);
    std::vector<uint8_t> source(header.getDataSize(), 1);
    std::vector<uint8_t> target(header.getDataSize(), 2);
    while (state.KeepRunning())
    {
        std::memcpy(target.data(), source.data(), target.size());
        benchmark::ClobberMemory();
    }
    const double fPixels = static_cast<double>(state.iterations()) * uiSize * uiSize;
    state.counters["MP/s"] = benchmark::Counter(fPixels / 1e6, benchmark::Counter::kIsRate);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * target.size()));
}

void registerPair(const std::string& strName, Encoding from, Encoding to, EMOXTColourSpace eNewSpace = eCS_Linear)
{
    benchmark::RegisterBenchmark((strName + "/fast").c_str(), runPump, convertSurfaces, from, to, eNewSpace, k_uiSize);
    benchmark::RegisterBenchmark((strName + "/reference").c_str(), runPump, convertSurfacesReference, from, to, eNewSpace, k_uiSize / 4);
}

const bool k_bRegistered = []
{
    for (const uint32_t uiSize : {128u, k_uiSize})
    {
        const std::string strSize = std::to_string(uiSize);
        benchmark::RegisterBenchmark(("copy of rgba32f/" + strSize).c_str(), runCopy, k_RGBA32Float, uiSize);
        benchmark::RegisterBenchmark(("rgba8 to rgba32f/fast/" + strSize).c_str(), runPump, convertSurfaces, k_RGBA8Unsigned, k_RGBA32Float,
                                     eCS_Linear, uiSize);
    }
    benchmark::RegisterBenchmark("copy of rgba8", runCopy, k_RGBA8Unsigned, k_uiSize);
    registerPair("rgba8 to rgba32f", k_RGBA8Unsigned, k_RGBA32Float);
    registerPair("rgba32f to rgba8", k_RGBA32Float, k_RGBA8Unsigned);
    registerPair("rgba8 linear to sRGB", k_RGBA8Unsigned, k_RGBA8Unsigned, eCS_sRGB);
    registerPair("rgba16 linear to sRGB", k_RGBA16Unsigned, k_RGBA16Unsigned, eCS_sRGB);
    registerPair("rgba32f linear to rgba8 sRGB", k_RGBA32Float, k_RGBA8Unsigned, eCS_sRGB);
    registerPair("rgba8 to rgb565", k_RGBA8Unsigned, k_RGB565);
    registerPair("rgb565 to rgba8", k_RGB565, k_RGBA8Unsigned);
    registerPair("rgba8 to bgra8", k_RGBA8Unsigned, k_BGRA8Unsigned);
    registerPair("rgb8 to rgba8", k_RGB8Unsigned, k_RGBA8Unsigned);
    registerPair("rgba8 to rgb8", k_RGBA8Unsigned, k_RGB8Unsigned);
    registerPair("rgba8 to l8", k_RGBA8Unsigned, k_L8Unsigned);
    registerPair("rgba8 to signed rgba8", k_RGBA8Unsigned, k_RGBA8Signed);
    registerPair("bgra8 to rgba32f", k_BGRA8Unsigned, k_RGBA32Float);
    registerPair("rgba8 to rgba16", k_RGBA8Unsigned, k_RGBA16Unsigned);
    registerPair("rgba16 to rgba8", k_RGBA16Unsigned, k_RGBA8Unsigned);
    registerPair("half to float", k_RGBA16Half, k_RGBA32Float);
    registerPair("float to half", k_RGBA32Float, k_RGBA16Half);
    registerPair("rgba32f to bgr 10 11 11 float", k_RGBA32Float, k_BGR101111);
    registerPair("rgba32f to rgba32 unsigned", k_RGBA32Float, k_RGBA32Unsigned);
    return true;
}();

} // namespace
