#include "Platform/Freedesktop/PortalSettings.h"

#include "Platform/Tasks.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QStyle>

#include <algorithm>
#include <array>
#include <chrono>

namespace Platform {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString accentKey = QStringLiteral("accent-color");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeKey = QStringLiteral("enable-animations");
const QString kde = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeKey = QStringLiteral("AnimationDurationFactor");

constexpr std::chrono::milliseconds patience(2000);
constexpr QColor defaultAccent(0x0a, 0x84, 0xff);

struct Setting {
    QString group;
    QString key;
    QVariant value;
};

/// The colour of what is selected, where that is the desktop's choice and not Qt's own.
QColor themeAccent()
{
    const auto chosen = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
    const auto standard =
        QApplication::style()->standardPalette().color(QPalette::Active, QPalette::Highlight);
    return chosen == standard ? defaultAccent : chosen;
}

/// A bus that isn't there would be started, which is not for a program to do.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
        || QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

/// Blocks; not for the main thread.
QList<Setting> readSettings()
{
    auto bus = QDBusConnection::sessionBus();
    QList<Setting> settings{{appearance, accentKey, {}}, {gnome, gnomeKey, {}}, {kde, kdeKey, {}}};
    for (auto& setting : settings) {
        auto question =
            QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
        question << setting.group << setting.key;
        const auto answer = bus.call(question, QDBus::Block, static_cast<int>(patience.count()));
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty())
            setting.value = unwrapped(answer.arguments().constFirst());
    }
    return settings;
}

/// Three parts from 0 to 1. Others mean that the user has chosen none.
std::optional<QColor> colorFrom(const QVariant& value)
{
    if (!value.canConvert<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)"))
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (auto& part : parts)
        argument >> part;
    argument.endStructure();
    if (!std::ranges::all_of(parts, [](double part) { return part >= 0 && part <= 1; }))
        return std::nullopt;
    return QColor::fromRgbF(
        static_cast<float>(parts[0]), static_cast<float>(parts[1]), static_cast<float>(parts[2]));
}

} // namespace

PortalSettings::PortalSettings()
    : m_ownAccentColor(themeAccent())
    , m_accentColor(m_ownAccentColor)
{
    if (!hasSessionBus())
        return;
    const auto settings =
        startTask<QList<Setting>>([] { return Result<QList<Setting>>(readSettings()); });
    whenFinished(settings, this, [this](const Result<QList<Setting>>& read) {
        for (const auto& setting : read.value_or(QList<Setting>()))
            take(setting.group, setting.key, setting.value);
        // From whomever: to ask who owns the portal's name would wait for an answer.
        QDBusConnection::sessionBus().connect({}, path, interface, QStringLiteral("SettingChanged"),
            this, SLOT(takeChange(QString, QString, QDBusVariant)));
    });
}

void PortalSettings::takeChange(const QString& group, const QString& key, const QDBusVariant& value)
{
    take(group, key, unwrapped(value.variant()));
}

void PortalSettings::take(const QString& group, const QString& key, const QVariant& value)
{
    if (!value.isValid())
        return;
    const auto accent = m_accentColor;
    const auto animations = m_animationsEnabled;
    if (group == appearance && key == accentKey)
        m_accentColor = colorFrom(value).value_or(m_ownAccentColor);
    else if (group == gnome && key == gnomeKey)
        m_animationsEnabled = value.toBool();
    else if (group == kde && key == kdeKey)
        m_animationsEnabled = value.toDouble() > 0;
    if (accent != m_accentColor || animations != m_animationsEnabled)
        emit changed();
}

} // namespace Platform
