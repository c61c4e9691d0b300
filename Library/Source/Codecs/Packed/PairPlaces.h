#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/Packed/PackedRows.h"
#include "Formats/PixelFormats.h"

namespace moxtexture
{

inline constexpr uint32_t k_uiPairPixels = 2;
inline constexpr uint32_t k_uiPairBytes = 4;      ///< packed
inline constexpr uint32_t k_uiPairPixelBytes = 8; ///< as RGBA pixels

/// Where the four bytes of a pair stand: each pixel's own value alternates with the values that both share.
struct PairPlaces
{
    explicit constexpr PairPlaces(bool bOwnFirst)
        : uiOwn0(bOwnFirst ? 0 : 1), uiShared0(1 - uiOwn0), uiOwn1(uiOwn0 + 2), uiShared1(uiShared0 + 2)
    {
    }

    size_t uiOwn0, uiShared0, uiOwn1, uiShared1;
};

/// Two formats that differ in the order of the bytes alone.
struct PairOrders
{
    EMOXTPixelFormat eSharedFirst, eOwnFirst;

    [[nodiscard]] constexpr bool has(EMOXTPixelFormat eFormat) const { return eFormat == eSharedFirst || eFormat == eOwnFirst; }
};

/// Encodes a surface of pairs by run(pixels, pairs, count of pairs, each pixel's own value comes first).
///
/// @return width times height times 2; 0, with nothing done, for a format of another kind and for a null pointer
template <typename Run>
[[nodiscard]] uint32_t encodePairs(const PairOrders& orders, EMOXTPixelFormat eFormat, const uint8_t* pSource, uint8_t* pTarget,
                                   uint32_t uiWidth, uint32_t uiHeight, Run run)
{
    if (!orders.has(eFormat) || pSource == nullptr || pTarget == nullptr)
        return 0;
    packRows({uiWidth, uiHeight, k_uiPairPixels, k_uiPairBytes}, pSource, pTarget,
             [&](const uint8_t* pPixels, uint8_t* pPairs, size_t uiPairCount)
             { run(pPixels, pPairs, uiPairCount, eFormat == orders.eOwnFirst); });
    return countBytes(uiWidth, uiHeight, 16);
}

/// Decodes a surface of pairs by run(pairs, pixels, count of pairs, each pixel's own value comes first).
///
/// @return width times height times 4; 0, with nothing done, for a format of another kind and for a null pointer
template <typename Run>
[[nodiscard]] uint32_t decodePairs(const PairOrders& orders, EMOXTPixelFormat eFormat, const uint8_t* pSource, uint8_t* pTarget,
                                   uint32_t uiWidth, uint32_t uiHeight, Run run)
{
    if (!orders.has(eFormat) || pSource == nullptr || pTarget == nullptr)
        return 0;
    unpackRows({uiWidth, uiHeight, k_uiPairPixels, k_uiPairBytes}, pSource, pTarget,
               [&](const uint8_t* pPairs, uint8_t* pPixels, size_t uiPairCount)
               { run(pPairs, pPixels, uiPairCount, eFormat == orders.eOwnFirst); });
    return countBytes(uiWidth, uiHeight, 32);
}

} // namespace moxtexture
