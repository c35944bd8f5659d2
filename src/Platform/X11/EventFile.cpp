#include "Platform/X11/EventFile.h"

#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace Platform::X11 {

EventFile::EventFile()
    : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

EventFile::~EventFile()
{
    close(m_descriptor);
}

void EventFile::raise() const
{
    const std::uint64_t one = 1;
    static_cast<void>(write(m_descriptor, &one, sizeof one)); // Fails only where it is raised.
}

void EventFile::lower() const
{
    std::uint64_t count = 0;
    static_cast<void>(read(m_descriptor, &count, sizeof count));
}

} // namespace Platform::X11
