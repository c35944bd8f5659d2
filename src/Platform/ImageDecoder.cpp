#include "Platform/ImageDecoder.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <memory>
#include <new>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Platform {

namespace {

constexpr int usualBits = 32;

tl::unexpected<Error> unreadable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::unreadable, .message = message});
}

tl::unexpected<Error> unreadable(int errorNumber)
{
    return unreadable(QString::fromStdString(std::generic_category().message(errorNumber)));
}

tl::unexpected<Error> undecodable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::failed, .message = message});
}

class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    int number() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

bool isReadableKind(const struct stat& status)
{
    return S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode);
}

/// Looks before it opens, since the mere opening of a device can do things.
Result<Descriptor> openForReading(const QByteArray& path)
{
    struct stat status { };
    if (stat(path.constData(), &status) != 0)
        return unreadable(errno);
    if (!isReadableKind(status))
        return unreadable(QStringLiteral("neither a file nor a pipe"));
    Descriptor descriptor(open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (descriptor.number() < 0)
        return unreadable(errno);
    return descriptor;
}

bool waitForBytes(int descriptor, std::chrono::milliseconds limit)
{
    pollfd request{.fd = descriptor, .events = POLLIN, .revents = 0};
    return poll(&request, 1, static_cast<int>(limit.count())) != 0;
}

/// All that comes until the other side closes. A pipe that nobody writes to is at its end.
Result<QByteArray> readPipe(int descriptor, const ImageLimits& limits)
{
    QByteArray bytes;
    std::array<char, 65536> chunk{};
    while (bytes.size() <= limits.fileBytes) {
        const auto count = read(descriptor, chunk.data(), chunk.size());
        if (count == 0)
            return bytes;
        if (count > 0)
            bytes.append(chunk.data(), count);
        else if (errno == EAGAIN) {
            if (!waitForBytes(descriptor, limits.pipeSilence))
                return unreadable(QStringLiteral("the other side of the pipe is silent"));
        } else if (errno != EINTR)
            return unreadable(errno);
    }
    return unreadable(QStringLiteral("more bytes than a picture may have"));
}

/// The bytes of the picture, opened for reading.
Result<std::unique_ptr<QIODevice>> openSource(const QByteArray& path, const ImageLimits& limits)
{
    auto descriptor = openForReading(path);
    if (!descriptor)
        return tl::make_unexpected(descriptor.error());
    struct stat status { };
    if (fstat(descriptor->number(), &status) != 0)
        return unreadable(errno);
    if (S_ISFIFO(status.st_mode)) {
        auto bytes = readPipe(descriptor->number(), limits);
        if (!bytes)
            return tl::make_unexpected(bytes.error());
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(*std::move(bytes));
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    if (!S_ISREG(status.st_mode))
        return unreadable(QStringLiteral("neither a file nor a pipe"));
    if (status.st_size > limits.fileBytes)
        return unreadable(QStringLiteral("more bytes than a picture may have"));
    auto file = std::make_unique<QFile>();
    if (!file->open(descriptor->release(), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return unreadable(file->errorString());
    return file;
}

qint64 pixelCount(const QSize& size)
{
    return qint64{size.width()} * size.height();
}

/// Whether a picture of this size is, or can be scaled to be, within the limits.
bool canBound(const QSize& size, const ImageLimits& limits)
{
    // Longer sides overflow the fixed-point numbers of Qt's smooth scaling, which then takes a
    // minute for what it does in a second, if no worse.
    constexpr int longestScalableSide = (1 << 17) - 1;
    return pixelCount(size) <= limits.pixels
        || std::max(size.width(), size.height()) <= longestScalableSide;
}

/// The largest size of the same shape within the limits.
QSize boundedSize(const QSize& size, const ImageLimits& limits)
{
    const auto pixels = pixelCount(size);
    if (pixels <= limits.pixels)
        return size;
    const auto scale = std::sqrt(static_cast<double>(limits.pixels) / static_cast<double>(pixels));
    return {std::max(1, static_cast<int>(size.width() * scale)),
        std::max(1, static_cast<int>(size.height() * scale))};
}

/// Drawings have no pixels of their own, need fonts, and can ask for work without an end. The
/// decoder of MNG films takes as much memory as a header claims: 4 GB for a file of some bytes.
bool isRefused(const QByteArray& format)
{
    return format.startsWith("svg") || format == "pdf" || format == "mng";
}

/// Bits of a pixel once decoded, as the header tells; 0 where it doesn't.
int decodedBits(const QImageReader& reader)
{
    // The JPEG decoder answers with whatever was in memory when it could not read the header.
    const auto format = reader.imageFormat();
    if (format <= QImage::Format_Invalid || format >= QImage::NImageFormats)
        return 0;
    return QImage::toPixelFormat(format).bitsPerPixel();
}

qint64 decodedBytes(const QImageReader& reader)
{
    // Scaling takes at least what the usual depth does, also for pictures that are flatter.
    return pixelCount(reader.size()) * std::max(usualBits, decodedBits(reader)) / 8;
}

/// Qt's own guard, one for the whole process, which also holds where a header tells nothing.
void allowAllocations(const ImageLimits& limits)
{
    QImageReader::setAllocationLimit(static_cast<int>(limits.decodedBytes >> 20));
}

/// Nobody here looks at more than 8 bits a channel, and scaling is the dearer the deeper.
QImage shallow(QImage image)
{
    if (image.depth() > usualBits)
        image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    return image;
}

Result<QImage> decode(const QByteArray& path, const ImageLimits& limits)
{
    const auto source = openSource(path, limits);
    if (!source)
        return tl::make_unexpected(source.error());
    allowAllocations(limits);
    QImageReader reader(source->get());
    reader.setAutoTransform(true);
    if (!reader.canRead() || isRefused(reader.format()))
        return unreadable(QStringLiteral("no picture of a known format"));
    const auto size = reader.size();
    if (size.isValid() && (decodedBytes(reader) > limits.decodedBytes || !canBound(size, limits)))
        return undecodable(QStringLiteral("more pixels than a picture may have"));
    // Some decoders can scale as they go. Of deep pictures none does.
    if (pixelCount(size) > limits.pixels && decodedBits(reader) <= usualBits)
        reader.setScaledSize(boundedSize(size, limits));
    auto image = shallow(reader.read());
    if (image.isNull())
        return undecodable(reader.errorString());
    if (!canBound(image.size(), limits)) // Where the header didn't tell.
        return undecodable(QStringLiteral("more pixels than a picture may have"));
    const auto bounded = boundedSize(image.size(), limits);
    if (bounded == image.size())
        return image;
    return image.scaled(bounded, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

Result<QImage> decodeImageFile(const QByteArray& path, const ImageLimits& limits)
try {
    return decode(path, limits);
} catch (const std::bad_alloc&) {
    return undecodable(QStringLiteral("out of memory"));
}

} // namespace Platform
