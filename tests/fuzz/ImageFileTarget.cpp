// Any bytes as an image file: never a crash, and a picture within its bounds or none.

#include "Model/ImageFile.h"
#include "Target.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file in memory that has a path.
class MemoryFile {
public:
    explicit MemoryFile(const QByteArray& bytes)
        : m_descriptor(memfd_create("picture", MFD_CLOEXEC))
    {
        require(m_descriptor >= 0);
        require(write(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()))
            == bytes.size());
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::filesystem::path path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace

void tryBytes(const QByteArray& bytes)
{
    const MemoryFile file(bytes);
    const auto loaded = Lumenote::ImageFile::load(file.path());
    if (!loaded)
        return;
    const auto& [image, points, wasDownscaled] = *loaded;
    require(image.width() >= 1 && image.height() >= 1);
    require(std::max(image.width(), image.height()) <= 8192);
    require(!wasDownscaled || std::max(image.width(), image.height()) == 8192);
    require(image.depth() <= 32);
    require(std::isfinite(points.width()) && points.width() > 0);
    require(std::isfinite(points.height()) && points.height() > 0);
    // Every pixel can be read.
    static_cast<void>(image.pixel(image.width() - 1, image.height() - 1));
}
