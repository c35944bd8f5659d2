#pragma once

#include <QFuture>
#include <QTest>

/// How tests wait: for a condition, with the event loop running, and far longer than any machine
/// needs before they give up.
namespace Harness {

inline constexpr int patience = 240'000; // Milliseconds.

template <typename Condition>
bool waitFor(Condition condition)
{
    return QTest::qWaitFor(condition, patience);
}

template <typename T>
bool waitForFinished(const QFuture<T>& future)
{
    return waitFor([&future] { return future.isFinished(); });
}

} // namespace Harness
