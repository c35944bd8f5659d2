#pragma once

#include "Harness/XServer.h"

#include <QImage>

#include <cstdint>
#include <initializer_list>

struct xcb_connection_t;
struct xcb_screen_t;

namespace Harness {

/// Another program on an X server, and the user in front of it. Pixels are those of the root, keys
/// are evdev codes, and everything has happened in the server once a call is back.
class XClient {
public:
    explicit XClient(const QString& display = qEnvironmentVariable("DISPLAY"));
    ~XClient();
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    QRect rect() const;
    QImage picture() const; ///< What a person would see.

    int windowCount() const; ///< Of all programs, those out of sight included.
    std::uint32_t focus() const;
    void setFocus(std::uint32_t window) const;
    void takeFocus() const; ///< To a window of its own, which counts the keys that are pressed.
    bool hasFocus() const { return focus() == m_window; }
    void lower(std::uint32_t window) const; ///< Below all others.

    void press(quint8 key) const;
    void release(quint8 key) const;
    /// Presses the keys in turn and releases them in reverse, at later times.
    void type(std::initializer_list<quint8> keys);
    void click() const;
    /// Lets the server's clock pass this many milliseconds. The only way to hold a key down.
    void letPass(quint32 milliseconds);
    /// How often a key went down that comes here, repeats included, since this was last asked.
    int takePresses();

    /// Keys repeat from the first moment on, every few milliseconds.
    void repeatFast() const;
    void setLayout(quint8 layout) const;
    void lockModifiers(quint8 mask) const;
    quint16 modifiers() const; ///< The modifiers in force.
    void setModifierKey(int modifier, quint8 key) const; ///< The only key of that modifier.

    bool grab(quint8 key, quint16 modifiers) const; ///< False when another program has it.
    void ungrab(quint8 key, quint16 modifiers) const;
    bool grabKeyboard() const; ///< False when another program has it.
    void ungrabKeyboard() const;
    bool canGrabKeyboard() const; ///< And gives it back.

    void stopServer() const; ///< No other program gets an answer until it goes on.
    void letServerGoOn() const;

    /// Windows, pixmaps and all else that the clients with a connection in this process hold. Who
    /// asks for news of a window's shape, as window managers and compositors do, adds to what its
    /// owner has, so that these don't count.
    int resourcesOf(qint64 processID) const;

private:
    void fake(quint8 event, quint8 detail) const;
    void finish() const { static_cast<void>(focus()); }
    quint32 serverTime();
    int resources(std::uint32_t client) const;

    xcb_connection_t* const m_xcb;
    const xcb_screen_t* const m_screen;
    const std::uint32_t m_window;
    int m_presses = 0;
};

/// Gives the server another keyboard, with the arguments of setxkbmap.
bool setKeyboard(const XServer& server, const QByteArrayList& arguments);

} // namespace Harness
