#include "Harness/XServer.h"

#include "Harness/Waiting.h"

#include <csignal>
#include <fstream>
#include <iomanip>
#include <unistd.h>

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
    m_server.start(u"Xvfb"_qs, toStrings(arguments + moreArguments));
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
    if (!m_lock.empty())
        std::filesystem::remove(m_lock);
}

void XServer::die()
{
    const auto lock = "/tmp/.X" + m_display.mid(1).toStdString() + "-lock";
    const auto own = lock + "-of-test";
    // As servers write it: who holds the number. They take it from those that are no more.
    std::ofstream(own) << std::setw(10) << getpid() << '\n';
    std::filesystem::rename(own, lock);
    m_lock = lock;
    m_server.kill();
    m_server.waitForFinished(patience);
}

void XServer::signal(int number) const
{
    ::kill(static_cast<pid_t>(processID()), number);
}

QProcessEnvironment XServer::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_qs, m_display);
    environment.insert(u"QT_QPA_PLATFORM"_qs, u"xcb"_qs);
    return environment;
}

} // namespace Harness
