#include "Platform/ImageSource.h"

#include "Platform/Descriptor.h"

#include <QBuffer>
#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Platform {

namespace {

tl::unexpected<Error> unreadable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::unreadable, .message = message});
}

tl::unexpected<Error> unreadable(int errorNumber)
{
    return unreadable(QString::fromStdString(std::generic_category().message(errorNumber)));
}

bool isReadableKind(const struct stat& status)
{
    return S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode);
}

/// Looks before it opens, since the mere opening of a device can do things.
Result<Descriptor> openForReading(const std::filesystem::path& path)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0)
        return unreadable(errno);
    if (!isReadableKind(status))
        return unreadable(QStringLiteral("neither a file nor a pipe"));
    Descriptor descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor)
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

} // namespace

Result<std::unique_ptr<QIODevice>> openImageSource(
    const std::filesystem::path& path, const ImageLimits& limits)
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

} // namespace Platform
