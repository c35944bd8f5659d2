#include "Model/CaptureHistory.h"

#include "Log.h"
#include "Model/ImageFile.h"
#include "Model/PointSize.h"
#include "Platform/ImageDecoder.h"
#include "Platform/Tasks.h"

#include <QPointer>
#include <QSet>

#include <algorithm>
#include <utility>

namespace Lumenote {

namespace {

using Entry = CaptureHistory::Entry;

/// Far more than a disk that answers takes for a picture.
constexpr std::chrono::seconds savingLimit(10);
const std::filesystem::path noFile;

template <typename Result>
void logFailure(const char* what, const Result& result)
{
    if (!result)
        Log::write(Log::history,
            QStringLiteral("couldn't store %1 — %2")
                .arg(QString::fromLatin1(what), result.error().message));
}

QImage blankThumbnail()
{
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return blank;
}

Entry entryFrom(const CaptureStore::Stored& stored)
{
    return {.id = stored.id,
        .fileURL = stored.file,
        .sourceURL = {},
        .isStored = true,
        .isTextStored = false,
        .thumbnail = stored.thumbnail.isNull() ? blankThumbnail() : stored.thumbnail,
        .capturedAt = stored.capturedAt,
        .pixelSize = stored.pixelSize,
        .model = {}};
}

QSet<QUuid> idsOf(const QList<Entry>& entries)
{
    QSet<QUuid> ids;
    for (const auto& entry : entries)
        ids.insert(entry.id);
    return ids;
}

/// Whether the model holds, or has yet to make, something that exists nowhere else.
bool isModelNeeded(const Entry& entry)
{
    const bool isCapture = !entry.sourceURL;
    return entry.thumbnail.isNull() || entry.model->hasUnsavedWork()
        || (isCapture && !entry.isStored)
        || (isCapture && !entry.isTextStored && !entry.model->lines().isEmpty());
}

} // namespace

/// What a released entry is made of again.
struct CaptureHistory::Restored {
    QImage image;
    QSizeF pointSize;
    std::optional<StoredText> text;
};

CaptureHistory::CaptureHistory(CaptureStore store, WorkbenchModel::Services services)
    : m_store(std::move(store))
    , m_services(std::move(services))
{
}

CaptureHistory::~CaptureHistory()
{
    finishWriting();
}

void CaptureHistory::finishWriting()
{
    m_io.finish();
    m_services.saves->finish(savingLimit);
}

const Entry* CaptureHistory::current() const
{
    const auto isCurrent = [this](const Entry& entry) { return entry.id == m_currentID; };
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(), isCurrent);
    return found == m_entries.cend() ? nullptr : &*found;
}

bool CaptureHistory::hasHistory() const
{
    return std::any_of(m_entries.cbegin(), m_entries.cend(),
        [this](const Entry& entry) { return entry.id != m_currentID; });
}

Entry CaptureHistory::record(const std::shared_ptr<WorkbenchModel>& model,
    const std::optional<std::filesystem::path>& source)
{
    Entry entry{.id = QUuid::createUuid(),
        .fileURL = {},
        .sourceURL = source,
        .isStored = false,
        .isTextStored = false,
        .thumbnail = model->thumbnail(WorkbenchModel::longestThumbnail),
        .capturedAt = nextCaptureDate(),
        .pixelSize = model->pixelSize(),
        .model = model};
    if (!source) {
        entry.fileURL = m_store.fileFor({.id = entry.id, .capturedAt = entry.capturedAt});
        storeImage(entry);
    }
    m_entries.prepend(entry);
    observeProcessedText(entry);
    observeDisplay(entry);
    setCurrent(entry.id);
    trimToLimit();
    emit entriesChanged();
    return entry;
}

QFuture<CaptureHistory::Selection> CaptureHistory::select(const QUuid& id)
{
    const auto* const entry = find(id);
    if (!entry)
        return QtFuture::makeReadyFuture(Selection{});
    if (const auto model = entry->model) {
        setCurrent(id);
        return QtFuture::makeReadyFuture(
            Selection{.outcome = Selection::Outcome::current, .model = model});
    }
    const auto selection = std::make_shared<QPromise<Selection>>();
    selection->start();
    const auto restored = Platform::startTask<Restored>(
        [store = m_store, entry = *entry] { return restore(store, entry); });
    Platform::whenFinished(restored, this,
        [this, id, selection, wish = ++m_latestWish](const Platform::Result<Restored>& result) {
            selection->addResult(finishSelection(id, result, wish));
            selection->finish();
        });
    return selection->future();
}

