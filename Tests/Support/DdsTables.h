#pragma once

#include <array>
#include <cstdint>

#include "Formats/PixelWord.h"

namespace testsupport
{

// What DDS files say and what stands for it here, row by row and apart from the tables of the library, so that each checks the other.

using moxtexture::layout;
using moxtexture::MOXPixelWord;

/// A D3D number and what it is read as, in the linear space.
struct D3DReadRow
{
    uint32_t uiNumber;
    MOXPixelWord pixelFormat;
    uint32_t uiType;
};

// clang-format off
inline constexpr D3DReadRow k_aD3DReadRows[] = {
    { 20, layout("rgb", 8, 8, 8), 8 },
    { 21, layout("argb", 8, 8, 8, 8), 8 },
    { 22, layout("xrgb", 8, 8, 8, 8), 8 },
    { 23, layout("rgb", 5, 6, 5), 8 },
    { 24, layout("xrgb", 1, 5, 5, 5), 8 },
    { 25, layout("argb", 1, 5, 5, 5), 8 },
    { 26, layout("argb", 4, 4, 4, 4), 8 },
    { 27, layout("rgb", 3, 3, 2), 8 },
    { 28, layout("a", 8), 8 },
    { 29, layout("argb", 8, 3, 3, 2), 8 },
    { 30, layout("argb", 4, 4, 4, 4), 8 },
    { 31, layout("abgr", 2, 10, 10, 10), 8 },
    { 32, layout("abgr", 8, 8, 8, 8), 8 },
    { 33, layout("xbgr", 8, 8, 8, 8), 8 },
    { 34, layout("gr", 16, 16), 8 },
    { 35, layout("argb", 2, 10, 10, 10), 8 },
    { 36, layout("abgr", 16, 16, 16, 16), 8 },
    { 50, layout("l", 8), 8 },
    { 51, layout("al", 8, 8), 8 },
    { 52, layout("al", 4, 4), 8 },
    { 60, layout("gr", 8, 8), 9 },
    { 61, layout("lgr", 6, 5, 5), 9 },
    { 62, layout("xlgr", 8, 8, 8, 8), 9 },
    { 63, layout("abgr", 8, 8, 8, 8), 9 },
    { 64, layout("gr", 16, 16), 9 },
    { 67, layout("abgr", 2, 10, 10, 10), 9 },
    { 81, layout("l", 16), 8 },
    { 110, layout("abgr", 16, 16, 16, 16), 9 },
    { 111, layout("r", 32), 12 },
    { 112, layout("gr", 16, 16), 12 },
    { 113, layout("rgba", 16, 16, 16, 16), 12 },
    { 114, layout("r", 32), 12 },
    { 115, layout("gr", 32, 32), 12 },
    { 116, layout("abgr", 32, 32, 32, 32), 12 },
};

/// A FourCC and the format that it is read as, with type 0 and in the linear space.
struct FourCCRow
{
    const char* strLetters;
    uint32_t uiNumber; ///< the same letters, worked by hand: the first is the lowest byte
    uint32_t uiFormat;
    bool bPreMultiplied;
};

inline constexpr FourCCRow k_aFourCCRows[] = {
    { "DXT1", 0x31545844, 7, false },
    { "DXT2", 0x32545844, 8, true },
    { "DXT3", 0x33545844, 9, false },
    { "DXT4", 0x34545844, 10, true },
    { "DXT5", 0x35545844, 11, false },
    { "PTC2", 0x32435450, 1, false },
    { "PTC4", 0x34435450, 3, false },
    { "UYVY", 0x59565955, 16, false },
    { "YUY2", 0x32595559, 17, false },
    { "RGBG", 0x47424752, 20, false },
    { "GRGB", 0x42475247, 21, false },
};

/// A type and layout, and the number in the plain header under which they are written.
struct D3DWriteRow
{
    uint32_t uiType;
    MOXPixelWord pixelFormat;
    uint32_t uiNumber;
};

inline constexpr D3DWriteRow k_aD3DWriteRows[] = {
    { 0, layout("rgb", 8, 8, 8), 20 },      { 0, layout("argb", 8, 8, 8, 8), 21 },     { 0, layout("rgb", 3, 3, 2), 27 },
    { 0, layout("a", 8), 28 },              { 0, layout("l", 8), 50 },                 { 0, layout("al", 4, 4), 52 },
    { 0, layout("al", 8, 8), 51 },
    { 4, layout("rgb", 5, 6, 5), 23 },      { 4, layout("argb", 1, 5, 5, 5), 25 },     { 4, layout("xrgb", 1, 5, 5, 5), 24 },
    { 4, layout("argb", 4, 4, 4, 4), 26 },  { 4, layout("argb", 8, 3, 3, 2), 29 },     { 4, layout("gr", 16, 16), 34 },
    { 4, layout("abgr", 16, 16, 16, 16), 36 }, { 4, layout("l", 16), 81 },
    { 8, layout("rgb", 8, 8, 8), 20 },      { 8, layout("argb", 8, 8, 8, 8), 21 },     { 8, layout("rgb", 5, 6, 5), 23 },
    { 8, layout("xrgb", 1, 5, 5, 5), 24 },  { 8, layout("argb", 1, 5, 5, 5), 25 },     { 8, layout("argb", 4, 4, 4, 4), 26 },
    { 8, layout("rgb", 3, 3, 2), 27 },      { 8, layout("a", 8), 28 },                 { 8, layout("argb", 8, 3, 3, 2), 29 },
    { 8, layout("abgr", 2, 10, 10, 10), 31 }, { 8, layout("gr", 16, 16), 34 },         { 8, layout("argb", 2, 10, 10, 10), 35 },
    { 8, layout("abgr", 16, 16, 16, 16), 36 }, { 8, layout("l", 8), 50 },              { 8, layout("al", 8, 8), 51 },
    { 8, layout("al", 4, 4), 52 },          { 8, layout("l", 16), 81 },
    { 9, layout("gr", 8, 8), 60 },          { 9, layout("lgr", 6, 5, 5), 61 },         { 9, layout("xlgr", 8, 8, 8, 8), 62 },
    { 9, layout("abgr", 8, 8, 8, 8), 63 },  { 9, layout("gr", 16, 16), 64 },           { 9, layout("abgr", 2, 10, 10, 10), 67 },
    { 12, layout("r", 16), 111 },           { 12, layout("r", 32), 114 },              { 12, layout("gr", 16, 16), 112 },
    { 12, layout("rgba", 16, 16, 16, 16), 113 }, { 12, layout("abgr", 32, 32, 32, 32), 116 }, { 12, layout("rg", 32, 32), 115 },
};

/// A number and its masks.
struct D3DMaskRow
{
    uint32_t uiNumber;
    uint32_t uiReadFlag;         ///< the kind of masks
    uint32_t uiBits;
    char cAlphaFlag;             ///< read: 'y', 'n' or '?' for any
    std::array<uint32_t, 4> aui32Masks;
    uint32_t uiWrittenFlags;     ///< 0: not written
};

inline constexpr D3DMaskRow k_aD3DMaskRows[] = {
    { 27, 64,       8, '?', { 0xE0, 0x1C, 0x3, 0 },                       64 },
    { 26, 64,      16, 'y', { 0xF00, 0xF0, 0xF, 0xF000 },                 65 },
    { 29, 64,      16, 'y', { 0xE0, 0x1C, 0x3, 0xFF00 },                  65 },
    { 25, 64,      16, 'y', { 0x7C00, 0x3E0, 0x1F, 0x8000 },              65 },
    { 23, 64,      16, 'n', { 0xF800, 0x7E0, 0x1F, 0 },                   64 },
    { 24, 64,      16, 'n', { 0x7C00, 0x3E0, 0x1F, 0 },                   64 },
    { 20, 64,      24, '?', { 0xFF0000, 0xFF00, 0xFF, 0 },                64 },
    { 21, 64,      32, 'y', { 0xFF0000, 0xFF00, 0xFF, 0xFF000000 },       65 },
    { 22, 64,      32, 'n', { 0xFF0000, 0xFF00, 0xFF, 0 },                0 },
    { 31, 64,      32, 'y', { 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000 },   65 },
    { 32, 64,      32, 'y', { 0xFF, 0xFF00, 0xFF0000, 0xFF000000 },       0 },
    { 33, 64,      32, 'n', { 0xFF, 0xFF00, 0xFF0000, 0 },                0 },
    { 35, 64,      32, 'y', { 0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000 },   65 },
    { 34, 64,      32, 'n', { 0xFFFF, 0xFFFF0000, 0, 0 },                 64 },
    { 62, 0x40000, 32, '?', { 0xFF, 0xFF00, 0xFF0000, 0 },                0x40000 },
    { 61, 0x40000, 16, '?', { 0x1F, 0x3E0, 0xFC00, 0 },                   0x40000 },
    { 63, 0x80000, 32, '?', { 0xFF, 0xFF00, 0xFF0000, 0xFF000000 },       0x80000 },
    { 67, 0x80000, 32, '?', { 0x3FF00000, 0xFFC00, 0x3FF, 0xC0000000 },   0x80001 },
    { 64, 0x80000, 32, '?', { 0xFFFF, 0xFFFF0000, 0, 0 },                 0x80000 },
    { 60, 0x80000, 16, '?', { 0xFF, 0xFF00, 0, 0 },                       0x80000 },
    { 50, 0x20000,  8, 'n', { 0xFF, 0, 0, 0 },                            0x20000 },
    { 51, 0x20000, 16, 'y', { 0xFF, 0, 0, 0xFF00 },                       0x20001 },
    { 52, 0x20000,  8, 'y', { 0xF, 0, 0, 0xF0 },                          0x20001 },
    { 81, 0x20000, 16, 'n', { 0xFFFF, 0, 0, 0 },                          0x20000 },
    { 28, 2,        8, '?', { 0, 0, 0, 0xFF },                            2 },
};

/// A DXGI number and what it is read as.
struct DXGIRow
{
    uint32_t uiNumber;
    MOXPixelWord pixelFormat;
    uint32_t uiType;
    uint32_t uiSpace;
};

inline constexpr DXGIRow k_aDXGIRows[] = {
    {2, layout("rgba", 32, 32, 32, 32), 12, 0},
    {3, layout("rgba", 32, 32, 32, 32), 10, 0},
    {4, layout("rgba", 32, 32, 32, 32), 11, 0},
    {6, layout("rgb", 32, 32, 32), 12, 0},
    {7, layout("rgb", 32, 32, 32), 10, 0},
    {8, layout("rgb", 32, 32, 32), 11, 0},
    {10, layout("rgba", 16, 16, 16, 16), 12, 0},
    {11, layout("rgba", 16, 16, 16, 16), 4, 0},
    {12, layout("rgba", 16, 16, 16, 16), 6, 0},
    {13, layout("rgba", 16, 16, 16, 16), 5, 0},
    {14, layout("rgba", 16, 16, 16, 16), 7, 0},
    {16, layout("rg", 32, 32), 12, 0},
    {17, layout("rg", 32, 32), 10, 0},
    {18, layout("rg", 32, 32), 11, 0},
    {24, layout("rgba", 10, 10, 10, 2), 8, 0},
    {25, layout("rgba", 10, 10, 10, 2), 10, 0},
    {26, layout("bgr", 10, 11, 11), 13, 0},
    {28, layout("rgba", 8, 8, 8, 8), 0, 0},
    {29, layout("rgba", 8, 8, 8, 8), 0, 1},
    {30, layout("rgba", 8, 8, 8, 8), 2, 0},
    {31, layout("rgba", 8, 8, 8, 8), 1, 0},
    {32, layout("rgba", 8, 8, 8, 8), 3, 0},
    {34, layout("rg", 16, 16), 12, 0},
    {35, layout("rg", 16, 16), 4, 0},
    {36, layout("rg", 16, 16), 6, 0},
    {37, layout("rg", 16, 16), 5, 0},
    {38, layout("rg", 16, 16), 7, 0},
    {41, layout("r", 32), 12, 0},
    {42, layout("r", 32), 10, 0},
    {43, layout("r", 32), 11, 0},
    {49, layout("rg", 8, 8), 0, 0},
    {50, layout("rg", 8, 8), 2, 0},
    {51, layout("rg", 8, 8), 1, 0},
    {52, layout("rg", 8, 8), 3, 0},
    {54, layout("r", 16), 12, 0},
    {56, layout("r", 16), 4, 0},
    {57, layout("r", 16), 6, 0},
    {58, layout("r", 16), 5, 0},
    {59, layout("r", 16), 7, 0},
    {61, layout("r", 8), 0, 0},
    {62, layout("r", 8), 2, 0},
    {63, layout("r", 8), 1, 0},
    {64, layout("r", 8), 3, 0},
    {65, layout("r", 8), 0, 0},
    {66, MOXPixelWord(uint64_t{18}), 0, 0},
    {67, MOXPixelWord(uint64_t{19}), 12, 0},
    {68, MOXPixelWord(uint64_t{20}), 0, 0},
    {69, MOXPixelWord(uint64_t{21}), 0, 0},
    {71, MOXPixelWord(uint64_t{7}), 8, 0},
    {72, MOXPixelWord(uint64_t{7}), 8, 1},
    {74, MOXPixelWord(uint64_t{9}), 8, 0},
    {75, MOXPixelWord(uint64_t{9}), 8, 1},
    {77, MOXPixelWord(uint64_t{11}), 8, 0},
    {78, MOXPixelWord(uint64_t{11}), 8, 1},
    {80, MOXPixelWord(uint64_t{12}), 8, 1},
    {81, MOXPixelWord(uint64_t{12}), 9, 0},
    {83, MOXPixelWord(uint64_t{13}), 8, 0},
    {84, MOXPixelWord(uint64_t{13}), 9, 0},
    {85, layout("rgb", 5, 6, 5), 4, 0},
    {86, layout("argb", 1, 5, 5, 5), 4, 0},
    {87, layout("bgra", 8, 8, 8, 8), 0, 0},
    {88, layout("bgrx", 8, 8, 8, 8), 0, 0},
    {91, layout("bgra", 8, 8, 8, 8), 0, 1},
    {93, layout("bgrx", 8, 8, 8, 8), 0, 1},
    {96, MOXPixelWord(uint64_t{15}), 12, 1},
    {98, MOXPixelWord(uint64_t{15}), 8, 0},
    {99, MOXPixelWord(uint64_t{15}), 8, 1},
    {107, MOXPixelWord(uint64_t{17}), 8, 0},
    {111, layout("ai", 4, 4), 0, 0},
    {112, layout("ia", 4, 4), 0, 0},
    {115, layout("argb", 4, 4, 4, 4), 4, 0},
};
// clang-format on

} // namespace testsupport
