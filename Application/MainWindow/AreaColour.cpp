#include "MainWindow/AreaColour.h"

#include <QtGui/QPalette>

namespace
{

// In percent of the window colour's brightness, as QColor::darker() takes them.
constexpr int k_iDarkerOnLight = 120;
constexpr int k_iDarkerOnDark = 115;
constexpr int k_iMiddleLightness = 128;

} // namespace

QColor getAreaColour(const QPalette& palette)
{
    const QColor& window = palette.color(QPalette::Window);
    return window.darker(window.lightness() < k_iMiddleLightness ? k_iDarkerOnDark : k_iDarkerOnLight);
}