void CaptureHistory::deleteEntry(const QUuid& id)
{
    const auto* const found = find(id);
    if (!found)
        return;
    const auto entry = m_entries.takeAt(found - m_entries.data());
    if (id == m_currentID)
        setNothingCurrent();
    else if (entry.model)
        entry.model->cancelRecognition();
    if (entry.fileURL)
        m_io.run([store = m_store, file = *entry.fileURL, id] {
            store.trash(file);
            store.removeText(id);
        });
    emit entriesChanged();
}

void CaptureHistory::clear()
{
    const auto cleared = std::exchange(m_entries, {});
    for (const auto& entry : cleared)
        if (entry.model && entry.id != m_currentID)
            entry.model->cancelRecognition();
    ++m_generation;
    setNothingCurrent();
    m_io.run([store = m_store] { store.trashAll(); });
    emit entriesChanged();
}

void CaptureHistory::loadPersisted()
{
    const auto stored = m_io.ask([store = m_store] { return store.load(historyLimit); });
    Platform::whenFinished(stored, this,
        [this, generation = m_generation](const auto& files) { merge(files, generation); });
}

void CaptureHistory::merge(const QList<CaptureStore::Stored>& stored, int generation)
{
    if (generation != m_generation)
        return;
    const auto known = idsOf(m_entries);
    const auto count = m_entries.size();
    for (const auto& file : stored)
        if (!known.contains(file.id))
            m_entries.append(entryFrom(file));
    if (m_entries.size() > count) {
        std::stable_sort(m_entries.begin(), m_entries.end(),
            [](const Entry& a, const Entry& b) { return a.capturedAt > b.capturedAt; });
        trimToLimit();
        emit entriesChanged();
    }
    m_io.run([store = m_store, ids = idsOf(m_entries)] { store.sweepOrphanedText(ids); });
}

Entry* CaptureHistory::find(const QUuid& id)
{
    const auto hasId = [&id](const Entry& entry) { return entry.id == id; };
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), hasId);
    return found == m_entries.end() ? nullptr : &*found;
}

/// Later than the newest entry by a millisecond at least, which is what a file name can tell, also
/// in a burst of captures or after the clock was set back.
QDateTime CaptureHistory::nextCaptureDate() const
{
    auto now = m_services.now();
    if (m_entries.isEmpty())
        return now;
    return std::max(now, m_entries.constFirst().capturedAt.addMSecs(1));
}

void CaptureHistory::storeImage(const Entry& entry)
{
    const auto& model = *entry.model;
    const auto scale = model.pixelSize().width() / std::max(model.pointSize().width(), 1.0);
    const auto isWritten =
        m_io.ask([store = m_store, image = model.image(), file = *entry.fileURL, scale] {
            const auto written = store.write(image, file, scale);
            logFailure("capture", written);
            return written.has_value();
        });
    Platform::whenFinished(isWritten, this, [this, id = entry.id](bool isStored) {
        if (isStored)
            markStored(id);
        else
            forgetFile(id);
    });
}

void CaptureHistory::markStored(const QUuid& id)
{
    if (auto* const entry = find(id))
        entry->isStored = true;
    releaseIdleModels();
}

/// The entry stays, and with it the model, which is the only copy now.
void CaptureHistory::forgetFile(const QUuid& id)
{
    if (auto* const entry = find(id))
        entry->fileURL.reset();
}

void CaptureHistory::observeProcessedText(const Entry& entry)
{
    entry.model->setOnProcessedTextChanged(
        [history = QPointer(this), id = entry.id](const StoredText& text) {
            if (history)
                history->storeText(text, id);
        });
}

void CaptureHistory::storeText(const StoredText& text, const QUuid& id)
{
    const auto* const entry = find(id);
    if (!entry || !entry->fileURL)
        return;
    const auto isWritten = m_io.ask([store = m_store, text, id] {
        const auto written = store.writeText(text, id);
        logFailure("recognized text", written);
        return written.has_value();
    });
    Platform::whenFinished(isWritten, this, [this, id](bool isStored) {
        if (isStored)
            markTextStored(id);
    });
}

