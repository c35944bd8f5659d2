#pragma once

#include "Platform/Error.h"
#include "Platform/X11/DesktopFacts.h"
#include "Platform/X11/Server.h"

#include <QFuture>
#include <QPromise>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

namespace Platform::X11 {

/// This program's own connection to the X server, on a thread of its own that does one piece of
/// work after the other. Whatever becomes of the server, no other thread ever waits for it: work
/// ends with an Error after a while, and a thread that hangs in spite of that is left behind.
class Session {
public:
    struct Options {
        QByteArray display; ///< Empty for that of DISPLAY.
        std::chrono::milliseconds patience{10'000}; ///< For one piece of work.
    };

    /// Connects. Waits for that, but no longer than the patience: so it tells whether there is a
    /// server before Qt, which ends the program where there is none, has been asked for it. No
    /// window of this program may have been shown before.
    static Result<std::unique_ptr<Session>> open(const Options& options);

    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Whether the server lets us read the screen. A server decides that when one connects.
    bool isGranted() const;

    /// What is known now. Main thread.
    DesktopFacts facts() const;

    /// Calls @p onChange, in the session's thread, each time that the facts have changed. Once this
    /// returns, the one that was set before isn't running and will not be called.
    void setOnChange(std::function<void()> onChange);

    /// Does @p work when its turn comes, and answers what it gives. The work must own what it
    /// refers to.
    template <typename T>
    QFuture<Result<T>> run(std::function<Result<T>(Server&)> work)
    {
        const auto promise = std::make_shared<QPromise<Result<T>>>();
        promise->start();
        queue([promise, work = std::move(work)](Server* server) {
            promise->addResult(resultOf(work, server));
            promise->finish();
        });
        return promise->future();
    }

private:
    struct State;
    using Work = std::function<void(Server*)>; ///< Without a server the session is over.

    explicit Session(std::shared_ptr<State> state);

    void queue(Work work);

    template <typename T>
    static Result<T> resultOf(const std::function<Result<T>(Server&)>& work, Server* server)
    {
        if (server == nullptr)
            return tl::make_unexpected(Error{.kind = Error::Kind::cancelled,
                .message = QStringLiteral("the session with the X server is over")});
        if (const auto& obstacle = server->obstacle())
            return tl::make_unexpected(*obstacle);
        try {
            return work(*server);
        } catch (const std::exception& exception) {
            return tl::make_unexpected(Error{.message = QString::fromUtf8(exception.what())});
        }
    }

    std::shared_ptr<State> m_state; ///< Shared with the thread.
};

} // namespace Platform::X11
