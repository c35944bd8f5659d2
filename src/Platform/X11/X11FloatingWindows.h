#pragma once

#include "Platform/FloatingWindows.h"

#include <QAbstractNativeEventFilter>
#include <QHash>

#include <memory>
#include <optional>

namespace Platform {

namespace X11 {
class FloatingWindowRequests;
}

/// Floating windows by properties and input shapes of the X protocol. Where Qt isn't connected to
/// an X server, nothing happens.
class X11FloatingWindows final : public FloatingWindows, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// Within the life of the application. Asks the server, as Qt has just done.
    X11FloatingWindows();
    ~X11FloatingWindows() override;

    void prepare(QWindow& window, const QMargins& shadow) override;
    void setInputShape(QWindow& window, const QRegion& region) override;
    void setBlurRegion(QWindow& window, const QRegion& region) override;
    bool blursBehind() const override { return m_blursBehind; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What was asked for one window.
    struct Wishes {
        QMargins shadow;
        std::optional<QRegion> inputShape; ///< None for all of the window.
        QRegion blurRegion;
        double ratio = 0; ///< The device pixel ratio with which the server was told all this.
        bool isSettled = false; ///< Has been seen since it was last prepared or hidden.
    };

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    Wishes& wishesOf(QWindow& window);
    void applyShadow(const QWindow& window, const Wishes& wishes) const;
    void applyInputShape(const QWindow& window, const Wishes& wishes) const;
    void applyBlurRegion(const QWindow& window, const Wishes& wishes) const;
    void followRatio(const QWindow& window, Wishes& wishes) const;
    void settle(const QWindow& window, Wishes& wishes) const;

    std::unique_ptr<X11::FloatingWindowRequests> m_requests; ///< Null where there is no server.
    bool m_blursBehind = false;
    QHash<const QObject*, Wishes> m_wishes;
};

} // namespace Platform
