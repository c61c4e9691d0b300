#include "Codecs/ETC/EtcDecodeRow.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcDecodeRowSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EacBlock.h"
#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcDecodeTables.h"
#include "Codecs/ETC/EtcFormats.h"
#include "Core/ByteOrder.h"

#ifndef HALVANE_ETC_DECODE_ROW_ONCE
#define HALVANE_ETC_DECODE_ROW_ONCE
namespace moxtexture
{

/// Two colours of bytes, blue, green, red from byte 0 and from byte 4 on. Levels stand so too before they are expanded.
using EtcColourPairBytes = uint64_t;

constexpr EtcColourPairBytes joinColours(uint32_t uiFirst, uint32_t uiSecond)
{
    return uiFirst | uint64_t{uiSecond} << 32;
}

constexpr EtcColourPairBytes expandPair4(EtcColourPairBytes levels)
{
    return levels * 17;
}

constexpr EtcColourPairBytes expandPair5(EtcColourPairBytes levels)
{
    return levels << 3 | (levels >> 2 & 0x0707070707070707);
}

/// Three levels of 4 bits, blue lowest, each moved to a byte of its own.
constexpr uint32_t spreadLevels(uint32_t uiLevels)
{
    return (uiLevels & 0xF00) << 8 | (uiLevels & 0xF0) << 4 | (uiLevels & 0xF);
}

/// Bases and sums of a differential block in the three bytes of colours. Each sum stands 32 too high, so that its bits 6 and 5 tell a
/// level (01) from one that is above 31 (10) or negative (00).
struct DifferentialBytes
{
    explicit constexpr DifferentialBytes(uint32_t ui32High)
        : uiBases(ui32High >> 11 & 0x1F1F1F), uiSums(uiBases + (((ui32High >> 8) & 0x070707) ^ 0x040404) + 0x1C1C1C)
    {
    }

    /// 0 if all sums are levels; else bits in the bytes of those that are not.
    [[nodiscard]] constexpr uint32_t getOverflows() const { return (uiSums ^ 0x202020) & 0x606060; }
    [[nodiscard]] constexpr EtcColourPairBytes getColours() const { return expandPair5(joinColours(uiBases, uiSums & 0x1F1F1F)); }

