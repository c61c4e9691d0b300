#pragma once

#include <cstdint>
#include <string_view>

#include "Formats/PixelFormats.h"

namespace moxtexture
{

/// The pixel format of a texture as one 64-bit word, in one of two forms that the upper 32 bits tell apart.
///
/// Upper half 0: a number of EMOXTPixelFormat, compressed or packed.
/// Otherwise an uncompressed layout: bytes 0 to 3 (lowest first) are channel letters in storage order, bytes 4 to 7 the bit
/// counts of the same channels, 0 where a position is not used. 8-bit RGBA is 0x0808080861626772.
class MOXPixelWord
{
public:
    constexpr MOXPixelWord() = default;

    constexpr MOXPixelWord(EMOXTPixelFormat eFormat) : m_ui64Word(eFormat) {}

    /// From the plain integer, as it stands in a file.
    constexpr explicit MOXPixelWord(uint64_t ui64Word) : m_ui64Word(ui64Word) {}

    /// From four letters, then four bit counts; 0 for what is not there.
    constexpr MOXPixelWord(char cName0, char cName1, char cName2, char cName3, uint8_t uiBits0, uint8_t uiBits1, uint8_t uiBits2,
                           uint8_t uiBits3)
        : m_ui64Word(byteAt(cName0, 0) | byteAt(cName1, 1) | byteAt(cName2, 2) | byteAt(cName3, 3) | byteAt(uiBits0, 4) |
                     byteAt(uiBits1, 5) | byteAt(uiBits2, 6) | byteAt(uiBits3, 7))
    {
    }

    [[nodiscard]] constexpr uint64_t getWord() const { return m_ui64Word; }

    /// True for the number form, also for numbers that name no format.
    [[nodiscard]] constexpr bool isCompressed() const { return (m_ui64Word >> 32) == 0; }

    /// The lower half as a format number; only means something where isCompressed().
    [[nodiscard]] constexpr EMOXTPixelFormat getFormat() const { return static_cast<EMOXTPixelFormat>(static_cast<uint32_t>(m_ui64Word)); }

    /// The letter at a position 0 to 3, or 0.
    [[nodiscard]] constexpr char getChannelLetter(unsigned int uiPosition) const
    {
        return static_cast<char>((m_ui64Word >> (8 * uiPosition)) & 0xFF);
    }

    /// The bit count at a position 0 to 3, or 0.
    [[nodiscard]] constexpr uint8_t getChannelBits(unsigned int uiPosition) const
    {
        return static_cast<uint8_t>((m_ui64Word >> (32 + 8 * uiPosition)) & 0xFF);
    }

    friend constexpr bool operator==(MOXPixelWord a, MOXPixelWord b) { return a.m_ui64Word == b.m_ui64Word; }
    friend constexpr bool operator!=(MOXPixelWord a, MOXPixelWord b) { return a.m_ui64Word != b.m_ui64Word; }

private:
    static constexpr uint64_t byteAt(uint8_t uiByte, unsigned int uiPosition) { return static_cast<uint64_t>(uiByte) << (8 * uiPosition); }
    static constexpr uint64_t byteAt(char cLetter, unsigned int uiPosition) { return byteAt(static_cast<uint8_t>(cLetter), uiPosition); }

    uint64_t m_ui64Word = ePF_Count;
};

/// A layout from up to four letters and their bit counts: layout("bgr", 10, 11, 11).
constexpr MOXPixelWord layout(std::string_view strLetters, uint8_t uiBits0, uint8_t uiBits1 = 0, uint8_t uiBits2 = 0, uint8_t uiBits3 = 0)
{
    const auto letter = [&](size_t uiIndex) { return uiIndex < strLetters.size() ? strLetters[uiIndex] : '\0'; };
    return {letter(0), letter(1), letter(2), letter(3), uiBits0, uiBits1, uiBits2, uiBits3};
}

inline constexpr MOXPixelWord k_RGBA8 = layout("rgba", 8, 8, 8, 8);
inline constexpr MOXPixelWord k_RGBA16 = layout("rgba", 16, 16, 16, 16);
inline constexpr MOXPixelWord k_RGBA32 = layout("rgba", 32, 32, 32, 32);

} // namespace moxtexture
