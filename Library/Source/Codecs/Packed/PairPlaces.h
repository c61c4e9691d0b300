#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/Packed/PackedRows.h"

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

/// Encodes a surface of pairs by run(pixels, pairs, count of pairs).
///
/// @return width times height times 2; 0, with nothing done, for a null pointer
template <typename Run>
[[nodiscard]] uint32_t encodePairs(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, Run run)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    packRows({uiWidth, uiHeight, k_uiPairPixels, k_uiPairBytes}, pSource, pTarget, run);
    return countBytes(uiWidth, uiHeight, 16);
}

/// Decodes a surface of pairs by run(pairs, pixels, count of pairs).
///
/// @return width times height times 4; 0, with nothing done, for a null pointer
template <typename Run>
[[nodiscard]] uint32_t decodePairs(const uint8_t* pSource, uint8_t* pTarget, uint32_t uiWidth, uint32_t uiHeight, Run run)
{
    if (pSource == nullptr || pTarget == nullptr)
        return 0;
    unpackRows({uiWidth, uiHeight, k_uiPairPixels, k_uiPairBytes}, pSource, pTarget, run);
    return countBytes(uiWidth, uiHeight, 32);
}

} // namespace moxtexture
