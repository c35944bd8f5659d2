#pragma once

#include "UI/Shared/Motion.h"
#include "UI/Window/WindowDrag.h"

#include <QWidget>

namespace Platform {
class ApplicationActivation;
class DisplayServer;
class FloatingWindows;
} // namespace Platform

namespace Lumenote {

class FloatingContent;

/// A frameless window that floats over all others, dark whatever the desktop's colours are. It is
/// moved by whatever in it takes no press itself, resized by the edges of its card, and lets the
/// pointer through beside what it shows.
class WorkbenchWindow : public QWidget {
    Q_OBJECT

public:
    /// What the desktop gives; outlives the window.
    struct Desktop {
        Platform::ApplicationActivation& activation;
        Platform::DisplayServer& displayServer;
        Platform::FloatingWindows& floatingWindows;
    };

    explicit WorkbenchWindow(const Desktop& desktop);

    /// @p content, a child, fills the window from now on.
    void setContent(FloatingContent* content);

    /// Puts what floats at @p frame, in Qt's global points.
    void setCardFrame(const QRect& frame);
    QRect cardFrame() const; ///< That, as it is now.

    void bringUp(); ///< Shows it, above all others, and asks for the keyboard.

    /// Fades out, and then calls @p onEnd.
    void fadeOut(std::function<void()> onEnd);

signals:
    void cancelled(); ///< By Escape, or by the window manager's way to close windows.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeCompositor();
    void applyShape();
    QPoint inContent(const QMouseEvent& event) const;

    const Desktop m_desktop;
    FloatingContent* m_content = nullptr;
    WindowDrag m_drag;
    bool m_hasEntered = false;
    bool m_isFading = false;
};

} // namespace Lumenote
