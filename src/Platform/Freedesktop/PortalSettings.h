#pragma once

#include "Platform/DesktopSettings.h"

#include <QColor>
#include <QString>

class QDBusVariant;

namespace Platform {

/// The settings that desktops share with programs through the portal of freedesktop.org, which is
/// asked from another thread: neither a bus nor a portal that hangs is noticed. Without one the
/// choices of Qt's platform theme count.
class PortalSettings final : public DesktopSettings {
    Q_OBJECT

public:
    /// Within the life of the application, before its palette is changed.
    PortalSettings();

    QColor accentColor() const override { return m_accentColor; }
    bool animationsEnabled() const override { return m_animationsEnabled; }

private slots:
    void takeChange(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void take(const QString& group, const QString& key, const QVariant& value);

    const QColor m_ownAccentColor; ///< For a desktop without one.
    QColor m_accentColor;
    bool m_animationsEnabled = true;
};

} // namespace Platform
