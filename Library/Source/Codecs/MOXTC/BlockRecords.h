#pragma once

#include <array>
#include <cstdint>

namespace moxtexture
{

/// What a compressor knows of a block of 8 by 4 pixels beside its colours. Codes in row order.
struct BlockRecord2bpp
{
    static constexpr uint32_t k_uiBlockWidth = 8;
    static constexpr uint32_t k_uiPixels = 32;

    std::array<uint8_t, k_uiPixels> aui8DirectCodes{};       ///< 0 or 3
    std::array<uint8_t, k_uiPixels> aui8InterpolatedCodes{}; ///< 0 to 3 at stored positions, 0 at the others
    /// By mode: the error of a mode counts so many times.
    std::array<uint8_t, 4> aui8ModeFactors{4, 1, 4, 4};
    uint8_t ui8Mode = 0; ///< 0 direct, 1 horizontal and vertical, 2 and 3 one direction only
};
static_assert(sizeof(BlockRecord2bpp) == 69);

/// The same for a block of 4 by 4 pixels.
struct BlockRecord4bpp
{
    static constexpr uint32_t k_uiBlockWidth = 4;
    static constexpr uint32_t k_uiPixels = 16;

    std::array<uint8_t, k_uiPixels> aui8StandardCodes{};     ///< for weights 0, 3, 5, 8
    std::array<uint8_t, k_uiPixels> aui8PunchThroughCodes{}; ///< for weights 0, 4, 4, 8
    std::array<uint8_t, 2> aui8ModeFactors{1, 1};
    uint32_t uiMode = 0; ///< 0 standard, 1 punch-through
};
static_assert(sizeof(BlockRecord4bpp) == 40);

/// The weight of B in eighths for each pixel of a block, by the record's current mode.
///
/// At 2bpp the pixels that are not stored take theirs from the neighbours inside the block: mode 1 from all, rounded; mode 2 from
/// those above and below, mode 3 from those to the left and right. On purpose: that is the other way round from what a decoder does
/// with the bits of these two modes, mode 2 rounds by 2 where 1 would do, and a pixel at the edge takes its one neighbour plus 2
/// (mode 2) or plus 1 (mode 3), so that weights reach 10.
[[nodiscard]] std::array<uint8_t, BlockRecord2bpp::k_uiPixels> getBlockWeights(const BlockRecord2bpp& record);
[[nodiscard]] std::array<uint8_t, BlockRecord4bpp::k_uiPixels> getBlockWeights(const BlockRecord4bpp& record);

} // namespace moxtexture
