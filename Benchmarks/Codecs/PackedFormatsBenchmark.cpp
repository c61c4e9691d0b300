#include <benchmark/benchmark.h>

#include "Codecs/Packed/OneBit.h"
#include "Codecs/Packed/PackedYUV.h"
#include "Codecs/Packed/PairFormats.h"
#include "Codecs/Packed/SharedExponent.h"
#include "Conversion/Transcode.h"
#include "Support/SeededPictures.h"

namespace
{

using namespace moxtexture;

using FormatEntry = decltype(&encodePackedYUV);
using PlainEntry = decltype(&encodeOneBit);

/// Times convert(source, target, side), whose result is the count of bytes written.
///
/// @param state   range 0 is the side of the picture in pixels
/// @param source  room for the largest form of such a picture
template <typename Convert>
void measure(benchmark::State& state, const std::vector<uint8_t>& source, Convert convert)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    std::vector<uint8_t> target(size_t{uiSide} * uiSide * 12);
    for (auto _ : state)
    {
        if (convert(source.data(), target.data(), uiSide) == 0)
            state.SkipWithError("nothing was written");
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// Pixels are pixels to encode, and any bytes of a picture decode.
std::vector<uint8_t> makeSource(const benchmark::State& state)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    return testsupport::makePicture(uiSide, uiSide);
}

void convertFormat(benchmark::State& state, FormatEntry entry, EMOXTPixelFormat eFormat)
{
    measure(state, makeSource(state),
            [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t uiSide) { return entry(pSource, pTarget, uiSide, uiSide, eFormat); });
}

void convertPlain(benchmark::State& state, PlainEntry entry)
{
    measure(state, makeSource(state),
            [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t uiSide) { return entry(pSource, pTarget, uiSide, uiSide); });
}

/// The words of a picture decoded, so that every exponent occurs.
void encodeFloats(benchmark::State& state, PlainEntry entry)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    std::vector<uint8_t> floats(size_t{uiSide} * uiSide * 12);
    if (decodeSharedExponent(makeSource(state).data(), floats.data(), uiSide, uiSide) == 0)
        state.SkipWithError("nothing was decoded");
    measure(state, floats,
            [&](const uint8_t* pSource, uint8_t* pTarget, uint32_t uiSideToo) { return entry(pSource, pTarget, uiSideToo, uiSideToo); });
}

/// The whole road between 8-bit RGBA and a packed format, with its copies.
void transcode(benchmark::State& state, EMOXTPixelFormat eFormat, bool bUnpack)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const CMOXTextureHeader header(k_RGBA8, uiSide, uiSide, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    CMOXTexture source(header, makeSource(state).data());
    if (bUnpack && !Transcode(source, eFormat, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false))
        state.SkipWithError("not packed");
    for (auto _ : state)
    {
        state.PauseTiming();
        CMOXTexture texture = source;
        state.ResumeTiming();
        if (!Transcode(texture, bUnpack ? k_RGBA8 : MOXPixelWord(eFormat), eCT_UnsignedNormalisedByte, eCS_Linear, 0, false))
            state.SkipWithError("nothing was converted");
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

BENCHMARK_CAPTURE(convertFormat, YUV_encode_reference, encodePackedYUVReference, ePF_UYVY)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, YUV_encode_fast, encodePackedYUV, ePF_UYVY)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, YUV_decode_reference, decodePackedYUVReference, ePF_UYVY)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, YUV_decode_fast, decodePackedYUV, ePF_UYVY)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, Pairs_encode_reference, encodePairFormatReference, ePF_2_Planar_GRGB_8_8_8_8)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, Pairs_encode_fast, encodePairFormat, ePF_2_Planar_GRGB_8_8_8_8)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, Pairs_decode_reference, decodePairFormatReference, ePF_2_Planar_GRGB_8_8_8_8)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertFormat, Pairs_decode_fast, decodePairFormat, ePF_2_Planar_GRGB_8_8_8_8)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, OneBit_encode_reference, encodeOneBitReference)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, OneBit_encode_fast, encodeOneBit)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, OneBit_decode_reference, decodeOneBitReference)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, OneBit_decode_fast, decodeOneBit)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(encodeFloats, SharedExponent_encode_reference, encodeSharedExponentReference)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(encodeFloats, SharedExponent_encode_fast, encodeSharedExponent)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, SharedExponent_decode_reference, decodeSharedExponentReference)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(convertPlain, SharedExponent_decode_fast, decodeSharedExponent)->Arg(512)->Arg(2048);
BENCHMARK_CAPTURE(transcode, YUV_pack, ePF_UYVY, false)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, YUV_unpack, ePF_UYVY, true)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, Pairs_pack, ePF_2_Planar_GRGB_8_8_8_8, false)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, Pairs_unpack, ePF_2_Planar_GRGB_8_8_8_8, true)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, OneBit_pack, ePF_1bpp, false)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, OneBit_unpack, ePF_1bpp, true)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, SharedExponent_pack, ePF_Shared_Exponent_RGB999_E5, false)->Arg(2048)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(transcode, SharedExponent_unpack, ePF_Shared_Exponent_RGB999_E5, true)->Arg(2048)->Unit(benchmark::kMillisecond);
