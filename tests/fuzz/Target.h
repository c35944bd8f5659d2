#pragma once

#include <QByteArray>
#include <QCoreApplication>

#include <cstdlib>

/// Each target defines this one: takes any bytes, and ends the process where something breaks.
void tryBytes(const QByteArray& bytes);

/// Ends the process where what must hold doesn't.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What Qt needs to find its decoders; and it shall not tell of each bad file.
inline void startQt(int& argc, char** argv)
{
    static const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}
