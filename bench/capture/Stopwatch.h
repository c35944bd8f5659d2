#pragma once

#include <QList>
#include <QString>

#include <chrono>
#include <functional>

namespace Lumenote::Bench {

using Clock = std::chrono::steady_clock;

inline double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Milliseconds of one piece of work.
struct Cost {
    double wall = 0;
    double server = 0; ///< CPU of the X server.
    double own = 0; ///< CPU of the program.
};

/// CPU that an X server has taken so far, in milliseconds.
double cpuOfServer(qint64 processID);

/// What one run of @p work costs, done by this process.
Cost measure(const std::function<void()>& work, qint64 serverProcessID);

double median(QList<double> figures);
Cost median(const QList<Cost>& costs); ///< Each figure's own.

void print(const QString& table);

/// Throws a std::runtime_error where a measurement would mean nothing.
void require(bool condition, const char* whatFailed);

} // namespace Lumenote::Bench
