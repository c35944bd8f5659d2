#pragma once

#include "OCR/OCRResult.h"

#include <QFuture>
#include <QImage>

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

namespace Platform {
class TextRecognizer;
}

namespace Lumenote {

/// The one gateway to the text recogniser. Every use of it is bounded, and no failure of it reaches
/// a caller but as an interrupted result.
///
/// An object rather than functions, since it holds two things: the recogniser, which main chooses
/// and tests script, and the state of the warm-up. A program has one; it may go away at any time,
/// and what runs then still answers.
class OCRService {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    struct Settings {
        std::chrono::nanoseconds recognitionLimit = std::chrono::seconds(60);
        std::chrono::nanoseconds warmUpWaitLimit = std::chrono::seconds(60);
        std::chrono::nanoseconds probeLimit = std::chrono::seconds(60);
        /// The clock of the times in the log; the limits are real time. Any thread.
        std::function<TimePoint()> now = [] { return std::chrono::steady_clock::now(); };
    };

    enum class Phase {
        idle,
        warming,
        ready,
        failed,
    };

    explicit OCRService(std::shared_ptr<Platform::TextRecognizer> recognizer);
    OCRService(std::shared_ptr<Platform::TextRecognizer> recognizer, Settings settings);
    /// Ends a warm-up under way; recognitions under way still answer.
    ~OCRService();
    OCRService(const OCRService&) = delete;
    OCRService& operator=(const OCRService&) = delete;

    /// Reads the text of @p image. While the first probe of a warm-up runs, waits for that. Answers
    /// exactly once, interrupted when the recogniser failed or took too long, and promptly so on a
    /// stop request, whatever the recogniser does. Any thread, several at a time.
    ///
    /// Cancel through @p stop: a future that is cancelled itself gives no result.
    QFuture<OCRResult> recognize(const QImage& image, std::stop_token stop);

    /// Starts to recognise a series of probes in the background, unless that runs or has ended
    /// well, so that a first capture finds the recogniser loaded and proven. Any thread.
    void warmUp();

    Phase phase() const;
    bool isWarmingUp() const;
    bool warmUpFailed() const;

    /// Finished when the latest warm-up has ended and its phase and log lines are out; at once
    /// where none was ever started.
    QFuture<void> runner() const;

private:
    class Core;
    std::shared_ptr<Core> m_core; ///< Shared with the threads under way.
};

} // namespace Lumenote
