#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// How the bytes of a target pixel are taken from those of a source pixel, or are the same for all.
struct PixelShuffle
{
    static constexpr uint8_t k_uiConstant = 0xFF;

    size_t uiSourceBytes = 0;               ///< of a pixel, 1 to 16
    size_t uiTargetBytes = 0;               ///< of a pixel, 1 to 16
    std::array<uint8_t, 16> aui8From = {};  ///< for each target byte the index of the source byte, or k_uiConstant
    std::array<uint8_t, 16> aui8Value = {}; ///< the byte for k_uiConstant

    /// Every pixel stays as it is.
    [[nodiscard]] bool isIdentity() const;
};

/// @param pSource, pTarget  uiCount pixels each; they must not overlap
void shufflePixelsReference(const PixelShuffle& shuffle, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount);
/// The same bytes with vectors.
void shufflePixels(const PixelShuffle& shuffle, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount);

} // namespace moxtexture
