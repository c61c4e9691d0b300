#include "Files/KtxWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Core/Bits.h"
#include "Core/ByteOrder.h"
#include "Core/FileHandle.h"
#include "Files/KtxHeader.h"

namespace moxtexture
{
namespace
{

bool writeBytes(const void* pData, uint64_t ui64Size, std::FILE* pFile)
{
    return ui64Size == 0 || std::fwrite(pData, ui64Size, 1, pFile) == 1;
}

bool writePadding(uint32_t uiCount, std::FILE* pFile)
{
    constexpr uint8_t aui8Zeros[3] = {};
    return writeBytes(aui8Zeros, uiCount, pFile);
}

bool writeWord(uint32_t uiWord, std::FILE* pFile)
{
    uint8_t aui8Word[4];
    storeLE<uint32_t>(aui8Word, uiWord);
    return writeBytes(aui8Word, sizeof(aui8Word), pFile);
}

/// A file has no size on an axis that has no extent.
constexpr uint32_t getSizeToWrite(uint32_t ui32Size)
{
    return ui32Size == 1 ? 0 : ui32Size;
}

KtxHeader makeHeader(const CMOXTextureHeader& texture)
{
    KtxHeader header;
    header.format = findGLFormat(texture.getEncoding()).value_or(GLFormat{});
    CMOXTextureHeader shape = texture;
    shape.setNumMIPLevels(1); // a texture without levels has its sizes too
    header.ui32Width = shape.getWidth();
    header.ui32Height = getSizeToWrite(shape.getHeight());
    header.ui32Depth = getSizeToWrite(shape.getDepth());
    header.ui32NumArrayElements = getSizeToWrite(texture.getNumArrayMembers());
    header.ui32NumFaces = texture.getNumFaces();
    header.ui32NumMIPLevels = texture.getNumMIPLevels();
    return header;
}

bool writeHeaderAndKey(const CMOXTextureHeader& texture, std::FILE* pFile)
{
    const std::string strValue = getKtxOrientationValue(texture);
    const auto uiSize = static_cast<uint32_t>(k_strKtxOrientationKey.size() + strValue.size() + 1);
    const uint32_t uiPadding = getKtxPadding(uiSize);

    KtxHeader header = makeHeader(texture);
    header.ui32KeyValueSize = uiSize + 4 + uiPadding;
    uint8_t aui8Header[KtxHeader::k_uiSize];
    storeKtxHeader(header, aui8Header);
    return writeBytes(aui8Header, sizeof(aui8Header), pFile) && writeWord(uiSize, pFile) &&
           writeBytes(k_strKtxOrientationKey.data(), k_strKtxOrientationKey.size(), pFile) &&
           writeBytes(strValue.c_str(), strValue.size() + 1, pFile) && writePadding(uiPadding, pFile);
}

/// One surface as it stands in the file.
struct SurfaceForm
{
    KtxRows rows; ///< a surface of blocks is one row
    uint32_t uiRowPadding = 0;

    [[nodiscard]] CWrappingCount getSize() const { return CWrappingCount(rows.ui64Count) * (rows.ui64Size + uiRowPadding); }
};

SurfaceForm getSurfaceForm(const CMOXTextureHeader& texture, uint32_t uiLevel)
{
    const uint32_t uiSize = texture.getDataSize(uiLevel, false, false);
    if (!hasKtxRows(texture.getPixelFormat()))
        return {{1, uiSize}, 0};
    const KtxRows rows = getKtxRows(texture, uiLevel);
    const uint32_t uiRowPadding = getKtxPadding(rows.ui64Size);
    // Without padding the rows are one.
    return uiRowPadding == 0 && rows.ui64Count * rows.ui64Size == uiSize ? SurfaceForm{{1, uiSize}, 0} : SurfaceForm{rows, uiRowPadding};
}

/// Many padded rows at once: a write of its own for each row and its padding takes several times as long.
bool writePaddedRows(const uint8_t* pSurface, const SurfaceForm& form, std::FILE* pFile)
{
    constexpr uint64_t ui64MostBytes = 1 << 18;
    const uint64_t ui64RowSize = form.rows.ui64Size + form.uiRowPadding;
    const uint64_t ui64RowsAtOnce = std::min(form.rows.ui64Count, std::max<uint64_t>(1, ui64MostBytes / ui64RowSize));
    std::vector<uint8_t> bytes(ui64RowsAtOnce * ui64RowSize); // nothing but rows is written over, so padding stays 0
    for (uint64_t ui64Row = 0; ui64Row < form.rows.ui64Count; ui64Row += ui64RowsAtOnce)
    {
        const uint64_t ui64Count = std::min(ui64RowsAtOnce, form.rows.ui64Count - ui64Row);
        for (uint64_t i = 0; i < ui64Count; ++i)
            std::memcpy(&bytes[i * ui64RowSize], pSurface + (ui64Row + i) * form.rows.ui64Size, form.rows.ui64Size);
        if (!writeBytes(bytes.data(), ui64Count * ui64RowSize, pFile))
            return false;
    }
    return true;
}

bool writeSurface(const uint8_t* pSurface, const SurfaceForm& form, std::FILE* pFile)
{
    if (pSurface == nullptr)
        return false;
    if (form.rows.ui64Count == 1)
        return writeBytes(pSurface, form.rows.ui64Size, pFile) && writePadding(form.uiRowPadding, pFile);
    return form.rows.ui64Size == 0 || writePaddedRows(pSurface, form, pFile);
}

bool writeLevel(const CMOXTexture& texture, uint32_t uiLevel, std::FILE* pFile)
{
    const SurfaceForm form = getSurfaceForm(texture, uiLevel);
    const bool bFaceSize = texture.getNumFaces() == 6 && texture.getNumArrayMembers() == 1;
    const CWrappingCount imageSize = bFaceSize ? form.getSize() : form.getSize() * texture.getNumFaces() * texture.getNumArrayMembers();
    if (imageSize.hasWrapped() || imageSize.getValue() > 0xFFFFFFFF)
        return false;

    const uint32_t uiPadding = getKtxPadding(imageSize.getValue());
    const uint32_t uiFacePadding = bFaceSize ? uiPadding : 0;
    const uint32_t uiLevelPadding = bFaceSize ? 0 : uiPadding; // padded faces leave nothing to pad
    if (!writeWord(static_cast<uint32_t>(imageSize.getValue()), pFile))
        return false;
    for (uint32_t uiMember = 0; uiMember < texture.getNumArrayMembers(); ++uiMember)
    {
        for (uint32_t uiFace = 0; uiFace < texture.getNumFaces(); ++uiFace)
        {
            if (!writeSurface(texture.getDataPtr(uiLevel, uiMember, uiFace), form, pFile) || !writePadding(uiFacePadding, pFile))
                return false;
        }
    }
    return writePadding(uiLevelPadding, pFile);
}

bool writeContents(const CMOXTexture& texture, std::FILE* pFile)
{
    // A header that was changed since the block was taken may measure more than there is.
    if (!texture.fitsDataBlock() || texture.getDataSize() != texture.getBlockSize() || !writeHeaderAndKey(texture, pFile))
        return false;
    if (texture.getBlockSize() == 0)
        return true;
    for (uint32_t uiLevel = 0; uiLevel < texture.getNumMIPLevels(); ++uiLevel)
    {
        if (!writeLevel(texture, uiLevel, pFile))
            return false;
    }
    return true;
}

} // namespace

bool writeKtx(const CMOXTexture& texture, const std::string& strPath)
{
    return writeFile(strPath, [&](std::FILE* pFile) { return writeContents(texture, pFile); });
}

} // namespace moxtexture
