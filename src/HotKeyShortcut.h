#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

class QKeyEvent;

namespace Platform {
class KeyboardLayout;
class UserDefaults;
} // namespace Platform

namespace Lumenote {

/// The capture shortcut: a key by its place on the keyboard, and modifiers. The key stays the same
/// when the layout changes; only its name follows.
struct HotKeyShortcut {
    quint32 keyCode = 22; ///< A virtual key code (Platform/VirtualKeys.h); 22 carries 6.
    quint32 modifiers = 0x300; ///< Bits of Platform::HotKeyModifier; ⇧⌘.

    bool operator==(const HotKeyShortcut&) const = default;

    /// What is stored, or the default where that is nothing or can't be used.
    static HotKeyShortcut load(const Platform::UserDefaults& defaults);
    void store(Platform::UserDefaults& defaults) const;
    static void removeStored(Platform::UserDefaults& defaults);

    /// The shortcut that a key press types; nothing for any other event, for modifiers, dead keys,
    /// and keys without a virtual key code.
    static std::optional<HotKeyShortcut> fromEvent(const QKeyEvent& event);

    /// Whether it has one of ⌘, ⌥ and ⌃. With Shift alone it would be a letter to type.
    bool canBeRegistered() const;

    /// "⇧⌘6": the signs of the modifiers and the name of the key.
    QString displayString(const Platform::KeyboardLayout& layout) const;
    static QString keyName(quint32 keyCode, const Platform::KeyboardLayout& layout);

    /// The name of a key that is called the same in every layout, such as an arrow.
    static std::optional<QString> fixedKeyName(quint32 keyCode);

    /// What the key types in the current layout, in upper case.
    static std::optional<QString> layoutCharacter(
        quint32 keyCode, const Platform::KeyboardLayout& layout);
};

} // namespace Lumenote
