#include "Platform/VirtualKeys.h"

#include <algorithm>
#include <array>

namespace Platform {

namespace {

struct Key {
    quint32 virtualCode;
    quint32 evdevCode;
};

/// By physical position; the names are those of a US keyboard. Where the two kinds of keyboard have
/// different keys at one place, the place counts: Print Screen, Scroll Lock and Pause stand where
/// F13 to F15 are, Insert where Help is, and Num Lock where Clear is.
constexpr std::array keys{
    // Digits, and what stands beside them
    Key{50, 41}, // `
    Key{18, 2}, // 1
    Key{19, 3}, // 2
    Key{20, 4}, // 3
    Key{21, 5}, // 4
    Key{23, 6}, // 5
    Key{22, 7}, // 6
    Key{26, 8}, // 7
    Key{28, 9}, // 8
    Key{25, 10}, // 9
    Key{29, 11}, // 0
    Key{27, 12}, // -
    Key{24, 13}, // =
    Key{51, 14}, // Backspace
    // The upper row of letters
    Key{48, 15}, // Tab
    Key{12, 16}, // Q
    Key{13, 17}, // W
    Key{14, 18}, // E
    Key{15, 19}, // R
    Key{17, 20}, // T
    Key{16, 21}, // Y
    Key{32, 22}, // U
    Key{34, 23}, // I
    Key{31, 24}, // O
    Key{35, 25}, // P
    Key{33, 26}, // [
    Key{30, 27}, // ]
    Key{36, 28}, // Return
    // The middle row
    Key{0, 30}, // A
    Key{1, 31}, // S
    Key{2, 32}, // D
    Key{3, 33}, // F
    Key{5, 34}, // G
    Key{4, 35}, // H
    Key{38, 36}, // J
    Key{40, 37}, // K
    Key{37, 38}, // L
    Key{41, 39}, // ;
    Key{39, 40}, // '
    Key{42, 43}, // \ .
    // The lower row
    Key{10, 86}, // between Shift and Z on European keyboards
    Key{6, 44}, // Z
    Key{7, 45}, // X
    Key{8, 46}, // C
    Key{9, 47}, // V
    Key{11, 48}, // B
    Key{45, 49}, // N
    Key{46, 50}, // M
    Key{43, 51}, // ,
    Key{47, 52}, // .
    Key{44, 53}, // /
    Key{49, 57}, // Space
    // The function row
    Key{53, 1}, // Escape
    Key{122, 59}, // F1
    Key{120, 60}, // F2
    Key{99, 61}, // F3
    Key{118, 62}, // F4
    Key{96, 63}, // F5
    Key{97, 64}, // F6
    Key{98, 65}, // F7
    Key{100, 66}, // F8
    Key{101, 67}, // F9
    Key{109, 68}, // F10
    Key{103, 87}, // F11
    Key{111, 88}, // F12
    Key{105, 99}, // F13, Print Screen
    Key{107, 70}, // F14, Scroll Lock
    Key{113, 119}, // F15, Pause
    Key{106, 186}, // F16
    Key{64, 187}, // F17
    Key{79, 188}, // F18
    Key{80, 189}, // F19
    Key{90, 190}, // F20
    // Between letters and keypad
    Key{114, 110}, // Help, Insert
    Key{115, 102}, // Home
    Key{116, 104}, // Page Up
    Key{117, 111}, // Delete
    Key{119, 107}, // End
    Key{121, 109}, // Page Down
    Key{123, 105}, // Left
    Key{124, 106}, // Right
    Key{125, 108}, // Down
    Key{126, 103}, // Up
    Key{110, 127}, // Menu
    // The keypad
    Key{71, 69}, // Clear, Num Lock
    Key{75, 98}, // /
    Key{67, 55}, // *
    Key{78, 74}, // -
    Key{69, 78}, // +
    Key{76, 96}, // Enter
    Key{81, 117}, // =
    Key{65, 83}, // .
    Key{82, 82}, // 0
    Key{83, 79}, // 1
    Key{84, 80}, // 2
    Key{85, 81}, // 3
    Key{86, 75}, // 4
    Key{87, 76}, // 5
    Key{88, 77}, // 6
    Key{89, 71}, // 7
    Key{91, 72}, // 8
    Key{92, 73}, // 9
    // Sound
    Key{74, 113}, // mute
    Key{73, 114}, // quieter
    Key{72, 115}, // louder
    // Japanese keyboards
    Key{93, 124}, // ¥
    Key{94, 89}, // _
    Key{95, 121}, // , of the keypad
    Key{102, 123}, // Eisu
    Key{104, 122}, // Kana
};

std::optional<quint32> counterpart(quint32 code, quint32 Key::*from, quint32 Key::*to)
{
    const auto* const key = std::ranges::find(keys, code, from);
    return key == keys.end() ? std::nullopt : std::optional(key->*to);
}

} // namespace

std::optional<quint32> evdevKeyCode(quint32 virtualKeyCode)
{
    return counterpart(virtualKeyCode, &Key::virtualCode, &Key::evdevCode);
}

std::optional<quint32> virtualKeyCode(quint32 evdevKeyCode)
{
    return counterpart(evdevKeyCode, &Key::evdevCode, &Key::virtualCode);
}

} // namespace Platform
