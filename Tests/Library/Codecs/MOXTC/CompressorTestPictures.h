#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "Codecs/MOXTC/Block/BlockWord.h"
#include "Codecs/MOXTC/MOXTC2bppCompressor.h"
#include "Codecs/MOXTC/MOXTC4bppCompressor.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Codecs/MOXTC/MOXTCII2bppCompressor.h"
#include "Codecs/MOXTC/MOXTCII4bppCompressor.h"
#include "CompressorTestImages.h"

namespace compressortest
{

/// What a compressor class makes, and how it is decoded.
template <typename Compressor>
constexpr bool k_bII = std::is_base_of_v<moxtexture::MOXTCIICompressor, Compressor>;
template <typename Compressor>
constexpr bool k_b2bpp =
    std::is_same_v<Compressor, moxtexture::MOXTC2bppCompressor> || std::is_same_v<Compressor, moxtexture::MOXTCII2bppCompressor>;
template <typename Compressor>
constexpr uint32_t k_uiBlockWidth = k_b2bpp<Compressor> ? 8 : 4;

/// The compressor's blocks, those of MOXTC1 in Morton order or, without bMorton, in rows.
template <typename Compressor>
[[nodiscard]] std::vector<uint8_t> writeBlocks(Compressor& compressor, bool bMorton = true)
{
    std::vector<uint8_t> blocks(compressor.getImages().getBlockCount() * moxtexture::k_uiBlockBytes);
    if constexpr (k_bII<Compressor>)
        compressor.WriteOutput(blocks.data());
    else
        compressor.WriteOutput(blocks.data(), bMorton);
    return blocks;
}

/// A picture of four-byte pixels through the compressor with the overlap.
template <typename Compressor>
[[nodiscard]] std::vector<uint8_t> compress(const std::vector<uint8_t>& picture, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiPasses)
{
    Compressor compressor(picture.data(), uiWidth, uiHeight);
    compressor.setIterations(uiPasses);
    compressor.Initialise(true);
    compressor.Compress();
    return writeBlocks(compressor);
}

template <typename Compressor>
[[nodiscard]] std::vector<uint8_t> decode(const std::vector<uint8_t>& blocks, uint32_t uiWidth, uint32_t uiHeight)
{
    std::vector<uint8_t> picture(size_t{uiWidth} * uiHeight * 4);
    if (moxtexture::MOXTCDecompress(blocks.data(), picture.data(), uiWidth, uiHeight, k_b2bpp<Compressor>, k_bII<Compressor>) !=
        picture.size())
        picture.clear();
    return picture;
}

/// The modulation and the colours of blocks.
using Words = std::vector<std::pair<uint32_t, uint32_t>>;

[[nodiscard]] inline Words getWords(const std::vector<uint8_t>& blocks)
{
    Words words;
    for (size_t i = 0; i < blocks.size(); i += moxtexture::k_uiBlockBytes)
    {
        const moxtexture::BlockWord block = moxtexture::loadBlock(&blocks[i]);
        words.emplace_back(block.ui32Modulation, block.ui32Colours);
    }
    return words;
}

/// Two by two blocks, red and green above, blue and white below, without the overlap: colours A and B of each are its own.
template <typename Compressor>
[[nodiscard]] Words writeFourColours(bool bMorton = true)
{
    constexpr uint32_t auiColours[] = {rgba(255, 0, 0), rgba(0, 255, 0), rgba(0, 0, 255), rgba(255, 255, 255)};
    constexpr uint32_t uiWidth = 2 * k_uiBlockWidth<Compressor>;
    const std::vector<uint8_t> picture =
        makeBytes(uiWidth, 8, [&](uint32_t x, uint32_t y) { return auiColours[y / 4 * 2 + x / k_uiBlockWidth<Compressor>]; });
    Compressor compressor(picture.data(), uiWidth, 8);
    compressor.Initialise(false);
    return getWords(writeBlocks(compressor, bMorton));
}

/// A picture of 16 by 8 pixels of one colour.
[[nodiscard]] inline std::vector<uint8_t> makeFlatPicture(uint32_t uiPixel)
{
    return makeBytes(16, 8, [=](uint32_t, uint32_t) { return uiPixel; });
}

/// What a flat picture is after eight passes, decoded.
template <typename Compressor>
[[nodiscard]] std::vector<uint8_t> compressFlat(uint32_t uiPixel)
{
    return decode<Compressor>(compress<Compressor>(makeFlatPicture(uiPixel), 16, 8, 8), 16, 8);
}

/// Colours B of four blocks in a row, all black but for a white pixel in the first column of block 1.
template <typename Compressor>
[[nodiscard]] std::vector<uint32_t> findColoursAroundADot(bool bOverlap)
{
    constexpr uint32_t uiWidth = 4 * k_uiBlockWidth<Compressor>;
    const std::vector<uint8_t> picture = makeBytes(
        uiWidth, 4, [](uint32_t x, uint32_t y) { return x == k_uiBlockWidth<Compressor> && y == 1 ? rgba(255, 255, 255) : rgba(0, 0, 0); });
    Compressor compressor(picture.data(), uiWidth, 4);
    compressor.Initialise(bOverlap);
    return compressor.getImages().colourB;
}

} // namespace compressortest
