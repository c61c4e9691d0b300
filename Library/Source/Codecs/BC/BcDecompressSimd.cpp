#include "Codecs/BC/BcDecompress.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/BC/BcDecompressSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/BC/BcBlockLanesSimd.h"

#ifndef HALVANE_BC_DECOMPRESS_ONCE
#define HALVANE_BC_DECOMPRESS_ONCE
namespace moxtexture
{

/// For each byte of indices (four pixels), the bytes of the palette that make those pixels.
struct PixelShuffles
{
    alignas(16) uint8_t aaui[256][16];
};

constexpr PixelShuffles makePixelShuffles()
{
    PixelShuffles shuffles{};
    for (uint32_t uiIndices = 0; uiIndices < 256; ++uiIndices)
        for (uint32_t uiByte = 0; uiByte < 16; ++uiByte)
            shuffles.aaui[uiIndices][uiByte] = static_cast<uint8_t>((uiIndices >> 2 * (uiByte / 4) & 3) * 4 + uiByte % 4);
    return shuffles;
}

/// Interpolated alphas as (w0 a0 + w1 a1) / divisor, the division as the upper half of a product; exact for these sums.
struct AlphaWeights
{
    alignas(16) uint16_t aui0[8];
    alignas(16) uint16_t aui1[8];
    alignas(16) uint16_t auiAdded[8];
    uint16_t uiReciprocal;
};

constexpr PixelShuffles k_pixelShuffles = makePixelShuffles();
constexpr AlphaWeights k_eightAlphas{{7, 0, 6, 5, 4, 3, 2, 1}, {0, 7, 1, 2, 3, 4, 5, 6}, {}, 65536 / 7 + 1};
constexpr AlphaWeights k_sixAlphas{{5, 0, 4, 3, 2, 1, 0, 0}, {0, 5, 1, 2, 3, 4, 0, 0}, {0, 0, 0, 0, 0, 0, 0, 255}, 65536 / 5 + 1};

} // namespace moxtexture
#endif

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

#if HWY_TARGET == HWY_SCALAR

// Nothing to gain with one lane, which cannot hold the four pixels that are looked up at once.
void decodeRow(const BcRowToDecode& row, uint32_t uiType)
{
    bcDecodeRowReference(row, uiType);
}

#else

using DBytes = hn::FixedTag<uint8_t, 16>;
using DHalves = hn::FixedTag<uint16_t, 8>;
using DPixels = hn::FixedTag<uint32_t, 4>;

/// What is decoded of a group before its pixels are written: by block, the four colours and the indices.
struct GroupColours
{
    alignas(64) uint32_t aauiPalette[k_uiMostLanes][4];
    alignas(64) uint32_t auiIndices[k_uiMostLanes];
};

HWY_INLINE VU expand565(VU colour)
{
    const VU red = hn::And(hn::ShiftRight<8>(colour), hn::Set(du, 0xF8));
    const VU green = hn::And(hn::ShiftRight<3>(colour), hn::Set(du, 0xFC));
    const VU blue = hn::And(hn::ShiftLeft<3>(colour), hn::Set(du, 0xF8));
    const VU redAndBlue = hn::Or(red, hn::ShiftLeft<16>(blue));
    const VU repeated = hn::And(hn::ShiftRight<5>(redAndBlue), hn::Set(du, 0x00070007));
    return hn::Or(hn::Or(redAndBlue, repeated), hn::ShiftLeft<8>(hn::Or(green, hn::ShiftRight<6>(green))));
}

/// (42 a + 22 b) / 64 of each channel, whose sums fit two bytes.
HWY_INLINE VU mixTowards(VU a, VU b)
{
    const VU evenBytes = hn::Set(du, 0x00FF00FF);
    const VU weightA = hn::Set(du, 42);
    const VU weightB = hn::Set(du, 22);
    const VU redAndBlue = hn::Add(hn::Mul(hn::And(a, evenBytes), weightA), hn::Mul(hn::And(b, evenBytes), weightB));
    const VU greenByte = hn::Set(du, 0x0000FF00);
    const VU green = hn::Add(hn::Mul(hn::And(a, greenByte), weightA), hn::Mul(hn::And(b, greenByte), weightB));
    return hn::Or(hn::And(hn::ShiftRight<6>(redAndBlue), evenBytes), hn::And(hn::ShiftRight<6>(green), greenByte));
}

