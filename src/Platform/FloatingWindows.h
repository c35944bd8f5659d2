#pragma once

#include <QMargins>
#include <QObject>
#include <QRegion>

class QWindow;

namespace Platform {

/// What a window without a frame that floats above others needs beyond what Qt gives: to be no
/// entry of taskbars and pagers, a shadow that it draws itself, clicks that go through where it
/// shows nothing, and a blur behind it. Regions and margins are in logical pixels of the window.
/// What was asked for stays so when the window is hidden and shown again and when its device pixel
/// ratio changes, until the window is destroyed. Main thread; nothing waits for another program.
class FloatingWindows : public QObject {
    Q_OBJECT

public:
    /// Comes before every show(), after the window got its flags: a QDialog with Qt::Window,
    /// FramelessWindowHint and WindowStaysOnTopHint. @p shadow is the margin around what one sees
    /// as the window, in which the window draws its shadow; none where it draws none. May come
    /// again while the window is shown, with another margin.
    virtual void prepare(QWindow& window, const QMargins& shadow) = 0;

    /// Clicks inside @p region are the window's, and all others go to what is below. At any time.
    virtual void setInputShape(QWindow& window, const QRegion& region) = 0;

    /// Where what is below the window is blurred, if blursBehind(); an empty region blurs nothing.
    /// At any time.
    virtual void setBlurRegion(QWindow& window, const QRegion& region) = 0;

    /// Whether the desktop blurs what is behind windows that ask for it.
    virtual bool blursBehind() const = 0;

signals:
    void blursBehindChanged();
};

} // namespace Platform
