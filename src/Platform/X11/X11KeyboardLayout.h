#pragma once

#include "Platform/KeyboardLayout.h"

#include <memory>

namespace Platform {

/// The layout of the X server's keyboard, followed on a connection of its own. Where there is no
/// server, no key has a character; when it goes away, the last layout stays.
class X11KeyboardLayout final : public KeyboardLayout {
public:
    /// @p display is as in DISPLAY; empty means that very variable. Waits for the server.
    explicit X11KeyboardLayout(const QString& display = {});
    ~X11KeyboardLayout() override;
    X11KeyboardLayout(const X11KeyboardLayout&) = delete;
    X11KeyboardLayout& operator=(const X11KeyboardLayout&) = delete;

    std::optional<QString> character(quint32 virtualKeyCode) const override;

private:
    class Follower;

    std::unique_ptr<Follower> m_follower;
};

} // namespace Platform
