#pragma once

#include "Harness/Desktop.h"
#include "Harness/XServer.h"

#include <QTemporaryDir>

namespace Lumenote::Bench {

/// An X server of its own for what is measured, with a home and a D-Bus session that nobody else
/// uses.
class Desk {
public:
    explicit Desk(const QByteArray& screen); ///< As Xvfb wants it.

    QProcessEnvironment environment() const;

    /// Runs a part of this very program there.
    void run(const char* part) const;

    static qint64 serverProcessID(); ///< For such a part.

private:
    Harness::XServer m_server;
    QTemporaryDir m_home;
    Harness::Desktop::Program m_bus;
    QByteArray m_busAddress;
};

} // namespace Lumenote::Bench
