#pragma once

#include "Platform/TextRecognizer.h"

#include <QSize>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace Fakes {

/// Answers what the test queued, and an empty page once the queue is empty. Records what was asked.
class FakeTextRecognizer final : public Platform::TextRecognizer {
public:
    using Answer = Platform::Result<QList<Platform::TextObservation>>;
    using Script = std::function<Answer(std::stop_token)>;

    Answer recognize(const QImage& image, std::stop_token stop) override;

    void queue(Script script);
    void queueLines(const QStringList& lines);
    void queueError(Platform::Error::Kind kind, const QString& message = {});

    /// Queues a call that ignores every stop request until releaseHangs, then answers a page of
    /// these lines.
    void queueHang(const QStringList& lines = {});
    void releaseHangs();

    struct Call {
        QSize imageSize;
        int niceValue = 0; ///< Of the calling thread.
    };
    QList<Call> calls() const;
    qsizetype callCount() const { return calls().size(); }

private:
    Script takeScript(const QImage& image);

    mutable std::mutex m_lock;
    std::condition_variable m_released;
    bool m_hangsAreReleased = false;
    std::deque<Script> m_scripts;
    QList<Call> m_calls;
};

/// A page of lines, one below the other.
QList<Platform::TextObservation> observations(const QStringList& lines);

} // namespace Fakes
