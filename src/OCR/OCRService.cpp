#include "OCR/OCRService.h"

#include "Log.h"
#include "OCR/OCRTimes.h"
#include "OCR/ProbeImage.h"
#include "Platform/TextRecognizer.h"
#include "Platform/Threads.h"
#include "Watchdog.h"

#include <QPromise>

#include <algorithm>
#include <array>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace Lumenote {

namespace {

using Observations = QList<Platform::TextObservation>;

struct ProbeSpec {
    int lines;
    ProbeKind kind;
};

constexpr std::array probeSpecs{
    ProbeSpec{8, ProbeKind::code},
    ProbeSpec{24, ProbeKind::prose},
    ProbeSpec{48, ProbeKind::code},
    ProbeSpec{72, ProbeKind::prose},
    ProbeSpec{112, ProbeKind::code},
};

struct ProbeOutcome {
    bool succeeded = false; ///< The recogniser gave observations within the limit.
    bool compiled = false; ///< It took so long that it must have loaded a model.
};

/// The one probe that a recognition waits for, since that loads the main model.
struct FirstProbe {
    bool hasEnded = false;
};

/// A faulty recogniser's box must not put a line outside the image.
QRectF boxWithin(const QSizeF& size, const QRectF& box)
{
    const std::array measures{box.x(), box.y(), box.width(), box.height()};
    if (!std::all_of(measures.begin(), measures.end(), [](double x) { return std::isfinite(x); }))
        return {};
    const auto upright = box.normalized();
    const auto clamped = [&size](const QPointF& imagePoint) {
        return QPointF(std::clamp(imagePoint.x(), 0.0, size.width()),
            std::clamp(imagePoint.y(), 0.0, size.height()));
    };
    return {clamped(upright.topLeft()), clamped(upright.bottomRight())};
}

QList<OCRLine> linesFrom(const Observations& observations, const QSizeF& imageSize)
{
    QList<OCRLine> lines;
    for (const auto& observation : observations)
        if (!observation.candidates.isEmpty())
            lines.append({.text = observation.candidates.first().text,
                .boundingBox = boxWithin(imageSize, observation.boundingBox)});
    return lines;
}

OCRResult interruptedResult(const QImage& image)
{
    return {.lines = {}, .imageSize = image.size(), .interrupted = true};
}

} // namespace

/// What the service shares with its threads, which may outlive it.
class OCRService::Core {
public:
    Core(std::shared_ptr<Platform::TextRecognizer> recognizer, Settings settings)
        : m_recognizer(std::move(recognizer))
        , m_settings(std::move(settings))
    {
        m_runner = QtFuture::makeReadyFuture();
    }

    OCRResult recognize(const QImage& image, const std::stop_token& stop)
    {
        if (!waitForFirstProbe(stop)) {
            Log::write(Log::ocr, QStringLiteral("cancelled while waiting for the warm-up"));
            return interruptedResult(image);
        }
        const auto start = m_settings.now();
        const auto observations = perform(image, m_settings.recognitionLimit, stop);
        if (!observations) {
            Log::write(Log::ocr,
                (stop.stop_requested() ? QStringLiteral("cancelled after ")
                                       : QStringLiteral("gave up after "))
                    + OCRTimes::format(m_settings.now() - start));
            return interruptedResult(image);
        }
        clearFailedWarmUp();
        const QSizeF imageSize = image.size();
        const auto lines = linesFrom(*observations, imageSize);
        Log::write(Log::ocr, OCRTimes::recognitionLine(lines.size(), m_settings.now() - start));
        return {.lines = lines, .imageSize = imageSize, .interrupted = false};
    }

    static void warmUp(const std::shared_ptr<Core>& core)
    {
        const auto first = std::make_shared<FirstProbe>();
        const auto runner = std::make_shared<QPromise<void>>();
        {
            const std::scoped_lock hold(core->m_lock);
            if (core->m_phase == Phase::warming || core->m_phase == Phase::ready)
                return;
            core->m_phase = Phase::warming;
            core->m_first = first;
            runner->start();
            core->m_runner = runner->future();
        }
        const bool isStarted = Platform::startDetachedThread([core, first, runner] {
            Platform::runAtUtilityPriority();
            core->runWarmUp(*first);
            runner->finish();
        });
        if (!isStarted) {
            core->endFirstProbe(*first);
            core->endWarmUp(Phase::failed, {}, 0);
            runner->finish();
        }
    }

    /// Once this returns, no probe is drawn any more: drawing needs the application object, which
    /// may go as soon as the service is gone.
    void abandonWarmUp()
    {
        m_warmUpStop.request_stop();
        const std::scoped_lock hold(m_drawing);
    }

    Phase phase() const
    {
        const std::scoped_lock hold(m_lock);
        return m_phase;
    }

