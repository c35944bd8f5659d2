#include "Platform/DesktopWords.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace Platform {

namespace {

struct Wording {
    QStringView source;
    QStringView here;
};

/// Texts, or ends of texts that begin with a name, as they stand in the sources; and what is true
/// of an X11 desktop on Linux.
constexpr std::array wordings{
    // Recording the screen: no settings, and nothing to turn on. The server decides.
    Wording{u"Screen Recording is off — captures are blocked",
        u"The screen can't be recorded — captures are blocked"},
    Wording{u"Lumenote needs Screen Recording permission",
        u"Lumenote needs permission to record the screen"},
    Wording{u"Turn Lumenote on under Privacy & Security → Screen & System Audio Recording, then "
            u"try again. You may need to quit and reopen Lumenote for the change to take effect.",
        u"The X server decides that when a program connects, so quit and reopen Lumenote after a "
        u"change."},
    Wording{u"Turn Lumenote on under Privacy & Security → Screen & System Audio Recording, then "
            u"quit and reopen Lumenote.",
        u"The X server lets a program record the screen when it connects as a trusted client, and "
        u"Lumenote didn't. Over ssh, connect with ssh -Y instead of ssh -X. In a container or "
        u"sandbox, let it use the X authority of your session. Then quit and reopen Lumenote."},
    Wording{u"Open Settings", u"Show How"},
    Wording{u"macOS didn't return an image. Try again — if it keeps happening, check Screen "
            u"Recording in System Settings › Privacy & Security.",
        u"The X server didn't return an image. Try again — if it keeps happening, run lumenote "
        u"--self-test in a terminal, which says why."},

    // The recogniser prepares itself at each start, and comes with the program.
    Wording{u"Vision is building its text models — once per install, and again after a macOS "
            u"update; this capture is waiting on that",
        u"Text recognition is being prepared — once per start; this capture is waiting on that"},
    Wording{u"Vision is building its text models. Once per install, and again after a macOS "
            u"update.",
        u"Text recognition is being prepared. Once per start."},

    // What starts at login is a folder of entries. Not every desktop has a window for them.
    Wording{u"Turn Lumenote on in System Settings › General › Login Items.",
        u"Lumenote's entry in ~/.config/autostart is switched off. Turn it on there, or in your "
        u"desktop's settings for what starts at login."},
    Wording{u"You can set this directly in System Settings › General › Login Items.",
        u"You can set this directly in ~/.config/autostart, or in your desktop's settings for what "
        u"starts at login."},
    Wording{u"Open Login Items", u"Open Folder"},

    // Keys.
    Wording{u" is already taken — by another app, or by macOS.",
        u" is already taken — by another app, or by your desktop."},
    Wording{u"Esc cancels, Delete restores ", u"Esc cancels, Backspace restores "},
    Wording{u"Add ⌘, ⌃ or ⌥", u"Add Ctrl, Alt or Super"},
};

struct Modifier {
    QChar sign;
    QStringView name;
};

/// In the order in which they are shown.
constexpr std::array modifiers{
    Modifier{u'⌘', u"Ctrl"},
    Modifier{u'⌥', u"Alt"},
    Modifier{u'⇧', u"Shift"},
    Modifier{u'⌃', u"Super"},
};

struct Key {
    QStringView sign;
    QStringView name;
};

/// Signs that are keys wherever they stand.
constexpr std::array keys{
    Key{u"↩", u"Return"},
    Key{u"⌤", u"Enter"},
    Key{u"⇥", u"Tab"},
    Key{u"⌫", u"Backspace"},
    Key{u"⌦", u"Delete"},
    Key{u"⎋", u"Esc"},
    Key{u"⇞", u"Page Up"},
    Key{u"⇟", u"Page Down"},
    Key{u"?⃝", u"Help"},
};

/// Signs that are keys behind a modifier only: in prose they are arrows.
constexpr std::array arrowKeys{
    Key{u"←", u"Left"},
    Key{u"→", u"Right"},
    Key{u"↑", u"Up"},
    Key{u"↓", u"Down"},
    Key{u"↖", u"Home"},
    Key{u"↘", u"End"},
};

bool isModifier(QChar character)
{
    return std::ranges::find(modifiers, character, &Modifier::sign) != modifiers.end();
}

/// The names of the modifiers in @p signs, joined as on a desktop.
QString namesOf(QStringView signs)
{
    QStringList names;
    for (const auto& modifier : modifiers)
        if (signs.contains(modifier.sign))
            names.append(modifier.name.toString());
    return names.join(u'+');
}

/// Whether what stands behind modifiers is the key to press with them, and not the rest of a
/// compound ("⌥-drag"), of a list ("⌘, ⌃ or ⌥") or of the sentence.
bool beginsWithKey(QStringView rest)
{
    if (rest.isEmpty() || rest.front().isSpace())
        return false;
    if (rest.front() == u'-')
        return rest.size() == 1 || !rest.at(1).isLetter();
    if (rest.front() == u',')
        return rest.size() < 3 || !isModifier(rest.at(2));
    return true;
}

/// The key that @p rest begins with, null where it is none of the table's.
template <std::size_t count>
const Key* keyAt(QStringView rest, const std::array<Key, count>& table)
{
    const auto* const key =
        std::ranges::find_if(table, [rest](const Key& each) { return rest.startsWith(each.sign); });
    return key == table.end() ? nullptr : key;
}

QString inKeyNames(QStringView text)
{
    QString named;
    bool isBehindModifier = false;
    while (!text.isEmpty()) {
        const auto* const end = std::ranges::find_if_not(text, isModifier);
        const auto signCount = end - text.begin();
        const auto* key = keyAt(text, keys);
        if (key == nullptr && isBehindModifier)
            key = keyAt(text, arrowKeys);
        isBehindModifier = signCount > 0;
        if (isBehindModifier) {
            named += namesOf(text.first(signCount));
            text = text.sliced(signCount);
            if (beginsWithKey(text))
                named += u'+';
        } else if (key != nullptr) {
            named += key->name;
            text = text.sliced(key->sign.size());
        } else {
            named += text.front();
            text = text.sliced(1);
        }
    }
    return named;
}

} // namespace

QString inDesktopWords(const QString& text)
{
    auto words = text;
    for (const auto& wording : wordings)
        words.replace(wording.source.toString(), wording.here.toString());
    return inKeyNames(words);
}

} // namespace Platform
