#pragma once

#include "Platform/Error.h"

#include <QtGlobal>

#include <chrono>
#include <functional>

namespace Platform {

/// What work in a process of its own may take.
struct Confinement {
    qint64 bytes = 0; ///< Of memory, beside what this process has.
    std::chrono::milliseconds time{};
};

/// Runs @p work in a copy of this process, and waits for it: for foreign code that may crash, hang
/// or take all memory. What it changes is lost, except in files and shared memory. It runs alone,
/// so it must not wait for what another thread may hold, such as a log's lock.
///
/// Fails with Error::Kind::failed where @p work answers false or does not come to its end. Any
/// thread.
Result<void> runConfined(const std::function<bool()>& work, const Confinement& limits);

} // namespace Platform
