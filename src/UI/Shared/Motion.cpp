#include "UI/Shared/Motion.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace Lumenote::Motion {

namespace {

/// How far a damped spring has come after @p seconds: x'' = -ω²(x - 1) - 2ζωx' from rest at 0, with
/// ω = 2π / response.
double spring(double seconds, double response, double damping)
{
    const auto frequency = 2 * std::numbers::pi / response;
    const auto damped = frequency * std::sqrt(1 - damping * damping);
    return 1
        - std::exp(-damping * frequency * seconds)
        * (std::cos(damped * seconds) + damping * frequency / damped * std::sin(damped * seconds));
}

constexpr int entranceDuration = 370;
constexpr int morphDuration = 410;

double entranceSpring(double progress)
{
    return spring(progress * entranceDuration / 1000, 0.26, 0.77);
}

double morphSpring(double progress)
{
    return spring(progress * morphDuration / 1000, 0.3, 0.81);
}

Timing timing(double (*curve)(double), int duration)
{
    QEasingCurve easing;
    easing.setCustomType(curve);
    return {.curve = easing, .duration = duration};
}

bool& enabled()
{
    static bool isEnabled = true;
    return isEnabled;
}

} // namespace

Timing entrance()
{
    return timing(entranceSpring, entranceDuration);
}

Timing morph()
{
    return timing(morphSpring, morphDuration);
}

Timing easeOut(int duration)
{
    return {.curve = QEasingCurve::OutQuad, .duration = duration};
}

Timing easeIn(int duration)
{
    return {.curve = QEasingCurve::InQuad, .duration = duration};
}

Timing easeInOut(int duration)
{
    return {.curve = QEasingCurve::InOutQuad, .duration = duration};
}

bool isEnabled()
{
    return enabled();
}

void setEnabled(bool isEnabled)
{
    enabled() = isEnabled;
}

Run::Run(const Timing& timing, std::function<void(double)> step, QObject* parent)
    : QVariantAnimation(parent)
{
    setStartValue(0.0);
    setEndValue(1.0);
    setDuration(timing.duration);
    setEasingCurve(timing.curve);
    connect(this, &QVariantAnimation::valueChanged, this, [this, step](const QVariant& value) {
        if (Motion::isEnabled() && state() == Running && currentTime() < duration())
            step(value.toDouble());
    });
    connect(this, &QAbstractAnimation::finished, this, [step = std::move(step)] { step(1); });
}

void Run::restart()
{
    stop();
    start();
    if (!isEnabled())
        setCurrentTime(duration());
}

} // namespace Lumenote::Motion
