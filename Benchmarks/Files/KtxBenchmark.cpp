#include <benchmark/benchmark.h>

#include "Core/FileHandle.h"
#include "Files/KtxReader.h"
#include "Files/KtxWriter.h"
#include "Files/LoadTexture.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

namespace
{

using namespace moxtexture;

/// Width and height of the picture; a pixel more in width gives the rows of three bytes a pixel their padding.
CMOXTexture makeTexture(const benchmark::State& state)
{
    const auto uiWidth = static_cast<uint32_t>(state.range(0));
    const CMOXTextureHeader header(layout("rgb", 8, 8, 8), 2048, uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return CMOXTexture(header, testsupport::makePicture(uiWidth, 2048).data());
}

void countPixels(benchmark::State& state)
{
    state.counters["MP/s"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 2048e-6, benchmark::Counter::kIsIterationInvariantRate);
}

/// The measure of the others: the same bytes out of a file in one piece.
void readPlainBytes(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    if (!writeKtx(makeTexture(state), folder.path("a.ktx")))
        state.SkipWithError("no file was written");
    for (auto _ : state)
    {
        const CFileHandle file = CFileHandle::openForReading(folder.path("a.ktx"));
        std::vector<uint8_t> bytes;
        if (!readWholeFile(file.get(), bytes))
            state.SkipWithError("no file was read");
        benchmark::DoNotOptimize(bytes.data());
    }
    countPixels(state);
}

void readKtxFile(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    if (!writeKtx(makeTexture(state), folder.path("a.ktx")))
        state.SkipWithError("no file was written");
    for (auto _ : state)
    {
        const CFileHandle file = CFileHandle::openForReading(folder.path("a.ktx"));
        CMOXTexture texture;
        if (!readThroughStream(file.get(), readKtx, texture))
            state.SkipWithError("no file was read");
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

void writeKtxFile(benchmark::State& state)
{
    const testsupport::CTemporaryFolder folder;
    const CMOXTexture texture = makeTexture(state);
    for (auto _ : state)
    {
        if (!writeKtx(texture, folder.path("a.ktx")))
            state.SkipWithError("no file was written");
    }
    countPixels(state);
}

} // namespace

BENCHMARK(readPlainBytes)->Arg(2048)->Arg(2049)->Unit(benchmark::kMillisecond);
BENCHMARK(readKtxFile)->Arg(2048)->Arg(2049)->Unit(benchmark::kMillisecond);
BENCHMARK(writePlainBytes)->Arg(2048)->Arg(2049)->Unit(benchmark::kMillisecond);
BENCHMARK(writeKtxFile)->Arg(2048)->Arg(2049)->Unit(benchmark::kMillisecond);
