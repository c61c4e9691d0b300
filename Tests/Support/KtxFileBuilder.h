#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Core/ByteOrder.h"

namespace testsupport
{

/// The bytes of a KTX file, put together field by field from the published layout, right or wrong. At first a picture of one pixel,
/// RGBA 8888, without keys and without its level.
class CKtxFileBuilder
{
public:
    CKtxFileBuilder& format(uint32_t ui32InternalFormat, uint32_t ui32Type = 0) { return word(28, ui32InternalFormat).word(16, ui32Type); }
    CKtxFileBuilder& size(uint32_t ui32Width, uint32_t ui32Height, uint32_t ui32Depth = 0)
    {
        return word(36, ui32Width).word(40, ui32Height).word(44, ui32Depth);
    }
    CKtxFileBuilder& elements(uint32_t ui32Count) { return word(48, ui32Count); }
    CKtxFileBuilder& faces(uint32_t ui32Count) { return word(52, ui32Count); }
    CKtxFileBuilder& levels(uint32_t ui32Count) { return word(56, ui32Count); }
    /// What the header says, whatever the keys take.
    CKtxFileBuilder& keyValueSize(uint32_t ui32Size)
    {
        m_bOwnKeyValueSize = true;
        return word(60, ui32Size);
    }
    CKtxFileBuilder& word(size_t uiOffset, uint32_t ui32Word)
    {
        moxtexture::storeLE(&m_Header[uiOffset], ui32Word);
        return *this;
    }

    /// Adds a key and its value, a zero behind each, and padding to 4 bytes.
    CKtxFileBuilder& withKey(const std::string& strKey, const std::string& strValue) { return withRecord(strKey + '\0' + strValue + '\0'); }
    /// Adds key and value as they are.
    CKtxFileBuilder& withRecord(const std::string& strBytes)
    {
        append(m_Keys, static_cast<uint32_t>(strBytes.size()));
        return withKeyBytes({strBytes.begin(), strBytes.end()}).padKeys();
    }
    CKtxFileBuilder& withKeyBytes(const std::vector<uint8_t>& bytes)
    {
        m_Keys.insert(m_Keys.end(), bytes.begin(), bytes.end());
        return m_bOwnKeyValueSize ? *this : word(60, static_cast<uint32_t>(m_Keys.size()));
    }

    /// Adds a level: its size as told, and its bytes with whatever padding they have.
    CKtxFileBuilder& level(uint32_t ui32ImageSize, const std::vector<uint8_t>& bytes)
    {
        append(m_Levels, ui32ImageSize);
        m_Levels.insert(m_Levels.end(), bytes.begin(), bytes.end());
        return *this;
    }

    std::vector<uint8_t> bytes() const
    {
        std::vector<uint8_t> result = m_Header;
        result.insert(result.end(), m_Keys.begin(), m_Keys.end());
        result.insert(result.end(), m_Levels.begin(), m_Levels.end());
        return result;
    }

private:
    static void append(std::vector<uint8_t>& bytes, uint32_t ui32Word)
    {
        bytes.resize(bytes.size() + 4);
        moxtexture::storeLE(&bytes[bytes.size() - 4], ui32Word);
    }

    CKtxFileBuilder& padKeys()
    {
        while (m_Keys.size() % 4 != 0)
            m_Keys.push_back(0);
        return withKeyBytes({});
    }

    static std::vector<uint8_t> onePixel()
    {
        std::vector<uint8_t> bytes = {0xAB, 0x4B, 0x54, 0x58, 0x20, 0x31, 0x31, 0xBB, 0x0D, 0x0A, 0x1A, 0x0A};
        for (const uint32_t ui32Word : {0x04030201u, 5121u, 1u, 6408u, 32856u, 6408u, 1u, 1u, 0u, 0u, 1u, 1u, 0u})
            append(bytes, ui32Word);
        return bytes;
    }

    std::vector<uint8_t> m_Header = onePixel();
    std::vector<uint8_t> m_Keys;
    std::vector<uint8_t> m_Levels;
    bool m_bOwnKeyValueSize = false;
};

} // namespace testsupport
