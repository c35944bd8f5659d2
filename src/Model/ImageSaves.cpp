#include "Model/ImageSaves.h"

#include "Log.h"
#include "Platform/Documents.h"
#include "Platform/Tasks.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace Lumenote {

/// The saves that haven't ended, in the order in which they were asked for. Any thread.
class ImageSaves::Running {
public:
    int begin(const std::filesystem::path& file)
    {
        const std::scoped_lock hold(m_lock);
        m_saves.push_back({.number = ++m_latest, .file = file});
        return m_latest;
    }

    void waitForTurn(int number)
    {
        std::unique_lock hold(m_lock);
        m_changed.wait(hold, [this, number] {
            const auto own = std::ranges::find(m_saves, number, &Save::number);
            return std::find_if(m_saves.begin(), own, [&](const Save& earlier) {
                return earlier.file == own->file;
            }) == own;
        });
    }

    void end(int number)
    {
        {
            const std::scoped_lock hold(m_lock);
            std::erase_if(m_saves, [number](const Save& save) { return save.number == number; });
        }
        m_changed.notify_all();
    }

    /// The number of those that last longer than @p limit.
    size_t waitForAll(std::chrono::milliseconds limit)
    {
        std::unique_lock hold(m_lock);
        m_changed.wait_for(hold, limit, [this] { return m_saves.empty(); });
        return m_saves.size();
    }

private:
    struct Save {
        int number = 0;
        std::filesystem::path file;
    };

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::vector<Save> m_saves;
    int m_latest = 0;
};

/// One of them, which ends with its thread, and also where that never starts.
class ImageSaves::Turn {
public:
    Turn(std::shared_ptr<Running> running, const std::filesystem::path& file)
        : m_running(std::move(running))
        , m_number(m_running->begin(file))
    {
    }
    ~Turn() { m_running->end(m_number); }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    void wait() const { m_running->waitForTurn(m_number); }

private:
    const std::shared_ptr<Running> m_running;
    const int m_number;
};

ImageSaves::ImageSaves()
    : m_running(std::make_shared<Running>())
{
}

QFuture<Platform::Result<void>> ImageSaves::save(
    const FinalImage& image, const std::filesystem::path& file)
{
    const auto turn = std::make_shared<Turn>(m_running, file);
    return Platform::startTask<void>([turn, image, file] {
        auto saved = image.waitForPng().and_then([&](const QByteArray& png) {
            turn->wait();
            return Platform::saveDocument(file, png);
        });
        if (!saved)
            Log::write(Log::capture,
                QStringLiteral("couldn't save an image — %1").arg(saved.error().message));
        return saved;
    });
}

void ImageSaves::finish(std::chrono::milliseconds limit)
{
    if (const auto count = m_running->waitForAll(limit); count > 0)
        Log::write(Log::capture,
            QStringLiteral("couldn't save %1 images — the disk doesn't answer").arg(count));
}

} // namespace Lumenote
