#pragma once

#include <QtGlobal>

#include <optional>

/// How a shortcut names keys and modifiers, the same on every system and in every layout, and what
/// stands for them on a PC keyboard under Linux.
namespace Platform {

/// Bits of a shortcut's modifiers, with the key of a PC keyboard.
namespace HotKeyModifier {
inline constexpr quint32 command = 0x100; ///< ⌘, Ctrl
inline constexpr quint32 shift = 0x200; ///< ⇧, Shift
inline constexpr quint32 option = 0x800; ///< ⌥, Alt
inline constexpr quint32 control = 0x1000; ///< ⌃, Super
} // namespace HotKeyModifier

/// X11 and Wayland count the kernel's key codes from here: their code, and so
/// QKeyEvent::nativeScanCode(), is the evdev code and this.
inline constexpr quint32 displayKeyCodeOffset = 8;

/// The evdev key code (linux/input-event-codes.h) of the key at the place of a virtual key code;
/// nothing for a key that no PC keyboard has, and for modifiers, which are no keys of a shortcut.
std::optional<quint32> evdevKeyCode(quint32 virtualKeyCode);

/// The other way round.
std::optional<quint32> virtualKeyCode(quint32 evdevKeyCode);

} // namespace Platform
