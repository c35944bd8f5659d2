#pragma once

#include "Platform/Error.h"
#include "Platform/X11/Atoms.h"
#include "Platform/X11/XcbTypes.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <chrono>
#include <cstdint>

namespace Platform::X11 {

/// A connection to the X server whose waits have an end: at the deadline, and when the connection
/// breaks. Errors of the server are answers like others. One thread only.
class Connection {
public:
    /// Blocks for as long as the server takes. An empty @p display is the one of DISPLAY.
    static Result<std::unique_ptr<Connection>> open(const QByteArray& display);

    xcb_connection_t* xcb() const { return m_xcb.get(); }
    const xcb_screen_t& screen() const { return *m_screen; }
    int screenNumber() const { return m_screenNumber; } ///< Among X screens; most servers have one.
    xcb_window_t root() const { return m_screen->root; }
    const Atoms& atoms() const { return m_atoms; }
    int socket() const { return xcb_get_file_descriptor(xcb()); }
    bool isLost() const { return xcb_connection_has_error(xcb()) != 0; }

    using Time = std::chrono::steady_clock::time_point;

    /// From now on waits end at @p deadline, and when @p interruption, a file descriptor, has
    /// something to read.
    void setLimits(Time deadline, int interruption);

    /// The answer to a request, null where there is none: see failure().
    template <typename Reply, typename Cookie>
    Owned<Reply> reply(Cookie cookie)
    {
        return Owned<Reply>(static_cast<Reply*>(wait(cookie.sequence)));
    }

    /// Waits until the server has done all that it was asked. Whether it has.
    bool finish();

    /// Asks for each atom once; it never changes. Empty where the server tells none.
    QString atomName(xcb_atom_t atom);

    /// Whether a request is done, as far as is known without asking.
    bool isDone(xcb_void_cookie_t cookie) const;

    /// After finish(): whether a checked request was done without an error.
    bool hasSucceeded(xcb_void_cookie_t cookie);

    /// Why the last reply, or check, brought nothing.
    Error failure(const QString& whatFailed) const;
    bool wasRefused() const { return m_errorCode != 0; } ///< By the server, whatever the error.

private:
    Connection(OwnedConnection xcb, int screenNumber);

    void internAtoms();
    void* wait(unsigned int sequence);
    bool waitForInput();

    OwnedConnection m_xcb;
    int m_screenNumber;
    const xcb_screen_t* m_screen = nullptr;
    Atoms m_atoms;
    QHash<xcb_atom_t, QString> m_atomNames; ///< Those that were asked for.
    Time m_deadline = Time::max();
    int m_interruption = -1;
    bool m_isLate = false;
    std::uint8_t m_errorCode = 0; ///< Of the last answer.
    unsigned int m_answered = 0; ///< The latest request known to be.
};

/// Keeps all other programs' requests waiting, so that what is read in its lifetime fits together.
class ServerGrab {
public:
    explicit ServerGrab(const Connection& connection);
    ~ServerGrab();
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;

private:
    xcb_connection_t* m_xcb;
};

/// An id of the X server with what frees it. Whether the server really made the thing is not its
/// matter: to free what isn't there does no harm.
template <auto destroy>
class Resource {
public:
    explicit Resource(const Connection& connection)
        : m_xcb(connection.xcb())
        , m_id(xcb_generate_id(m_xcb))
    {
    }
    ~Resource() { destroy(m_xcb, m_id); }
    Resource(const Resource&) = delete;
    Resource& operator=(const Resource&) = delete;

    std::uint32_t id() const { return m_id; }

private:
    xcb_connection_t* m_xcb;
    std::uint32_t m_id;
};

} // namespace Platform::X11
