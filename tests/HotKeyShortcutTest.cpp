#include "HotKeyShortcut.h"

#include "Fakes/FakeKeyboardLayout.h"
#include "Fakes/FakeUserDefaults.h"
#include "Platform/VirtualKeys.h"

#include <QDateTime>
#include <QKeyEvent>

#include <gtest/gtest.h>

using Lumenote::HotKeyShortcut;

namespace {

TEST(HotKeyShortcutTest, whatCantBeUsedLoadsAsTheDefault)
{
    const HotKeyShortcut usual{.keyCode = 22, .modifiers = 768};
    const auto check = [&](const char* name, const QVariant& code, const QVariant& modifiers,
                           const HotKeyShortcut& shortcut) {
        SCOPED_TRACE(name);
        Fakes::FakeUserDefaults defaults;
        if (code.isValid())
            defaults.setValue(u"HotKeyCode"_qs, code);
        if (modifiers.isValid())
            defaults.setValue(u"HotKeyModifiers"_qs, modifiers);
        const auto before = defaults.values;
        EXPECT_EQ(HotKeyShortcut::load(defaults), shortcut);
        EXPECT_EQ(defaults.values, before);
    };
    check("nothingStored", {}, {}, usual);
    check("modifiersAlone", {}, 0x100, usual);
    check("both", 49, 0x1100, {.keyCode = 49, .modifiers = 0x1100});
    check("highestCode", 127, 0x100, {.keyCode = 127, .modifiers = 0x100});
    check("codeTooHigh", 128, 0x100, usual);
    check("codeBeyond32Bits", 4294967296LL + 49, 0x100, usual);
    check("shiftOnly", 49, 0x200, usual);
    check("noModifier", 49, 0, usual);
    check("modifiersBeyond32Bits", 49, 4294967296LL + 0x100, usual);
    check("unknownBitsStay", 49, 0x80000100U, {.keyCode = 49, .modifiers = 0x80000100U});
    check("codeAsText", u"49"_qs, 0x100, {.keyCode = 49, .modifiers = 0x100});
    check("codeIsA", u"space"_qs, 0x100, {.keyCode = 0, .modifiers = 0x100});
    check("modifiersAreADate", 49, QDateTime::currentDateTimeUtc(), usual);
}

TEST(HotKeyShortcutTest, whatIsStoredLoadsUntilItIsRemoved)
{
    Fakes::FakeUserDefaults defaults;
    const HotKeyShortcut shortcut{.keyCode = 111, .modifiers = 0x1900};
    shortcut.store(defaults);
    EXPECT_EQ(
        defaults.values, (QVariantMap{{u"HotKeyCode"_qs, 111U}, {u"HotKeyModifiers"_qs, 0x1900U}}));
    EXPECT_EQ(HotKeyShortcut::load(defaults), shortcut);
    HotKeyShortcut::removeStored(defaults);
    EXPECT_EQ(defaults.values, QVariantMap());
}

TEST(HotKeyShortcutTest, itsNameFollowsTheLayout)
{
    Fakes::FakeKeyboardLayout german;
    german.characters = {
        {22, u"6"_qs}, {16, u"z"_qs}, {27, u"ß"_qs}, {41, u"ö"_qs}, {50, {}}, {49, u" "_qs}};

    const auto check = [&](const char* name, const HotKeyShortcut& shortcut, const QString& shown) {
        EXPECT_EQ(shortcut.displayString(german), shown) << name;
    };
    check("default", {}, u"⇧⌘6"_qs);
    check("everyModifierInItsPlace", {.keyCode = 16, .modifiers = 0x1b00}, u"⌃⌥⇧⌘Z"_qs);
    check("namedBeforeTyped", {.keyCode = 49, .modifiers = 0x1100}, u"⌃⌘Space"_qs);
    check("namedInTwoUnits", {.keyCode = 114, .modifiers = 0x800}, u"⌥?⃝"_qs);
    check("umlaut", {.keyCode = 41, .modifiers = 0x100}, u"⌘Ö"_qs);
    check("upperCaseIsLonger", {.keyCode = 27, .modifiers = 0x100}, u"⌘SS"_qs);
    check("noSuchKey", {.keyCode = 127, .modifiers = 0x100}, u"⌘Key 127"_qs);
}

// Real keys, in real windows, are typed in tests/Platform/X11/KeyEventsTest.cpp.
TEST(HotKeyShortcutTest, onlyAKeyPressWithAPlaceIsAShortcut)
{
    using S = HotKeyShortcut;
    const auto check = [](const char* name, int key, Qt::KeyboardModifiers modifiers,
                           quint32 scanCode, const std::optional<S>& shortcut,
                           QEvent::Type type = QEvent::KeyPress) {
        EXPECT_EQ(S::fromEvent(QKeyEvent(type, key, modifiers, scanCode, 0, 0)), shortcut) << name;
    };
    const auto ctrl = Qt::ControlModifier;
    check("noModifier", Qt::Key_A, {}, 38, S{.keyCode = 0, .modifiers = 0});
    check("keypad", Qt::Key_1, Qt::MetaModifier | Qt::KeypadModifier, 87,
        S{.keyCode = 83, .modifiers = 0x1000});
    check("otherFlagsAreDropped", Qt::Key_A, Qt::GroupSwitchModifier | ctrl, 38,
        S{.keyCode = 0, .modifiers = 0x100});
    check("release", Qt::Key_A, ctrl, 38, {}, QEvent::KeyRelease);
    check("modifierByItself", Qt::Key_Control, ctrl, 37, {});
    check("modifierInAnotherPlace", Qt::Key_CapsLock, {}, 9, {});
    check("deadKey", Qt::Key_Dead_Circumflex, ctrl, 49, {});
    check("withoutScanCode", Qt::Key_A, ctrl, 0, {});
}

TEST(VirtualKeysTest, everyKeyHasOnePlaceAndEveryPlaceOneKey)
{
    int known = 0;
    for (quint32 number = 0; number < 256; ++number) {
        if (const auto place = Platform::evdevKeyCode(number)) {
            ++known;
            EXPECT_EQ(Platform::virtualKeyCode(*place), number) << "place " << *place;
        }
        if (const auto code = Platform::virtualKeyCode(number)) {
            EXPECT_EQ(Platform::evdevKeyCode(*code), number) << "code " << *code;
        }
    }
    EXPECT_GT(known, 0);
}

} // namespace
