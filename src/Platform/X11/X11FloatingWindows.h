#pragma once

#include "Platform/FloatingWindows.h"

#include <QHash>

namespace Platform {

/// Floating windows by the X protocol, as window managers and compositors of all kinds understand
/// them.
class X11FloatingWindows final : public FloatingWindows {
    Q_OBJECT

public:
    X11FloatingWindows();

    void prepare(QWindow& window, const QMargins& shadow) override;
    void setInputShape(QWindow& window, const QRegion& region) override;
    bool blursBehind() const override { return m_blursBehind; }
    void setBlurRegion(QWindow& window, const QRegion& region) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What was asked for a window.
    struct Wishes {
        QMargins shadow;
        QRegion inputShape; ///< Empty for none, as the other.
        QRegion blurRegion;
        double ratio = 0; ///< For which the server knows it.
    };

    Wishes& wishesFor(QWindow& window);
    void askForBlur();
    static void applyShadow(const QWindow& window, const Wishes& wishes);
    static void applyInputShape(const QWindow& window, const Wishes& wishes);
    static void applyBlurRegion(const QWindow& window, const Wishes& wishes);

    QHash<const QWindow*, Wishes> m_wishes;
    bool m_blursBehind = false;
};

} // namespace Platform
