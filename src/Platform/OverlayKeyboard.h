#pragma once

#include <QObject>

namespace Platform {

/// The keyboard while overlays are up: it is theirs at once, wherever the pointer is and before
/// they are even shown, and no key reaches another program. The focus stays where it is, so that
/// active windows look active in a capture and have the keyboard again afterwards. Main thread.
class OverlayKeyboard : public QObject {
    Q_OBJECT

public:
    /// Keys are told until giveBack(). Where another program holds the keyboard for itself, its
    /// keys are told all the same, but reach that program as well until it lets go.
    virtual void take() = 0;
    virtual void giveBack() = 0;

signals:
    // A key that is held down is told once.
    void escapePressed();
    void spacePressed();
};

} // namespace Platform
