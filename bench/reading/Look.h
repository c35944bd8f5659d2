#pragma once

#include "Picture.h"

#include <QColor>
#include <QFont>

namespace Lumenote::Bench {

/// The colours of a desktop.
struct Theme {
    QColor window;
    QColor surface; ///< Of lists, fields and documents.
    QColor text;
    QColor secondary; ///< Text of less weight.
    QColor disabled; ///< Text of low contrast.
    QColor line;
    QColor accent;
    QColor onAccent; ///< Text on the accent.

    bool isDark() const { return window.lightness() < 128; }
};

/// How glyphs become pixels.
enum class Rendering {
    grey, ///< Anti-aliased.
    subpixel, ///< Anti-aliased for a panel of red, green and blue stripes.
    aliased, ///< Black or white.
};

/// Colours and fonts of one picture.
struct Look {
    Theme theme;
    QString family;
    QString serifFamily;
    QString monospaceFamily;
    int pixelSize = 13;
    Rendering rendering = Rendering::grey;
    QFont::HintingPreference hinting = QFont::PreferDefaultHinting;

    QFont ui(double factor = 1, QFont::Weight weight = QFont::Normal) const;
    QFont serif(double factor = 1, QFont::Weight weight = QFont::Normal) const;
    QFont monospace(double factor = 1, QFont::Weight weight = QFont::Normal) const;

    /// Any family that is installed, in this look's rendering. Fails loudly where it is not.
    QFont font(const QString& wantedFamily, double pixels, QFont::Weight weight) const;
};

/// The looks follow one another in a fixed order, another one in each half of the pictures.
Look lookNumber(int number, Split split);

/// @p look in a theme of the wanted lightness.
Look darkened(const Look& look, int number);
Look lightened(const Look& look, int number);

} // namespace Lumenote::Bench
