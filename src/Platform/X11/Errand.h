#pragma once

#include "Platform/Tasks.h"
#include "Platform/X11/Connection.h"

#include <chrono>
#include <functional>
#include <utility>

namespace Platform::X11 {

/// Does @p work with a connection of its own, on a thread of its own, and answers what it gives:
/// for the rare question whose answer nobody may wait for. An error where there is no connection.
template <typename T>
QFuture<Result<T>> errand(std::function<T(Connection&)> work)
{
    static constexpr std::chrono::seconds patience(1);
    return startTask<T>([work = std::move(work)]() -> Result<T> {
        auto connection = Connection::open({});
        if (!connection)
            return tl::make_unexpected(connection.error());
        (*connection)->setLimits(Connection::Time::clock::now() + patience, -1);
        return work(**connection);
    });
}

} // namespace Platform::X11
