#include "Baseline.h"

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace Lumenote::Bench {

namespace {

std::size_t byteCount(QSize size)
{
    return static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * 4;
}

} // namespace

Baseline::Baseline(QSize size)
    : m_size(size)
    , m_xcb(xcb_connect(nullptr, nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root)
{
    std::free(xcb_shm_query_version_reply(m_xcb, xcb_shm_query_version(m_xcb), nullptr));
}

Baseline::~Baseline()
{
    if (m_memory != nullptr)
        detach();
    xcb_disconnect(m_xcb);
}

void Baseline::attach()
{
    const int file = memfd_create("baseline", MFD_CLOEXEC);
    if (ftruncate(file, static_cast<off_t>(byteCount(m_size))) != 0)
        std::abort();
    m_memory = mmap(nullptr, byteCount(m_size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    m_segment = xcb_generate_id(m_xcb);
    xcb_shm_attach_fd(m_xcb, m_segment, file, 0);
}

void Baseline::detach()
{
    xcb_shm_detach(m_xcb, m_segment);
    xcb_flush(m_xcb);
    munmap(m_memory, byteCount(m_size));
    m_memory = nullptr;
}

bool Baseline::getImage()
{
    auto* const reply = xcb_shm_get_image_reply(m_xcb,
        xcb_shm_get_image(m_xcb, m_root, 0, 0, static_cast<std::uint16_t>(m_size.width()),
            static_cast<std::uint16_t>(m_size.height()), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment,
            0),
        nullptr);
    std::free(reply);
    return reply != nullptr;
}

} // namespace Lumenote::Bench
