#pragma once

#include "Platform/DesktopSettings.h"

namespace Fakes {

/// A desktop whose user the test is.
class FakeDesktopSettings final : public Platform::DesktopSettings {
public:
    QColor accentColor() const override { return m_accentColor; }
    bool animationsEnabled() const override { return m_animationsEnabled; }

    void setAccentColor(const QColor& color)
    {
        m_accentColor = color;
        emit changed();
    }
    void setAnimationsEnabled(bool enabled)
    {
        m_animationsEnabled = enabled;
        emit changed();
    }

private:
    QColor m_accentColor{0x0a, 0x84, 0xff};
    bool m_animationsEnabled = true;
};

} // namespace Fakes
