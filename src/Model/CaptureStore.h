#pragma once

#include "Model/CaptureIdentity.h"
#include "Model/StoredText.h"
#include "Platform/FileSystem.h"

#include <QImage>
#include <QList>
#include <QSet>
#include <QSizeF>
#include <QUuid>

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace Platform {
struct Bundle;
}

namespace Lumenote {

/// The history on disk: a folder with a PNG file for each capture, and in its folder "Text" a JSON
/// file for each recognised text. It decides nothing about what to keep.
///
/// A value: copies work on the same folder with the same claim on it. The folder may be shared with
/// other running copies of the program; what they list is never removed here, unless the user asks
/// for it (trash(), trashAll(), removeText()). Everything blocks; any thread.
class CaptureStore {
public:
    /// One file found on disk.
    struct Stored {
        QUuid id;
        std::filesystem::path file;
        QDateTime capturedAt;
        QSize pixelSize;
        QSizeF pointSize;
        /// At most 200 pixels on the long edge, in sRGB; null if it could not be made.
        QImage thumbnail;
    };

    struct FullImage {
        QImage image;
        QSizeF pointSize;
    };

    CaptureStore(std::filesystem::path directory, std::shared_ptr<Platform::FileSystem> files);

    /// Where the captures of this user lie. Development builds, which have no bundle identifier,
    /// have a folder of their own.
    static std::filesystem::path applicationSupport(
        Platform::FileSystem& files, const std::optional<Platform::Bundle>& bundle);

    const std::filesystem::path& directory() const { return m_directory; }

    /// Where the PNG of such a capture belongs.
    std::filesystem::path fileFor(const CaptureIdentity& identity) const;

    /// Writes one PNG; @p scale is its pixels per point. A whole file or none.
    Platform::Result<void> write(
        const QImage& image, const std::filesystem::path& file, double scale) const;

    Platform::Result<void> writeText(const StoredText& text, const QUuid& id) const;

    /// The newest @p limit captures, newest first. Files of captures that can't be read are left
    /// out, but count. All older captures are removed for good with their text, unless another copy
    /// is running. To be called once at the start, before anything else is removed.
    QList<Stored> load(int limit) const;

    static std::optional<FullImage> image(const std::filesystem::path& file);

    /// Removes a file that isn't such a text, or one of another version.
    std::optional<StoredText> readText(const QUuid& id) const;

    void removeText(const QUuid& id) const;

    /// Removes a capture that the list has dropped, and its text, for good; leaves both to a later
    /// load() while another copy is running. @p file may be empty.
    void removeTrimmed(const QUuid& id, const std::filesystem::path& file) const;

    /// Removes every text but those of @p ids, unless another copy is running.
    void sweepOrphanedText(const QSet<QUuid>& ids) const;

    /// To the Trash; where there is none, for good. The text stays.
    void trash(const std::filesystem::path& file) const;

    /// Every capture to the Trash; every text for good. Other files stay.
    void trashAll() const;

private:
    struct Found;

    std::filesystem::path textDirectory() const { return m_directory / "Text"; }
    std::filesystem::path textFile(const QUuid& id) const;
    std::vector<Found> findCaptures() const;
    void prune(const std::vector<Found>& captures, size_t kept) const;

    std::filesystem::path m_directory;
    std::shared_ptr<Platform::FileSystem> m_files;
    std::shared_ptr<Platform::FolderClaim> m_claim;
};

} // namespace Lumenote
