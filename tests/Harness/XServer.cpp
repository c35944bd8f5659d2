#include "Harness/XServer.h"

#include "Harness/Waiting.h"

namespace Harness {

XServer::XServer(const QString& screen)
{
    // The server itself picks a free number and tells it once it can be connected to.
    m_server.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-noreset"),
            QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-screen"),
            QStringLiteral("0"), screen});
    const auto hasEnded = [this] { return m_server.state() == QProcess::NotRunning; };
    waitFor([&] { return m_server.canReadLine() || hasEnded(); });
    const auto number = QString::fromLatin1(m_server.readLine()).trimmed();
    if (number.isEmpty())
        m_failure =
            m_server.errorString() + QString::fromLocal8Bit(m_server.readAllStandardError());
    else
        m_display = u':' + number;
}

XServer::~XServer()
{
    m_server.terminate();
    if (!m_server.waitForFinished(patience))
        m_server.kill();
}

QProcessEnvironment XServer::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    return environment;
}

} // namespace Harness
