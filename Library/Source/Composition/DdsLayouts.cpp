#include "Composition/DdsLayouts.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Composition/ChannelMoves.h"
#include "Core/ByteOrder.h"
#include "Formats/D3DFormatTable.h"
#include "Formats/DXGIFormatTable.h"

namespace moxtexture
{
namespace
{

enum class EWhen : uint8_t
{
    eLoaded,
    eToSave,
};

/// A layout that is not left as it is. First the bits are moved, then the layout that they lie in is called by its label.
struct DdsLayoutRow
{
    EWhen eWhen;
    MOXPixelWord from;
    EMOXTChannelType eFromType;
    MOXPixelWord bits; ///< the same as `from` where nothing moves
    MOXPixelWord label;
    EMOXTChannelType eType; ///< of `bits` and `label`
};

constexpr auto eByte = eCT_UnsignedNormalisedByte;
constexpr auto eShort = eCT_UnsignedNormalisedShort;
constexpr auto eSNShort = eCT_SignedNormalisedShort;
constexpr auto eUNorm = eCT_UnsignedNormalisedInteger;
constexpr auto eSNorm = eCT_SignedNormalisedInteger;
constexpr auto eUInt = eCT_UnsignedInteger;
constexpr auto eFloat = eCT_SignedFloatingPoint;
constexpr auto eLoaded = EWhen::eLoaded;
constexpr auto eToSave = EWhen::eToSave;

constexpr MOXPixelWord k_RGB8 = layout("rgb", 8, 8, 8);
constexpr MOXPixelWord k_ARGB8 = layout("argb", 8, 8, 8, 8);
constexpr MOXPixelWord k_ABGR8 = layout("abgr", 8, 8, 8, 8);
constexpr MOXPixelWord k_XRGB8 = layout("xrgb", 8, 8, 8, 8);
constexpr MOXPixelWord k_XBGR8 = layout("xbgr", 8, 8, 8, 8);
constexpr MOXPixelWord k_BGRX8 = layout("bgrx", 8, 8, 8, 8);
constexpr MOXPixelWord k_AL8 = layout("al", 8, 8);
constexpr MOXPixelWord k_GR16 = layout("gr", 16, 16);
constexpr MOXPixelWord k_RG16 = layout("rg", 16, 16);
constexpr MOXPixelWord k_GR32 = layout("gr", 32, 32);
constexpr MOXPixelWord k_RG32 = layout("rg", 32, 32);
constexpr MOXPixelWord k_ABGR16 = layout("abgr", 16, 16, 16, 16);
constexpr MOXPixelWord k_ABGR32 = layout("abgr", 32, 32, 32, 32);
constexpr MOXPixelWord k_RGB10A2 = layout("rgba", 10, 10, 10, 2);
constexpr MOXPixelWord k_A2BGR10 = layout("abgr", 2, 10, 10, 10);

// clang-format off
constexpr DdsLayoutRow k_aLayouts[] = {
//    when     layout     type      bits as    label      type
    // Files have red first, where the letters of elements say it comes last.
    { eLoaded, k_GR16,    eFloat,   k_GR16,    k_RG16,    eFloat },
    { eLoaded, k_GR32,    eFloat,   k_GR32,    k_RG32,    eFloat },
    { eLoaded, k_ABGR16,  eFloat,   k_ABGR16,  k_RGBA16,  eFloat },
    { eLoaded, k_ABGR32,  eFloat,   k_ABGR32,  k_RGBA32,  eFloat },
    { eToSave, k_GR16,    eFloat,   k_RG16,    k_RG16,    eFloat },
    { eToSave, k_GR32,    eFloat,   k_RG32,    k_RG32,    eFloat },
    { eToSave, k_ABGR16,  eFloat,   k_RGBA16,  k_RGBA16,  eFloat },
    { eToSave, k_ABGR32,  eFloat,   k_RGBA32,  k_RGBA32,  eFloat },
    // Files of DXGI 24 and 25 have red in the lowest bits, where the letters say it has the highest.
    { eLoaded, k_RGB10A2, eUNorm,   k_RGB10A2, k_A2BGR10, eUNorm },
    { eLoaded, k_RGB10A2, eUInt,    k_RGB10A2, k_A2BGR10, eUInt },
    { eToSave, k_RGB10A2, eUNorm,   k_A2BGR10, k_RGB10A2, eUNorm },
    { eToSave, k_RGB10A2, eUInt,    k_A2BGR10, k_RGB10A2, eUInt },
    { eToSave, k_A2BGR10, eUNorm,   k_A2BGR10, k_RGB10A2, eUNorm },
    { eToSave, k_A2BGR10, eUInt,    k_A2BGR10, k_RGB10A2, eUInt },
    // The masks of the D3D numbers are those of one word with the first letter highest, where elements have it first in memory.
    { eToSave, k_RGB8,    eByte,    k_RGB8,    k_RGB8,    eUNorm },
    { eToSave, k_ARGB8,   eByte,    k_ARGB8,   k_ARGB8,   eUNorm },
    { eToSave, k_AL8,     eByte,    k_AL8,     k_AL8,     eUNorm },
    { eToSave, k_GR16,    eShort,   k_GR16,    k_GR16,    eUNorm },
    { eToSave, k_ABGR16,  eShort,   k_ABGR16,  k_ABGR16,  eUNorm },
    // These open, but have no number to be written with.
    { eToSave, k_ABGR8,   eUNorm,   k_RGBA8,   k_RGBA8,   eByte },
    { eToSave, k_XRGB8,   eUNorm,   k_BGRX8,   k_BGRX8,   eByte },
    { eToSave, k_XRGB8,   eByte,    k_BGRX8,   k_BGRX8,   eByte },
    { eToSave, k_XBGR8,   eUNorm,   k_BGRX8,   k_BGRX8,   eByte },
    { eToSave, k_XBGR8,   eByte,    k_BGRX8,   k_BGRX8,   eByte },
    { eToSave, k_ABGR16,  eSNorm,   k_RGBA16,  k_RGBA16,  eSNShort },
};
// clang-format on

const DdsLayoutRow* findRow(EWhen eWhen, const CMOXTextureHeader& header)
{
    const auto fits = [&](const DdsLayoutRow& row)
    { return row.eWhen == eWhen && row.from == header.getPixelFormat() && row.eFromType == header.getChannelType(); };
    const auto* pRow = std::find_if(std::begin(k_aLayouts), std::end(k_aLayouts), fits);
    return pRow != std::end(k_aLayouts) ? pRow : nullptr;
}

/// Of an array of them the writer knows a number that is read as it is written.
bool isLoneHalf(const CMOXTextureHeader& header)
{
    return header.getPixelFormat() == layout("r", 16) && header.getChannelType() == eFloat && header.getNumArrayMembers() < 2;
}

/// The bits of a float of 32 bits with the value of one of 16, as IEEE 754 has both: every value, infinity and not-a-number has its
/// own. (Transcode would read the smallest ones by the accessors' rule, and not bring them back.)
uint32_t widenHalf(uint32_t ui32Half)
{
    const uint32_t ui32Sign = (ui32Half & 0x8000) << 16;
    const uint32_t ui32Exponent = (ui32Half >> 10) & 31;
    uint32_t ui32Mantissa = ui32Half & 0x3FF;
    if (ui32Exponent == 31)
        return ui32Sign | 0x7F800000 | ui32Mantissa << 13;
    uint32_t ui32WideExponent = ui32Exponent + 112;
    if (ui32Exponent == 0)
    {
        if (ui32Mantissa == 0)
            return ui32Sign;
        // Without a leading one; a float of 32 bits has room to give it one.
        for (ui32WideExponent = 113; (ui32Mantissa & 0x400) == 0; --ui32WideExponent)
            ui32Mantissa <<= 1;
        ui32Mantissa &= 0x3FF;
    }
    return ui32Sign | ui32WideExponent << 23 | ui32Mantissa << 13;
}

/// @return false if the texture would not fit a data block, or has none
bool widenHalves(CMOXTexture& texture)
{
    CMOXTextureHeader header = texture;
    header.setPixelFormat(layout("r", 32));
    if (!header.fitsDataBlock() || texture.getBlockSize() != texture.getDataSize())
        return false;
    CMOXTexture wide(header);
    // All surfaces lie one behind the other without gaps, before and after.
    const uint8_t* pHalf = texture.getDataPtr();
    uint8_t* pWide = wide.getDataPtr();
    for (uint32_t i = 0; i < texture.getBlockSize() / 2; ++i)
        storeLE(pWide + size_t{4} * i, widenHalf(loadLE<uint16_t>(pHalf + size_t{2} * i)));
    texture = std::move(wide);
    return true;
}

void applyRow(EWhen eWhen, CMOXTexture& texture)
{
    const DdsLayoutRow* pRow = findRow(eWhen, texture);
    if (pRow != nullptr && moveChannels(texture, pRow->bits, pRow->eType))
        texture.setPixelFormat(pRow->label);
}

} // namespace

void correctLoadedDds(CMOXTexture& texture)
{
    applyRow(EWhen::eLoaded, texture);
    fillSpareChannel(texture);
}

bool needsDdsPreparation(const CMOXTextureHeader& header)
{
    return isLoneHalf(header) || findRow(EWhen::eToSave, header) != nullptr;
}

bool prepareForDds(CMOXTexture& texture)
{
    if (isLoneHalf(texture))
        return widenHalves(texture);
    applyRow(EWhen::eToSave, texture);
    return true;
}

bool hasDdsFormat(const CMOXTextureHeader& header)
{
    PixelEncoding encoding = header.getEncoding();
    if (const DdsLayoutRow* pRow = findRow(EWhen::eToSave, header))
    {
        encoding.pixelFormat = pRow->label;
        encoding.eChannelType = pRow->eType;
    }
    const bool bPlain = header.getNumArrayMembers() < 2 && findD3DFormat(encoding) != nullptr;
    return bPlain || findDXGIFormat(encoding) != nullptr;
}

} // namespace moxtexture
