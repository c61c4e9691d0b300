#pragma once

#include <cstddef>
#include <cstdint>

#include "Display/CMOXDrawPixel.h"
#include "Display/PixelImage.h"

/// Draws uiCount pixels that follow each other; the target may be the source itself, but may not overlap it otherwise.
using DrawRowFunction = void (*)(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount);

/// A pixel at a time by the functor's own draw().
void drawRowReference(const CMOXDrawPixel& drawPixel, const uint8_t* pui8Source, uint8_t* pui8Target, size_t uiCount);

/// The routine for a functor's class: vectors for the three classes of CMOXDrawPixel.h, drawRowReference() for any other.
/// To be called with a functor of that class only.
[[nodiscard]] DrawRowFunction getDrawRow(const CMOXDrawPixel& drawPixel);

/// Turns drawn pixels into those of EPixelOrder::eScreen, in place.
void swapRowForScreen(uint8_t* pui8Pixels, size_t uiCount);
void swapRowForScreenReference(uint8_t* pui8Pixels, size_t uiCount);
