#include "UI/Shared/Theme.h"

#include <QFontDatabase>

#include <utility>

namespace Lumenote::Theme {

namespace {

QColor& currentAccent()
{
    static QColor accent(10, 132, 255);
    return accent;
}

QColor withOpacity(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

/// In logical pixels, which the scale of a display already makes larger; point sizes would follow
/// the display's resolution a second time.
QFont sized(QFont font, double size, QFont::Weight weight)
{
    font.setPixelSize(qRound(size));
    font.setWeight(weight);
    return font;
}

} // namespace

QColor accent()
{
    return currentAccent();
}

void setAccent(const QColor& accent)
{
    currentAccent() = accent;
}

QColor accent(double opacity)
{
    return withOpacity(accent(), opacity);
}

QColor white(double opacity)
{
    return withOpacity(Qt::white, opacity);
}

QColor black(double opacity)
{
    return withOpacity(Qt::black, opacity);
}

QPalette darkPalette()
{
    QPalette palette(QColor(44, 44, 46), QColor(28, 28, 31));
    palette.setColor(QPalette::Base, QColor(28, 28, 31));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
             QPalette::BrightText, QPalette::HighlightedText})
        palette.setColor(role, Qt::white);
    palette.setColor(QPalette::PlaceholderText, white(0.45));
    palette.setColor(QPalette::Highlight, accent());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, white(0.4));
    return palette;
}

QFont font(double size, QFont::Weight weight)
{
    return sized(QFontDatabase::systemFont(QFontDatabase::GeneralFont), size, weight);
}

QFont monospacedFont(double size)
{
    return sized(QFontDatabase::systemFont(QFontDatabase::FixedFont), size, QFont::Normal);
}

} // namespace Lumenote::Theme