/// (a + b) / 2 of each channel.
HWY_INLINE VU mixEvenly(VU a, VU b)
{
    return hn::Add(hn::And(a, b), hn::And(hn::ShiftRight<1>(hn::Xor(a, b)), hn::Set(du, 0x007F7F7F)));
}

template <uint32_t kType>
HWY_INLINE void decodeGroupColours(VU ends, VU indices, GroupColours& group)
{
    const VU colour0 = hn::And(ends, hn::Set(du, 0xFFFF));
    const VU colour1 = hn::ShiftRight<16>(ends);
    const VU a = expand565(colour0);
    const VU b = expand565(colour1);
    VU c = mixTowards(a, b);
    VU d = mixTowards(b, a);
    const VU opaque = hn::Set(du, kType == k_uiBcType1 ? 0xFF000000 : 0);
    d = hn::Or(d, opaque);
    if (!hasExplicitAlpha(kType))
    {
        const MU isFourColours = hn::Gt(colour0, colour1);
        c = hn::IfThenElse(isFourColours, c, mixEvenly(a, b));
        d = hn::IfThenElseZero(isFourColours, d);
    }
    hn::StoreInterleaved4(hn::Or(a, opaque), hn::Or(b, opaque), hn::Or(c, opaque), d, du, group.aauiPalette[0]);
    hn::Store(indices, du, group.auiIndices);
}

/// The alphas of four pixels of a row of the block, each in the top byte of its pixel.
struct ExplicitAlphas
{
    explicit HWY_INLINE ExplicitAlphas(const uint8_t* pPart) : m_pPart(pPart) {}

    HWY_INLINE hn::Vec<DPixels> getRow(size_t y) const
    {
        const DPixels d;
        alignas(16) static constexpr uint32_t k_auiToTop[4] = {1u << 24, 1u << 20, 1u << 16, 1u << 12};
        const auto shifted = hn::Mul(hn::Set(d, loadLE<uint16_t>(m_pPart + 2 * y)), hn::Load(d, k_auiToTop));
        const auto nibbles = hn::And(shifted, hn::Set(d, 0x0F000000));
        return hn::Or(nibbles, hn::ShiftLeft<4>(nibbles));
    }

    const uint8_t* m_pPart;
};

struct InterpolatedAlphas
{
    explicit HWY_INLINE InterpolatedAlphas(const uint8_t* pPart) : m_uiIndices(loadLE<uint64_t>(pPart) >> 16)
    {
        const DHalves d;
        const AlphaWeights& weights = pPart[0] > pPart[1] ? k_eightAlphas : k_sixAlphas;
        const auto sum = hn::Add(hn::Mul(hn::Set(d, pPart[0]), hn::Load(d, weights.aui0)), //
                                 hn::Mul(hn::Set(d, pPart[1]), hn::Load(d, weights.aui1)));
        const auto alphas = hn::Add(hn::MulHigh(sum, hn::Set(d, weights.uiReciprocal)), hn::Load(d, weights.auiAdded));
        const hn::FixedTag<uint8_t, 8> dHalf;
        const auto bytes = hn::DemoteTo(dHalf, hn::BitCast(hn::RebindToSigned<DHalves>(), alphas));
        m_palette = hn::Combine(DBytes(), bytes, bytes);
    }

    HWY_INLINE hn::Vec<DPixels> getRow(size_t y) const
    {
        // An index of 128 looks up 0: so the other three bytes of each pixel.
        const DPixels d;
        alignas(16) static constexpr uint32_t k_auiToTop[4] = {1u << 24, 1u << 21, 1u << 18, 1u << 15};
        const auto shifted = hn::Mul(hn::Set(d, static_cast<uint32_t>(m_uiIndices >> 12 * y)), hn::Load(d, k_auiToTop));
        const auto indices = hn::Or(hn::And(shifted, hn::Set(d, 0x07000000)), hn::Set(d, 0x00808080));
        return hn::BitCast(d, hn::TableLookupBytesOr0(m_palette, hn::BitCast(DBytes(), indices)));
    }

