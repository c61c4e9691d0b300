#pragma once

#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

#include "Core/ByteOrder.h"
#include "Support/ChannelBits.h"

namespace testsupport
{

/// The channels of an uncompressed DXGI format as its published name lists them, from the lowest bit on.
struct PublishedFormat
{
    uint32_t uiNumber;
    const char* strChannels;
};

// clang-format off
inline constexpr PublishedFormat k_aPublishedDXGI[] = {
    { 2, "r32g32b32a32" }, { 3, "r32g32b32a32" }, { 4, "r32g32b32a32" }, { 6, "r32g32b32" }, { 7, "r32g32b32" }, { 8, "r32g32b32" },
    { 10, "r16g16b16a16" }, { 11, "r16g16b16a16" }, { 12, "r16g16b16a16" }, { 13, "r16g16b16a16" }, { 14, "r16g16b16a16" },
    { 16, "r32g32" }, { 17, "r32g32" }, { 18, "r32g32" }, { 24, "r10g10b10a2" }, { 25, "r10g10b10a2" }, { 26, "r11g11b10" },
    { 28, "r8g8b8a8" }, { 29, "r8g8b8a8" }, { 30, "r8g8b8a8" }, { 31, "r8g8b8a8" }, { 32, "r8g8b8a8" },
    { 34, "r16g16" }, { 35, "r16g16" }, { 36, "r16g16" }, { 37, "r16g16" }, { 38, "r16g16" }, { 41, "r32" }, { 42, "r32" }, { 43, "r32" },
    { 49, "r8g8" }, { 50, "r8g8" }, { 51, "r8g8" }, { 52, "r8g8" }, { 54, "r16" }, { 56, "r16" }, { 57, "r16" }, { 58, "r16" },
    { 59, "r16" }, { 61, "r8" }, { 62, "r8" }, { 63, "r8" }, { 64, "r8" }, { 85, "b5g6r5" }, { 86, "b5g5r5a1" }, { 87, "b8g8r8a8" },
    { 88, "b8g8r8x8" }, { 91, "b8g8r8a8" }, { 93, "b8g8r8x8" }, { 115, "b4g4r4a4" },
};
/// The D3D numbers that stand in the FourCC field, in the same form. (Their published names begin at the highest bit.)
inline constexpr PublishedFormat k_aPublishedD3D[] = {
    { 30, "b4g4r4x4" }, { 36, "r16g16b16a16" }, { 110, "r16g16b16a16" }, { 111, "r16" }, { 112, "r16g16" }, { 113, "r16g16b16a16" },
    { 114, "r32" }, { 115, "r32g32" }, { 116, "r32g32b32a32" },
};
// clang-format on

/// "b5g6r5" as fields, the first in the lowest bits.
inline std::vector<BitField> fieldsFromLowest(const std::string& strChannels)
{
    std::vector<BitField> fields;
    unsigned int uiFirst = 0;
    for (size_t i = 0; i < strChannels.size();)
    {
        BitField field{strChannels[i++], uiFirst, 0};
        for (; i < strChannels.size() && std::isdigit(static_cast<unsigned char>(strChannels[i])) != 0; ++i)
            field.uiCount = 10 * field.uiCount + static_cast<unsigned int>(strChannels[i] - '0');
        uiFirst += field.uiCount;
        fields.push_back(field);
    }
    return fields;
}

template <size_t N>
std::vector<BitField> findPublished(const PublishedFormat (&aFormats)[N], uint32_t uiNumber)
{
    for (const PublishedFormat& format : aFormats)
        if (format.uiNumber == uiNumber)
            return fieldsFromLowest(format.strChannels);
    return {};
}

/// The fields that masks of a plain header tell, and whatever bits they leave over as 'x'.
inline std::vector<BitField> fieldsOfMasks(uint32_t uiFlags, uint32_t uiBits, const std::vector<uint32_t>& masks)
{
    std::string strLetters = "rgba";
    if ((uiFlags & 0x20000) != 0)
        strLetters[0] = 'l';
    if ((uiFlags & 0x40000) != 0)
        strLetters[2] = 'l';
    uint32_t ui32Spare = uiBits == 32 ? 0xFFFFFFFF : (1u << uiBits) - 1;
    std::vector<BitField> fields;
    const auto add = [&](char cLetter, uint32_t ui32Mask)
    {
        BitField field{cLetter, 0, 0};
        while ((ui32Mask >> field.uiFirst & 1) == 0)
            ++field.uiFirst;
        for (unsigned int i = field.uiFirst; i < 32 && (ui32Mask >> i & 1) != 0; ++i)
            ++field.uiCount;
        ui32Spare &= ~ui32Mask;
        fields.push_back(field);
    };
    for (size_t i = 0; i < 4; ++i)
        if (masks[i] != 0)
            add(strLetters[i], masks[i]);
    if (ui32Spare != 0)
        add('x', ui32Spare);
    return fields;
}

/// A DDS file as a program sees it that goes by the published headers.
struct DdsSeen
{
    std::vector<BitField> fields; ///< empty for what is not made of channels
    size_t uiDataStart = 0;
    bool bMaskedTens = false; ///< masks of channels of 10 bits, with red and blue exchanged as everybody writes them
    bool bDXGI = false;
    uint32_t uiNumber = 0; ///< the DXGI number, or what stands in the FourCC field; 0 where masks tell
};

inline DdsSeen seeDds(const std::vector<uint8_t>& bytes)
{
    const auto word = [&](size_t uiOffset)
    { return uiOffset + 4 <= bytes.size() ? moxtexture::loadLE<uint32_t>(&bytes[uiOffset]) : uint32_t{0}; };
    DdsSeen seen;
    seen.uiDataStart = 128;
    if ((word(80) & 4) == 0)
    {
        seen.fields = fieldsOfMasks(word(80), word(88), {word(92), word(96), word(100), word(104)});
        seen.bMaskedTens = word(88) == 32 && word(96) == 0xFFC00;
        if (seen.bMaskedTens)
            for (BitField& field : seen.fields)
                field.cLetter = field.cLetter == 'r' ? 'b' : field.cLetter == 'b' ? 'r' : field.cLetter;
        return seen;
    }
    seen.bDXGI = word(84) == 0x30315844;
    seen.uiNumber = seen.bDXGI ? word(128) : word(84);
    seen.uiDataStart = seen.bDXGI ? 148 : 128;
    seen.fields = seen.bDXGI ? findPublished(k_aPublishedDXGI, seen.uiNumber) : findPublished(k_aPublishedD3D, seen.uiNumber);
    return seen;
}

/// The channels of every pixel of a file of one surface.
inline std::vector<ChannelCodes> codesSeen(const std::vector<uint8_t>& bytes)
{
    const DdsSeen seen = seeDds(bytes);
    return seen.uiDataStart < bytes.size() ? codesOf(seen.fields, &bytes[seen.uiDataStart], bytes.size() - seen.uiDataStart)
                                           : std::vector<ChannelCodes>();
}

} // namespace testsupport
