#include "Desk.h"

#include "Harness/Waiting.h"
#include "Stopwatch.h"

#include <QCoreApplication>

namespace Lumenote::Bench {

namespace {

constexpr const char* serverVariable = "LUMENOTE_BENCH_SERVER";

} // namespace

Desk::Desk(const QByteArray& screen)
    : m_server(screen)
    , m_bus(Harness::Desktop().start(
          "dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"}))
{
    require(m_server.isRunning(), "no Xvfb");
    Harness::waitFor(
        [this] { return m_bus->canReadLine() || m_bus->state() == QProcess::NotRunning; });
    m_busAddress = m_bus->readLine().trimmed();
    require(!m_busAddress.isEmpty(), "no dbus-daemon");
}

QProcessEnvironment Desk::environment() const
{
    auto environment = m_server.environment();
    const auto set = [&environment](const char* name, const QString& value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("HOME", m_home.path());
    set("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")));
    set("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")));
    set("XDG_CACHE_HOME", m_home.filePath(QStringLiteral("cache")));
    set("XDG_RUNTIME_DIR", m_home.path());
    set("DBUS_SESSION_BUS_ADDRESS", QString::fromLatin1(m_busAddress));
    set("QT_QPA_PLATFORM", QStringLiteral("xcb"));
    set(serverVariable, QString::number(m_server.processID()));
    return environment;
}

void Desk::run(const char* part) const
{
    QProcess inside;
    inside.setProcessEnvironment(environment());
    inside.setProcessChannelMode(QProcess::ForwardedChannels);
    inside.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(part)});
    inside.waitForFinished(-1);
    require(inside.exitStatus() == QProcess::NormalExit && inside.exitCode() == 0, part);
}

qint64 Desk::serverProcessID()
{
    return qEnvironmentVariableIntValue(serverVariable);
}

} // namespace Lumenote::Bench
