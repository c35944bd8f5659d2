#include "Platform/DesktopWords.h"

#include <gtest/gtest.h>

namespace {

std::string shown(const char* source)
{
    return Platform::inDesktopWords(QString::fromUtf8(source)).toStdString();
}

TEST(DesktopWords, keysHaveTheNamesOfADesktopsKeyboard)
{
    const auto check = [](const char* name, const char* source, const char* here) {
        SCOPED_TRACE(name);
        EXPECT_EQ(shown(source), here);
    };
    check("shortcut", "⇧⌘6", "Ctrl+Shift+6");
    check("inBrackets", "Copy All Text (⌘C)", "Copy All Text (Ctrl+C)");
    check("beforeMoreWords", "Text recognition didn't finish (⌘T to retry)",
        "Text recognition didn't finish (Ctrl+T to retry)");
    check("allInOrder", "⌃⌥⇧⌘A", "Ctrl+Alt+Shift+Super+A");
    check("compound", "(⌥-drag the capture does it too)", "(Alt-drag the capture does it too)");
    check("list", "no ⌘, ⌃ or ⌥", "no Ctrl, Super or Alt");
    check("commaIsAKey", "⌘, is unavailable", "Ctrl+, is unavailable");
    check("minusIsAKey", "⌘- is unavailable", "Ctrl+- is unavailable");
    check("minusAtTheEnd", "⌘-", "Ctrl+-");
    check("bracketIsAKey", "⌘)", "Ctrl+)");
    check("namedKey", "⌃⌘Space", "Ctrl+Super+Space");
    check("signOfAKey", "⌥⌫ or ⎋", "Alt+Backspace or Esc");
    check("signOfTwoCharacters", "⌘?⃝", "Ctrl+Help");
    check("arrowKey", "⌘→", "Ctrl+Right");
    check("arrow", "File → Open", "File → Open");
    check("several", "⌘Z, ⇧⌘Z", "Ctrl+Z, Ctrl+Shift+Z");
    check("aloneAtTheEnd", "with ⌃", "with Super");
    check("nothingToSay", "Drag a region · space: pick a window · esc: cancel",
        "Drag a region · space: pick a window · esc: cancel");
    check("recorder", "Click, then press the keys. Esc cancels, Delete restores ⇧⌘6.",
        "Click, then press the keys. Esc cancels, Backspace restores Ctrl+Shift+6.");
}

TEST(DesktopWords, nobodyReadsOfWhatThisSystemDoesNotHave)
{
    for (const auto* const source :
        {"macOS didn't return an image. Try again — if it keeps happening, check Screen Recording "
         "in System Settings › Privacy & Security.",
            "Captures are blocked until Lumenote is allowed to record the screen. Turn Lumenote "
            "on under Privacy & Security → Screen & System Audio Recording, then try again. You "
            "may need to quit and reopen Lumenote for the change to take effect.",
            "Vision is building its text models — once per install, and again after a macOS "
            "update; this capture is waiting on that",
            "Vision is building its text models. Once per install, and again after a macOS "
            "update.",
            "Turn Lumenote on in System Settings › General › Login Items.",
            "No space left on device\n\nYou can set this directly in System Settings › General › "
            "Login Items.",
            "Open Login Items", "Open Settings", "Screen Recording is off — captures are blocked",
            "Add ⌘, ⌃ or ⌥",
            "⇧⌘6 is already taken — by another app, or by macOS. Try a different combination."}) {
        const auto here = QString::fromStdString(shown(source));
        SCOPED_TRACE(here.toStdString());
        for (const auto* const foreign : {"macOS", "Vision", "System Settings", "Login Items",
                 "Privacy & Security", "Open Settings", "Screen Recording", "⌘", "⌃", "⌥"})
            EXPECT_FALSE(here.contains(QString::fromUtf8(foreign)));
    }
    EXPECT_EQ(shown("⇧⌘6 is already taken — by another app, or by macOS. Try "
                    "a different combination."),
        "Ctrl+Shift+6 is already taken — by another app, or by your desktop. Try a different "
        "combination.");
}

} // namespace