void CaptureHistory::markTextStored(const QUuid& id)
{
    if (auto* const entry = find(id))
        entry->isTextStored = true;
    releaseIdleModels();
}

void CaptureHistory::observeDisplay(const Entry& entry)
{
    connect(entry.model.get(), &WorkbenchModel::displayChanged, this,
        [this, id = entry.id] { takeThumbnail(id); });
}

void CaptureHistory::takeThumbnail(const QUuid& id)
{
    auto* const entry = find(id);
    if (!entry || !entry->model)
        return;
    const auto thumbnail = entry->model->thumbnail(WorkbenchModel::longestThumbnail);
    entry->thumbnail = thumbnail.isNull() ? blankThumbnail() : thumbnail;
    releaseIdleModels();
    emit entriesChanged();
}

void CaptureHistory::setCurrent(const QUuid& id)
{
    ++m_latestWish;
    if (id != m_currentID) {
        if (const auto* const former = current(); former && former->model)
            former->model->releaseCaches();
        m_currentID = id;
        emit currentIDChanged();
    }
    releaseIdleModels();
}

void CaptureHistory::setNothingCurrent()
{
    ++m_latestWish;
    if (!m_currentID)
        return;
    m_currentID.reset();
    emit currentIDChanged();
}

/// Reads what a released entry is made of. Any thread but the main one.
Platform::Result<CaptureHistory::Restored> CaptureHistory::restore(
    const CaptureStore& store, const Entry& entry)
{
    if (entry.sourceURL) {
        if (const auto loaded = ImageFile::load(*entry.sourceURL))
            return Restored{loaded->image, loaded->pointSize, {}};
        return Platform::decodeImageFile(*entry.sourceURL).map([](const auto& decoded) {
            return Restored{
                decoded.image, pointSize(decoded.image.size(), decoded.dotsPerInch), {}};
        });
    }
    if (entry.isStored && entry.fileURL)
        if (const auto full = CaptureStore::image(*entry.fileURL))
            return Restored{full->image, full->pointSize, store.readText(entry.id)};
    return tl::make_unexpected(Platform::Error{.message = QStringLiteral("not on disk")});
}

CaptureHistory::Selection CaptureHistory::finishSelection(
    const QUuid& id, const Platform::Result<Restored>& restored, int wish)
{
    auto* const entry = find(id);
    if (entry && !restored) {
        removeUnreadable(id);
        return {};
    }
    if (!entry || wish != m_latestWish)
        return {.outcome = Selection::Outcome::superseded, .model = {}};
    const auto model =
        WorkbenchModel::create(restored->image, restored->pointSize, restored->text, m_services);
    entry->model = model;
    entry->isTextStored = restored->text.has_value();
    observeProcessedText(*entry);
    setCurrent(id);
    return {.outcome = Selection::Outcome::current, .model = model};
}

void CaptureHistory::removeUnreadable(const QUuid& id)
{
    m_entries.removeIf([&id](const Entry& entry) { return entry.id == id; });
    if (id == m_currentID)
        setNothingCurrent();
    emit entriesChanged();
}

/// Keeps the newest of each kind, and the current entry whatever its age. What goes is removed for
/// good, since nobody asked to delete it.
void CaptureHistory::trimToLimit()
{
    QList<Entry> kept;
    QList<Entry> dropped;
    qsizetype captures = 0;
    qsizetype openedImages = 0;
    for (const auto& entry : std::as_const(m_entries)) {
        auto& count = entry.sourceURL ? openedImages : captures;
        const bool isKept = count < historyLimit || entry.id == m_currentID;
        count += isKept ? 1 : 0;
        (isKept ? kept : dropped).append(entry);
    }
    if (dropped.isEmpty())
        return;
    m_entries = kept;
    for (const auto& entry : std::as_const(dropped)) {
        if (entry.model)
            entry.model->cancelRecognition();
        if (!entry.sourceURL)
            m_io.run([store = m_store, id = entry.id, file = entry.fileURL.value_or(noFile)] {
                store.removeTrimmed(id, file);
            });
    }
}

void CaptureHistory::releaseIdleModels()
{
    for (auto index = residentModels; index < m_entries.size(); ++index) {
        auto& entry = m_entries[index];
        if (!entry.model || entry.id == m_currentID || isModelNeeded(entry))
            continue;
        entry.model->cancelRecognition();
        entry.model.reset();
    }
}

} // namespace Lumenote
