#pragma once

#include "Platform/X11/Connection.h"

#include <QColorSpace>
#include <QList>
#include <QRect>
#include <QString>

#include <optional>
#include <vector>

namespace Platform::X11 {

struct Monitor {
    QString name;
    QRect pixels; ///< Of the root.
    QColorSpace colorSpace; ///< Invalid where the server has no profile for it.

    bool operator==(const Monitor&) const = default;
};

/// What is so on the server until it says otherwise.
struct DesktopFacts {
    bool hasCompositor = false;
    QList<Monitor> monitors; ///< Empty where the server doesn't tell them.

    bool operator==(const DesktopFacts&) const = default;
};

/// Reads the facts, and tells which events may have changed them.
class DesktopWatch {
public:
    explicit DesktopWatch(Connection& connection);

    DesktopFacts read();
    bool isChange(const xcb_generic_event_t& event) const;

private:
    QList<Monitor> monitors();
    QColorSpace colorSpace(int monitorIndex);

    Connection& m_connection;
    xcb_atom_t m_compositor = XCB_NONE; ///< The selection that a compositor owns.
    std::optional<std::uint8_t> m_randrEvents; ///< The first code of theirs.
    std::optional<std::uint8_t> m_fixesEvents;
    std::vector<xcb_atom_t> m_profiles; ///< The properties, by monitor.
};

/// The monitors of now, without their colours.
QList<Monitor> readMonitors(Connection& connection);

} // namespace Platform::X11
