#pragma once

#include "Display/CMOXDrawPixel.h"
#include "Display/PixelImage.h"

// One surface, nearest texel. A zoom is a power of two from 0.125 to 128. The plain forms go a pixel at a time through the
// functor's draw() and are the truth; the others give the same bytes, then in the order that is asked for. Where memory for its tables is
// refused, a fast form draws the plain way. A missing surface shows the background everywhere. No grid where pGrid is null, or where its
// step on the screen, truncate(size * zoom), is 1 or less.

/// Draws the surface with its corner at -offset, and the functor's background colour, without mask, where the surface is not.
///
/// @param offset  is first brought to where the target is filled as far as the surface reaches, and stored back
void drawSingleReference(const SourceImage& source, const TargetImage& target, ViewOffset& offset, float fZoom,
                         const CMOXDrawPixel& drawPixel, const PixelGrid* pGrid);
void drawSingle(const SourceImage& source, const TargetImage& target, ViewOffset& offset, float fZoom, const CMOXDrawPixel& drawPixel,
                const PixelGrid* pGrid, EPixelOrder eOrder = EPixelOrder::eRGBA);

/// Draws the surface again and again in both directions.
///
/// On purpose: coordinates are truncated towards 0 before they are wrapped, so where place 0 lies, at zooms above 1, the first
/// texel shows 2 * zoom - 1 screen pixels.
void drawTiledReference(const SourceImage& source, const TargetImage& target, ViewOffset offset, float fZoom,
                        const CMOXDrawPixel& drawPixel, const PixelGrid* pGrid);
void drawTiled(const SourceImage& source, const TargetImage& target, ViewOffset offset, float fZoom, const CMOXDrawPixel& drawPixel,
               const PixelGrid* pGrid, EPixelOrder eOrder = EPixelOrder::eRGBA);

/// The offset that drawSingle() stores back: 0 to max(truncate(surface size * zoom) - target size, 0) on each axis.
[[nodiscard]] ViewOffset clampSingleOffset(uint32_t uiSourceWidth, uint32_t uiSourceHeight, uint32_t uiTargetWidth, uint32_t uiTargetHeight,
                                           ViewOffset offset, float fZoom);
