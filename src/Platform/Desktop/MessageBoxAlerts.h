#pragma once

#include "Platform/Alerts.h"

namespace Platform {

/// Alerts in message boxes and in the desktop's words, which need a QApplication. One that is
/// closed by the window manager is answered with the last button.
class MessageBoxAlerts final : public Alerts {
public:
    void present(const Alert& alert, Answer answer) override;
};

} // namespace Platform
