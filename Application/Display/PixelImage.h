#pragma once

#include <array>
#include <cstdint>

/// Surface and target of the rasteriser: rows of 8-bit red, green, blue, alpha that follow each other without a gap, aligned to 4 bytes.
/// Nothing is owned.
struct SourceImage
{
    uint32_t uiWidth = 0;
    uint32_t uiHeight = 0;
    const uint8_t* pui8Pixels = nullptr; ///< null for a surface that is missing

    [[nodiscard]] bool isMissing() const { return pui8Pixels == nullptr || uiWidth == 0 || uiHeight == 0; }
};

struct TargetImage
{
    uint32_t uiWidth = 0;
    uint32_t uiHeight = 0;
    uint8_t* pui8Pixels = nullptr;
};

/// Lines between texels. The pixel of a line goes through the functor like any other, so mask and alpha rules hold for it.
struct PixelGrid
{
    uint32_t uiSize = 4; ///< texels from line to line
    std::array<uint8_t, 4> aui8Pixel = {255, 255, 255, 255};
};

/// Screen pixels from the left upper corner of the scaled surface to that of the target; in a cube view steps of an angle.
struct ViewOffset
{
    int32_t x = 0;
    int32_t y = 0;
};

/// What the bytes of a target pixel are.
enum class EPixelOrder
{
    eRGBA,  ///< as the functor writes them
    eScreen ///< red and blue swapped and the fourth byte 255: a 32-bit RGB picture of Qt
};
