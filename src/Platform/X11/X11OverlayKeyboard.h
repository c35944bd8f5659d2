#pragma once

#include "Platform/OverlayKeyboard.h"

#include <memory>

namespace Platform {

/// Keys by the raw events of the X Input extension, which are told whoever has the focus or a grab;
/// a grab of our own keeps them from everybody else. It has a connection of its own to the X
/// server, which is silent while there is no overlay.
class X11OverlayKeyboard final : public OverlayKeyboard {
    Q_OBJECT

public:
    /// Connects to the server that DISPLAY names. Where that fails, no key is ever told.
    X11OverlayKeyboard();
    ~X11OverlayKeyboard() override;

    void take() override;
    void giveBack() override;

private:
    class Connection;

    std::unique_ptr<Connection> m_connection; ///< Null where there is none.
};

} // namespace Platform
