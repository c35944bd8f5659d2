#include "Platform/X11/Properties.h"

namespace Platform::X11 {

namespace {

constexpr std::uint32_t longestProperty = 4 << 20; // In units of four bytes: profiles may be big.

/// The X Consortium's compound text, as far as programs of today still write it: Latin-1 with
/// passages in UTF-8. Of what else its escape sequences switch to, the bytes are read as Latin-1.
QString fromCompoundText(const QByteArray& bytes)
{
    const QByteArray toUtf8("\x1b%G");
    const QByteArray fromUtf8("\x1b%@");
    QString text;
    for (qsizetype at = 0; at < bytes.size();) {
        if (bytes.at(at) != '\x1b') {
            text += QLatin1Char(bytes.at(at++));
        } else if (bytes.mid(at, toUtf8.size()) == toUtf8) {
            at += toUtf8.size();
            const auto end = bytes.indexOf(fromUtf8, at);
            text += QString::fromUtf8(bytes.mid(at, end < 0 ? -1 : end - at));
            at = end < 0 ? bytes.size() : end + fromUtf8.size();
        } else {
            ++at; // Of other sequences: intermediate bytes and one final byte.
            while (at < bytes.size() && bytes.at(at) >= ' ' && bytes.at(at) <= '/')
                ++at;
            ++at;
        }
    }
    return text;
}

} // namespace

PropertyRequest::PropertyRequest(
    const Connection& connection, xcb_window_t window, xcb_atom_t property)
    : m_cookie(xcb_get_property(
        connection.xcb(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty))
{
}

std::vector<std::uint32_t> items(const xcb_get_property_reply_t* property)
{
    if (property == nullptr || property->format != 32)
        return {};
    const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(property));
    return {first, first + property->value_len};
}

QByteArray bytes(const xcb_get_property_reply_t* property)
{
    if (property == nullptr || property->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(property)),
        xcb_get_property_value_length(property)};
}

QString text(const xcb_get_property_reply_t* property, const Atoms& atoms)
{
    const auto encoded = bytes(property);
    if (encoded.isEmpty())
        return {};
    if (property->type == atoms.utf8String)
        return QString::fromUtf8(encoded);
    if (property->type == atoms.compoundText)
        return fromCompoundText(encoded);
    return QString::fromLatin1(encoded);
}

} // namespace Platform::X11
