#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Files/AstcFile.h"
#include "Files/LegacyFile.h"
#include "Files/SaveTexture.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

namespace
{

using namespace moxtexture;

constexpr uint32_t k_uiSide = 2048;

bool saveOpenGL(const CMOXTexture& texture, const std::string& strPath)
{
    return saveLegacy(texture, strPath, 1);
}

/// A container, with a texture of about 2048 by 2048 that it holds.
struct Container
{
    const char* strFile; ///< its ending chooses the reader
    bool (*write)(const CMOXTexture& texture, const std::string& strPath);
    MOXPixelWord pixelFormat = k_RGBA8;
    uint32_t uiWidth = k_uiSide;
    uint32_t uiLevels = 1;
};

constexpr Container k_Native{"a.mox", saveTexture};
constexpr Container k_Ktx{"a.ktx", saveTexture};
constexpr Container k_KtxPaddedRows{"a.ktx", saveTexture, layout("rgb", 8, 8, 8), k_uiSide + 1};
constexpr Container k_Dds{"a.dds", saveTexture};
constexpr Container k_DdsLevels{"a.dds", saveTexture, k_RGBA8, k_uiSide, 12};
constexpr Container k_Astc{"a.astc", writeASTC, ePF_ASTC_4x4};
constexpr Container k_CHeader{"a.h", saveTexture};
constexpr Container k_Legacy{"a.mox", saveOpenGL};

CMOXTexture makeTexture(const Container& container)
{
    const CMOXTextureHeader header(container.pixelFormat, k_uiSide, container.uiWidth, 1, container.uiLevels, 1, 1, eCS_Linear,
                                   eCT_UnsignedNormalisedByte, false);
    // Enough pixels for the chain and for three or four bytes a pixel; what they look like does not matter here.
    return CMOXTexture(header, testsupport::makePicture(container.uiWidth, 2 * k_uiSide).data());
}

/// A file that its container's writer has written, in a folder of its own.
class CWrittenFile
{
public:
    CWrittenFile(benchmark::State& state, const Container& container)
        : m_Container(container), m_Texture(makeTexture(container)), m_strPath(m_Folder.path(container.strFile))
    {
        write(state);
        m_Bytes = testsupport::readBytes(m_strPath);
    }

    void write(benchmark::State& state) const
    {
        if (!m_Container.write(m_Texture, m_strPath))
            state.SkipWithError("no file was written");
    }
    const std::string& getPath() const { return m_strPath; }
    const std::vector<uint8_t>& getBytes() const { return m_Bytes; }

    void count(benchmark::State& state) const
    {
        state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(m_Bytes.size()));
        state.counters["MP/s"] = benchmark::Counter(m_Container.uiWidth * k_uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
    }

private:
    const Container& m_Container;
    testsupport::CTemporaryFolder m_Folder;
    CMOXTexture m_Texture;
    std::string m_strPath;
    std::vector<uint8_t> m_Bytes;
};

/// The measure of loadTexture: the same file in one piece into new memory, by nothing but the C library.
void readPlainly(benchmark::State& state, const Container& container)
{
    const CWrittenFile file(state, container);
    for (auto _ : state)
    {
        std::FILE* pFile = std::fopen(file.getPath().c_str(), "rb");
        const std::unique_ptr<uint8_t[]> pBytes(new uint8_t[file.getBytes().size()]);
        if (std::fread(pBytes.get(), file.getBytes().size(), 1, pFile) != 1 || std::fclose(pFile) != 0)
            state.SkipWithError("no file was read");
        benchmark::DoNotOptimize(pBytes.get());
    }
    file.count(state);
}

void loadTexture(benchmark::State& state, const Container& container)
{
    const CWrittenFile file(state, container);
    for (auto _ : state)
    {
        const CMOXTexture texture(file.getPath());
        if (texture.getDataPtr() == nullptr)
            state.SkipWithError("no texture was loaded");
        benchmark::DoNotOptimize(texture.getDataPtr());
    }
    file.count(state);
}

/// The measure of saveTexture: the same bytes into the same file in one piece.
void writePlainly(benchmark::State& state, const Container& container)
{
    const CWrittenFile file(state, container);
    for (auto _ : state)
    {
        std::FILE* pFile = std::fopen(file.getPath().c_str(), "wb");
        if (std::fwrite(file.getBytes().data(), file.getBytes().size(), 1, pFile) != 1 || std::fclose(pFile) != 0)
            state.SkipWithError("no file was written");
    }
    file.count(state);
}

void saveTextureFile(benchmark::State& state, const Container& container)
{
    const CWrittenFile file(state, container);
    for (auto _ : state)
        file.write(state);
    file.count(state);
}

/// The plain form beside the container's own, each way.
void measureSaving(const std::string& strName, const Container& container)
{
    benchmark::RegisterBenchmark(("writePlainly/" + strName).c_str(), writePlainly, container)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("saveTexture/" + strName).c_str(), saveTextureFile, container)->Unit(benchmark::kMillisecond);
}

void measureBoth(const std::string& strName, const Container& container)
{
    benchmark::RegisterBenchmark(("readPlainly/" + strName).c_str(), readPlainly, container)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("loadTexture/" + strName).c_str(), loadTexture, container)->Unit(benchmark::kMillisecond);
    measureSaving(strName, container);
}

const bool k_bRegistered = []
{
    measureBoth("native", k_Native);
    measureBoth("ktx", k_Ktx);
    measureBoth("ktx_padded_rows", k_KtxPaddedRows);
    measureBoth("dds", k_Dds);
    measureBoth("dds_levels", k_DdsLevels);
    measureBoth("astc", k_Astc);
    measureBoth("legacy", k_Legacy);
    measureSaving("c_header", k_CHeader); // nobody loads it
    return true;
}();

} // namespace
