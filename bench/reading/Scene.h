#pragma once

#include "Canvas.h"
#include "Texts.h"

#include <functional>

namespace Lumenote::Bench {

/// What a scene draws with.
struct Page {
    Canvas& canvas;
    Look look;
    Texts& texts;
    Random& random;

    /// The measure of everything: the height of the look's text.
    double unit() const { return look.pixelSize; }
};

/// How one picture comes about.
struct Scene {
    QString name;
    QString group;
    Split split = Split::tuning;
    QList<Language> languages{Language::english};
    QStringList readerLanguages{QStringLiteral("eng")};
    int look = 0;
    double scale = 1;
    int jpegQuality = 0; ///< Zero for a PNG.
    bool isFlat = true;
    std::function<void(Page&)> draw;
};

/// Every picture of the set.
QList<Scene> allScenes();

} // namespace Lumenote::Bench