    uint64_t m_uiIndices;
    hn::Vec<DBytes> m_palette;
};

/// For BC1, whose palette has the alphas.
struct NoAlphas
{
    explicit HWY_INLINE NoAlphas(const uint8_t*) {}

    HWY_INLINE hn::Vec<DPixels> getRow(size_t) const { return hn::Zero(DPixels()); }
};

template <class Alphas>
HWY_INLINE void writeBlock(const uint32_t* HWY_RESTRICT pPalette, uint32_t uiIndices, const Alphas& alphas, uint8_t* pPixels,
                           size_t uiPitch)
{
    const DBytes d;
    const auto palette = hn::BitCast(d, hn::Load(DPixels(), pPalette));
    for (size_t y = 0; y < k_uiBcSide; ++y)
    {
        const auto shuffle = hn::Load(d, k_pixelShuffles.aaui[uiIndices >> 8 * y & 0xFF]);
        const auto pixels = hn::Or(hn::TableLookupBytes(palette, shuffle), hn::BitCast(d, alphas.getRow(y)));
        hn::StoreU(pixels, d, pPixels + y * uiPitch);
    }
}

/// Decodes the blocks of a group, of which uiCount are in the row.
///
/// @param pBlocks  a whole group of blocks, without bytes between them
template <uint32_t kType, class Alphas>
HWY_INLINE void decodeGroup(const uint8_t* pBlocks, size_t uiCount, uint8_t* pPixels, size_t uiPitch)
{
    constexpr size_t kBlockBytes = getBcBlockBytes(kType);
    alignas(64) uint32_t auiBlocks[k_uiMostLanes * kBlockBytes / 4];
    std::memcpy(auiBlocks, pBlocks, hn::Lanes(du) * kBlockBytes);
    GroupColours group;
    VU ends, indices;
    if (hasBcAlphaPart(kType))
    {
        VU alphaLow, alphaHigh;
        hn::LoadInterleaved4(du, auiBlocks, alphaLow, alphaHigh, ends, indices);
    }
    else
    {
        hn::LoadInterleaved2(du, auiBlocks, ends, indices);
    }
    decodeGroupColours<kType>(ends, indices, group);
    for (size_t i = 0; i < uiCount; ++i)
        writeBlock(group.aauiPalette[i], group.auiIndices[i], Alphas(pBlocks + i * kBlockBytes), pPixels + i * k_uiBcRowBytes, uiPitch);
}

template <uint32_t kType, class Alphas>
void decodeRowOf(const BcRowToDecode& row)
{
    constexpr size_t kBlockBytes = getBcBlockBytes(kType);
    const size_t uiLanes = hn::Lanes(du);
    size_t uiBlock = 0;
    for (; uiBlock + uiLanes <= row.uiBlockCount; uiBlock += uiLanes)
        decodeGroup<kType, Alphas>(row.pParts + uiBlock * kBlockBytes, uiLanes, row.pPixels + uiBlock * k_uiBcRowBytes, row.uiPitch);
    if (uiBlock == row.uiBlockCount)
        return;
    const size_t uiCount = row.uiBlockCount - uiBlock;
    uint8_t aui8Last[k_uiMostLanes * kBlockBytes] = {};
    std::memcpy(aui8Last, row.pParts + uiBlock * kBlockBytes, uiCount * kBlockBytes);
    decodeGroup<kType, Alphas>(aui8Last, uiCount, row.pPixels + uiBlock * k_uiBcRowBytes, row.uiPitch);
}

void decodeRow(const BcRowToDecode& row, uint32_t uiType)
{
    if (!hasBcAlphaPart(uiType))
        decodeRowOf<k_uiBcType1, NoAlphas>(row);
    else if (hasExplicitAlpha(uiType))
        decodeRowOf<k_uiBcType3, ExplicitAlphas>(row);
    else
        decodeRowOf<k_uiBcType5, InterpolatedAlphas>(row);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(decodeRow);

void bcDecodeRow(const BcRowToDecode& row, uint32_t uiType)
{
    HWY_DYNAMIC_DISPATCH(decodeRow)(row, uiType);
}

} // namespace moxtexture
#endif
