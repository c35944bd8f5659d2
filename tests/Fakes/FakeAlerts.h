#pragma once

#include "Platform/Alerts.h"

#include <QList>

#include <utility>

namespace Fakes {

/// Records what was shown, and answers when the test says so.
class FakeAlerts final : public Platform::Alerts {
public:
    void present(const Platform::Alert& alert, Answer newAnswer) override
    {
        shown.append(alert);
        answer = std::move(newAnswer);
    }

    /// Once for each alert that was shown.
    void press(int button) { std::exchange(answer, nullptr)(button); }

    QList<Platform::Alert> shown;
    Answer answer; ///< Empty while no alert is up.
};

} // namespace Fakes
