#pragma once

#include <QFuture>

class QWindow;

namespace Platform {

/// The keyboard focus among programs. Main thread; nothing waits for another program, and what the
/// desktop refuses is no error.
class ApplicationActivation {
public:
    virtual ~ApplicationActivation() = default;

    /// Remembers who has the focus now. Where that is this program, what was remembered before
    /// stays.
    virtual void noteFrontmost() = 0;

    /// Asks the desktop to give the focus to @p window of this program, which has been shown,
    /// raised and activated by Qt's means. A desktop may take several requests; see isKey().
    virtual void activate(QWindow& window) = 0;

    /// Whether the keys that are typed really go to @p window: QWindow::isActive() may say so where
    /// they don't. False also where that can't be known. Answers exactly once, in bounded time.
    virtual QFuture<bool> isKey(const QWindow& window) = 0;

    /// For when a window of this program that had the focus is closing: gives it to who had it at
    /// noteFrontmost(), if that one is still there, nobody else has taken it, and the desktop
    /// doesn't do so by itself.
    virtual void giveBack() = 0;
};

} // namespace Platform
