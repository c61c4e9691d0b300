#include "Composition/DdsLayouts.h"

#include <algorithm>
#include <iterator>

#include "Composition/ChannelMoves.h"
#include "Conversion/Transcode.h"
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
        return Transcode(texture, layout("r", 32), eFloat, texture.getColourSpace(), 0, false);
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
