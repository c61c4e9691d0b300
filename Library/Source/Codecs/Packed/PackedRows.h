#pragma once

#include <cstddef>
#include <cstdint>

#include "Core/Bits.h"

namespace moxtexture
{

/// A surface of a packed format, whose pixels form groups of a fixed number in a row (two in a pair, eight in a byte).
///
/// A packed row has room for every group that it begins; a group that the width does not fill is no whole one.
struct PackedRows
{
    PackedRows(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiGroupPixels, uint32_t uiGroupBytes)
        : uiWholeGroups(uiWidth / uiGroupPixels),
          uiRowCount(uiHeight),
          uiPixelPitch(size_t{uiWidth} * 4),
          uiPackedPitch(roundUpToMultiple(uiWidth, uiGroupPixels) / uiGroupPixels * uiGroupBytes),
          bFits(uiWidth % uiGroupPixels == 0)
    {
    }

    size_t uiWholeGroups; ///< of a row
    size_t uiRowCount;
    size_t uiPixelPitch;  ///< bytes of a row of RGBA pixels
    size_t uiPackedPitch; ///< bytes of a packed row
    bool bFits;           ///< each row consists of whole groups, so that rows follow one another without gaps
};

/// Calls run(source, target, count of whole groups) for runs that make up all the whole groups of a surface.
template <typename Run>
void forEachRun(const PackedRows& rows, const uint8_t* pSource, size_t uiSourcePitch, uint8_t* pTarget, size_t uiTargetPitch, Run run)
{
    if (rows.bFits)
    {
        run(pSource, pTarget, rows.uiWholeGroups * rows.uiRowCount);
        return;
    }
    for (size_t y = 0; y < rows.uiRowCount; ++y)
        run(pSource + y * uiSourcePitch, pTarget + y * uiTargetPitch, rows.uiWholeGroups);
}

/// From RGBA pixels to the packed format.
template <typename Run>
void packRows(const PackedRows& rows, const uint8_t* pPixels, uint8_t* pPacked, Run run)
{
    forEachRun(rows, pPixels, rows.uiPixelPitch, pPacked, rows.uiPackedPitch, run);
}

/// From the packed format to RGBA pixels.
template <typename Run>
void unpackRows(const PackedRows& rows, const uint8_t* pPacked, uint8_t* pPixels, Run run)
{
    forEachRun(rows, pPacked, rows.uiPackedPitch, pPixels, rows.uiPixelPitch, run);
}

/// Pixels times bits a pixel, in bytes rounded down, modulo 2^32.
[[nodiscard]] constexpr uint32_t countBytes(uint32_t uiWidth, uint32_t uiHeight, uint32_t uiBitsPerPixel)
{
    const uint64_t uiPixels = uint64_t{uiWidth} * uiHeight;
    return static_cast<uint32_t>(uiBitsPerPixel < 8 ? uiPixels * uiBitsPerPixel / 8 : uiPixels * (uiBitsPerPixel / 8));
}

} // namespace moxtexture
