#include "Platform/Desktop/QtImageDrag.h"

#include "Platform/Desktop/ImageTransfer.h"
#include "Platform/Tasks.h"

#include <QDrag>
#include <QPixmap>

#include <utility>

namespace Platform {

namespace {

const QString pngFormat = QStringLiteral("image/png");
const QString fileFormat = QStringLiteral("text/uri-list");

/// Asks the transfer for what a receiver asks for. Qt keeps it for as long as it sees fit.
class TransferData : public QMimeData {
public:
    TransferData(std::shared_ptr<ImageTransfer> transfer, qint64 largestBytes)
        : m_transfer(std::move(transfer))
        , m_largestBytes(largestBytes)
    {
    }

    QStringList formats() const override { return {fileFormat, pngFormat}; }
    bool hasFormat(const QString& format) const override { return formats().contains(format); }

protected:
    QVariant retrieveData(const QString& format, QMetaType /*type*/) const override
    {
        if (format == fileFormat)
            return m_transfer->fileList();
        if (format != pngFormat)
            return {};
        const auto png = m_transfer->png();
        return png.size() <= m_largestBytes ? png : QByteArray();
    }

private:
    const std::shared_ptr<ImageTransfer> m_transfer;
    const qint64 m_largestBytes;
};

} // namespace

QtImageDrag::QtImageDrag(const DraggedFiles& files, qint64 largestBytes)
    : m_files(files)
    , m_largestBytes(largestBytes)
{
    startTask<void>([files] {
        files.sweep();
        return Result<void>();
    });
}

void QtImageDrag::begin(const Payload& payload, OnEnd onEnd)
{
    const auto transfer = std::make_shared<ImageTransfer>(payload, m_files);
    // Not the widget's: it may go while the drag is under way.
    auto* const drag = new QDrag(this);
    m_offered = new TransferData(transfer, m_largestBytes);
    drag->setMimeData(m_offered);
    const auto thumbnail = QPixmap::fromImage(payload.thumbnail);
    drag->setPixmap(thumbnail);
    drag->setHotSpot(thumbnail.rect().center());
    if (drag->exec(Qt::CopyAction) == Qt::IgnoreAction)
        transfer->discardFile();
    whenFinished(transfer->written(), this,
        [transfer, png = payload.png, onEnd = std::move(onEnd)](
            const Result<void>& result) { onEnd(png.result() ? result : Result<void>()); });
}

} // namespace Platform
