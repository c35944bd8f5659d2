#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace Platform {

/// A warning with a question.
struct Alert {
    QString title; ///< What it is about.
    QString text; ///< Plain text, what it means.
    QStringList buttons; ///< At least one. Return takes the first, and Escape the last.

    bool operator==(const Alert&) const = default;
};

/// Alerts to the user. Main thread only.
class Alerts {
public:
    /// With the index of the button.
    using Answer = std::function<void(int)>;

    virtual ~Alerts() = default;

    /// Brings the program forward with the alert above floating windows and keeps its other windows
    /// from input. Comes back at once, and calls @p answer once, later, in the same thread: there
    /// is no event loop within the event loop, and captures, recognitions and timers go on.
    virtual void present(const Alert& alert, Answer answer) = 0;
};

} // namespace Platform
