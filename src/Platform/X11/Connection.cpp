#include "Platform/X11/Connection.h"

#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <limits>
#include <poll.h>

namespace Platform::X11 {

namespace {

using namespace std::chrono;

constexpr std::uint8_t accessError = 10;

int millisecondsUntil(Connection::Time deadline)
{
    if (deadline == Connection::Time::max())
        return -1;
    const auto left = ceil<milliseconds>(deadline - steady_clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

/// The numbers of requests begin anew after the last.
bool isBefore(unsigned int request, unsigned int other)
{
    return static_cast<int>(other - request) > 0;
}

} // namespace

Result<std::unique_ptr<Connection>> Connection::open(const QByteArray& display)
{
    int screenNumber = 0;
    OwnedConnection xcb(
        xcb_connect(display.isEmpty() ? nullptr : display.constData(), &screenNumber));
    if (xcb_connection_has_error(xcb.get()) != 0)
        return tl::make_unexpected(Error{.message = QStringLiteral("no X server to connect to")});
    std::unique_ptr<Connection> connection(new Connection(std::move(xcb), screenNumber));
    connection->internAtoms();
    return connection;
}

Connection::Connection(OwnedConnection xcb, int screenNumber)
    : m_xcb(std::move(xcb))
    , m_screenNumber(screenNumber)
    , m_screen(screenOf(m_xcb.get(), screenNumber))
{
}

void Connection::internAtoms()
{
    std::array<xcb_intern_atom_cookie_t, atomNames.size()> cookies{};
    std::ranges::transform(atomNames, cookies.begin(), [this](const AtomName& atom) {
        return xcb_intern_atom(
            xcb(), 0, static_cast<std::uint16_t>(atom.name.size()), atom.name.data());
    });
    for (std::size_t i = 0; i < cookies.size(); ++i)
        if (const auto answer = reply<xcb_intern_atom_reply_t>(cookies.at(i)))
            m_atoms.*atomNames.at(i).atom = answer->atom;
}

void Connection::setLimits(Time deadline, int interruption)
{
    m_deadline = deadline;
    m_interruption = interruption;
    m_isLate = false;
}

bool Connection::finish()
{
    return reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb())) != nullptr;
}

bool Connection::hasSucceeded(xcb_void_cookie_t cookie)
{
    wait(cookie.sequence);
    return m_errorCode == 0 && !m_isLate && !isLost();
}

QString Connection::atomName(xcb_atom_t atom)
{
    if (const auto known = m_atomNames.constFind(atom); known != m_atomNames.constEnd())
        return *known;
    const auto answer = reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(xcb(), atom));
    if (!answer)
        return {};
    auto name = QString::fromUtf8(
        xcb_get_atom_name_name(answer.get()), xcb_get_atom_name_name_length(answer.get()));
    m_atomNames.insert(atom, name);
    return name;
}

bool Connection::isDone(xcb_void_cookie_t cookie) const
{
    return isBefore(cookie.sequence, m_answered);
}

/// The reply, or null with the code of the error where there is one. For a request without reply,
/// null as soon as the server has answered a later one.
void* Connection::wait(unsigned int sequence)
{
    m_errorCode = 0;
    while (!m_isLate && !isLost()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(xcb(), sequence, &reply, &error) != 0) {
            const Owned<xcb_generic_error_t> ownedError(error);
            m_errorCode = ownedError ? ownedError->error_code : 0;
            if (isBefore(m_answered, sequence))
                m_answered = sequence;
            return reply;
        }
        if (xcb_flush(xcb()) > 0)
            m_isLate = !waitForInput();
    }
    xcb_discard_reply(xcb(), sequence);
    return nullptr;
}

/// False where the limits are reached instead.
bool Connection::waitForInput()
{
    std::array files{pollfd{.fd = socket(), .events = POLLIN, .revents = 0},
        pollfd{.fd = m_interruption, .events = POLLIN, .revents = 0}};
    const int count = poll(files.data(), files.size(), millisecondsUntil(m_deadline));
    const bool isInterruptedCall = count < 0;
    return isInterruptedCall || (files[0].revents != 0 && files[1].revents == 0);
}

Error Connection::failure(const QString& whatFailed) const
{
    if (isLost())
        return {.message = QStringLiteral("the connection to the X server is lost")};
    if (m_isLate)
        return {.message = QStringLiteral("the X server doesn't answer")};
    return {
        .kind = m_errorCode == accessError ? Error::Kind::permissionDenied : Error::Kind::failed,
        .message = QStringLiteral("%1: error %2 of the X server").arg(whatFailed).arg(m_errorCode)};
}

ServerGrab::ServerGrab(const Connection& connection)
    : m_xcb(connection.xcb())
{
    xcb_grab_server(m_xcb);
}

ServerGrab::~ServerGrab()
{
    xcb_ungrab_server(m_xcb);
    xcb_flush(m_xcb);
}

} // namespace Platform::X11
