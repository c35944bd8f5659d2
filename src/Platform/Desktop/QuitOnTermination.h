#pragma once

#include <QSocketNotifier>

namespace Platform {

/// While it lives, a request to end (SIGTERM, SIGINT, SIGHUP) makes the application's event loop
/// come back, so that what still has to be written is. A second one ends the process at once. One
/// at a time, in the main thread.
class QuitOnTermination {
public:
    QuitOnTermination();
    ~QuitOnTermination();
    QuitOnTermination(const QuitOnTermination&) = delete;
    QuitOnTermination& operator=(const QuitOnTermination&) = delete;

private:
    QSocketNotifier m_notifier;
};

} // namespace Platform
