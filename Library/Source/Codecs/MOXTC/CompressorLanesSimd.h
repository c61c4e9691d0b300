// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_MOXTC_COMPRESSOR_LANES_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_MOXTC_COMPRESSOR_LANES_SIMD
#undef HALVANE_MOXTC_COMPRESSOR_LANES_SIMD
#else
#define HALVANE_MOXTC_COMPRESSOR_LANES_SIMD
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include <hwy/highway.h>

#include "Codecs/MOXTC/CompressorImages.h"

// Pixels side by side: each has one lane of 32 bits, and its channels two integers of 16 bits in two vectors. Four lanes, a part
// of 128 bits that all instruction sets know, are a row of a 4bpp block or half a row of a 2bpp one.

// Where there are no vectors, the plain forms do.
#if HWY_TARGET != HWY_SCALAR

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

using DI = hn::CappedTag<int32_t, 16>;
using DU = hn::RebindToUnsigned<DI>;
using DH = hn::Repartition<int16_t, DI>;
using DUH = hn::RebindToUnsigned<DH>;
using DCodes = hn::Rebind<uint8_t, DI>;
using VI = hn::Vec<DI>;
using VU = hn::Vec<DU>;
using VH = hn::Vec<DH>;
using MI = hn::Mask<DI>;

constexpr DI di{};
constexpr DU du{};
constexpr DH dh{};
constexpr DUH duh{};
constexpr DCodes dCodes{};

/// A row of a group in bytes, one a pixel.
constexpr hn::FixedTag<uint8_t, 16> d8{};
using V8 = hn::Vec<decltype(d8)>;

constexpr size_t k_uiGroupWidth = 16; ///< pixels: four blocks of 4bpp or two of 2bpp
constexpr size_t k_uiGroupHeight = 4;

/// One number a pixel of a group.
struct GroupBytes
{
    alignas(64) uint8_t aui8[k_uiGroupHeight][k_uiGroupWidth];
};

/// Two channels of each pixel in either vector, the first in the lower half of its lane.
struct ChannelPairs
{
    VH redBlue;
    VH greenAlpha;
};

HWY_INLINE ChannelPairs splitPixels(VU pixels)
{
    return {hn::BitCast(dh, hn::And(pixels, hn::Set(du, 0x00FF00FF))), hn::BitCast(dh, hn::ShiftRight<8>(hn::BitCast(duh, pixels)))};
}

HWY_INLINE ChannelPairs add(const ChannelPairs& a, const ChannelPairs& b)
{
    return {hn::Add(a.redBlue, b.redBlue), hn::Add(a.greenAlpha, b.greenAlpha)};
}

HWY_INLINE ChannelPairs subtract(const ChannelPairs& a, const ChannelPairs& b)
{
    return {hn::Sub(a.redBlue, b.redBlue), hn::Sub(a.greenAlpha, b.greenAlpha)};
}

HWY_INLINE ChannelPairs multiply(const ChannelPairs& a, VH factor)
{
    return {hn::Mul(a.redBlue, factor), hn::Mul(a.greenAlpha, factor)};
}

template <int iBits>
HWY_INLINE ChannelPairs shiftLeft(const ChannelPairs& a)
{
    return {hn::ShiftLeft<iBits>(a.redBlue), hn::ShiftLeft<iBits>(a.greenAlpha)};
}

template <int iBits>
HWY_INLINE ChannelPairs shiftRight(const ChannelPairs& a)
{
    return {hn::ShiftRight<iBits>(a.redBlue), hn::ShiftRight<iBits>(a.greenAlpha)};
}

/// Sums of products of 16-bit integers: each lane gains the products of its two halves.
class CPairProducts
{
public:
    HWY_INLINE CPairProducts() : m_Sum(hn::Zero(di)), m_Rest(hn::Zero(di)) {}

    HWY_INLINE void add(VH a, VH b) { m_Sum = hn::ReorderWidenMulAccumulate(di, a, b, m_Sum, m_Rest); }
    HWY_INLINE VI getSum() const { return hn::RearrangeToOddPlusEven(m_Sum, m_Rest); }

private:
    VI m_Sum;
    VI m_Rest;
};

/// The sum of the squares of a pixel's four channels.
HWY_INLINE VI getSquaredLength(const ChannelPairs& channels)
{
    CPairProducts products;
    products.add(channels.redBlue, channels.redBlue);
    products.add(channels.greenAlpha, channels.greenAlpha);
    return products.getSum();
}

/// Numbers of 0 to 255, one a lane, in both halves of the lanes.
HWY_INLINE VH repeatInPairs(VI numbers)
{
    return hn::BitCast(dh, hn::Or(numbers, hn::ShiftLeft<16>(numbers)));
}

/// One byte a lane.
HWY_INLINE VI loadBytes(const uint8_t* HWY_RESTRICT pBytes)
{
    return hn::PromoteTo(di, hn::LoadU(dCodes, pBytes));
}

HWY_INLINE void storeBytes(VI numbers, uint8_t* HWY_RESTRICT pBytes)
{
    hn::StoreU(hn::DemoteTo(dCodes, numbers), dCodes, pBytes);
}

/// Source and upscaled pictures under a few blocks of a row of blocks.
struct PixelGroup
{
    const uint32_t* pSource;
    const uint32_t* pA;
    const uint32_t* pB;
    size_t uiPitch;  ///< pixels from row to row
    size_t uiBlocks; ///< those that count; the pixels beyond them are any
};

/// Room for the pixels of a group that is not full.
struct GroupCopy
{
    uint32_t aaauiPixels[3][k_uiGroupHeight][k_uiGroupWidth];
};

HWY_INLINE const uint32_t* copyGroupPixels(const uint32_t* pPixels, size_t uiPitch, size_t uiWidth,
                                           uint32_t (&aauiCopy)[k_uiGroupHeight][k_uiGroupWidth])
{
    for (auto& auiRow : aauiCopy)
    {
        std::fill(std::copy(pPixels, pPixels + uiWidth, auiRow), std::end(auiRow), 0u);
        pPixels += uiPitch;
    }
    return aauiCopy[0];
}

/// The group from block uiX on, which ends before block uiEnd.
///
/// @tparam Record  of a block: tells its width
/// @param copy  holds the pixels where the group is not full, so that all of its pixels may be read
template <typename Record>
HWY_INLINE PixelGroup openGroup(const CompressorImages& images, uint32_t uiX, uint32_t uiEnd, uint32_t uiY, GroupCopy& copy)
{
    constexpr size_t uiMost = k_uiGroupWidth / Record::k_uiBlockWidth;
    const size_t uiFirst = images.getFirstPixel(uiX, uiY);
    PixelGroup group{images.source.data() + uiFirst, images.upscaledA.data() + uiFirst, images.upscaledB.data() + uiFirst, images.uiWidth,
                     std::min<size_t>(uiMost, uiEnd - uiX)};
    if (group.uiBlocks == uiMost)
        return group;
    const size_t uiWidth = group.uiBlocks * Record::k_uiBlockWidth;
    group.pSource = copyGroupPixels(group.pSource, group.uiPitch, uiWidth, copy.aaauiPixels[0]);
    group.pA = copyGroupPixels(group.pA, group.uiPitch, uiWidth, copy.aaauiPixels[1]);
    group.pB = copyGroupPixels(group.pB, group.uiPitch, uiWidth, copy.aaauiPixels[2]);
    group.uiPitch = k_uiGroupWidth;
    return group;
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif

#endif
