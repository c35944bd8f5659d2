#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

/// Colours, fonts and measures that all of the workbench shares. It is dark whatever the desktop's
/// colours are. Measures are in points, which are logical pixels.
namespace Lumenote::Theme {

inline constexpr double bottomBand = 92; ///< Below the card, for the control bar and its tips.
inline constexpr double barHeight = 38;
inline constexpr double barBottomPadding = 42;
inline constexpr double cardRadius = 20;
/// Along the card's edges: it belongs to no line or annotation, and resizes the window.
inline constexpr double edgeFrame = 8;

/// The desktop's colour of what is selected or active.
QColor accent();
void setAccent(const QColor& accent); ///< As the desktop tells it; before windows are shown.

QColor accent(double opacity);
QColor white(double opacity);
QColor black(double opacity);

/// For the controls of Qt's own among the views.
QPalette darkPalette();

/// The desktop's families at a size in points.
QFont font(double size, QFont::Weight weight = QFont::Normal);
QFont monospacedFont(double size);

} // namespace Lumenote::Theme
