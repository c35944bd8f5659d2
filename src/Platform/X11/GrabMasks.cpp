#include "Platform/X11/GrabMasks.h"

#include "Platform/HotKeyRegistrar.h"
#include "Platform/VirtualKeys.h"

#include <algorithm>
#include <array>
#include <span>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Platform::X11 {

namespace {

struct Replies {
    Owned<xcb_get_modifier_mapping_reply_t> modifiers;
    Owned<xcb_get_keyboard_mapping_reply_t> keys;
};

Result<Replies> askForMappings(WatchedConnection& connection)
{
    auto* const xcb = connection.get();
    const auto& setup = connection.setup();
    const auto modifiers = xcb_get_modifier_mapping(xcb);
    const auto keys =
        xcb_get_keyboard_mapping(xcb, setup.min_keycode, setup.max_keycode - setup.min_keycode + 1);
    if (auto finished = connection.finishRequests(); !finished) {
        xcb_discard_reply(xcb, modifiers.sequence);
        xcb_discard_reply(xcb, keys.sequence);
        return tl::make_unexpected(finished.error());
    }
    Replies replies{.modifiers = Owned<xcb_get_modifier_mapping_reply_t>(
                        xcb_get_modifier_mapping_reply(xcb, modifiers, nullptr)),
        .keys = Owned<xcb_get_keyboard_mapping_reply_t>(
            xcb_get_keyboard_mapping_reply(xcb, keys, nullptr))};
    if (!replies.modifiers || !replies.keys)
        return tl::make_unexpected(Error{.message = QStringLiteral("the X server tells no keys"),
            .code = HotKeyStatus::notConnected});
    return replies;
}

/// What a key types, in all layouts and levels.
std::span<const xcb_keysym_t> symbolsOf(
    const xcb_get_keyboard_mapping_reply_t& keys, int keyCode, int lowestKeyCode)
{
    const std::span all(xcb_get_keyboard_mapping_keysyms(&keys),
        static_cast<size_t>(xcb_get_keyboard_mapping_keysyms_length(&keys)));
    const size_t perKey = keys.keysyms_per_keycode;
    const auto first = static_cast<size_t>(std::max(keyCode - lowestKeyCode, 0)) * perKey;
    return first + perKey <= all.size() ? all.subspan(first, perKey)
                                        : std::span<const xcb_keysym_t>();
}

struct Role {
    std::array<xcb_keysym_t, 2> symbols;
    quint16 ModifierMasks::*mask;
};

constexpr std::array roles{
    Role{{XKB_KEY_Alt_L, XKB_KEY_Alt_R}, &ModifierMasks::alt},
    Role{{XKB_KEY_Super_L, XKB_KEY_Super_R}, &ModifierMasks::super},
    Role{{XKB_KEY_Num_Lock, XKB_KEY_Num_Lock}, &ModifierMasks::numLock},
    Role{{XKB_KEY_Scroll_Lock, XKB_KEY_Scroll_Lock}, &ModifierMasks::scrollLock},
};

void note(ModifierMasks& masks, std::span<const xcb_keysym_t> symbols, quint16 mask)
{
    for (const auto& role : roles)
        if (std::ranges::find_first_of(symbols, role.symbols) != symbols.end())
            masks.*role.mask = mask;
}

} // namespace

Result<ModifierMasks> lookUpModifiers(WatchedConnection& connection)
{
    const auto replies = askForMappings(connection);
    if (!replies)
        return tl::make_unexpected(replies.error());
    const size_t keysPerModifier = replies->modifiers->keycodes_per_modifier;
    const std::span keyCodes(xcb_get_modifier_mapping_keycodes(replies->modifiers.get()),
        static_cast<size_t>(xcb_get_modifier_mapping_keycodes_length(replies->modifiers.get())));
    ModifierMasks masks;
    // The first three, Shift, Lock and Control, are the same everywhere.
    for (size_t modifier = XCB_MAP_INDEX_1; modifier <= XCB_MAP_INDEX_5; ++modifier)
        for (const auto keyCode : keyCodes.subspan(modifier * keysPerModifier, keysPerModifier))
            note(masks, symbolsOf(*replies->keys, keyCode, connection.setup().min_keycode),
                static_cast<quint16>(1U << modifier));
    return masks;
}

QList<quint16> grabMasks(const ModifierMasks& masks, quint32 modifiers)
{
    struct Wanted {
        quint32 modifier;
        quint16 mask;
    };
    const std::array wanted{
        Wanted{HotKeyModifier::command, XCB_MOD_MASK_CONTROL},
        Wanted{HotKeyModifier::shift, XCB_MOD_MASK_SHIFT},
        Wanted{HotKeyModifier::option, masks.alt},
        Wanted{HotKeyModifier::control, masks.super},
    };
    quint16 base = 0;
    for (const auto& [modifier, mask] : wanted) {
        if ((modifiers & modifier) == 0)
            continue;
        if (mask == 0)
            return {};
        base |= mask;
    }
    QList<quint16> states{base};
    for (const quint16 lock : {quint16(XCB_MOD_MASK_LOCK), masks.numLock, masks.scrollLock}) {
        if (states.contains(base | lock)) // No such key, one already seen, or wanted itself.
            continue;
        const auto without = states;
        for (const auto state : without)
            states.append(state | lock);
    }
    return states;
}

} // namespace Platform::X11
