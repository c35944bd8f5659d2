#pragma once

#include "Platform/Error.h"
#include "Platform/Threads.h"

#include <QFutureWatcher>
#include <QPromise>

#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace Platform {

/// Runs @p work on a thread of its own, so that work that hangs takes no place of other work's, and
/// answers what it gives; an Error where it throws or there are no more threads. Whatever the work
/// refers to must be owned by it.
template <typename T>
QFuture<Result<T>> startTask(std::function<Result<T>()> work)
{
    const auto promise = std::make_shared<QPromise<Result<T>>>();
    promise->start();
    const auto answer = [promise](Result<T> result) {
        promise->addResult(std::move(result));
        promise->finish();
    };
    const bool isStarted = startDetachedThread([answer, work = std::move(work)] {
        try {
            answer(work());
        } catch (const std::exception& exception) {
            answer(tl::make_unexpected(Error{.message = QString::fromUtf8(exception.what())}));
        }
    });
    if (!isStarted)
        answer(tl::make_unexpected(Error{.message = QStringLiteral("no more threads")}));
    return promise->future();
}

/// Calls @p handler with the result of @p future, in the thread of @p receiver, and never once the
/// receiver is gone.
template <typename T, typename Handler>
void whenFinished(const QFuture<T>& future, QObject* receiver, Handler handler)
{
    auto* const watcher = new QFutureWatcher<T>(receiver);
    QObject::connect(
        watcher, &QFutureWatcherBase::finished, receiver, [watcher, handler = std::move(handler)] {
            watcher->deleteLater();
            handler(watcher->result());
        });
    watcher->setFuture(future);
}

} // namespace Platform
