#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <xkbcommon/xkbcommon.h>

struct xcb_connection_t;

namespace Platform::X11 {

/// What the keys of the X server's keyboard type, in each of its layouts.
class Keymap {
public:
    /// Asks the server, and waits for it; nothing where it can't tell. The connection must have set
    /// up the keyboard extension.
    static std::optional<Keymap> read(xcb_connection_t* connection, int device);

    /// The layout in force when the keymap was read.
    quint32 initialLayout() const { return m_initialLayout; }

    /// Whether most Latin letters can be typed without modifiers.
    bool isLatin(quint32 layout) const;
    std::optional<quint32> firstLatinLayout() const;

    /// What the key types by itself or, where that is nothing, with Shift, as the keypad does. A
    /// dead key types its accent.
    std::optional<QString> character(quint32 keyCode, quint32 layout) const;

private:
    struct Unreference {
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };
    using Handle = std::unique_ptr<xkb_keymap, Unreference>;

    Keymap(Handle keymap, quint32 initialLayout);
    std::optional<xkb_keysym_t> symbol(quint32 keyCode, quint32 layout, quint32 level) const;

    Handle m_keymap;
    quint32 m_initialLayout;
};

} // namespace Platform::X11
