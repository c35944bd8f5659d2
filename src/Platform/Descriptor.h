#pragma once

#include <unistd.h>
#include <utility>

namespace Platform {

/// An open file, closed at the end. Numbers below 0 are none.
class Descriptor {
public:
    Descriptor() = default;
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
        : m_number(other.release())
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    explicit operator bool() const { return m_number >= 0; }
    int number() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number = -1;
};

} // namespace Platform
