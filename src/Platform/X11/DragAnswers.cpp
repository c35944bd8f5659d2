#include "Platform/X11/DragAnswers.h"

#include "Platform/X11/QtConnection.h"

#include <QCoreApplication>
#include <QMimeData>

#include <xcb/xcb.h>

#include <utility>

namespace Platform {

namespace {

namespace QtConnection = X11::QtConnection;

/// Whether Qt leaves the request without an answer.
bool isUnaddressed(const xcb_selection_request_event_t& request)
{
    return request.time == XCB_CURRENT_TIME
        && request.selection == QtConnection::atom("XdndSelection");
}

/// Which of the formats is asked for; empty for none of them.
QString formatOf(const xcb_selection_request_event_t& request, const QMimeData& offered)
{
    for (const auto& format : offered.formats())
        if (QtConnection::atom(format.toLatin1().constData()) == request.target)
            return format;
    return {};
}

void answer(const xcb_selection_request_event_t& request, const QByteArray& bytes)
{
    auto* const connection = QtConnection::get();
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (!bytes.isEmpty()) {
        notice.property = request.property;
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
            request.target, 8, static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    }
    xcb_send_event(connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
        reinterpret_cast<const char*>(&notice)); // NOLINT(*-reinterpret-cast): as xcb takes events.
    QtConnection::flush();
}

} // namespace

DragAnswers::DragAnswers(std::function<QMimeData*()> offered)
    : m_offered(std::move(offered))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

DragAnswers::~DragAnswers()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool DragAnswers::nativeEventFilter(
    const QByteArray& /*eventType*/, void* message, qintptr* /*result*/)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & ~0x80) != XCB_SELECTION_REQUEST)
        return false;
    const auto* const request = static_cast<const xcb_selection_request_event_t*>(message);
    const auto* const offered = m_offered();
    if (offered == nullptr || !isUnaddressed(*request))
        return false;
    const auto format = formatOf(*request, *offered);
    answer(*request, format.isEmpty() ? QByteArray() : offered->data(format));
    return true;
}

qint64 DragAnswers::largestAnswer()
{
    constexpr qint64 unit = 4;
    constexpr qint64 otherParts = 64; // Of the request, and more.
    return qint64{xcb_get_maximum_request_length(QtConnection::get())} * unit - otherParts;
}

} // namespace Platform
