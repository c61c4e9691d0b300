#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace moxtexture
{

/// The graphics APIs that a target format is offered for; bit i of CMOXSearchObject::uiAPIs stands for the i-th.
inline constexpr std::array<std::string_view, 8> k_aApiGroups = {"OpenGL ES 1",      "OpenGL ES 2",       "OpenGL ES 3",       "OpenGL",
                                                                 "DirectX 11 (9_3)", "DirectX 11 (10_1)", "DirectX 11 (11_1)", "Vulkan"};

/// The bit rates on offer, in bits per pixel, as they are shown; CMOXSearchObject::uiBitRateIndex counts in this list.
inline constexpr std::array<std::string_view, 28> k_aBitsPerPixel = {
    "0.59", "0.71", "0.85", "0.89", "1",    "1.02", "1.07", "1.28", "1.6", "2",  "2.13", "2.56", "2.67", "3.2",
    "3.56", "4",    "4.27", "4.74", "5.12", "6.4",  "8",    "16",   "24",  "32", "48",   "64",   "96",   "128"};

/// The place of a text in k_aBitsPerPixel; its size for one that is not there.
[[nodiscard]] constexpr uint32_t findBitRate(std::string_view strBitsPerPixel)
{
    uint32_t uiIndex = 0;
    while (uiIndex < k_aBitsPerPixel.size() && k_aBitsPerPixel[uiIndex] != strBitsPerPixel)
        ++uiIndex;
    return uiIndex;
}

} // namespace moxtexture
