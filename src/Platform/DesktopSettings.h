#pragma once

#include <QColor>
#include <QObject>

namespace Platform {

/// What the user has chosen for all programs of the desktop. The answers are those known so far:
/// the desktop is asked in the background. Main thread.
class DesktopSettings : public QObject {
    Q_OBJECT

public:
    /// For what is selected and for the main action. Always valid and opaque.
    virtual QColor accentColor() const = 0;

    /// Whether the user wants things to move.
    virtual bool animationsEnabled() const = 0;

signals:
    void changed();
};

} // namespace Platform
