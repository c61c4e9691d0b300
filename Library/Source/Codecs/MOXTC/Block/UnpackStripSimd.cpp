#include "Codecs/MOXTC/Block/UnpackStrip.h"

#include <type_traits>

#include "Codecs/MOXTC/Block/Modulation.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/MOXTC/Block/UnpackStripSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef HALVANE_UNPACK_STRIP_ONCE
#define HALVANE_UNPACK_STRIP_ONCE
namespace moxtexture
{

constexpr uint8_t k_ui8PunchedWeight = k_aui8PunchThroughWeightsMOXTCII[k_ui8PunchThroughCode] | k_ui8PunchThroughBit;

/// By code, and from the fifth place by code with the mode flag of 4bpp.
alignas(16) constexpr uint8_t k_aui8WeightsByCode[16] = {
    k_aui8StandardWeights[0],
    k_aui8StandardWeights[1],
    k_aui8StandardWeights[2],
    k_aui8StandardWeights[3],
    k_aui8PunchThroughWeightsMOXTCII[0],
    k_aui8PunchThroughWeightsMOXTCII[1],
    k_ui8PunchedWeight,
    k_aui8PunchThroughWeightsMOXTCII[3],
};

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

#if HWY_TARGET == HWY_SCALAR

// One lane holds no table of weights.
void unpackBlocks(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII)
{
    unpackStripReference(strip, uiCount, b2bpp, bII);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

// A lane is a block.
using DU = hn::CappedTag<uint32_t, k_uiStripGroup>;
using DBytes = hn::Repartition<uint8_t, DU>;
using VU = hn::Vec<DU>;
using MU = hn::Mask<DU>;

constexpr DU du{};

/// Two channels of a colour, the second 16 bits above the first.
struct ColourLanes
{
    VU redGreen;
    VU blueAlpha;
};

HWY_INLINE VU andBits(VU v, uint32_t ui32Bits)
{
    return hn::And(v, hn::Set(du, ui32Bits));
}

HWY_INLINE MU hasBit(VU v, uint32_t ui32Bit)
{
    return hn::TestBit(v, hn::Set(du, ui32Bit));
}

/// 4 bits to 5 in both halves.
HWY_INLINE VU widen4To5(VU halves)
{
    return hn::Or(hn::ShiftLeft<1>(halves), andBits(hn::ShiftRight<3>(halves), 0x00010001));
}

constexpr uint32_t k_ui32OpaqueAlphaLane = 30u << 16;

HWY_INLINE ColourLanes unpackA(VU word, MU isOpaque)
{
    const VU redGreen5 = hn::Or(andBits(hn::ShiftRight<10>(word), 31), andBits(hn::ShiftLeft<11>(word), 31u << 16));
    const VU redGreen4 = hn::Or(andBits(hn::ShiftRight<8>(word), 15), andBits(hn::ShiftLeft<12>(word), 15u << 16));
    const VU blue4 = hn::Or(andBits(word, 15u << 1), andBits(hn::ShiftRight<4>(word), 1));
    const VU blue3 = hn::Or(andBits(hn::ShiftLeft<1>(word), 7u << 2), andBits(hn::ShiftRight<2>(word), 3));
    const VU alpha3 = andBits(hn::ShiftLeft<6>(word), 7u << 18);
    return {hn::IfThenElse(isOpaque, redGreen5, widen4To5(redGreen4)),
            hn::IfThenElse(isOpaque, hn::Or(blue4, hn::Set(du, k_ui32OpaqueAlphaLane)), hn::Or(blue3, alpha3))};
}

/// @param ui32AlphaLow  what a translucent alpha has below its three bits, as k_ui32OpaqueAlphaLane
HWY_INLINE ColourLanes unpackB(VU word, MU isOpaque, uint32_t ui32AlphaLow)
{
    const VU redGreen5 = hn::Or(andBits(hn::ShiftRight<26>(word), 31), andBits(hn::ShiftRight<5>(word), 31u << 16));
    const VU redGreen4 = hn::Or(andBits(hn::ShiftRight<24>(word), 15), andBits(hn::ShiftRight<4>(word), 15u << 16));
    const VU upperHalf = hn::ShiftRight<16>(word);
    const VU blue5 = andBits(upperHalf, 31);
    const VU blue4 = widen4To5(andBits(upperHalf, 15));
    const VU alpha3 = hn::Or(andBits(hn::ShiftRight<10>(word), 7u << 18), hn::Set(du, ui32AlphaLow));
    return {hn::IfThenElse(isOpaque, redGreen5, widen4To5(redGreen4)),
            hn::IfThenElse(isOpaque, hn::Or(blue5, hn::Set(du, k_ui32OpaqueAlphaLane)), hn::Or(blue4, alpha3))};
}

/// To 8 bits a channel, which leave no room between them.
HWY_INLINE VU expand(const ColourLanes& colour)
{
    const VU redGreen = hn::Or(hn::ShiftLeft<3>(colour.redGreen), andBits(hn::ShiftRight<2>(colour.redGreen), 0x00070007));
    const VU blueAlpha = hn::Or(hn::ShiftLeft<3>(colour.blueAlpha), hn::Or(andBits(hn::ShiftRight<2>(colour.blueAlpha), 7),
                                                                           andBits(hn::ShiftRight<1>(colour.blueAlpha), 15u << 16)));
    const VU redGreenBytes = andBits(hn::Or(redGreen, hn::ShiftRight<8>(redGreen)), 0xFFFF);
    return hn::Or(redGreenBytes, hn::ShiftLeft<16>(hn::Or(blueAlpha, hn::ShiftRight<8>(blueAlpha))));
}

template <bool kII>
HWY_INLINE void unpackColours(BlockStrip& strip, size_t uiBlock, VU word)
{
    const MU isOpaqueB = hasBit(word, k_ui32OpaqueFlag);
    const MU isOpaqueA = kII ? isOpaqueB : hasBit(word, k_ui32OpaqueAFlag);
    const ColourLanes a = unpackA(word, isOpaqueA);
    const ColourLanes b = unpackB(word, isOpaqueB, kII ? 2u << 16 : 0);
    alignas(64) uint32_t aui32Colours[4 * k_uiStripGroup];
    hn::StoreInterleaved4(a.redGreen, a.blueAlpha, b.redGreen, b.blueAlpha, du, aui32Colours);
    std::memcpy(&strip.aaui16Colours[uiBlock], aui32Colours, hn::Lanes(du) * sizeof(strip.aaui16Colours[0]));
    if (kII)
    {
        hn::StoreInterleaved2(expand(a), expand(b), du, strip.aaui32Expanded[uiBlock].data());
        hn::Store(hn::ShiftRight<31>(hn::ShiftLeft<16>(word)), du, &strip.aui32Hard[uiBlock]);
    }
}

/// Weights of four codes, one a byte.
HWY_INLINE VU lookUpWeights(VU codes)
{
    const DBytes d;
    return hn::BitCast(du, hn::TableLookupBytes(hn::LoadDup128(d, k_aui8WeightsByCode), hn::BitCast(d, codes)));
}

template <int kRow>
HWY_INLINE VU getRowByte(VU modulation)
{
    const VU shifted = hn::ShiftRight<8 * kRow>(modulation);
    return kRow == 3 ? shifted : andBits(shifted, 0xFF);
}

/// @param flagged  4 in the bytes of the codes that have the mode flag
template <int kRow>
HWY_INLINE void unpackRow4bpp(BlockStrip& strip, size_t uiBlock, VU modulation, VU flagged)
{
    const VU byte = getRowByte<kRow>(modulation);
    const VU pairs = andBits(hn::Or(byte, hn::ShiftLeft<12>(byte)), 0x000F000F);
    const VU codes = andBits(hn::Or(pairs, hn::ShiftLeft<6>(pairs)), 0x03030303);
    const VU weights = lookUpWeights(hn::Or(codes, flagged));
    hn::StoreU(hn::BitCast(DBytes(), weights), DBytes(), strip.aaui8Weights[kRow].data() + uiBlock * getBlockWidth(false));
}

template <bool kII>
HWY_INLINE void unpackModulation4bpp(BlockStrip& strip, size_t uiBlock, VU modulation, VU word)
{
    const VU flagged = hn::IfThenElseZero(hasBit(word, k_ui32ModeFlag), hn::Set(du, 0x04040404));
    const VU centreRow = kII ? hn::IfThenElse(hasBit(word, k_ui32HardFlag), andBits(flagged, 0xFF00FFFF), flagged) : flagged;
    unpackRow4bpp<0>(strip, uiBlock, modulation, flagged);
    unpackRow4bpp<1>(strip, uiBlock, modulation, flagged);
    unpackRow4bpp<2>(strip, uiBlock, modulation, centreRow);
    unpackRow4bpp<3>(strip, uiBlock, modulation, flagged);
}

/// Codes of four pixels of a direct block from the lowest four bits.
HWY_INLINE VU spreadBits(VU v)
{
    const VU twice = hn::Or(v, hn::ShiftLeft<7>(v));
    const VU bits = andBits(hn::Or(twice, hn::ShiftLeft<14>(twice)), 0x01010101);
    return hn::Or(bits, hn::ShiftLeft<1>(bits));
}

/// Codes of the two stored pixels of four, from the lowest four bits.
template <int kRow>
HWY_INLINE VU spreadCodes(VU v)
{
    const VU codes = andBits(hn::Or(v, hn::ShiftLeft<14>(v)), 0x00030003);
    return kRow % 2 != 0 ? hn::ShiftLeft<8>(codes) : codes;
}

template <int kRow>
HWY_INLINE void unpackRow2bpp(BlockStrip& strip, size_t uiBlock, VU modulation, MU isDirect)
{
    const VU low = getRowByte<kRow>(modulation);
    const VU high = hn::ShiftRight<4>(low);
    const VU lowCodes = hn::IfThenElse(isDirect, spreadBits(andBits(low, 15)), spreadCodes<kRow>(andBits(low, 15)));
    const VU highCodes = hn::IfThenElse(isDirect, spreadBits(high), spreadCodes<kRow>(high));
    alignas(64) uint32_t aui32Weights[2 * k_uiStripGroup];
    hn::StoreInterleaved2(lookUpWeights(lowCodes), lookUpWeights(highCodes), du, aui32Weights);
    std::memcpy(strip.aaui8Weights[kRow].data() + uiBlock * getBlockWidth(true), aui32Weights, hn::Lanes(du) * getBlockWidth(true));
}

/// The value with a bit replaced by the one above it.
HWY_INLINE VU repeatBitAbove(VU v, uint32_t ui32Bit)
{
    return hn::Or(hn::AndNot(hn::Set(du, ui32Bit), v), andBits(hn::ShiftRight<1>(v), ui32Bit));
}

HWY_INLINE void unpackModulation2bpp(BlockStrip& strip, size_t uiBlock, VU modulation, VU word)
{
    const MU isDirect = hn::Not(hasBit(word, k_ui32ModeFlag));
    const MU isOneAxis = hasBit(modulation, k_ui32OneAxisFlag);
    const MU isVertical = hasBit(modulation, k_ui32VerticalFlag);
    const auto setMode = [](uint8_t ui8Mode) { return hn::Set(du, ui8Mode * 0x01010101u); };
    const VU oneAxisMode = hn::IfThenElse(isVertical, setMode(k_ui8ModeVertical), setMode(k_ui8ModeHorizontal));
    const VU mode = hn::IfThenZeroElse(isDirect, hn::IfThenElse(isOneAxis, oneAxisMode, setMode(k_ui8ModeBothAxes)));
    alignas(64) uint32_t aui32Modes[2 * k_uiStripGroup];
    hn::StoreInterleaved2(mode, mode, du, aui32Modes);
    std::memcpy(strip.aui8Modes.data() + uiBlock * getBlockWidth(true), aui32Modes, hn::Lanes(du) * getBlockWidth(true));

    // Flags in the places of low bits of codes.
    const VU withoutFirst = repeatBitAbove(modulation, k_ui32OneAxisFlag);
    const VU withoutFlags = hn::IfThenElse(isOneAxis, repeatBitAbove(withoutFirst, k_ui32VerticalFlag), withoutFirst);
    const VU bits = hn::IfThenElse(isDirect, modulation, withoutFlags);
    unpackRow2bpp<0>(strip, uiBlock, bits, isDirect);
    unpackRow2bpp<1>(strip, uiBlock, bits, isDirect);
    unpackRow2bpp<2>(strip, uiBlock, bits, isDirect);
    unpackRow2bpp<3>(strip, uiBlock, bits, isDirect);
}

template <bool k2bpp, bool kII>
void unpackBlocksOf(BlockStrip& strip, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; i += hn::Lanes(du))
    {
        alignas(64) uint32_t aui32Words[2 * k_uiStripGroup];
        std::memcpy(aui32Words, &strip.aWords[i], hn::Lanes(du) * sizeof(BlockWord));
        VU modulation, colours;
        hn::LoadInterleaved2(du, aui32Words, modulation, colours);
        unpackColours<kII>(strip, i, colours);
        if (k2bpp)
            unpackModulation2bpp(strip, i, modulation, colours);
        else
            unpackModulation4bpp<kII>(strip, i, modulation, colours);
    }
}

void unpackBlocks(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII)
{
    if (bII)
        b2bpp ? unpackBlocksOf<true, true>(strip, uiCount) : unpackBlocksOf<false, true>(strip, uiCount);
    else
        b2bpp ? unpackBlocksOf<true, false>(strip, uiCount) : unpackBlocksOf<false, false>(strip, uiCount);
}

#endif

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(unpackBlocks);

void unpackStrip(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII)
{
    HWY_DYNAMIC_DISPATCH(unpackBlocks)(strip, uiCount, b2bpp, bII);
}

} // namespace moxtexture
#endif
