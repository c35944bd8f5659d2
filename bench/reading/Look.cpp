#include "Look.h"

#include <QFontInfo>
#include <QSet>

#include <array>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
QColor rgb(QRgb value)
{
    return QColor::fromRgb(value);
}

Theme theme(QRgb window, QRgb surface, QRgb text, QRgb secondary, QRgb disabled, QRgb line,
    QRgb accent, QRgb onAccent)
{
    return {rgb(window), rgb(surface), rgb(text), rgb(secondary), rgb(disabled), rgb(line),
        rgb(accent), rgb(onAccent)};
}

const std::array lightThemes{
    theme(0xf6f5f4, 0xffffff, 0x2e3436, 0x6f7376, 0xa5a8a6, 0xcdc7c2, 0x3584e4, 0xffffff),
    theme(0xeff0f1, 0xfcfcfc, 0x232629, 0x66696d, 0xa2a5a7, 0xbdc3c7, 0x3daee9, 0xfcfcfc),
    theme(0xffffff, 0xfafafa, 0x212121, 0x757575, 0xb0b0b0, 0xe0e0e0, 0x6200ee, 0xffffff),
    theme(0xfdf6e3, 0xeee8d5, 0x586e75, 0x657b83, 0xa3b1b1, 0xd3cbb7, 0x268bd2, 0xfdf6e3),
    theme(0xf4f1ea, 0xfffdf8, 0x333029, 0x7a7466, 0xb6ae9c, 0xd8d1c0, 0x409d69, 0xffffff),
    theme(0xd4d0c8, 0xffffff, 0x000000, 0x404040, 0x87837b, 0x808080, 0x0a246a, 0xffffff),
    theme(0xf0f4f9, 0xffffff, 0x1f1f1f, 0x5f6368, 0x9aa0a6, 0xdadce0, 0xd93025, 0xffffff),
};

const std::array darkThemes{
    theme(0x242424, 0x1e1e1e, 0xffffff, 0xb4b4b4, 0x777777, 0x3d3d3d, 0x3584e4, 0xffffff),
    theme(0x282c34, 0x21252b, 0xabb2bf, 0x8b93a2, 0x626a78, 0x3e4451, 0x4d78cc, 0xffffff),
    theme(0x31363b, 0x232629, 0xeff0f1, 0xa9adb0, 0x7a7f83, 0x4d5257, 0x3daee9, 0x232629),
    theme(0x002b36, 0x073642, 0xa0b0b2, 0x839496, 0x5b737b, 0x125363, 0x2aa198, 0xfdf6e3),
    theme(0x121212, 0x1d1d1d, 0xe1e1e1, 0xa0a0a0, 0x6f6f6f, 0x333333, 0xbb86fc, 0x121212),
    theme(0x1e1e2e, 0x181825, 0xcdd6f4, 0xa6adc8, 0x6c7086, 0x45475a, 0xf38ba8, 0x1e1e2e),
};

const QStringList uiFamilies{u"DejaVu Sans"_s, u"Noto Sans"_s, u"Roboto"_s, u"Inter"_s,
    u"Liberation Sans"_s, u"Open Sans"_s, u"Cantarell"_s, u"Lato"_s, u"Carlito"_s};
const QStringList serifFamilies{u"Liberation Serif"_s, u"DejaVu Serif"_s, u"Noto Serif"_s};
const QStringList monospaceFamilies{u"DejaVu Sans Mono"_s, u"JetBrains Mono"_s,
    u"Liberation Mono"_s, u"Hack"_s, u"Noto Sans Mono"_s, u"Fira Code"_s, u"Noto Mono"_s,
    u"Inconsolata"_s};
constexpr std::array pixelSizes{13, 12, 15, 11, 14, 13, 16, 12, 14, 11, 18};
constexpr std::array renderings{Rendering::grey, Rendering::grey, Rendering::grey,
    Rendering::subpixel, Rendering::grey, Rendering::grey, Rendering::grey, Rendering::aliased,
    Rendering::subpixel, Rendering::grey, Rendering::grey, Rendering::grey};
constexpr std::array hintings{QFont::PreferDefaultHinting, QFont::PreferNoHinting,
    QFont::PreferVerticalHinting, QFont::PreferFullHinting, QFont::PreferNoHinting};

template <typename List>
const auto& inTurn(const List& list, int number)
{
    return list[number % int(list.size())];
}

void requireFamily(const QFont& font)
{
    static QSet<QString> installed;
    if (installed.contains(font.family()))
        return;
    if (QFontInfo(font).family() != font.family())
        qFatal("The font %s is not installed; see tools/setup", qPrintable(font.family()));
    installed.insert(font.family());
}
} // namespace

QFont Look::font(const QString& wantedFamily, double pixels, QFont::Weight weight) const
{
    QFont font(wantedFamily);
    font.setPixelSize(std::max(1, qRound(pixels)));
    font.setWeight(weight);
    font.setHintingPreference(hinting);
    font.setStyleStrategy(
        rendering == Rendering::aliased ? QFont::NoAntialias : QFont::PreferAntialias);
    requireFamily(font);
    return font;
}

QFont Look::ui(double factor, QFont::Weight weight) const
{
    return font(family, pixelSize * factor, weight);
}

QFont Look::serif(double factor, QFont::Weight weight) const
{
    return font(serifFamily, pixelSize * factor, weight);
}

QFont Look::monospace(double factor, QFont::Weight weight) const
{
    return font(monospaceFamily, pixelSize * factor, weight);
}

Look lookNumber(int number, Split split)
{
    // The steps are prime to the lengths of the lists, so that all of their pairs come up.
    const int n = split == Split::tuning ? number : number + 5;
    const bool isDark = n % 3 == 2;
    Look look{
        .theme = isDark ? inTurn(darkThemes, n) : inTurn(lightThemes, n),
        .family = inTurn(uiFamilies, n * 2),
        .serifFamily = inTurn(serifFamilies, n),
        .monospaceFamily = inTurn(monospaceFamilies, n * 3),
        .pixelSize = inTurn(pixelSizes, n),
        .rendering = inTurn(renderings, n),
        .hinting = inTurn(hintings, n),
    };
    // Without grey pixels only fonts that were hinted by hand stay legible.
    if (look.rendering == Rendering::aliased) {
        look.family = n % 2 == 0 ? u"DejaVu Sans"_s : u"Liberation Sans"_s;
        look.serifFamily = u"Liberation Serif"_s;
        look.monospaceFamily = n % 2 == 0 ? u"DejaVu Sans Mono"_s : u"Liberation Mono"_s;
        look.hinting = QFont::PreferFullHinting;
    }
    return look;
}

Look darkened(const Look& look, int number)
{
    Look dark = look;
    dark.theme = inTurn(darkThemes, number);
    return dark;
}

Look lightened(const Look& look, int number)
{
    Look light = look;
    light.theme = inTurn(lightThemes, number);
    return light;
}

} // namespace Lumenote::Bench
