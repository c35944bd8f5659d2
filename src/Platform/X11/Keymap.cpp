#include "Platform/X11/Keymap.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <utility>
#include <xkbcommon/xkbcommon-x11.h>

namespace Platform::X11 {

namespace {

struct Accent {
    xkb_keysym_t deadKey;
    char32_t character;
};

constexpr std::array accents{
    Accent{XKB_KEY_dead_grave, U'`'},
    Accent{XKB_KEY_dead_acute, U'´'},
    Accent{XKB_KEY_dead_circumflex, U'^'},
    Accent{XKB_KEY_dead_tilde, U'~'},
    Accent{XKB_KEY_dead_macron, U'¯'},
    Accent{XKB_KEY_dead_breve, U'˘'},
    Accent{XKB_KEY_dead_abovedot, U'˙'},
    Accent{XKB_KEY_dead_diaeresis, U'¨'},
    Accent{XKB_KEY_dead_abovering, U'˚'},
    Accent{XKB_KEY_dead_doubleacute, U'˝'},
    Accent{XKB_KEY_dead_caron, U'ˇ'},
    Accent{XKB_KEY_dead_cedilla, U'¸'},
    Accent{XKB_KEY_dead_ogonek, U'˛'},
};

std::optional<QString> typed(xkb_keysym_t symbol)
{
    const auto* const accent = std::ranges::find(accents, symbol, &Accent::deadKey);
    const char32_t character =
        accent == accents.end() ? xkb_keysym_to_utf32(symbol) : accent->character;
    if (character == 0 || !QChar::isPrint(character))
        return std::nullopt;
    return QString::fromUcs4(&character, 1);
}

template <typename T, void (*unreference)(T*)>
struct Unreferenced {
    void operator()(T* object) const { unreference(object); }
};
using Context = std::unique_ptr<xkb_context, Unreferenced<xkb_context, xkb_context_unref>>;
using State = std::unique_ptr<xkb_state, Unreferenced<xkb_state, xkb_state_unref>>;

} // namespace

std::optional<Keymap> Keymap::read(xcb_connection_t* connection, int device)
{
    // The keymap comes from the server as a whole; no file and no variable has a say in it.
    const Context context(xkb_context_new(static_cast<xkb_context_flags>(
        XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
    if (!context)
        return std::nullopt;
    Handle keymap(xkb_x11_keymap_new_from_device(
        context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap)
        return std::nullopt;
    const State state(xkb_x11_state_new_from_device(keymap.get(), connection, device));
    if (!state)
        return std::nullopt;
    const auto layout = xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    return Keymap(std::move(keymap), layout);
}

Keymap::Keymap(Handle keymap, quint32 initialLayout)
    : m_keymap(std::move(keymap))
    , m_initialLayout(initialLayout)
{
}

bool Keymap::isLatin(quint32 layout) const
{
    std::bitset<26> letters;
    const auto last = xkb_keymap_max_keycode(m_keymap.get());
    for (auto key = xkb_keymap_min_keycode(m_keymap.get()); key <= last; ++key) {
        const auto letter = symbol(key, layout, 0);
        if (letter && *letter >= XKB_KEY_a && *letter <= XKB_KEY_z)
            letters.set(*letter - XKB_KEY_a);
    }
    return letters.count() > letters.size() / 2;
}

std::optional<quint32> Keymap::firstLatinLayout() const
{
    for (quint32 layout = 0; layout < xkb_keymap_num_layouts(m_keymap.get()); ++layout)
        if (isLatin(layout))
            return layout;
    return std::nullopt;
}

std::optional<QString> Keymap::character(quint32 keyCode, quint32 layout) const
{
    for (const quint32 level : {0U, 1U})
        if (const auto found = symbol(keyCode, layout, level))
            if (auto text = typed(*found))
                return text;
    return std::nullopt;
}

std::optional<xkb_keysym_t> Keymap::symbol(quint32 keyCode, quint32 layout, quint32 level) const
{
    const xkb_keysym_t* symbols = nullptr;
    // Keys that are the same in all layouts have one only; others are wrapped around.
    const int count =
        xkb_keymap_key_get_syms_by_level(m_keymap.get(), keyCode, layout, level, &symbols);
    return count == 1 ? std::optional(*symbols) : std::nullopt;
}

} // namespace Platform::X11
