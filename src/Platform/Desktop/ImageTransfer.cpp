#include "Platform/Desktop/ImageTransfer.h"

#include "Platform/Tasks.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <QUrl>

#include <chrono>

namespace Platform {

namespace {

constexpr std::chrono::milliseconds patience(1000);

/// Whether @p future has ended in time. Its work never waits for this thread.
template <typename T>
bool waitFor(const QFuture<T>& future)
{
    const QDeadlineTimer deadline(patience);
    while (!future.isFinished() && !deadline.hasExpired())
        QThread::msleep(1);
    return future.isFinished();
}

} // namespace

ImageTransfer::ImageTransfer(const ImageDrag::Payload& payload, const DraggedFiles& files)
    : m_png(payload.png)
    , m_files(files)
    , m_file(files.place(payload.name))
{
    m_written.start();
    whenFinished(m_png, this, [this](const Result<QByteArray>& /*png*/) { writeFile(); });
}

/// Once: a receiver that asks may be quicker than the event loop.
void ImageTransfer::writeFile()
{
    if (m_writing)
        return;
    m_writing = startTask<void>([files = m_files, file = m_file, png = m_png.result()] {
        return png ? files.write(file, *png) : Result<void>(tl::make_unexpected(png.error()));
    });
    whenFinished(*m_writing, this, [this](const Result<void>& result) {
        m_written.addResult(result);
        m_written.finish();
    });
}

void ImageTransfer::discardFile()
{
    whenFinished(written(), this, [this](const Result<void>& /*result*/) {
        startTask<void>([files = m_files, file = m_file] {
            files.remove(file);
            return Result<void>();
        });
    });
}

QByteArray ImageTransfer::png() const
{
    return waitFor(m_png) ? m_png.result().value_or(QByteArray()) : QByteArray();
}

QByteArray ImageTransfer::fileList()
{
    if (!waitFor(m_png))
        return {};
    writeFile();
    if (!waitFor(*m_writing) || !m_writing->result())
        return {};
    return QUrl::fromLocalFile(QFile::decodeName(m_file.c_str())).toEncoded() + "\r\n";
}

} // namespace Platform
