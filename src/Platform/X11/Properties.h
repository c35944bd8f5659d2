#pragma once

#include "Platform/X11/Connection.h"

#include <QByteArray>
#include <QString>

#include <cstring>
#include <vector>

namespace Platform::X11 {

/// A property whose answer is still to come, so that many can be asked at once.
class PropertyRequest {
public:
    PropertyRequest(const Connection& connection, xcb_window_t window, xcb_atom_t property);

    /// To be called once.
    Owned<xcb_get_property_reply_t> answer(Connection& connection) const
    {
        return connection.reply<xcb_get_property_reply_t>(m_cookie);
    }

private:
    xcb_get_property_cookie_t m_cookie;
};

/// The items of 32 bits that a property has: cardinals, atoms, windows. None where it is missing,
/// as below.
std::vector<std::uint32_t> items(const xcb_get_property_reply_t* property);

QByteArray bytes(const xcb_get_property_reply_t* property);

/// By the encoding that the type of the property tells.
QString text(const xcb_get_property_reply_t* property, const Atoms& atoms);

} // namespace Platform::X11
