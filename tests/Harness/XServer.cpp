#include "Harness/XServer.h"

#include "Harness/Waiting.h"

#include <csignal>

namespace Harness {

QStringList toStrings(const QByteArrayList& texts)
{
    QStringList strings;
    for (const auto& text : texts)
        strings.append(QString::fromUtf8(text));
    return strings;
}

XServer::XServer(const QByteArray& screen, const QByteArrayList& moreArguments)
{
    // The server itself picks a free number and tells it once it can be connected to.
    const QByteArrayList arguments{
        "-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", screen};
    m_server.start(QStringLiteral("Xvfb"), toStrings(arguments + moreArguments));
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

void XServer::signal(int number) const
{
    ::kill(static_cast<pid_t>(processID()), number);
}

QProcessEnvironment XServer::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    return environment;
}

} // namespace Harness
