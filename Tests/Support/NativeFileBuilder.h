#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "Core/ByteOrder.h"

namespace testsupport
{

/// The bytes of a native file, put together field by field from the published layout, right or wrong. At first a texture of one
/// pixel, RGBA 8888, without metadata and without its data.
class CNativeFileBuilder
{
public:
    static constexpr uint32_t k_ui32Native = 0x03584F4D; // 'M', 'O', 'X', 3

    CNativeFileBuilder& version(uint32_t ui32Word) { return word(0, ui32Word); }
    CNativeFileBuilder& flags(uint32_t ui32Flags) { return word(4, ui32Flags); }
    CNativeFileBuilder& format(uint64_t ui64Word)
    {
        return word(8, static_cast<uint32_t>(ui64Word)).word(12, static_cast<uint32_t>(ui64Word >> 32));
    }
    CNativeFileBuilder& colourSpace(uint32_t ui32Space) { return word(16, ui32Space); }
    CNativeFileBuilder& channelType(uint32_t ui32Type) { return word(20, ui32Type); }
    CNativeFileBuilder& size(uint32_t ui32Width, uint32_t ui32Height, uint32_t ui32Depth = 1)
    {
        return word(24, ui32Height).word(28, ui32Width).word(32, ui32Depth);
    }
    CNativeFileBuilder& members(uint32_t ui32Count) { return word(36, ui32Count); }
    CNativeFileBuilder& faces(uint32_t ui32Count) { return word(40, ui32Count); }
    CNativeFileBuilder& levels(uint32_t ui32Count) { return word(44, ui32Count); }
    /// What the header says, whatever the blocks take.
    CNativeFileBuilder& metaDataSize(uint32_t ui32Size)
    {
        m_bOwnMetaDataSize = true;
        return word(48, ui32Size);
    }

    /// Adds a metadata block.
    CNativeFileBuilder& block(uint32_t ui32FourCC, uint32_t ui32Key, const std::vector<uint8_t>& data)
    {
        return block(ui32FourCC, ui32Key, static_cast<uint32_t>(data.size()), data);
    }
    /// Adds one with a size of its own telling.
    CNativeFileBuilder& block(uint32_t ui32FourCC, uint32_t ui32Key, uint32_t ui32Size, const std::vector<uint8_t>& data)
    {
        for (const uint32_t ui32Word : {ui32FourCC, ui32Key, ui32Size})
            append(m_MetaData, ui32Word);
        m_MetaData.insert(m_MetaData.end(), data.begin(), data.end());
        return m_bOwnMetaDataSize ? *this : word(48, static_cast<uint32_t>(m_MetaData.size()));
    }

    CNativeFileBuilder& data(std::vector<uint8_t> bytes)
    {
        m_Data = std::move(bytes);
        return *this;
    }

    std::vector<uint8_t> bytes() const
    {
        std::vector<uint8_t> result = m_Header;
        result.insert(result.end(), m_MetaData.begin(), m_MetaData.end());
        result.insert(result.end(), m_Data.begin(), m_Data.end());
        return result;
    }

private:
    static void append(std::vector<uint8_t>& bytes, uint32_t ui32Word)
    {
        bytes.resize(bytes.size() + 4);
        moxtexture::storeLE(&bytes[bytes.size() - 4], ui32Word);
    }

    static std::vector<uint8_t> onePixel()
    {
        std::vector<uint8_t> bytes;
        for (const uint32_t ui32Word : {k_ui32Native, 0u, 0x61626772u, 0x08080808u, 0u, 0u, 1u, 1u, 1u, 1u, 1u, 1u, 0u})
            append(bytes, ui32Word);
        return bytes;
    }

    CNativeFileBuilder& word(size_t uiOffset, uint32_t ui32Word)
    {
        moxtexture::storeLE(&m_Header[uiOffset], ui32Word);
        return *this;
    }

    std::vector<uint8_t> m_Header = onePixel();
    std::vector<uint8_t> m_MetaData;
    std::vector<uint8_t> m_Data;
    bool m_bOwnMetaDataSize = false;
};

} // namespace testsupport
