#include "Files/KtxHeader.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

constexpr uint8_t k_aui8Identifier[12] = {0xAB, 'K', 'T', 'X', ' ', '1', '1', 0xBB, '\r', '\n', 0x1A, '\n'};
constexpr uint32_t k_ui32Endianness = 0x04030201;
constexpr uint32_t k_uiEndiannessOffset = sizeof(k_aui8Identifier);
constexpr uint32_t k_uiFieldsOffset = k_uiEndiannessOffset + 4;

/// Calls visit(field) for each 32-bit field behind the endianness, in the order of the file.
template <typename Header, typename Visit>
void visitFields(Header& header, Visit visit)
{
    visit(header.format.ui32Type);
    visit(header.format.ui32TypeSize);
    visit(header.format.ui32Format);
    visit(header.format.ui32InternalFormat);
    visit(header.format.ui32BaseInternalFormat);
    visit(header.ui32Width);
    visit(header.ui32Height);
    visit(header.ui32Depth);
    visit(header.ui32NumArrayElements);
    visit(header.ui32NumFaces);
    visit(header.ui32NumMIPLevels);
    visit(header.ui32KeyValueSize);
}

struct OrientationLetters
{
    uint32_t ui32Bit; ///< in the mask and in the byte of the axis
    char cAxis, cPlain, cMirrored;
};

constexpr OrientationLetters k_aOrientation[] = {{1, 'S', 'r', 'l'}, {2, 'T', 'd', 'u'}, {4, 'R', 'i', 'o'}};

} // namespace

bool parseKtxHeader(const uint8_t (&aui8Bytes)[KtxHeader::k_uiSize], KtxHeader& header)
{
    if (std::memcmp(aui8Bytes, k_aui8Identifier, sizeof(k_aui8Identifier)) != 0 ||
        loadLE<uint32_t>(aui8Bytes + k_uiEndiannessOffset) != k_ui32Endianness)
        return false;
    const uint8_t* pField = aui8Bytes + k_uiFieldsOffset;
    visitFields(header,
                [&](uint32_t& ui32Field)
                {
                    ui32Field = loadLE<uint32_t>(pField);
                    pField += 4;
                });
    return true;
}

void storeKtxHeader(const KtxHeader& header, uint8_t (&aui8Bytes)[KtxHeader::k_uiSize])
{
    std::memcpy(aui8Bytes, k_aui8Identifier, sizeof(k_aui8Identifier));
    storeLE<uint32_t>(aui8Bytes + k_uiEndiannessOffset, k_ui32Endianness);
    uint8_t* pField = aui8Bytes + k_uiFieldsOffset;
    visitFields(header,
                [&](const uint32_t& ui32Field)
                {
                    storeLE<uint32_t>(pField, ui32Field);
                    pField += 4;
                });
}

uint32_t getKtxOrientationMask(std::string_view strValue)
{
    const auto hasOne = [&](char cLetter) { return std::count(strValue.begin(), strValue.end(), cLetter) == 1; };
    return (hasOne('l') ? 1u : 0u) | (hasOne('d') ? 0u : 2u) | (hasOne('o') ? 4u : 0u);
}

std::string getKtxOrientationValue(const CMOXTextureHeader& texture)
{
    std::string strValue;
    for (uint32_t uiAxis = 0; uiAxis < std::size(k_aOrientation); ++uiAxis)
    {
        const OrientationLetters& letters = k_aOrientation[uiAxis];
        const bool bMirrored = texture.getOrientation(static_cast<EMOXTAxis>(uiAxis)) == letters.ui32Bit;
        if (uiAxis != 0)
            strValue += ',';
        strValue += letters.cAxis;
        strValue += '=';
        strValue += bMirrored ? letters.cMirrored : letters.cPlain;
    }
    return strValue;
}

KtxRows getKtxRows(const CMOXTextureHeader& texture, uint32_t uiMIPLevel)
{
    return {uint64_t{texture.getHeight(uiMIPLevel)} * texture.getDepth(uiMIPLevel),
            uint64_t{texture.getWidth(uiMIPLevel)} * texture.getBitsPerPixel() / 8};
}

} // namespace moxtexture
