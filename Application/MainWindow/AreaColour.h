#pragma once

#include <QtGui/QColor>

class QPalette;

/// What the open textures lie on: a little darker than windows are, on light desktops and on dark ones, and not to be mistaken for the
/// grey that a texture's own window has around its picture at first.
[[nodiscard]] QColor getAreaColour(const QPalette& palette);
