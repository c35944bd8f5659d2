#pragma once

#include <QEasingCurve>
#include <QVariantAnimation>

#include <functional>

/// How things move. One place, so that they all stop for people who turned animations off.
namespace Lumenote::Motion {

/// A curve over the time that it takes, in milliseconds.
struct Timing {
    QEasingCurve curve;
    int duration = 0;
};

// Springs run until they stay within a thousandth of their end.
Timing entrance(); ///< Response 0.26 s, damping fraction 0.77.
Timing morph(); ///< Response 0.3 s, damping fraction 0.81.
Timing easeOut(int duration);
Timing easeIn(int duration);
Timing easeInOut(int duration);

/// Whether things move at all. Otherwise every animation is at its end at once.
bool isEnabled();
void setEnabled(bool isEnabled);

/// Runs @p step with values from 0 to 1, beyond it where a spring overshoots, and last with exactly
/// 1. Belongs to @p parent; one that runs already begins anew.
class Run : public QVariantAnimation {
public:
    Run(const Timing& timing, std::function<void(double)> step, QObject* parent);

    void restart();
};

} // namespace Lumenote::Motion
