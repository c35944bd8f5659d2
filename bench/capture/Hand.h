#pragma once

#include <QPoint>

#include <xcb/xcb.h>

#include <cstdint>

namespace Lumenote::Bench {

/// Keys and the mouse of a display, as if there were somebody: of the one that DISPLAY names.
class Hand {
public:
    Hand();
    ~Hand();
    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;

    // The hot key that the program comes with is Control, Shift and 6.
    void holdModifiers() const;
    void pressHotKey() const; ///< With the modifiers held.
    void releaseHotKey() const; ///< With its modifiers.
    void typeEscape() const;
    void moveTo(QPoint pixel) const;
    void pressButton() const;
    void releaseButton() const;

private:
    enum class Input : std::uint8_t {
        keyDown = XCB_KEY_PRESS,
        keyUp = XCB_KEY_RELEASE,
        buttonDown = XCB_BUTTON_PRESS,
        buttonUp = XCB_BUTTON_RELEASE,
        motion = XCB_MOTION_NOTIFY
    };
    void send(Input input, std::uint8_t detail, QPoint pixel = {}) const;
    std::uint8_t keyCode(xcb_keysym_t symbol) const;

    xcb_connection_t* m_xcb;
    xcb_window_t m_root;
    std::uint8_t m_six;
    std::uint8_t m_shift;
    std::uint8_t m_control;
    std::uint8_t m_escape;
};

} // namespace Lumenote::Bench