    QFuture<void> runner() const
    {
        const std::scoped_lock hold(m_lock);
        return m_runner;
    }

private:
    /// Nothing when the recogniser failed, @p timeout has passed or @p stop was requested.
    std::optional<Observations> perform(
        const QImage& image, std::chrono::nanoseconds timeout, const std::stop_token& stop)
    {
        const auto operation = [recognizer = m_recognizer, image](
                                   std::stop_token workStop) -> std::optional<Observations> {
            auto observations = recognizer->recognize(image, std::move(workStop));
            if (observations)
                return *std::move(observations);
            // The one failure that the user can mend.
            if (observations.error().kind == Platform::Error::Kind::missingLanguageData)
                Log::write(Log::ocr, observations.error().message);
            return std::nullopt;
        };
        return Watchdog::run<Observations>(timeout, operation, stop);
    }

    /// False when the caller gave up meanwhile. A probe that takes too long holds nobody up.
    bool waitForFirstProbe(const std::stop_token& stop)
    {
        std::unique_lock hold(m_lock);
        const auto first = m_first;
        if (!first)
            return true;
        m_firstProbeEnded.wait_for(
            hold, stop, m_settings.warmUpWaitLimit, [&first] { return first->hasEnded; });
        return !stop.stop_requested();
    }

    void clearFailedWarmUp()
    {
        const std::scoped_lock hold(m_lock);
        if (m_phase == Phase::failed)
            m_phase = Phase::ready;
    }

    void runWarmUp(FirstProbe& first)
    {
        const auto start = m_settings.now();
        auto outcome = runProbe(probeSpecs.front());
        endFirstProbe(first);
        int modelLoads = outcome.compiled ? 1 : 0;
        for (size_t i = 1; i < probeSpecs.size() && outcome.succeeded; ++i) {
            outcome = runProbe(probeSpecs.at(i));
            if (outcome.succeeded && outcome.compiled)
                ++modelLoads;
        }
        if (!m_warmUpStop.stop_requested())
            endWarmUp(outcome.succeeded ? Phase::ready : Phase::failed, m_settings.now() - start,
                modelLoads);
    }

    /// Null once the warm-up is abandoned.
    QImage drawProbe(const ProbeSpec& probe)
    {
        const std::scoped_lock hold(m_drawing);
        return m_warmUpStop.stop_requested() ? QImage() : probeImage(probe.lines, probe.kind);
    }

    ProbeOutcome runProbe(const ProbeSpec& probe)
    {
        const auto image = drawProbe(probe);
        if (m_warmUpStop.stop_requested())
            return {};
        if (image.isNull()) {
            Log::write(Log::ocr,
                QStringLiteral("warm-up failed — couldn't build the %1-line probe image")
                    .arg(probe.lines));
            return {};
        }
        const auto start = m_settings.now();
        const auto observations = perform(image, m_settings.probeLimit, m_warmUpStop.get_token());
        return {.succeeded = observations.has_value(),
            .compiled = OCRTimes::isModelLoad(m_settings.now() - start)};
    }

    void endFirstProbe(FirstProbe& first)
    {
        {
            const std::scoped_lock hold(m_lock);
            first.hasEnded = true;
        }
        m_firstProbeEnded.notify_all();
    }

    void endWarmUp(Phase phase, OCRTimes::Duration elapsed, int modelLoads)
    {
        {
            const std::scoped_lock hold(m_lock);
            m_phase = phase;
        }
        Log::write(Log::ocr, OCRTimes::warmUpLine(phase == Phase::ready, elapsed, modelLoads));
    }

    const std::shared_ptr<Platform::TextRecognizer> m_recognizer;
    const Settings m_settings;
    std::stop_source m_warmUpStop;
    std::mutex m_drawing; ///< Held while a probe is drawn.

    mutable std::mutex m_lock; ///< Guards what follows; never held across a probe or a recognition.
    std::condition_variable_any m_firstProbeEnded;
    Phase m_phase = Phase::idle;
    std::shared_ptr<FirstProbe> m_first; ///< Of the latest warm-up; null before any.
    QFuture<void> m_runner;
};

OCRService::OCRService(std::shared_ptr<Platform::TextRecognizer> recognizer)
    : OCRService(std::move(recognizer), Settings())
{
}

OCRService::OCRService(std::shared_ptr<Platform::TextRecognizer> recognizer, Settings settings)
    : m_core(std::make_shared<Core>(std::move(recognizer), std::move(settings)))
{
}

OCRService::~OCRService()
{
    m_core->abandonWarmUp();
}

QFuture<OCRResult> OCRService::recognize(const QImage& image, std::stop_token stop)
{
    const auto promise = std::make_shared<QPromise<OCRResult>>();
    promise->start();
    const auto answer = [promise](const OCRResult& result) {
        promise->addResult(result);
        promise->finish();
    };
    // A thread of its own, never one of a pool: a recogniser that hangs must not hold up others.
    const bool isStarted =
        Platform::startDetachedThread([core = m_core, answer, image, stop = std::move(stop)] {
            answer(core->recognize(image, stop));
        });
    if (!isStarted)
        answer(interruptedResult(image));
    return promise->future();
}

void OCRService::warmUp()
{
    Core::warmUp(m_core);
}

OCRService::Phase OCRService::phase() const
{
    return m_core->phase();
}

bool OCRService::isWarmingUp() const
{
    return phase() == Phase::warming;
}

bool OCRService::warmUpFailed() const
{
    return phase() == Phase::failed;
}

QFuture<void> OCRService::runner() const
{
    return m_core->runner();
}

} // namespace Lumenote
