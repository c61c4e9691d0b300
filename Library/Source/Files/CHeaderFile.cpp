#include "Files/CHeaderFile.h"

#include <cstring>
#include <string_view>
#include <vector>

#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"

namespace moxtexture
{
namespace
{

/// Text gathered into large writes.
class CTextWriter
{
public:
    explicit CTextWriter(std::FILE* pFile) : m_pFile(pFile), m_Text(k_uiFlushSize) {}
    CTextWriter(const CTextWriter&) = delete;
    CTextWriter& operator=(const CTextWriter&) = delete;
    ~CTextWriter() { flush(); }

    void put(std::string_view strText)
    {
        flush();
        std::fwrite(strText.data(), 1, strText.size(), m_pFile);
    }

    /// Bytes as "0x2f,", each.
    /// @param uiRow  bytes to a line; 0 for no line ends at all
    void putBytes(const uint8_t* pBytes, size_t uiSize, size_t uiRow)
    {
        size_t uiInRow = 0;
        for (size_t i = 0; i < uiSize; ++i)
        {
            if (m_uiUsed + k_uiByteLength + 1 > m_Text.size())
                flush();
            putByte(pBytes[i]);
            if (++uiInRow == uiRow)
            {
                m_Text[m_uiUsed++] = '\n';
                uiInRow = 0;
            }
        }
    }

private:
    static constexpr size_t k_uiFlushSize = 1 << 18;
    static constexpr size_t k_uiByteLength = 5;

    void putByte(uint8_t ui8Byte)
    {
        constexpr char acDigits[] = "0123456789abcdef";
        const char acByte[k_uiByteLength] = {'0', 'x', acDigits[ui8Byte >> 4], acDigits[ui8Byte & 15], ','};
        std::memcpy(&m_Text[m_uiUsed], acByte, k_uiByteLength);
        m_uiUsed += k_uiByteLength;
    }

    void flush()
    {
        std::fwrite(m_Text.data(), 1, m_uiUsed, m_pFile);
        m_uiUsed = 0;
    }

    std::FILE* m_pFile;
    std::vector<char> m_Text;
    size_t m_uiUsed = 0;
};

void putBlock(CTextWriter& writer, const MetaDataBlock& block, uint32_t uiOwnerIndex)
{
    uint8_t aui8Record[MetaDataBlock::k_uiRecordSize];
    storeLE(aui8Record, block.DevFOURCC);
    storeLE(aui8Record + 4, block.u32Key);
    storeLE(aui8Record + 8, block.u32DataSize);
    writer.putBytes(aui8Record, sizeof(aui8Record), 4);
    // On purpose: it is the owner's place among the owners, not the byte's in the block, that decides on line ends.
    const bool bLineToAByte = uiOwnerIndex % 32 == 31;
    if (block.Data)
        writer.putBytes(block.Data.get(), block.u32DataSize, bLineToAByte ? 1 : 0);
    writer.put("\n");
}

void putMetaData(CTextWriter& writer, const MetaDataMap& metaData)
{
    writer.put("\n/* Meta Data */\n");
    for (uint32_t i = 0; i < metaData.getCount(); ++i)
    {
        const auto& blocks = metaData.getValue(i);
        for (uint32_t j = 0; j < blocks.getCount(); ++j)
            putBlock(writer, blocks.getValue(j), i);
    }
}

} // namespace

bool writeCHeader(const CMOXTexture& texture, std::FILE* file, const std::string& strArrayName)
{
    CTextWriter writer(file);
    writer.put("/********************************************************** \n"
               " * HalvaneLib\n"
               " **********************************************************/\n\n"
               "#ifndef A8BIT \n"
               " #define A8BIT static const unsigned char\n"
               "#endif\n\n");
    writer.put("A8BIT " + strArrayName + "[] = {\n");

    writer.put("\n/* Header */\n");
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    texture.writeRecord(aui8Record);
    writer.putBytes(aui8Record, sizeof(aui8Record), 4);

    if (texture.getMetaDataSize() != 0)
        putMetaData(writer, texture.getMetaData());

    writer.put("\n/* Data */\n");
    if (const uint8_t* pData = texture.getDataPtr())
        writer.putBytes(pData, texture.getBlockSize(), 32);
    writer.put("};\n");
    return true;
}

std::string getCArrayName(const std::string& strPath)
{
    const size_t uiSeparator = strPath.find_last_of("/\\");
    const std::string strName = uiSeparator == std::string::npos ? strPath : strPath.substr(uiSeparator + 1);
    return strName.substr(0, strName.find('.'));
}

bool saveCHeader(const CMOXTexture& texture, const std::string& strPath)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeCHeader(texture, pFile, getCArrayName(strPath)); });
}

} // namespace moxtexture
