#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/MOXTC/Block/BlockWord.h"
#include "Codecs/MOXTC/MOXTC1DecoderReference.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Codecs/MOXTC/MOXTCIIDecoderReference.h"

/// Blocks built bit by bit, and the pixels that come of them.
namespace moxtctest
{

using moxtexture::BlockWord;

struct Format
{
    bool b2bpp;
    bool bII;

    friend std::ostream& operator<<(std::ostream& stream, const Format& format)
    {
        return stream << (format.bII ? "MOXTCII " : "MOXTC1 ") << (format.b2bpp ? "2bpp" : "4bpp");
    }
};

constexpr Format k_MOXTC1At2bpp = {true, false};
constexpr Format k_MOXTC1At4bpp = {false, false};
constexpr Format k_MOXTCIIAt2bpp = {true, true};
constexpr Format k_MOXTCIIAt4bpp = {false, true};
constexpr Format k_aFormats[] = {k_MOXTC1At2bpp, k_MOXTC1At4bpp, k_MOXTCIIAt2bpp, k_MOXTCIIAt4bpp};

/// Red, green, blue, alpha.
using Pixel = std::array<int, 4>;

class CPicture
{
public:
    /// Every byte starts as 0xAB, which no test expects to be written.
    CPicture(uint32_t uiWidth, uint32_t uiHeight) : m_uiWidth(uiWidth), m_Bytes(size_t{uiWidth} * uiHeight * 4, k_ui8Untouched) {}

    static constexpr uint8_t k_ui8Untouched = 0xAB;

    uint8_t* data() { return m_Bytes.data(); }
    Pixel at(size_t x, size_t y) const
    {
        const size_t ui = (y * m_uiWidth + x) * 4;
        return {m_Bytes.at(ui), m_Bytes.at(ui + 1), m_Bytes.at(ui + 2), m_Bytes.at(ui + 3)};
    }
    int redAt(size_t x, size_t y) const { return at(x, y)[0]; }

private:
    size_t m_uiWidth;
    std::vector<uint8_t> m_Bytes;
};

/// Data of just these blocks, without a byte to spare.
inline std::vector<uint8_t> toBytes(const std::vector<BlockWord>& blocks)
{
    std::vector<uint8_t> bytes(blocks.size() * moxtexture::k_uiBlockBytes);
    for (size_t i = 0; i < blocks.size(); ++i)
        moxtexture::storeBlock(bytes.data() + i * moxtexture::k_uiBlockBytes, blocks[i]);
    return bytes;
}

inline CPicture decodePlainly(const Format& format, const std::vector<BlockWord>& blocks, uint32_t uiWidth, uint32_t uiHeight)
{
    const std::vector<uint8_t> bytes = toBytes(blocks);
    CPicture picture(uiWidth, uiHeight);
    if (format.bII)
        EXPECT_TRUE(
            moxtexture::DecompressMOXTCIIReference(bytes.data(), bytes.size(), picture.data(), uiWidth, uiHeight, true, format.b2bpp));
    else
        moxtexture::DecompressMOXTCReference(bytes.data(), bytes.size(), format.b2bpp, uiWidth, uiHeight, picture.data());
    return picture;
}

inline CPicture decodeByTheEntry(const Format& format, const std::vector<BlockWord>& blocks, uint32_t uiWidth, uint32_t uiHeight)
{
    const std::vector<uint8_t> bytes = toBytes(blocks);
    EXPECT_EQ(bytes.size(), moxtexture::getMOXTCDataSize(uiWidth, uiHeight, format.b2bpp, format.bII));
    CPicture picture(uiWidth, uiHeight);
    EXPECT_EQ(uiWidth * uiHeight * 4,
              moxtexture::MOXTCDecompress(bytes.data(), picture.data(), uiWidth, uiHeight, format.b2bpp, format.bII));
    return picture;
}

/// Tests of pictures run once with the plain decoders and once through the library's entry, whatever decodes behind it.
class MoxtcDecoding : public testing::TestWithParam<decltype(&decodePlainly)>
{
protected:
    CPicture decode(const Format& format, const std::vector<BlockWord>& blocks, uint32_t uiWidth, uint32_t uiHeight) const
    {
        return GetParam()(format, blocks, uiWidth, uiHeight);
    }
};

#define INSTANTIATE_MOXTC_DECODING(Suite)                                                                                                  \
    INSTANTIATE_TEST_SUITE_P(Plain, Suite, testing::Values(&decodePlainly));                                                               \
    INSTANTIATE_TEST_SUITE_P(Entry, Suite, testing::Values(&decodeByTheEntry))

/// A colour by its stored bits, opaque: 5 each, but 4 for the blue of colour A.
struct Bits
{
    uint32_t uiRed;
    uint32_t uiGreen;
    uint32_t uiBlue;
};

constexpr uint32_t k_ui32Bit15 = 0x8000;
constexpr uint32_t k_ui32Bit31 = 0x80000000;

/// The colour word of two opaque colours. Bit 15 is A's opacity in the first generation and the flag of hard transitions, here
/// clear, in the second.
constexpr uint32_t opaqueColours(const Format& format, const Bits& a, const Bits& b)
{
    return (format.bII ? 0 : k_ui32Bit15) | a.uiRed << 10 | a.uiGreen << 5 | a.uiBlue << 1 | k_ui32Bit31 | b.uiRed << 26 | b.uiGreen << 21 |
           b.uiBlue << 16;
}

/// Colour A black, colour B white: at weight w of eighths every channel but alpha is k_aiGreys[w].
constexpr uint32_t blackAndWhite(const Format& format)
{
    return opaqueColours(format, {0, 0, 0}, {31, 31, 31});
}

/// 255 * w / 8, cut off.
constexpr int k_aiGreys[] = {0, 31, 63, 95, 127, 159, 191, 223, 255};

constexpr Pixel grey(int iWeight)
{
    return {k_aiGreys[iWeight], k_aiGreys[iWeight], k_aiGreys[iWeight], 255};
}

constexpr uint32_t k_ui32ModeBit = 1;

/// 4bpp: the code in every pixel.
constexpr uint32_t everyPixel(uint32_t uiCode)
{
    return uiCode * 0x55555555;
}

/// Four blocks P Q over R S in the format's order: raster, or Morton with the second row's block next to the first's.
inline std::vector<BlockWord> twoByTwo(const Format& format, const BlockWord& P, const BlockWord& Q, const BlockWord& R, const BlockWord& S)
{
    if (format.bII)
        return {P, Q, R, S};
    return {P, R, Q, S};
}

/// A 2bpp block with codes at every other pixel, 0 1 2 3, 3 2 1 0, 1 1 3 2, 0 3 2 1: these weights in eighths.
///
///     0  .  3  .  5  .  8  .
///     .  8  .  5  .  3  .  0
///     3  .  3  .  8  .  5  .
///     .  0  .  8  .  5  .  3
///
/// Without the flags of bits 0 and 20. Bit 20 is part of pixel (4, 2)'s code of 3 in the mode of both axes.
constexpr uint32_t k_ui32CodesBetween = 0b01'10'11'00'10'10'01'01'00'01'10'11'11'10'01'00;
constexpr uint32_t k_ui32BothAxes = k_ui32CodesBetween | 1u << 20;
constexpr uint32_t k_ui32Horizontal = k_ui32CodesBetween | 1u;
constexpr uint32_t k_ui32Vertical = k_ui32CodesBetween | 1u | 1u << 20;

} // namespace moxtctest
