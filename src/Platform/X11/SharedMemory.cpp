#include "Platform/X11/SharedMemory.h"

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace Platform::X11 {

namespace {

constexpr auto spareLife = std::chrono::seconds(30);

/// A file without a name of @p size bytes, -1 where the system gives none.
int makeFile(std::size_t size)
{
    const int file = memfd_create("lumenote-capture", MFD_CLOEXEC);
    if (file >= 0 && ftruncate(file, static_cast<off_t>(size)) != 0) {
        close(file);
        return -1;
    }
    return file;
}

unsigned char* map(int file, std::size_t size)
{
    auto* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<unsigned char*>(memory);
}

/// Whether an image of @p wanted bytes may have memory of @p size: not much more than it needs,
/// since an image may live for hours.
bool isFit(std::size_t size, std::size_t wanted)
{
    return size >= wanted && size / 2 <= wanted;
}

} // namespace

std::unique_ptr<SharedMemory> SharedMemory::make(Connection& connection, std::size_t size)
{
    const int file = makeFile(size);
    if (file < 0)
        return nullptr;
    auto* const bytes = map(file, size);
    if (bytes == nullptr) {
        close(file);
        return nullptr;
    }
    const auto id = xcb_generate_id(connection.xcb());
    std::unique_ptr<SharedMemory> memory(new SharedMemory(bytes, size, id));
    // The file now belongs to the connection, which closes it.
    const auto attached = xcb_shm_attach_fd_checked(connection.xcb(), id, file, 0);
    if (!connection.finish() || !connection.hasSucceeded(attached))
        return nullptr;
    return memory;
}

SharedMemory::SharedMemory(unsigned char* bytes, std::size_t size, xcb_shm_seg_t id)
    : m_bytes(bytes)
    , m_size(size)
    , m_id(id)
{
}

SharedMemory::~SharedMemory()
{
    munmap(m_bytes, m_size);
}

struct SharedMemoryPool::Loan {
    std::shared_ptr<SharedMemoryPool> pool;
    std::unique_ptr<SharedMemory> memory;
};

SharedMemoryPool::SharedMemoryPool(std::shared_ptr<const EventFile> onReturn)
    : m_onReturn(std::move(onReturn))
{
}

std::unique_ptr<SharedMemory> SharedMemoryPool::take(Connection& connection, std::size_t size)
{
    {
        const std::scoped_lock hold(m_lock);
        const auto spare = std::ranges::find_if(m_returned,
            [size](const Returned& returned) { return isFit(returned.memory->size(), size); });
        if (spare != m_returned.end()) {
            auto memory = std::move(spare->memory);
            m_returned.erase(spare);
            return memory;
        }
    }
    return SharedMemory::make(connection, size);
}

QImage SharedMemoryPool::lend(
    std::unique_ptr<SharedMemory> memory, QSize size, QImage::Format format)
{
    auto* const bytes = memory->bytes();
    auto* const loan = new Loan{.pool = shared_from_this(), .memory = std::move(memory)};
    const auto endLoan = [](void* ended) {
        const std::unique_ptr<Loan> loan(static_cast<Loan*>(ended));
        loan->pool->giveBack(std::move(loan->memory));
    };
    return {bytes, size.width(), size.height(), qsizetype(size.width()) * 4, format, endLoan, loan};
}

void SharedMemoryPool::giveBack(std::unique_ptr<SharedMemory> memory)
{
    {
        const std::scoped_lock hold(m_lock);
        m_returned.push_back(
            {.memory = std::move(memory), .when = std::chrono::steady_clock::now()});
    }
    m_onReturn->raise();
}

std::optional<SharedMemoryPool::Time> SharedMemoryPool::tidy(const Connection& connection, Time now)
{
    const std::scoped_lock hold(m_lock);
    const bool keepsSpare = !m_returned.empty() && m_returned.back().when + spareLife > now;
    const auto keptFrom = m_returned.end() - (keepsSpare ? 1 : 0);
    std::for_each(m_returned.begin(), keptFrom,
        [&connection](const Returned& returned) { returned.memory->detach(connection); });
    m_returned.erase(m_returned.begin(), keptFrom);
    if (!keepsSpare)
        return std::nullopt;
    return m_returned.back().when + spareLife;
}

} // namespace Platform::X11
