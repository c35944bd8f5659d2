#include "HotKeyShortcut.h"

#include "Platform/KeyboardLayout.h"
#include "Platform/UserDefaults.h"
#include "Platform/VirtualKeys.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <limits>

namespace Lumenote {

namespace {

namespace Modifier = Platform::HotKeyModifier;

constexpr quint32 highestKeyCode = 127;

const QString& keyCodeKey()
{
    static const QString key = QStringLiteral("HotKeyCode");
    return key;
}

const QString& modifiersKey()
{
    static const QString key = QStringLiteral("HotKeyModifiers");
    return key;
}

struct NamedKey {
    quint32 code;
    QStringView name;
};

constexpr std::array namedKeys{
    NamedKey{49, u"Space"},
    NamedKey{36, u"↩"},
    NamedKey{76, u"⌤"},
    NamedKey{48, u"⇥"},
    NamedKey{51, u"⌫"},
    NamedKey{117, u"⌦"},
    NamedKey{53, u"⎋"},
    NamedKey{123, u"←"},
    NamedKey{124, u"→"},
    NamedKey{126, u"↑"},
    NamedKey{125, u"↓"},
    NamedKey{115, u"↖"},
    NamedKey{119, u"↘"},
    NamedKey{116, u"⇞"},
    NamedKey{121, u"⇟"},
    NamedKey{114, u"?⃝"},
    NamedKey{122, u"F1"},
    NamedKey{120, u"F2"},
    NamedKey{99, u"F3"},
    NamedKey{118, u"F4"},
    NamedKey{96, u"F5"},
    NamedKey{97, u"F6"},
    NamedKey{98, u"F7"},
    NamedKey{100, u"F8"},
    NamedKey{101, u"F9"},
    NamedKey{109, u"F10"},
    NamedKey{103, u"F11"},
    NamedKey{111, u"F12"},
    NamedKey{105, u"F13"},
    NamedKey{107, u"F14"},
    NamedKey{113, u"F15"},
    NamedKey{106, u"F16"},
    NamedKey{64, u"F17"},
    NamedKey{79, u"F18"},
    NamedKey{80, u"F19"},
    NamedKey{90, u"F20"},
};

struct ModifierName {
    quint32 modifier;
    Qt::KeyboardModifier key; ///< Qt calls Ctrl what the Ctrl key does, and Super Meta.
    QChar sign;
};

/// In the order in which they are shown.
constexpr std::array modifierNames{
    ModifierName{Modifier::control, Qt::MetaModifier, u'⌃'},
    ModifierName{Modifier::option, Qt::AltModifier, u'⌥'},
    ModifierName{Modifier::shift, Qt::ShiftModifier, u'⇧'},
    ModifierName{Modifier::command, Qt::ControlModifier, u'⌘'},
};

bool fits(qint64 number)
{
    return number >= 0 && number <= std::numeric_limits<quint32>::max();
}

quint32 modifiersOf(Qt::KeyboardModifiers keys)
{
    quint32 modifiers = 0;
    for (const auto& name : modifierNames)
        if (keys.testFlag(name.key))
            modifiers |= name.modifier;
    return modifiers;
}

/// Whether the key types something, or does something, by itself. What key it is was decided by the
/// layout: any place on the keyboard can carry a modifier.
bool standsForItself(int key)
{
    constexpr std::array modifierKeys{0, int(Qt::Key_unknown), int(Qt::Key_Shift),
        int(Qt::Key_Control), int(Qt::Key_Meta), int(Qt::Key_Alt), int(Qt::Key_AltGr),
        int(Qt::Key_CapsLock), int(Qt::Key_NumLock), int(Qt::Key_ScrollLock), int(Qt::Key_Super_L),
        int(Qt::Key_Super_R), int(Qt::Key_Hyper_L), int(Qt::Key_Hyper_R), int(Qt::Key_Mode_switch)};
    const bool isDead = key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay;
    return !isDead && std::ranges::find(modifierKeys, key) == modifierKeys.end();
}

} // namespace

HotKeyShortcut HotKeyShortcut::load(const Platform::UserDefaults& defaults)
{
    if (!defaults.value(keyCodeKey()).isValid())
        return {};
    const qint64 code = defaults.value(keyCodeKey()).toLongLong();
    const qint64 modifiers = defaults.value(modifiersKey()).toLongLong();
    if (!fits(code) || !fits(modifiers) || code > highestKeyCode)
        return {};
    const HotKeyShortcut stored{.keyCode = quint32(code), .modifiers = quint32(modifiers)};
    return stored.canBeRegistered() ? stored : HotKeyShortcut();
}

void HotKeyShortcut::store(Platform::UserDefaults& defaults) const
{
    defaults.setValue(keyCodeKey(), keyCode);
    defaults.setValue(modifiersKey(), modifiers);
}

void HotKeyShortcut::removeStored(Platform::UserDefaults& defaults)
{
    defaults.remove(keyCodeKey());
    defaults.remove(modifiersKey());
}

std::optional<HotKeyShortcut> HotKeyShortcut::fromEvent(const QKeyEvent& event)
{
    if (event.type() != QEvent::KeyPress || !standsForItself(event.key())
        || event.nativeScanCode() < Platform::displayKeyCodeOffset)
        return std::nullopt;
    const auto code =
        Platform::virtualKeyCode(event.nativeScanCode() - Platform::displayKeyCodeOffset);
    if (!code)
        return std::nullopt;
    return HotKeyShortcut{.keyCode = *code, .modifiers = modifiersOf(event.modifiers())};
}

bool HotKeyShortcut::canBeRegistered() const
{
    return (modifiers & (Modifier::command | Modifier::option | Modifier::control)) != 0;
}

QString HotKeyShortcut::displayString(const Platform::KeyboardLayout& layout) const
{
    QString text;
    for (const auto& name : modifierNames)
        if ((modifiers & name.modifier) != 0)
            text += name.sign;
    return text + keyName(keyCode, layout);
}

QString HotKeyShortcut::keyName(quint32 keyCode, const Platform::KeyboardLayout& layout)
{
    if (const auto name = fixedKeyName(keyCode))
        return *name;
    return layoutCharacter(keyCode, layout)
        .value_or(QStringLiteral("Key ") + QString::number(keyCode));
}

std::optional<QString> HotKeyShortcut::fixedKeyName(quint32 keyCode)
{
    const auto* const key = std::ranges::find(namedKeys, keyCode, &NamedKey::code);
    return key == namedKeys.end() ? std::nullopt : std::optional(key->name.toString());
}

std::optional<QString> HotKeyShortcut::layoutCharacter(
    quint32 keyCode, const Platform::KeyboardLayout& layout)
{
    const auto character = layout.character(keyCode);
    if (!character || character->isEmpty())
        return std::nullopt;
    return character->toUpper();
}

} // namespace Lumenote
