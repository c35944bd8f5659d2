#pragma once

#include "Platform/DraggedFiles.h"
#include "Platform/ImageDrag.h"

#include <QObject>

namespace Platform {

/// What one drag gives: the bytes of a PNG file, and the file itself, which is made in the
/// background from the start. Both may be asked for in the middle of the drag, at the drop, or
/// after it. Main thread.
class ImageTransfer : public QObject {
    Q_OBJECT

public:
    ImageTransfer(const ImageDrag::Payload& payload, const DraggedFiles& files);

    // Each waits for a second at most, and is empty where the thing isn't there by then: a receiver
    // may ask while the drag goes on, which must not stand still.

    QByteArray png() const;
    QByteArray fileList(); ///< With the one file; as in text/uri-list.

    /// What became of the file.
    QFuture<Result<void>> written() const { return m_written.future(); }

    /// Nobody wants the file: it goes once it is there.
    void discardFile();

private:
    void writeFile();

    const QFuture<Result<QByteArray>> m_png;
    const DraggedFiles m_files;
    const std::filesystem::path m_file;
    std::optional<QFuture<Result<void>>> m_writing; ///< None before the bytes are there.
    QPromise<Result<void>> m_written;
};

} // namespace Platform
