#include "Model/CaptureStore.h"

#include "Log.h"
#include "Model/DisplayImage.h"
#include "Model/PointSize.h"
#include "Platform/Bundle.h"
#include "Platform/ImageDecoder.h"
#include "Platform/ImageSurvey.h"
#include "Platform/PngEncoder.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

namespace Lumenote {

namespace {

namespace fs = std::filesystem;

constexpr int thumbnailLongEdge = 200;
constexpr double dotsPerInchOfPoints = 72;
constexpr double smallestScale = 0.01;
/// More than the text of the largest picture takes, and little enough for a parser.
constexpr qint64 longestText = 8LL << 20;

QString named(const fs::path& file)
{
    return QString::fromStdString(file.filename().native());
}

/// Calls @p work for each number below @p count, on this thread and one more.
template <typename Work>
void onTwoThreads(size_t count, const Work& work)
{
    std::atomic<size_t> next = 0;
    const auto takeTurns = [&] {
        for (auto index = next++; index < count; index = next++)
            work(index);
    };
    std::jthread helper;
    try {
        if (count > 1)
            helper = std::jthread(takeTurns);
    } catch (const std::system_error&) { // No thread to be had: then all of it here.
    }
    takeTurns();
}

} // namespace

struct CaptureStore::Found {
    CaptureIdentity identity;
    fs::path file;
};

CaptureStore::CaptureStore(fs::path directory, std::shared_ptr<Platform::FileSystem> files)
    : m_directory(std::move(directory))
    , m_files(std::move(files))
    , m_claim(m_files->claim(m_directory))
{
}

fs::path CaptureStore::applicationSupport(
    Platform::FileSystem& files, const std::optional<Platform::Bundle>& bundle)
{
    const bool isInstalled = bundle && !bundle->identifier.isEmpty();
    return files.userDataFolder() / (isInstalled ? "Lumenote" : "Lumenote (dev)") / "Captures";
}

fs::path CaptureStore::fileFor(const CaptureIdentity& identity) const
{
    return m_directory / identity.fileName();
}

fs::path CaptureStore::textFile(const QUuid& id) const
{
    return textDirectory() / (uuidText(id) + ".json");
}

Platform::Result<void> CaptureStore::write(
    const QImage& image, const fs::path& file, double scale) const
{
    if (auto prepared = m_files->preparePrivateFolder(m_directory); !prepared)
        return prepared;
    m_claim->hold();
    const auto png =
        Platform::encodePng(image, std::max(scale, smallestScale) * dotsPerInchOfPoints);
    if (!png)
        return tl::make_unexpected(png.error());
    return m_files->writeFile(file, *png);
}

Platform::Result<void> CaptureStore::writeText(const StoredText& text, const QUuid& id) const
{
    if (auto prepared = m_files->preparePrivateFolder(textDirectory()); !prepared)
        return prepared;
    m_claim->hold();
    return m_files->writeFile(textFile(id), toJson(text));
}

std::vector<CaptureStore::Found> CaptureStore::findCaptures() const
{
    std::vector<Found> captures;
    for (const auto& name : m_files->names(m_directory).value_or(std::vector<fs::path>()))
        if (auto identity = CaptureIdentity::fromFileName(name))
            captures.push_back({.identity = *std::move(identity), .file = m_directory / name});
    std::ranges::stable_sort(captures, [](const Found& a, const Found& b) {
        return a.identity.capturedAt > b.identity.capturedAt;
    });
    return captures;
}

void CaptureStore::prune(const std::vector<Found>& captures, size_t kept) const
{
    QSet<QUuid> keptIds;
    for (size_t i = 0; i < kept; ++i)
        keptIds.insert(captures[i].identity.id);
    for (size_t i = kept; i < captures.size(); ++i) {
        const bool isAlone = m_claim->runAlone([&, &capture = captures[i]] {
            static_cast<void>(m_files->remove(capture.file));
            if (!keptIds.contains(capture.identity.id))
                removeText(capture.identity.id);
        });
        if (!isAlone)
            return Log::write(Log::history,
                QStringLiteral("left %1 old captures: another copy is running")
                    .arg(captures.size() - i));
    }
}

QList<CaptureStore::Stored> CaptureStore::load(int limit) const
{
    m_claim->hold();
    m_files->sweepUnfinished(m_directory);
    m_files->sweepUnfinished(textDirectory());
    const auto captures = findCaptures();
    const auto kept = std::min(captures.size(), static_cast<size_t>(std::max(limit, 0)));
    prune(captures, kept);

    std::vector<Platform::Result<Platform::ImageSurvey>> surveys(kept);
    onTwoThreads(kept, [&](size_t i) {
        surveys[i] = Platform::surveyImageFile(captures[i].file, thumbnailLongEdge);
    });
    QList<Stored> stored;
    QSet<QUuid> ids;
    for (size_t i = 0; i < kept; ++i) {
        const auto& [identity, file] = captures[i];
        if (!surveys[i]) {
            Log::write(Log::history,
                QStringLiteral("couldn't read %1 — %2")
                    .arg(named(file), surveys[i].error().message));
            continue;
        }
        if (ids.contains(identity.id)) {
            Log::write(Log::history,
                QStringLiteral("left out %1: a newer capture has its UUID").arg(named(file)));
            continue;
        }
        ids.insert(identity.id);
        stored.append({.id = identity.id,
            .file = file,
            .capturedAt = identity.capturedAt,
            .pixelSize = surveys[i]->pixelSize,
            .pointSize = pointSize(surveys[i]->pixelSize, surveys[i]->dotsPerInch),
            .thumbnail = DisplayImage::from(surveys[i]->thumbnail)});
    }
    return stored;
}

std::optional<CaptureStore::FullImage> CaptureStore::image(const fs::path& file)
{
    const auto picture = Platform::decodeImageFile(file);
    if (!picture)
        return std::nullopt;
    return FullImage{.image = picture->image,
        .pointSize = pointSize(picture->image.size(), picture->dotsPerInch)};
}

std::optional<StoredText> CaptureStore::readText(const QUuid& id) const
{
    const auto json = m_files->readFile(textFile(id), longestText);
    if (!json)
        return std::nullopt;
    auto text = storedTextFromJson(*json);
    if (!text)
        removeText(id);
    return text;
}

void CaptureStore::removeText(const QUuid& id) const
{
    static_cast<void>(m_files->remove(textFile(id)));
}

void CaptureStore::removeTrimmed(const QUuid& id, const fs::path& file) const
{
    m_claim->runAlone([&] {
        if (!file.empty())
            static_cast<void>(m_files->remove(file));
        removeText(id);
    });
}

void CaptureStore::sweepOrphanedText(const QSet<QUuid>& ids) const
{
    for (const auto& name : m_files->names(textDirectory()).value_or(std::vector<fs::path>())) {
        const auto id = uuidFromText(name.stem().native());
        if (id && ids.contains(*id))
            continue;
        if (!m_claim->runAlone([&] { static_cast<void>(m_files->remove(textDirectory() / name)); }))
            return;
    }
}

void CaptureStore::trash(const fs::path& file) const
{
    if (const auto trashed = m_files->moveToTrash(file); !trashed) {
        Log::write(Log::history,
            QStringLiteral("no Trash for %1, so it is removed — %2")
                .arg(named(file), trashed.error().message));
        static_cast<void>(m_files->remove(file));
    }
}

void CaptureStore::trashAll() const
{
    for (const auto& capture : findCaptures())
        trash(capture.file);
    static_cast<void>(m_files->removeFolder(textDirectory()));
}

} // namespace Lumenote
