#include "Formats/PixelFormats.h"

#include <array>

namespace moxtexture
{
namespace
{

constexpr std::array<PixelFormatRow, ePF_Count + 1> k_aFormats = {{
    // clang-format off
    { "MOXTC 2bpp RGB",                 2, 16,  8,  1 },
    { "MOXTC 2bpp RGBA",                2, 16,  8,  1 },
    { "MOXTC 4bpp RGB",                 4,  8,  8,  1 },
    { "MOXTC 4bpp RGBA",                4,  8,  8,  1 },
    { "MOXTCII 2bpp",                   2,  8,  4,  1 },
    { "MOXTCII 4bpp",                   4,  4,  4,  1 },
    { "ETC1",                           4,  4,  4,  1 },
    { "BC1",                            4,  4,  4,  1 },
    { "DXT2",                           8,  4,  4,  1 },
    { "BC2",                            8,  4,  4,  1 },
    { "DXT4",                           8,  4,  4,  1 },
    { "BC3",                            8,  4,  4,  1 },
    { "BC4",                            4,  4,  4,  1 },
    { "BC5",                            8,  4,  4,  1 },
    // On purpose: BC6 and BC7 have names and numbers but no size, so no operation touches them.
    { "BC6",                            0,  1,  1,  1 },
    { "BC7",                            0,  1,  1,  1 },
    { "UYVY",                          16,  2,  1,  1 },
    { "YUY2",                          16,  2,  1,  1 },
    { "1bpp",                           1,  8,  1,  1 },
    { "Shared Exponent RGB999 E5",     32,  1,  1,  1 },
    { "2-Planar RGBG 8 8 8 8",         16,  2,  1,  1 },
    { "2-Planar GRGB 8 8 8 8",         16,  2,  1,  1 },
    { "ETC2 RGB",                       4,  4,  4,  1 },
    { "ETC2 RGBA",                      8,  4,  4,  1 },
    { "ETC2 RGB A1",                    4,  4,  4,  1 },
    { "EAC R11",                        4,  4,  4,  1 },
    { "EAC RG11",                       8,  4,  4,  1 },
    { "ASTC 4x4",                       0,  4,  4,  1 },
    { "ASTC 5x4",                       0,  5,  4,  1 },
    { "ASTC 5x5",                       0,  5,  5,  1 },
    { "ASTC 6x5",                       0,  6,  5,  1 },
    { "ASTC 6x6",                       0,  6,  6,  1 },
    { "ASTC 8x5",                       0,  8,  5,  1 },
    { "ASTC 8x6",                       0,  8,  6,  1 },
    { "ASTC 8x8",                       0,  8,  8,  1 },
    { "ASTC 10x5",                      0, 10,  5,  1 },
    { "ASTC 10x6",                      0, 10,  6,  1 },
    { "ASTC 10x8",                      0, 10,  8,  1 },
    { "ASTC 10x10",                     0, 10, 10,  1 },
    { "ASTC 12x10",                     0, 12, 10,  1 },
    { "ASTC 12x12",                     0, 12, 12,  1 },
    { "ASTC 3x3x3",                     0,  3,  3,  3 },
    { "ASTC 4x3x3",                     0,  4,  3,  3 },
    { "ASTC 4x4x3",                     0,  4,  4,  3 },
    { "ASTC 4x4x4",                     0,  4,  4,  4 },
    { "ASTC 5x4x4",                     0,  5,  4,  4 },
    { "ASTC 5x5x4",                     0,  5,  5,  4 },
    { "ASTC 5x5x5",                     0,  5,  5,  5 },
    { "ASTC 6x5x5",                     0,  6,  5,  5 },
    { "ASTC 6x6x5",                     0,  6,  6,  5 },
    { "ASTC 6x6x6",                     0,  6,  6,  6 },
    { "",                             0,  1,  1,  1 },
    // clang-format on
}};

} // namespace

const PixelFormatRow& getPixelFormatRow(uint32_t ui32Format)
{
    return k_aFormats[ui32Format < ePF_Count ? ui32Format : ePF_Count];
}

} // namespace moxtexture
