#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Formats/GLFormatTable.h"
#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// The numbers in the header of a KTX file, little-endian; those of the pixels first.
///
/// Published: Khronos, KTX File Format Specification, version 1.
struct KtxHeader
{
    static constexpr uint32_t k_uiSize = 64; ///< bytes in the file; the key-value section follows at once

    GLFormat format;
    uint32_t ui32Width = 0;
    uint32_t ui32Height = 0;           ///< 0 for pictures of one row
    uint32_t ui32Depth = 0;            ///< 0 for pictures without a third axis
    uint32_t ui32NumArrayElements = 0; ///< 0 for what is no array
    uint32_t ui32NumFaces = 0;
    uint32_t ui32NumMIPLevels = 0;
    uint32_t ui32KeyValueSize = 0; ///< bytes between the header and the first level
};

/// @return false for another identifier, or for a file of the other byte order, which is not read
[[nodiscard]] bool parseKtxHeader(const uint8_t (&aui8Bytes)[KtxHeader::k_uiSize], KtxHeader& header);

/// The header as it stands in a file.
void storeKtxHeader(const KtxHeader& header, uint8_t (&aui8Bytes)[KtxHeader::k_uiSize]);

/// The one key that is kept, with the zero that ends it.
inline constexpr std::string_view k_strKtxOrientationKey("KTXorientation\0", 15);

/// The mask of CMOXTextureHeader::setOrientation() that a value such as "S=r,T=d,R=i" tells by its letters.
/// On purpose: letters are counted wherever they stand; a value without exactly one 'd' (so one without a "T=" part) sets the Y bit,
/// while X and Z take exactly one 'l' and one 'o'.
[[nodiscard]] uint32_t getKtxOrientationMask(std::string_view strValue);

/// The value for a texture: "S=r" or "S=l", "T=d" or "T=u", "R=i" or "R=o", with commas.
[[nodiscard]] std::string getKtxOrientationValue(const CMOXTextureHeader& texture);

/// Bytes from a size on to the next multiple of 4.
[[nodiscard]] constexpr uint32_t getKtxPadding(uint64_t ui64Size)
{
    return static_cast<uint32_t>(0 - ui64Size) & 3;
}

/// True for pixels, whose rows start at multiples of 4 bytes; surfaces of blocks stand in a file as they stand in memory.
[[nodiscard]] constexpr bool hasKtxRows(MOXPixelWord pixelFormat)
{
    return !pixelFormat.isCompressed() || pixelFormat.getFormat() == ePF_Shared_Exponent_RGB999_E5;
}

/// The rows of one surface as a file has them.
struct KtxRows
{
    uint64_t ui64Count = 0; ///< over all slices
    uint64_t ui64Size = 0;  ///< bytes of a row without padding
};

[[nodiscard]] KtxRows getKtxRows(const CMOXTextureHeader& texture, uint32_t uiMIPLevel);

} // namespace moxtexture
