#include <benchmark/benchmark.h>

#include <array>

#include "Codecs/ETC/EacCompressBlock.h"
#include "Library/Codecs/ETC/ReferenceEacCompressBlock.h"
#include "Support/SeededPictures.h"

namespace
{

using Encoder = void (*)(const uint16_t (&)[16], uint8_t*, bool);

struct Block
{
    uint16_t aui16[16];
};

/// The red channel of a picture in 16 bits; signed: the same with its middle at 0.
std::vector<Block> makePictureBlocks(uint32_t uiSide, bool bSigned)
{
    const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide);
    std::vector<Block> blocks;
    for (uint32_t y = 0; y < uiSide; y += 4)
        for (uint32_t x = 0; x < uiSide; x += 4)
        {
            Block block;
            for (uint32_t i = 0; i < 16; ++i)
            {
                const uint32_t uiValue = picture[((y + i / 4) * uiSide + x + i % 4) * 4] * 257u;
                block.aui16[i] = static_cast<uint16_t>(bSigned ? uiValue ^ 0x8000u : uiValue);
            }
            blocks.push_back(block);
        }
    return blocks;
}

std::vector<Block> makeNoiseBlocks(uint32_t uiSide, bool)
{
    testsupport::CSeededRandom random(1);
    std::vector<Block> blocks(uiSide / 4 * (uiSide / 4));
    for (Block& block : blocks)
        for (uint16_t& ui16Value : block.aui16)
            ui16Value = static_cast<uint16_t>(random.below(65536));
    return blocks;
}

/// @param state  range 0 is the side of the picture in pixels, range 1 is 1 for signed data
void encode(benchmark::State& state, std::vector<Block> (*pMakeBlocks)(uint32_t, bool), Encoder pEncode)
{
    const auto uiSide = static_cast<uint32_t>(state.range(0));
    const bool bSigned = state.range(1) != 0;
    const std::vector<Block> blocks = pMakeBlocks(uiSide, bSigned);
    std::vector<uint8_t> bytes(blocks.size() * 8);
    for (auto _ : state)
    {
        for (size_t i = 0; i < blocks.size(); ++i)
            pEncode(blocks[i].aui16, bytes.data() + i * 8, bSigned);
        benchmark::DoNotOptimize(bytes.data());
        benchmark::ClobberMemory();
    }
    state.counters["MP/s"] = benchmark::Counter(static_cast<double>(uiSide) * uiSide * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

} // namespace

#define HALVANE_EAC_ARGS ArgsProduct({{64, 256}, {0, 1}})->Unit(benchmark::kMillisecond)

BENCHMARK_CAPTURE(encode, picture_reference, makePictureBlocks, etcreference::eacCompressBlock)->HALVANE_EAC_ARGS;
BENCHMARK_CAPTURE(encode, picture_fast, makePictureBlocks, moxtexture::eacCompressBlock)->HALVANE_EAC_ARGS;
BENCHMARK_CAPTURE(encode, noise_reference, makeNoiseBlocks, etcreference::eacCompressBlock)->HALVANE_EAC_ARGS;
BENCHMARK_CAPTURE(encode, noise_fast, makeNoiseBlocks, moxtexture::eacCompressBlock)->HALVANE_EAC_ARGS;
