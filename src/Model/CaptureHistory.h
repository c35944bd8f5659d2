#pragma once

#include "Model/CaptureStore.h"
#include "Model/WorkbenchModel.h"
#include "Platform/Error.h"
#include "Platform/SerialQueue.h"

#include <QDateTime>
#include <QFuture>
#include <QImage>
#include <QList>
#include <QObject>
#include <QUuid>

#include <filesystem>
#include <memory>
#include <optional>

namespace Lumenote {

/// The captures and opened images of now and before, newest first, and the one owner of the way
/// they go between memory and disk.
///
/// Main thread only. Disk work is done elsewhere: what writes and deletes in the order in which it
/// was asked for, so that the image of a capture is always on disk before its text. Results come
/// back as queued calls that look their entry up anew. When the history goes away, it first
/// finishes what is still to be written.
class CaptureHistory : public QObject {
    Q_OBJECT
public:
    /// A screen capture is kept in the store. An opened image, which has a source, stays in its own
    /// file and is read from there again.
    struct Entry {
        QUuid id;
        std::optional<std::filesystem::path> fileURL; ///< In the store; none after a failed write.
        std::optional<std::filesystem::path> sourceURL; ///< Of an opened image only.
        bool isStored = false; ///< The image is known to be whole on disk.
        bool isTextStored = false; ///< The recognised text is known to be on disk.
        QImage thumbnail; ///< At most 200 pixels long, to be painted; null until it is made.
        QDateTime capturedAt; ///< UTC; newer than the entry recorded before.
        QSize pixelSize;
        std::shared_ptr<WorkbenchModel> model; ///< None while released.
    };

    /// What became of a wish to see an entry.
    struct Selection {
        enum class Outcome {
            current, ///< It is the current entry now, and this is its model.
            gone, ///< There is none, or it can't be read any more and so has left the list.
            superseded, ///< The user chose otherwise while it was being read.
        };
        Outcome outcome = Outcome::gone;
        std::shared_ptr<WorkbenchModel> model;
    };

    static constexpr qsizetype historyLimit = 30; ///< Of captures, and again of opened images.
    static constexpr qsizetype residentModels = 6; ///< So many of the newest keep their models.

    CaptureHistory(CaptureStore store, WorkbenchModel::Services services);
    ~CaptureHistory() override;

    const QList<Entry>& entries() const { return m_entries; }
    const std::optional<QUuid>& currentID() const { return m_currentID; }
    const Entry* current() const; ///< Null where none is; good until the list changes.
    bool hasHistory() const; ///< Whether there is an entry beside the current one.

    /// Takes in what former runs left on disk. Once, at the start.
    void loadPersisted();

    /// Puts a new capture, or an image opened from @p source, at the head of the list, makes it
    /// current and starts to write it to disk. In the same turn of the event loop in which
    /// @p model was made, lest its text be missed.
    Entry record(const std::shared_ptr<WorkbenchModel>& model,
        const std::optional<std::filesystem::path>& source = {});

    /// Makes an entry current, reading it from disk first where its model was released. Answers at
    /// once where it wasn't.
    QFuture<Selection> select(const QUuid& id);

    /// Comes back once all that is to be written so far is on disk, images that are saved elsewhere
    /// included; of those the log tells what couldn't be saved, or not soon.
    void finishWriting();

    /// Removes an entry, and moves its file to the trash. An opened image's own file stays.
    void deleteEntry(const QUuid& id);

    /// Removes all entries, and moves their files to the trash.
    void clear();

signals:
    void entriesChanged();
    void currentIDChanged();

private:
    struct Restored;

    Entry* find(const QUuid& id);
    QDateTime nextCaptureDate() const;
    void storeImage(const Entry& entry);
    void markStored(const QUuid& id);
    void forgetFile(const QUuid& id);
    void observeProcessedText(const Entry& entry);
    void observeDisplay(const Entry& entry);
    void takeThumbnail(const QUuid& id);
    void storeText(const StoredText& text, const QUuid& id);
    void markTextStored(const QUuid& id);
    void setCurrent(const QUuid& id);
    void setNothingCurrent();
    Selection finishSelection(
        const QUuid& id, const Platform::Result<Restored>& restored, int wish);
    void removeUnreadable(const QUuid& id);
    void merge(const QList<CaptureStore::Stored>& stored, int generation);
    void trimToLimit();
    void releaseIdleModels();

    static Platform::Result<Restored> restore(const CaptureStore& store, const Entry& entry);

    const CaptureStore m_store;
    const WorkbenchModel::Services m_services;
    QList<Entry> m_entries;
    std::optional<QUuid> m_currentID;
    int m_generation = 0; ///< Of clears: a scan begun before one is stale.
    int m_latestWish = 0; ///< Of what was to be current: one still being read may be stale.
    Platform::SerialQueue m_io; ///< Last, so that its work ends before what it reports to.
};

} // namespace Lumenote
