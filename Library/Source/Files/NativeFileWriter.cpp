#include <cstdio>

#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"
#include "Files/NativeFile.h"

namespace moxtexture
{
namespace
{

bool writeRecordOf(const MetaDataBlock& block, std::FILE* pFile)
{
    uint8_t aui8Record[MetaDataBlock::k_uiRecordSize];
    storeLE<uint32_t>(aui8Record, block.DevFOURCC);
    storeLE<uint32_t>(aui8Record + 4, block.u32Key);
    storeLE<uint32_t>(aui8Record + 8, block.u32DataSize);
    return std::fwrite(aui8Record, sizeof(aui8Record), 1, pFile) == 1;
}

/// One item; nothing is no item.
bool writeItem(const void* pData, uint32_t uiSize, std::FILE* pFile)
{
    return pData != nullptr && uiSize != 0 && std::fwrite(pData, uiSize, 1, pFile) == 1;
}

bool writeContents(const CMOXTexture& texture, std::FILE* pFile)
{
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    texture.writeRecord(aui8Record);
    bool bGood = writeItem(aui8Record, sizeof(aui8Record), pFile);

    const MetaDataMap& metaData = texture.getMetaData();
    for (uint32_t i = 0; i < metaData.getCount(); ++i)
    {
        const auto& blocks = metaData.getValue(i);
        for (uint32_t j = 0; j < blocks.getCount(); ++j)
        {
            const MetaDataBlock& block = blocks.getValue(j);
            bGood = writeRecordOf(block, pFile) && bGood;
            bGood = writeItem(block.Data.get(), block.u32DataSize, pFile) && bGood;
        }
    }

    // A header that was changed since the block was taken may measure more than there is.
    const bool bHeld = texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize();
    return bHeld && writeItem(texture.getDataPtr(), texture.getBlockSize(), pFile) && bGood;
}

} // namespace

bool writeNative(const CMOXTexture& texture, const std::string& strPath)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeContents(texture, pFile); });
}

} // namespace moxtexture
