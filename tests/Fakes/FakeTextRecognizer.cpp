#include "Fakes/FakeTextRecognizer.h"

#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace Fakes {

FakeTextRecognizer::Answer FakeTextRecognizer::recognize(const QImage& image, std::stop_token stop)
{
    return takeScript(image)(std::move(stop));
}

FakeTextRecognizer::Script FakeTextRecognizer::takeScript(const QImage& image)
{
    const std::scoped_lock hold(m_lock);
    m_calls.append({.imageSize = image.size(),
        .niceValue = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()))});
    if (m_scripts.empty())
        return [](const std::stop_token&) { return Answer(); };
    auto script = std::move(m_scripts.front());
    m_scripts.pop_front();
    return script;
}

void FakeTextRecognizer::queue(Script script)
{
    const std::scoped_lock hold(m_lock);
    m_scripts.push_back(std::move(script));
}

void FakeTextRecognizer::queueLines(const QStringList& lines)
{
    queue([lines](const std::stop_token&) { return observations(lines); });
}

void FakeTextRecognizer::queueError(Platform::Error::Kind kind, const QString& message)
{
    queue([kind, message](const std::stop_token&) -> Answer {
        return tl::make_unexpected(Platform::Error{.kind = kind, .message = message});
    });
}

void FakeTextRecognizer::queueHang(const QStringList& lines)
{
    queue([this, lines](const std::stop_token&) {
        std::unique_lock hold(m_lock);
        m_released.wait(hold, [this] { return m_hangsAreReleased; });
        return observations(lines);
    });
}

void FakeTextRecognizer::releaseHangs()
{
    {
        const std::scoped_lock hold(m_lock);
        m_hangsAreReleased = true;
    }
    m_released.notify_all();
}

QList<FakeTextRecognizer::Call> FakeTextRecognizer::calls() const
{
    const std::scoped_lock hold(m_lock);
    return m_calls;
}

QList<Platform::TextObservation> observations(const QStringList& lines)
{
    QList<Platform::TextObservation> page;
    for (const auto& line : lines) {
        const auto top = 10.0 * static_cast<double>(page.size());
        page.append({.candidates = {{.text = line, .confidence = 1}},
            .boundingBox = QRectF(0, top, 20, 8)});
    }
    return page;
}

} // namespace Fakes
