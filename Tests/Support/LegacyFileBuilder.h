#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Core/ByteOrder.h"

namespace testsupport
{

/// The pixel type of RGBA 8888 in the older native headers.
inline constexpr uint32_t k_uiLegacyRGBA8 = 18;

/// A file word by word, right or wrong; at first the longer header of one pixel, RGBA 8888.
class CLegacyFileBuilder
{
public:
    explicit CLegacyFileBuilder(uint32_t uiHeaderSize = 52)
    {
        for (const uint32_t uiWord : {uiHeaderSize, 1u, 1u, 0u, k_uiLegacyRGBA8, 4u, 32u, 0u, 0u, 0u, 0u})
            append(uiWord);
        if (uiHeaderSize == 52)
        {
            append(0x21584F4D);
            append(1);
        }
    }

    CLegacyFileBuilder& size(uint32_t uiWidth, uint32_t uiHeight) { return word(4, uiHeight).word(8, uiWidth); }
    CLegacyFileBuilder& levelsBelow(uint32_t uiCount) { return word(12, uiCount); }
    CLegacyFileBuilder& flags(uint32_t uiFlags) { return word(16, uiFlags); }
    CLegacyFileBuilder& surfaces(uint32_t uiCount) { return word(48, uiCount); }
    CLegacyFileBuilder& word(size_t uiOffset, uint32_t uiValue)
    {
        moxtexture::storeLE(&m_Bytes[uiOffset], uiValue);
        return *this;
    }
    CLegacyFileBuilder& data(const std::vector<uint8_t>& bytes)
    {
        m_Bytes.insert(m_Bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }

    const std::vector<uint8_t>& bytes() const { return m_Bytes; }

private:
    void append(uint32_t uiWord)
    {
        m_Bytes.resize(m_Bytes.size() + 4);
        moxtexture::storeLE(&m_Bytes[m_Bytes.size() - 4], uiWord);
    }

    std::vector<uint8_t> m_Bytes;
};

} // namespace testsupport