    uint32_t uiBases;
    uint32_t uiSums;
};

constexpr uint32_t k_uiRedByte = 0xFF0000;
constexpr uint32_t k_uiGreenByte = 0x00FF00;

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

// Nothing to gain with one lane, which cannot hold the pixels that are looked up at once.
EtcRowDecoder findRowDecoder(uint32_t uiFormat, bool bSigned)
{
    return findEtcRowDecoderReference(uiFormat, bSigned);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using DBytes = hn::FixedTag<uint8_t, 16>;
using DHalfBytes = hn::FixedTag<uint8_t, 8>;
using DWords = hn::FixedTag<int16_t, 8>;
using DHalfWords = hn::FixedTag<int16_t, 4>;
using DUnsignedWords = hn::FixedTag<uint16_t, 8>;
using VBytes = hn::Vec<DBytes>;
using VWords = hn::Vec<DWords>;

constexpr DBytes d8;
constexpr DWords d16;
constexpr DUnsignedWords du16;

/// Words clamped to bytes, those of a before those of b.
HWY_INLINE VBytes narrow(VWords a, VWords b)
{
    const DHalfBytes dHalf;
    return hn::Combine(d8, hn::DemoteTo(dHalf, b), hn::DemoteTo(dHalf, a));
}

/// Sixteen pixels in row order.
struct ColourPlanes
{
    VBytes red;
    VBytes green;
    VBytes blue;
};

HWY_INLINE VBytes fillWith64(uint64_t ui64)
{
    return hn::BitCast(d8, hn::Set(hn::FixedTag<uint64_t, 2>(), ui64));
}

/// The indices of a block in row order, 0 to 3.
HWY_INLINE VBytes getIndices(uint32_t ui32Low)
{
    const VBytes low = hn::BitCast(d8, hn::Set(hn::FixedTag<uint32_t, 4>(), ui32Low));
    const VBytes bits = hn::Load(d8, k_etcDecodeTables.auiBit);
    const VBytes lsb = hn::TableLookupBytes(low, hn::Load(d8, k_etcDecodeTables.auiLsbByte));
    const VBytes msb = hn::TableLookupBytes(low, hn::Load(d8, k_etcDecodeTables.auiMsbByte));
    const VBytes lsbSet = hn::VecFromMask(d8, hn::TestBit(lsb, bits));
    const VBytes msbSet = hn::VecFromMask(d8, hn::TestBit(msb, bits));
    return hn::Or(hn::And(lsbSet, hn::Set(d8, 1)), hn::And(msbSet, hn::Set(d8, 2)));
}

/// A channel of the palette as words, not yet clamped.
template <EEtcPaletteKind kKind, size_t kChannel>
HWY_INLINE VWords getPalette(VBytes colours, VWords modifiers)
{
    const VBytes spread = hn::Load(d8, k_etcDecodeTables.aaauiSpread[kKind][kChannel]);
    return hn::Add(hn::BitCast(d16, hn::TableLookupBytesOr0(colours, spread)), modifiers);
}

/// @param places  of each pixel in the palette
template <EEtcPaletteKind kKind>
HWY_INLINE ColourPlanes lookUpColours(EtcColourPairBytes pair, VWords modifiers, VBytes places)
{
    const VBytes colours = fillWith64(pair);
    const VBytes redGreen = narrow(getPalette<kKind, 0>(colours, modifiers), getPalette<kKind, 1>(colours, modifiers));
    const VWords blueWords = getPalette<kKind, 2>(colours, modifiers);
    const VBytes blue = narrow(blueWords, blueWords);
    return {hn::TableLookupBytes(redGreen, places), hn::TableLookupBytes(redGreen, hn::Add(places, hn::Set(d8, 8))),
            hn::TableLookupBytes(blue, places)};
}

/// A block of individual or differential mode.
/// @param aaiModifiers  by table and index
HWY_INLINE ColourPlanes decodeHalves(EtcColourPairBytes pair, const int16_t (&aaiModifiers)[8][4], uint32_t ui32High, VBytes indices)
{
    const DHalfWords dHalf;
    const VWords modifiers =
        hn::Combine(d16, hn::Load(dHalf, aaiModifiers[ui32High >> 2 & 7]), hn::Load(dHalf, aaiModifiers[ui32High >> 5 & 7]));
    const VBytes secondHalf = hn::Load(d8, k_etcDecodeTables.aauiSecondHalf[ui32High & k_ui32EtcFlipBit]);
    return lookUpColours<eEtcPaletteHalves>(pair, modifiers, hn::Or(indices, secondHalf));
}

HWY_INLINE ColourPlanes decodeT(const EtcBlockWords& words, VBytes indices)
{
    const uint32_t uiCompact = compactT(words).ui32High;
    const EtcColourPairBytes levels = joinColours(spreadLevels(uiCompact >> 15), spreadLevels(uiCompact >> 3));
    return lookUpColours<eEtcPaletteT>(expandPair4(levels), hn::Load(d16, k_etcDecodeTables.aaiT[uiCompact & 7]), indices);
}

HWY_INLINE ColourPlanes decodeH(const EtcBlockWords& words, VBytes indices)
{
    const uint32_t uiCompact = compactH(words).ui32High;
    const uint32_t uiFirst = uiCompact >> 14 & 0xFFF;
    const uint32_t uiSecond = uiCompact >> 2 & 0xFFF;
    const uint32_t uiDistance = (uiCompact & 3) << 1 | (uiFirst >= uiSecond ? 1 : 0);
    const EtcColourPairBytes levels = joinColours(spreadLevels(uiFirst), spreadLevels(uiSecond));
    return lookUpColours<eEtcPaletteH>(expandPair4(levels), hn::Load(d16, k_etcDecodeTables.aaiH[uiDistance]), indices);
}

HWY_INLINE VBytes fillPlane(uint32_t uiOrigin, uint32_t uiHorizontal, uint32_t uiVertical)
{
    alignas(16) static constexpr int16_t k_aiX[8] = {0, 1, 2, 3, 0, 1, 2, 3};
    const auto iOrigin = static_cast<int32_t>(uiOrigin);
    const auto iStepX = static_cast<int16_t>(static_cast<int32_t>(uiHorizontal) - iOrigin);
    const auto iStepY = static_cast<int16_t>(static_cast<int32_t>(uiVertical) - iOrigin);
    const VWords stepY = hn::Set(d16, iStepY);
    const VWords row0 = hn::Add(hn::Set(d16, static_cast<int16_t>(4 * iOrigin + 2)), hn::Mul(hn::Load(d16, k_aiX), hn::Set(d16, iStepX)));
    const VWords rows01 = hn::ConcatLowerLower(d16, hn::Add(row0, stepY), row0);
    const VWords rows23 = hn::Add(rows01, hn::Add(stepY, stepY));
    return narrow(hn::ShiftRight<2>(rows01), hn::ShiftRight<2>(rows23));
}

HWY_INLINE ColourPlanes decodePlanar(const EtcBlockWords& words)
{
    const EtcBlockWords compact = compactPlanar(words);
    const uint32_t ui32High = compact.ui32High;
    const uint32_t ui32Low = compact.ui32Low;
    return {fillPlane(expandEtc6(ui32High >> 26), expandEtc6(ui32High >> 7 & 63), expandEtc6(ui32Low >> 20 & 63)),
            fillPlane(expandEtc7(ui32High >> 19 & 127), expandEtc7(ui32High & 127), expandEtc7(ui32Low >> 13 & 127)),
            fillPlane(expandEtc6(ui32High >> 13 & 63), expandEtc6(ui32Low >> 26), expandEtc6(ui32Low >> 7 & 63))};
}

HWY_INLINE ColourPlanes decodeColours(const uint8_t* pBlock)
{
    const EtcBlockWords words = loadEtcBlock(pBlock);
    const VBytes indices = getIndices(words.ui32Low);
    if ((words.ui32High & k_ui32EtcDiffBit) == 0)
    {
        const EtcColourPairBytes levels = joinColours(words.ui32High >> 12 & 0x0F0F0F, words.ui32High >> 8 & 0x0F0F0F);
        return decodeHalves(expandPair4(levels), k_etcDecodeTables.aaiHalf, words.ui32High, indices);
    }
    const DifferentialBytes differential(words.ui32High);
    const uint32_t uiOverflows = differential.getOverflows();
    if (HWY_LIKELY(uiOverflows == 0))
        return decodeHalves(differential.getColours(), k_etcDecodeTables.aaiHalf, words.ui32High, indices);
    if ((uiOverflows & k_uiRedByte) != 0)
        return decodeT(words, indices);
    return (uiOverflows & k_uiGreenByte) != 0 ? decodeH(words, indices) : decodePlanar(words);
}

/// @param alphas  gets the alpha plane
HWY_INLINE ColourPlanes decodePunchThrough(const uint8_t* pBlock, VBytes& alphas)
{
    const EtcBlockWords words = loadEtcBlock(pBlock);
    const VBytes indices = getIndices(words.ui32Low);
    const bool bOpaque = (words.ui32High & k_ui32EtcDiffBit) != 0;
    const DifferentialBytes differential(words.ui32High);
    const uint32_t uiOverflows = differential.getOverflows();
    alphas = hn::Set(d8, 255);
    ColourPlanes planes;
    if (HWY_LIKELY(uiOverflows == 0))
    {
        const auto& aaiModifiers = bOpaque ? k_etcDecodeTables.aaiHalf : k_etcDecodeTables.aaiHalfA1;
        planes = decodeHalves(differential.getColours(), aaiModifiers, words.ui32High, indices);
    }
    else if ((uiOverflows & k_uiRedByte) != 0)
        planes = decodeT(words, indices);
    else if ((uiOverflows & k_uiGreenByte) != 0)
        planes = decodeH(words, indices);
    else
        return decodePlanar(words);
    if (bOpaque)
        return planes;
    const VBytes transparent = hn::VecFromMask(d8, hn::Eq(indices, hn::Set(d8, 2)));
    alphas = hn::Not(transparent);
    return {hn::AndNot(transparent, planes.red), hn::AndNot(transparent, planes.green), hn::AndNot(transparent, planes.blue)};
}

/// The indices of an alpha or 11-bit block in row order as words, kRows 0 or 1: those of the rows 0 and 1, or 2 and 3.
template <size_t kRows>
HWY_INLINE VWords getIndexWords(VBytes block)
{
    const VBytes bytes = hn::TableLookupBytesOr0(block, hn::Load(d8, k_etcDecodeTables.auiIndexBytes + 16 * kRows));
    const auto moved = hn::Mul(hn::BitCast(du16, bytes), hn::Load(du16, k_etcDecodeTables.auiIndexFactor + 8 * kRows));
    return hn::BitCast(d16, hn::ShiftRight<13>(moved));
}

HWY_INLINE VBytes decodeAlphas(const uint8_t* pBlock)
{
    const VBytes block = fillWith64(loadLE<uint64_t>(pBlock));
    const VWords steps = hn::Load(d16, k_etcDecodeTables.aaiAlpha[pBlock[1] & 15]);
    const VWords alphas = hn::Add(hn::Mul(steps, hn::Set(d16, static_cast<int16_t>(pBlock[1] >> 4))), hn::Set(d16, pBlock[0]));
    const VBytes palette = narrow(alphas, alphas);
    return hn::TableLookupBytes(palette, narrow(getIndexWords<0>(block), getIndexWords<1>(block)));
}

/// Sixteen words in row order.
struct WordPlane
{
    VWords rows01;
    VWords rows23;
};

/// The eight values of an 11-bit block.
template <bool kSigned>
HWY_INLINE VWords getEacPalette(const uint8_t* pBlock)
{
    const uint32_t uiMultiplier = pBlock[1] >> 4u;
    const auto iScale = static_cast<int16_t>(uiMultiplier != 0 ? uiMultiplier * 8 : 1);
    const VWords offsets = hn::Mul(hn::Load(d16, k_etcDecodeTables.aaiAlpha[pBlock[1] & 15]), hn::Set(d16, iScale));
    const auto iBase = static_cast<int32_t>(getEacBase(pBlock[0], kSigned));
    if constexpr (kSigned)
    {
        const int32_t iCentre = iBase == 0 ? -127 * 8 : (iBase - 128) * 8;
        const VWords sums = hn::Add(hn::Set(d16, static_cast<int16_t>(iCentre)), offsets);
        const VWords magnitudes = hn::Min(hn::Abs(sums), hn::Set(d16, 1023));
        const VWords extended = hn::Add(hn::ShiftLeft<5>(magnitudes), hn::ShiftRight<5>(magnitudes));
        return hn::IfThenElse(hn::Lt(sums, hn::Zero(d16)), hn::Neg(extended), extended);
    }
    else
    {
        const VWords sums = hn::Add(hn::Set(d16, static_cast<int16_t>(iBase * 8 + 4)), offsets);
        const VWords values = hn::Min(hn::Max(sums, hn::Zero(d16)), hn::Set(d16, 2047));
        return hn::Add(hn::ShiftLeft<5>(values), hn::ShiftRight<6>(values));
    }
}

HWY_INLINE VWords lookUpWords(VWords palette, VWords indices)
{
    const VWords places = hn::Add(hn::Mul(indices, hn::Set(d16, 0x0202)), hn::Set(d16, 0x0100));
    return hn::TableLookupBytes(palette, places);
}

template <bool kSigned>
HWY_INLINE WordPlane decodeWords(const uint8_t* pBlock)
{
    const VBytes block = fillWith64(loadLE<uint64_t>(pBlock));
    const VWords palette = getEacPalette<kSigned>(pBlock);
    return {lookUpWords(palette, getIndexWords<0>(block)), lookUpWords(palette, getIndexWords<1>(block))};
}

/// Four rows of four pixels of four bytes.
struct PixelRows
{
    VBytes aRows[4];
};

HWY_INLINE PixelRows interleave(const ColourPlanes& planes, VBytes alphas)
{
    const VWords redGreen01 = hn::BitCast(d16, hn::InterleaveLower(d8, planes.red, planes.green));
    const VWords redGreen23 = hn::BitCast(d16, hn::InterleaveUpper(d8, planes.red, planes.green));
    const VWords blueAlpha01 = hn::BitCast(d16, hn::InterleaveLower(d8, planes.blue, alphas));
    const VWords blueAlpha23 = hn::BitCast(d16, hn::InterleaveUpper(d8, planes.blue, alphas));
    return {{hn::BitCast(d8, hn::InterleaveLower(d16, redGreen01, blueAlpha01)),
             hn::BitCast(d8, hn::InterleaveUpper(d16, redGreen01, blueAlpha01)),
             hn::BitCast(d8, hn::InterleaveLower(d16, redGreen23, blueAlpha23)),
             hn::BitCast(d8, hn::InterleaveUpper(d16, redGreen23, blueAlpha23))}};
}

/// Four bytes a pixel.
HWY_INLINE void storeRows(const PixelRows& rows, uint8_t* pPixels, size_t uiPitch)
{
    for (size_t y = 0; y < 4; ++y)
        hn::StoreU(rows.aRows[y], d8, pPixels + y * uiPitch);
}

/// Three bytes a pixel: the fourth of each is left out.
/// @param bLast  otherwise the first four bytes of the row's next pixels are written too, with nothing of worth
HWY_INLINE void storeRowsWithoutAlpha(const PixelRows& rows, uint8_t* pPixels, size_t uiPitch, bool bLast)
{
    alignas(16) static constexpr uint8_t k_auiThreeOfFour[16] = {0,  1,  2,  4,  5,          6,          8,          9,
                                                                 10, 12, 13, 14, k_uiNoByte, k_uiNoByte, k_uiNoByte, k_uiNoByte};
    for (size_t y = 0; y < 4; ++y)
    {
        const VBytes row = hn::TableLookupBytesOr0(rows.aRows[y], hn::Load(d8, k_auiThreeOfFour));
        if (HWY_LIKELY(!bLast))
        {
            hn::StoreU(row, d8, pPixels + y * uiPitch);
            continue;
        }
        alignas(16) uint8_t aui8Row[16];
        hn::Store(row, d8, aui8Row);
        std::memcpy(pPixels + y * uiPitch, aui8Row, 12);
    }
}

template <uint32_t kFormat, bool kSigned>
HWY_INLINE void decodeBlock(const uint8_t* pBlock, uint8_t* pPixels, size_t uiPitch, bool bLast)
{
    if constexpr (kFormat == ePF_ETC2_RGB)
    {
        storeRowsWithoutAlpha(interleave(decodeColours(pBlock), hn::Zero(d8)), pPixels, uiPitch, bLast);
    }
    else if constexpr (kFormat == ePF_ETC2_RGBA)
    {
        storeRows(interleave(decodeColours(pBlock + k_uiEacBlockBytes), decodeAlphas(pBlock)), pPixels, uiPitch);
    }
    else if constexpr (kFormat == ePF_ETC2_RGB_A1)
    {
        VBytes alphas;
        const ColourPlanes planes = decodePunchThrough(pBlock, alphas);
        storeRows(interleave(planes, alphas), pPixels, uiPitch);
    }
    else if constexpr (kFormat == ePF_EAC_R11)
    {
        const DHalfBytes dHalf;
        const WordPlane plane = decodeWords<kSigned>(pBlock);
        const VBytes rows01 = hn::BitCast(d8, plane.rows01);
        const VBytes rows23 = hn::BitCast(d8, plane.rows23);
        hn::StoreU(hn::LowerHalf(rows01), dHalf, pPixels);
        hn::StoreU(hn::UpperHalf(dHalf, rows01), dHalf, pPixels + uiPitch);
        hn::StoreU(hn::LowerHalf(rows23), dHalf, pPixels + 2 * uiPitch);
        hn::StoreU(hn::UpperHalf(dHalf, rows23), dHalf, pPixels + 3 * uiPitch);
    }
    else
    {
        const WordPlane red = decodeWords<kSigned>(pBlock);
        const WordPlane green = decodeWords<kSigned>(pBlock + k_uiEacBlockBytes);
        storeRows({{hn::BitCast(d8, hn::InterleaveLower(d16, red.rows01, green.rows01)),
                    hn::BitCast(d8, hn::InterleaveUpper(d16, red.rows01, green.rows01)),
                    hn::BitCast(d8, hn::InterleaveLower(d16, red.rows23, green.rows23)),
                    hn::BitCast(d8, hn::InterleaveUpper(d16, red.rows23, green.rows23))}},
                  pPixels, uiPitch);
    }
}

struct RowDecoders
{
    template <uint32_t kFormat, bool kSigned>
    static void decodeRow(const EtcRowToDecode& row)
    {
        constexpr EtcFormatRow kForm = *findEtcFormat(kFormat);
        for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
            decodeBlock<kFormat, kSigned>(row.pBlocks + uiBlock * kForm.uiBlockBytes, row.pPixels + uiBlock * 4 * kForm.uiPixelBytes,
                                          row.uiPitch, uiBlock + 1 == row.uiBlockCount);
    }
};

EtcRowDecoder findRowDecoder(uint32_t uiFormat, bool bSigned)
{
    return chooseEtcRowDecoder<RowDecoders>(uiFormat, bSigned);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(findRowDecoder);

EtcRowDecoder findEtcRowDecoder(uint32_t uiFormat, bool bSigned)
{
    return HWY_DYNAMIC_DISPATCH(findRowDecoder)(uiFormat, bSigned);
}

} // namespace moxtexture
#endif
