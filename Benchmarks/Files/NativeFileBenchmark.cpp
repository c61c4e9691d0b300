#include <cstdio>
#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>

#include "Core/FileHandle.h"
#include "Files/NativeFile.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

namespace
{

using namespace moxtexture;

/// @param state  range 0 is the side of the picture in pixels
CMOXTexture makeTexture(const benchmark::State& state)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const CMOXTextureHeader header(k_RGBA8, uiSide, uiSide, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return CMOXTexture(header, testsupport::makePicture(uiSide, uiSide).data());
}

void countPixels(benchmark::State& state)
{
    const auto dSide = static_cast<double>(state.range(0));
    state.counters["MP/s"] = benchmark::Counter(dSide * dSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// The measure of the others: the same bytes into a new block of memory, without a file.
void copyInMemory(benchmark::State& state)
{
    const CMOXTexture texture = makeTexture(state);
    for (auto _ : state)
    {
        CMOXTexture copy(texture);
        benchmark::DoNotOptimize(copy.getDataPtr());
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

/// The same bytes out of a file in one piece, by nothing but the C library.
void readPlainBytes(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    if (!writeNative(makeTexture(state), folder.path("a.mox")))
        state.SkipWithError("no file was written");
    for (auto _ : state)
    {
        const CFileHandle file = CFileHandle::openForReading(folder.path("a.mox"));
        std::vector<uint8_t> bytes;
        if (!readWholeFile(file.get(), bytes))
            state.SkipWithError("no file was read");
        benchmark::DoNotOptimize(bytes.data());
    }
    countPixels(state);
}

void readTextureFile(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    if (!writeNative(makeTexture(state), folder.path("a.mox")))
        state.SkipWithError("no file was written");
    for (auto _ : state)
    {
        const CMOXTexture texture(folder.path("a.mox"));
        benchmark::DoNotOptimize(texture.getDataPtr());
    }
    countPixels(state);
}

/// The same bytes into a file in one piece.
void writePlainBytes(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(state);
    for (auto _ : state)
    {
        CFileHandle file = CFileHandle::openForWriting(folder.path("a.raw"));
        if (std::fwrite(texture.getDataPtr(), texture.getBlockSize(), 1, file.get()) != 1 || !file.close())
            state.SkipWithError("no file was written");
    }
    countPixels(state);
}

void writeTextureFile(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(state);
    for (auto _ : state)
    {
        if (!writeNative(texture, folder.path("a.mox")))
            state.SkipWithError("no file was written");
    }
    countPixels(state);
}

} // namespace

BENCHMARK(copyInMemory)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(readPlainBytes)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(readTextureFile)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(writePlainBytes)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(writeTextureFile)->Arg(512)->Arg(2048)->Arg(4096)->Unit(benchmark::kMillisecond);
