#include "Files/KtxReader.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "Core/ByteOrder.h"
#include "Files/KtxHeader.h"
#include "Files/LoadLimits.h"

namespace moxtexture
{
namespace
{

/// A stream with a position of its own telling, which cannot pass the end.
class CKtxInput
{
public:
    explicit CKtxInput(std::istream& stream) : m_Stream(stream)
    {
        m_Stream.exceptions(std::ios_base::badbit | std::ios_base::failbit | std::ios_base::eofbit);
        m_Stream.seekg(0, std::ios_base::end);
        m_ui64Size = static_cast<uint64_t>(std::streamoff(m_Stream.tellg()));
        m_Stream.seekg(0, std::ios_base::beg);
    }

    [[nodiscard]] uint64_t getSize() const { return m_ui64Size; }
    [[nodiscard]] uint64_t getPosition() const { return m_ui64Position; }

    void read(void* pTarget, uint64_t ui64Size)
    {
        m_Stream.read(static_cast<char*>(pTarget), static_cast<std::streamsize>(ui64Size));
        m_ui64Position += ui64Size;
    }

    uint32_t readWord()
    {
        uint8_t aui8Word[4];
        read(aui8Word, sizeof(aui8Word));
        return loadLE<uint32_t>(aui8Word);
    }

    /// Past the end it stays at the end: nothing is there to be read, but nothing may be wanted either.
    void seekTo(uint64_t ui64Position)
    {
        m_ui64Position = std::min(ui64Position, m_ui64Size);
        m_Stream.seekg(static_cast<std::streamoff>(m_ui64Position), std::ios_base::beg);
    }

    void skip(uint32_t uiCount)
    {
        if (uiCount != 0)
            seekTo(m_ui64Position + uiCount);
    }

private:
    std::istream& m_Stream;
    uint64_t m_ui64Size = 0;
    uint64_t m_ui64Position = 0;
};

/// Shape and encoding.
/// @return false for numbers outside the format table; the shape is set all the same
bool takeHeader(const KtxHeader& header, CMOXTexture& texture)
{
    texture.setWidth(header.ui32Width);
    texture.setHeight(std::max(1u, header.ui32Height));
    texture.setDepth(std::max(1u, header.ui32Depth));
    texture.setNumMIPLevels(header.ui32NumMIPLevels);
    texture.setNumFaces(header.ui32NumFaces);
    texture.setNumArrayMembers(std::max(1u, header.ui32NumArrayElements));
    const auto encoding = findGLFormat(header.format.ui32InternalFormat, header.format.ui32Type);
    if (!encoding)
        return false;
    texture.setPixelFormat(encoding->pixelFormat);
    texture.setChannelType(encoding->eChannelType);
    texture.setColourSpace(encoding->eColourSpace);
    return true;
}

/// @param uiSize  bytes of key and value, which the file has from here on
/// @param ui32Mask  set where the key is the orientation
void readKey(CKtxInput& input, uint32_t uiSize, uint32_t& ui32Mask)
{
    char acKey[k_strKtxOrientationKey.size()];
    if (uiSize < sizeof(acKey))
        return;
    input.read(acKey, sizeof(acKey));
    if (std::string_view(acKey, sizeof(acKey)) != k_strKtxOrientationKey)
        return;
    std::string strValue(uiSize - sizeof(acKey), '\0');
    input.read(strValue.data(), strValue.size());
    const std::string_view strText = strValue;
    ui32Mask = getKtxOrientationMask(strText.substr(0, strText.find('\0')));
}

void readKeys(CKtxInput& input, uint64_t ui64End, CMOXTexture& texture)
{
    ui64End = std::min(ui64End, input.getSize());
    uint32_t ui32Mask = 0;
    bool bAny = false;
    while (ui64End - input.getPosition() >= 4)
    {
        const uint32_t uiSize = input.readWord();
        const uint64_t ui64Start = input.getPosition();
        if (uiSize == 0 || uiSize > ui64End - ui64Start)
            break;
        readKey(input, uiSize, ui32Mask);
        bAny = true;
        input.seekTo(std::min(ui64End, ui64Start + uiSize + getKtxPadding(uiSize)));
    }
    // On purpose: every key writes the record, not the orientation alone. Once is enough, as the last one stands.
    if (bAny)
        texture.setOrientation(ui32Mask);
}

/// @param uiRowPadding  bytes behind each row in the file
void readSurface(CKtxInput& input, uint8_t* pSurface, uint32_t uiSurfaceSize, const KtxRows& rows, uint32_t uiRowPadding)
{
    if (uiRowPadding == 0)
    {
        input.read(pSurface, uiSurfaceSize);
        return;
    }
    for (uint64_t i = 0; i < rows.ui64Count; ++i)
    {
        input.read(pSurface + i * rows.ui64Size, rows.ui64Size);
        input.skip(uiRowPadding);
    }
}

/// @param bFaceSize  imageSize is that of one face
/// @return false where the texture does not hold such a surface
bool readLevel(CKtxInput& input, uint32_t uiLevel, bool bFaceSize, CMOXTexture& texture)
{
    const uint32_t uiImageSize = input.readWord();
    const uint32_t uiFacePadding = bFaceSize ? getKtxPadding(uiImageSize) : 0;
    const uint32_t uiLevelPadding = bFaceSize ? 0 : getKtxPadding(uiImageSize); // padded faces leave nothing to pad

    // Some writers leave rows as they are; the size that they tell gives them away.
    const KtxRows rows = getKtxRows(texture, uiLevel);
    const bool bTight = uiImageSize == texture.getDataSize(uiLevel, !bFaceSize, !bFaceSize);
    const uint32_t uiRowPadding = hasKtxRows(texture.getPixelFormat()) && !bTight ? getKtxPadding(rows.ui64Size) : 0;

    const uint32_t uiSurfaceSize = texture.getDataSize(uiLevel, false, false);
    for (uint32_t uiMember = 0; uiMember < texture.getNumArrayMembers(); ++uiMember)
    {
        for (uint32_t uiFace = 0; uiFace < texture.getNumFaces(); ++uiFace)
        {
            uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
            if (pSurface == nullptr)
                return false;
            readSurface(input, pSurface, uiSurfaceSize, rows, uiRowPadding);
            input.skip(uiFacePadding);
        }
    }
    input.skip(uiLevelPadding);
    return true;
}

} // namespace

bool readKtx(std::istream& stream, CMOXTexture& texture)
{
    CKtxInput input(stream);
    uint8_t aui8Header[KtxHeader::k_uiSize];
    input.read(aui8Header, sizeof(aui8Header));
    KtxHeader header;
    if (!parseKtxHeader(aui8Header, header) || !takeHeader(header, texture))
        return false;

    const uint64_t ui64DataStart = uint64_t{KtxHeader::k_uiSize} + header.ui32KeyValueSize;
    readKeys(input, ui64DataStart, texture);
    if (ui64DataStart > input.getSize())
    {
        leaveWithoutData(texture);
        return false;
    }
    if (!takeDataBlock(texture, input.getSize()))
        return false;
    if (texture.getBlockSize() == 0)
        return header.ui32NumMIPLevels == 0;

    input.seekTo(ui64DataStart);
    const bool bFaceSize = header.ui32NumFaces == 6 && header.ui32NumArrayElements == 0;
    for (uint32_t uiLevel = 0; uiLevel < texture.getNumMIPLevels(); ++uiLevel)
        if (!readLevel(input, uiLevel, bFaceSize, texture))
            return false;
    return true;
}

} // namespace moxtexture
