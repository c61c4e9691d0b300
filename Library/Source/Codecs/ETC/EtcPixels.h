#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// The sixteen pixels of one block, a plane of bytes a channel: pixel (x, y) stands at y * 4 + x.
///
/// Every colour search works on this form, and the trial decodes are measured in it. 48 bytes, to be kept on the stack.
struct EtcPixels
{
    alignas(16) std::array<uint8_t, 16> aui8Red;
    alignas(16) std::array<uint8_t, 16> aui8Green;
    alignas(16) std::array<uint8_t, 16> aui8Blue;
};

/// The alpha plane of one block, pixel (x, y) at y * 4 + x.
struct EtcAlphas
{
    alignas(16) std::array<uint8_t, 16> aui8;
};

/// The pixel at (x, y) of a block's planes.
constexpr size_t etcPixelIndex(size_t uiX, size_t uiY)
{
    return uiY * 4 + uiX;
}

/// Reads a block in place.
/// @param pui8Pixels  its pixel (0, 0) in an image of 3 bytes a pixel, R, G, B
/// @param uiStride    pixels from one row to the next
inline EtcPixels readEtcPixels(const uint8_t* pui8Pixels, size_t uiStride)
{
    EtcPixels pixels;
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            const uint8_t* const pui8Pixel = pui8Pixels + (y * uiStride + x) * 3;
            pixels.aui8Red[etcPixelIndex(x, y)] = pui8Pixel[0];
            pixels.aui8Green[etcPixelIndex(x, y)] = pui8Pixel[1];
            pixels.aui8Blue[etcPixelIndex(x, y)] = pui8Pixel[2];
        }
    return pixels;
}

} // namespace moxtexture
