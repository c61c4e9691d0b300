#include "Files/NativeFile.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"
#include "Files/LegacyFile.h"
#include "Files/LoadLimits.h"

namespace moxtexture
{
namespace
{

struct InputFile
{
    std::FILE* pFile = nullptr;
    uint64_t ui64Size = 0;
};

bool readExactly(const InputFile& file, void* pTarget, size_t uiSize)
{
    return std::fread(pTarget, 1, uiSize, file.pFile) == uiSize;
}

bool seekTo(const InputFile& file, uint64_t ui64Position)
{
    return ::fseeko(file.pFile, static_cast<off_t>(ui64Position), SEEK_SET) == 0;
}

/// @param ui64Position  where the file stands; moved on by what the block takes
/// @param ui64End       of the section: of a block that runs past it only the record is read, as it is going to be dropped
/// @return false for a block that the file does not hold as a whole, or without data
bool readMetaDataBlock(const InputFile& file, uint64_t& ui64Position, uint64_t ui64End, MetaDataBlock& block)
{
    uint8_t aui8Record[MetaDataBlock::k_uiRecordSize];
    if (!readExactly(file, aui8Record, sizeof(aui8Record)))
        return false;
    ui64Position += sizeof(aui8Record);
    block.DevFOURCC = loadLE<uint32_t>(aui8Record);
    block.u32Key = loadLE<uint32_t>(aui8Record + 4);
    block.u32DataSize = loadLE<uint32_t>(aui8Record + 8);

    // No memory for what the file cannot deliver.
    if (block.u32DataSize == 0 || ui64Position > file.ui64Size || block.u32DataSize > file.ui64Size - ui64Position)
        return false;
    ui64Position += block.u32DataSize;
    if (ui64Position > ui64End)
        return true;
    block.Data.reset(new (std::nothrow) uint8_t[block.u32DataSize]);
    return block.Data && readExactly(file, block.Data.get(), block.u32DataSize);
}

/// Reads the metadata section, from right behind the header, and leaves the file at the start of the data.
bool readMetaData(const InputFile& file, CMOXTextureHeader& header)
{
    // Far more than anybody has use for. Each new owner takes about 1 KiB, and look-up is linear: a hostile file must neither
    // grow a hundredfold in memory nor take an age.
    constexpr uint32_t uiMostBlocks = 32768;

    const uint32_t uiSectionSize = header.getMetaDataSize();
    header.setMetaDataSize(0);
    uint64_t ui64Position = CMOXTextureHeader::k_uiRecordSize;
    const uint64_t ui64End = ui64Position + uiSectionSize;
    for (uint32_t uiCount = 0; ui64Position < ui64End; ++uiCount)
    {
        MetaDataBlock block;
        if (uiCount == uiMostBlocks || !readMetaDataBlock(file, ui64Position, ui64End, block))
            return false;
        if (ui64Position > ui64End)
            break;
        header.addMetaData(std::move(block));
    }
    // The size as it was built up counts a key that came twice twice, so it tells where the last block kept has ended.
    return seekTo(file, CMOXTextureHeader::k_uiRecordSize + uint64_t{header.getMetaDataSize()});
}

bool readVersion3Header(const InputFile& file, CMOXTexture& texture)
{
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    texture.writeRecord(aui8Record); // what a short file does not deliver stays at its default
    const bool bWhole = readExactly(file, aui8Record, sizeof(aui8Record));
    texture.readRecord(aui8Record);
    const bool bGood = bWhole && readMetaData(file, texture);
    // Exact from here on, so that the texture can be written again.
    texture.setMetaDataSize(texture.sumMetaDataSize());
    return bGood;
}

bool readVersion3Data(const InputFile& file, CMOXTexture& texture)
{
    return std::fread(texture.getDataPtr(), 1, texture.getBlockSize(), file.pFile) != 0;
}

bool readVersion2Header(const InputFile& file, CMOXTexture& texture)
{
    return readLegacyHeader(file.pFile, texture);
}

bool readVersion2Data(const InputFile& file, CMOXTexture& texture)
{
    return readLegacyData(file.pFile, texture);
}

/// A kind of file that its first word tells.
struct HeaderKind
{
    uint32_t ui32FirstWord;
    bool (*readHeader)(const InputFile&, CMOXTexture&); ///< shape, encoding and metadata
    bool (*readData)(const InputFile&, CMOXTexture&);   ///< into the block, which is taken by then
};

constexpr HeaderKind k_aHeaderKinds[] = {
    {CMOXTextureHeader::k_ui32NativeFourCC, readVersion3Header, readVersion3Data},
    {k_uiLegacyHeaderSize, readVersion2Header, readVersion2Data},
    {k_uiLegacyShortHeaderSize, readVersion2Header, readVersion2Data},
};

bool readByKind(const InputFile& file, CMOXTexture& texture)
{
    uint8_t aui8Word[4];
    if (!readExactly(file, aui8Word, sizeof(aui8Word)) || !seekTo(file, 0))
        return false;
    const auto isIt = [&](const HeaderKind& row) { return row.ui32FirstWord == loadLE<uint32_t>(aui8Word); };
    const auto* pKind = std::find_if(std::begin(k_aHeaderKinds), std::end(k_aHeaderKinds), isIt);
    if (pKind == std::end(k_aHeaderKinds) || !pKind->readHeader(file, texture))
    {
        leaveWithoutData(texture);
        return false;
    }
    return takeDataBlock(texture, file.ui64Size) && texture.getBlockSize() != 0 && pKind->readData(file, texture);
}

} // namespace

bool readNative(std::FILE* pFile, CMOXTexture& texture)
{
    InputFile file{pFile};
    if (pFile != nullptr && getFileSize(pFile, file.ui64Size))
        return readByKind(file, texture);
    leaveWithoutData(texture);
    return false;
}

} // namespace moxtexture
