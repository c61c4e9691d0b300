#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Texture/CMOXTexture.h"

namespace testsupport
{

/// Where a channel's bits lie in a pixel whose bytes follow each other from the lowest bit to the highest.
struct BitField
{
    char cLetter = '\0';
    unsigned int uiFirst = 0;
    unsigned int uiCount = 0;
};

/// The bits of each channel of one pixel, as a number, by letter.
using ChannelCodes = std::map<char, uint64_t>;

inline uint64_t takeBits(const uint8_t* pBytes, unsigned int uiFirst, unsigned int uiCount)
{
    uint64_t ui64Code = 0;
    for (unsigned int i = 0; i < uiCount; ++i)
        ui64Code |= uint64_t{(pBytes[(uiFirst + i) / 8] >> ((uiFirst + i) % 8)) & 1u} << i;
    return ui64Code;
}

/// What a layout's letters say of its pixels: elements of the size of their type stand first in memory as they stand in the word, all
/// others are fields of one little-endian number, the first in its highest bits.
inline std::vector<BitField> fieldsOf(moxtexture::MOXPixelWord format, moxtexture::EMOXTChannelType eType)
{
    const auto isElement = [&](unsigned int uiBits) {
        return eType >= 12 ? uiBits == 16 || uiBits == 32 : uiBits == (eType < 4 ? 8u : eType < 8 ? 16u : 32u);
    };
    std::vector<BitField> fields;
    unsigned int uiTotal = 0;
    for (unsigned int i = 0; i < 4; ++i)
        uiTotal += format.getChannelBits(i);
    unsigned int uiBefore = 0;
    for (unsigned int i = 0; i < 4 && format.getChannelBits(i) != 0; ++i)
    {
        const unsigned int uiBits = format.getChannelBits(i);
        const unsigned int uiFirst = isElement(uiBits) ? uiBefore : uiTotal - uiBefore - uiBits;
        fields.push_back({format.getChannelLetter(i), uiFirst, uiBits});
        uiBefore += uiBits;
    }
    return fields;
}

/// Pixel by pixel, all of them.
inline std::vector<ChannelCodes> codesOf(const std::vector<BitField>& fields, const uint8_t* pBytes, size_t uiSize)
{
    unsigned int uiBits = 0;
    for (const BitField& field : fields)
        uiBits = std::max(uiBits, field.uiFirst + field.uiCount);
    const size_t uiPixelSize = (uiBits + 7) / 8;
    std::vector<ChannelCodes> codes(uiPixelSize != 0 ? uiSize / uiPixelSize : 0);
    for (size_t i = 0; i < codes.size(); ++i)
        for (const BitField& field : fields)
            codes[i][field.cLetter] = takeBits(pBytes + i * uiPixelSize, field.uiFirst, field.uiCount);
    return codes;
}

inline std::vector<ChannelCodes> codesOf(const moxtexture::CMOXTexture& texture)
{
    return codesOf(fieldsOf(texture.getPixelFormat(), texture.getChannelType()), texture.getDataPtr(), texture.getBlockSize());
}

inline std::vector<uint8_t> blockOf(const moxtexture::CMOXTexture& texture)
{
    const uint8_t* pData = texture.getDataPtr();
    return pData != nullptr ? std::vector<uint8_t>(pData, pData + texture.getBlockSize()) : std::vector<uint8_t>();
}

} // namespace testsupport
