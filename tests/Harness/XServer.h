#pragma once

#include <QByteArrayList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <filesystem>

namespace Harness {

/// Arguments of a program, which are in UTF-8.
QStringList toStrings(const QByteArrayList& texts);

/// An X server without a screen to look at, on a display number of its own, for the time of a test.
class XServer {
public:
    explicit XServer(
        const QByteArray& screen = "1280x800x24", const QByteArrayList& moreArguments = {});
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    bool isRunning() const { return !m_display.isEmpty(); }
    QString failure() const { return m_failure; } ///< Why it isn't.
    QString display() const { return m_display; } ///< As in DISPLAY.
    qint64 processID() const { return m_server.processId(); }
    void die(); ///< And lets no other server have its number as long as this is there.
    void signal(int number) const; ///< To stop it, or to kill it.
    /// What a program needs to show itself there.
    QProcessEnvironment environment() const;

private:
    QProcess m_server;
    QString m_display;
    QString m_failure;
    std::filesystem::path m_lock; ///< Held in the place of the server that died.
};

} // namespace Harness
