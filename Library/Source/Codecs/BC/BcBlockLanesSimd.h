// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_BC_BLOCK_LANES_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_BC_BLOCK_LANES_SIMD
#undef HALVANE_BC_BLOCK_LANES_SIMD
#else
#define HALVANE_BC_BLOCK_LANES_SIMD
#endif

#include <cstring>

#include <hwy/highway.h>

#include "Codecs/BC/BcBlockRow.h"

// Blocks side by side: each has one lane of a vector, and the blocks of one vector are a group. A row of blocks is encoded in
// runs of k_uiRunBlocks, whose pixels are first brought into that order.
//
// For sources that give the same bytes as their plain forms.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

using DF = hn::CappedTag<float, 16>;
using DI = hn::RebindToSigned<DF>;
using DU = hn::RebindToUnsigned<DF>;
using VF = hn::Vec<DF>;
using VU = hn::Vec<DU>;
using MF = hn::Mask<DF>;
using MU = hn::Mask<DU>;

constexpr DF df{};
constexpr DI di{};
constexpr DU du{};

constexpr size_t k_uiMostLanes = 16;
constexpr size_t k_uiRunBlocks = 256;

/// The pixels of a run: by group, pixel of the block, lane.
struct RunPixels
{
    alignas(64) uint32_t aui[k_uiRunBlocks * k_uiBcPixels];
};

/// Integers below 2^31 to floats and back; their signed conversions are the quick ones.
HWY_INLINE VF toFloat(VU v)
{
    return hn::ConvertTo(df, hn::BitCast(di, v));
}

HWY_INLINE VU truncate(VF v)
{
    return hn::BitCast(du, hn::ConvertTo(di, v));
}

/// The pixels of a group, one vector for each place in the block.
HWY_INLINE void deinterleavePixels(const uint8_t* pPixels, size_t uiPitch, uint32_t* HWY_RESTRICT pOut)
{
    const size_t uiLanes = hn::Lanes(du);
    alignas(64) uint32_t auiRow[k_uiMostLanes * k_uiBcSide];
    for (size_t y = 0; y < k_uiBcSide; ++y)
    {
        std::memcpy(auiRow, pPixels + y * uiPitch, uiLanes * k_uiBcRowBytes);
        VU a, b, c, d;
        hn::LoadInterleaved4(du, auiRow, a, b, c, d);
        uint32_t* pOutRow = pOut + y * k_uiBcSide * uiLanes;
        hn::Store(a, du, pOutRow);
        hn::Store(b, du, pOutRow + uiLanes);
        hn::Store(c, du, pOutRow + 2 * uiLanes);
        hn::Store(d, du, pOutRow + 3 * uiLanes);
    }
}

/// Copies the pixels of a run of blocks into vectors; the group of the last blocks is filled up with black ones.
HWY_INLINE void loadRun(const BcRowToEncode& row, RunPixels& pixels)
{
    const size_t uiLanes = hn::Lanes(du);
    size_t uiBlock = 0;
    for (; uiBlock + uiLanes <= row.uiBlockCount; uiBlock += uiLanes)
        deinterleavePixels(row.pPixels + uiBlock * k_uiBcRowBytes, row.uiPitch, pixels.aui + uiBlock * k_uiBcPixels);
    const size_t uiBytesLeft = (row.uiBlockCount - uiBlock) * k_uiBcRowBytes;
    if (uiBytesLeft == 0)
        return;
    constexpr size_t uiPitch = k_uiMostLanes * k_uiBcRowBytes;
    uint8_t aui8Last[k_uiBcSide * uiPitch] = {};
    for (size_t y = 0; y < k_uiBcSide; ++y)
        std::memcpy(aui8Last + y * uiPitch, row.pPixels + y * row.uiPitch + uiBlock * k_uiBcRowBytes, uiBytesLeft);
    deinterleavePixels(aui8Last, uiPitch, pixels.aui + uiBlock * k_uiBcPixels);
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif
