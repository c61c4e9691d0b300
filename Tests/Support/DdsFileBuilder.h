#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "Core/ByteOrder.h"

namespace testsupport
{

/// The bytes of a DDS file, put together field by field from the published layout, right or wrong. At first a plain header of one
/// pixel of 32 bits, blue in the lowest byte and alpha in the highest, without its data.
class CDdsFileBuilder
{
public:
    static constexpr uint32_t k_ui32DX10 = 0x30315844;

    /// Any field, by its place in the file.
    CDdsFileBuilder& word(size_t uiOffset, uint32_t ui32Word)
    {
        moxtexture::storeLE(&m_Header[uiOffset], ui32Word);
        return *this;
    }
    /// Sets further bits of the flags.
    CDdsFileBuilder& flags(uint32_t ui32Flags) { return word(8, moxtexture::loadLE<uint32_t>(&m_Header[8]) | ui32Flags); }
    CDdsFileBuilder& size(uint32_t ui32Width, uint32_t ui32Height) { return word(12, ui32Height).word(16, ui32Width); }
    /// Also sets the flag that says that there is a depth.
    CDdsFileBuilder& depth(uint32_t ui32Depth) { return flags(0x800000).word(24, ui32Depth); }
    /// Also sets the flag that says that there is a count.
    CDdsFileBuilder& levels(uint32_t ui32Count) { return flags(0x20000).word(28, ui32Count); }
    CDdsFileBuilder& caps2(uint32_t ui32Caps) { return word(112, ui32Caps); }
    CDdsFileBuilder& fourCC(uint32_t ui32FourCC) { return word(80, 4).word(84, ui32FourCC); }
    CDdsFileBuilder& masks(uint32_t ui32Flags, uint32_t ui32Bits, uint32_t ui32Red, uint32_t ui32Green = 0, uint32_t ui32Blue = 0,
                           uint32_t ui32Alpha = 0)
    {
        return word(80, ui32Flags).word(88, ui32Bits).word(92, ui32Red).word(96, ui32Green).word(100, ui32Blue).word(104, ui32Alpha);
    }
    CDdsFileBuilder& extended(uint32_t ui32Format, uint32_t ui32Dimension = 3, uint32_t ui32MiscFlags = 0, uint32_t ui32ArraySize = 1)
    {
        m_Extended = words({ui32Format, ui32Dimension, ui32MiscFlags, ui32ArraySize, 0});
        return fourCC(k_ui32DX10);
    }
    CDdsFileBuilder& data(std::vector<uint8_t> bytes)
    {
        m_Data = std::move(bytes);
        return *this;
    }

    std::vector<uint8_t> bytes() const
    {
        std::vector<uint8_t> result = m_Header;
        result.insert(result.end(), m_Extended.begin(), m_Extended.end());
        result.insert(result.end(), m_Data.begin(), m_Data.end());
        return result;
    }

    static std::vector<uint8_t> words(const std::vector<uint32_t>& values)
    {
        std::vector<uint8_t> bytes(4 * values.size());
        for (size_t i = 0; i < values.size(); ++i)
            moxtexture::storeLE(&bytes[4 * i], values[i]);
        return bytes;
    }

private:
    static std::vector<uint8_t> onePixel()
    {
        std::vector<uint8_t> bytes(128);
        const std::vector<uint8_t> start = words({0x20534444, 124, 0x1007, 1, 1});
        const std::vector<uint8_t> pixels = words({32, 0x41, 0, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000, 0x1000});
        std::copy(start.begin(), start.end(), bytes.begin());
        std::copy(pixels.begin(), pixels.end(), bytes.begin() + 76);
        return bytes;
    }

    std::vector<uint8_t> m_Header = onePixel();
    std::vector<uint8_t> m_Extended;
    std::vector<uint8_t> m_Data;
};

} // namespace testsupport
