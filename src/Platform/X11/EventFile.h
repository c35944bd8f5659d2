#pragma once

namespace Platform::X11 {

/// A file descriptor that becomes readable when it is raised: how one thread wakes another that
/// polls. Any thread.
class EventFile {
public:
    EventFile();
    ~EventFile();
    EventFile(const EventFile&) = delete;
    EventFile& operator=(const EventFile&) = delete;

    int descriptor() const { return m_descriptor; }
    void raise() const;
    void lower() const;

private:
    int m_descriptor;
};

} // namespace Platform::X11
