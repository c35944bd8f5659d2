#pragma once

#include "Harness/XServer.h"

#include <initializer_list>

struct xcb_connection_t;

namespace Harness {

/// A user's fingers and, at the same time, another program on an X server. Keys are evdev codes,
/// and everything has happened in the server once a call is back.
class TestKeyboard {
public:
    explicit TestKeyboard(const QString& display);
    TestKeyboard(const TestKeyboard&) = delete;
    TestKeyboard& operator=(const TestKeyboard&) = delete;
    ~TestKeyboard();

    void press(quint8 key);
    void release(quint8 key);
    /// Presses the keys in turn and releases them in reverse, at later times.
    void type(std::initializer_list<quint8> keys);
    /// Lets the server's clock pass this many milliseconds. The only way to hold a key down.
    void letPass(quint32 milliseconds);

    /// Keys repeat from the first moment on, every few milliseconds.
    void repeatFast();
    void setLayout(quint8 layout);
    void lockModifiers(quint8 mask);
    quint16 modifiers() const; ///< The modifiers in force.
    void setModifierKey(int modifier, quint8 key); ///< The only key of that modifier.

    bool grab(quint8 key, quint16 modifiers); ///< False when another program has it.
    void ungrab(quint8 key, quint16 modifiers);
    bool grabWholeKeyboard();
    int takePresses(); ///< How often a key that is grabbed here went down, repeats included.

    void stopServer(); ///< No other program gets an answer until it goes on.
    void letServerGoOn();

private:
    void finish() const;
    quint32 serverTime();

    xcb_connection_t* m_connection;
    quint32 m_root = 0;
    quint32 m_window = 0;
    int m_presses = 0;
};

/// Gives the server another keyboard, with the arguments of setxkbmap.
bool setKeyboard(const XServer& server, const QStringList& arguments);

} // namespace Harness
