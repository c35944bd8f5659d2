#include "HotKeyShortcut.h"

#include "Fakes/FakeKeyboardLayout.h"
#include "Fakes/FakeUserDefaults.h"
#include "Platform/VirtualKeys.h"

#include <QDateTime>
#include <QKeyEvent>

#include <array>
#include <gtest/gtest.h>

using Lumenote::HotKeyShortcut;

namespace {

TEST(HotKeyShortcutTest, whatCantBeUsedLoadsAsTheDefault)
{
    struct Row {
        const char* name;
        QVariant code;
        QVariant modifiers;
        HotKeyShortcut shortcut;
    };
    const HotKeyShortcut usual{.keyCode = 22, .modifiers = 768};
    const std::array rows{
        Row{"nothingStored", {}, {}, usual},
        Row{"modifiersAlone", {}, 0x100, usual},
        Row{"codeAlone", 49, {}, usual},
        Row{"both", 49, 0x1100, {.keyCode = 49, .modifiers = 0x1100}},
        Row{"lowestCode", 0, 0x800, {.keyCode = 0, .modifiers = 0x800}},
        Row{"highestCode", 127, 0x100, {.keyCode = 127, .modifiers = 0x100}},
        Row{"codeTooHigh", 128, 0x100, usual},
        Row{"codeNegative", -1, 0x100, usual},
        Row{"codeBeyond32Bits", 4294967296LL + 49, 0x100, usual},
        Row{"shiftOnly", 49, 0x200, usual},
        Row{"noModifier", 49, 0, usual},
        Row{"modifiersNegative", 49, -1, usual},
        Row{"modifiersBeyond32Bits", 49, 4294967296LL + 0x100, usual},
        Row{"unknownBitsStay", 49, 0x80000100U, {.keyCode = 49, .modifiers = 0x80000100U}},
        Row{"codeAsText", u"49"_qs, 0x100, {.keyCode = 49, .modifiers = 0x100}},
        Row{"codeIsA", u"space"_qs, 0x100, {.keyCode = 0, .modifiers = 0x100}},
        Row{"modifiersAreADate", 49, QDateTime::currentDateTimeUtc(), usual},
    };
    for (const auto& row : rows) {
        Fakes::FakeUserDefaults defaults;
        if (row.code.isValid())
            defaults.setValue(u"HotKeyCode"_qs, row.code);
        if (row.modifiers.isValid())
            defaults.setValue(u"HotKeyModifiers"_qs, row.modifiers);
        const auto before = defaults.values;
        EXPECT_EQ(HotKeyShortcut::load(defaults), row.shortcut) << row.name;
        EXPECT_EQ(defaults.values, before) << row.name;
    }
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
    struct Row {
        const char* name;
        HotKeyShortcut shortcut;
        QString shown;
    };
    const std::array rows{
        Row{"default", {}, u"⇧⌘6"_qs},
        Row{"everyModifierInItsPlace", {.keyCode = 16, .modifiers = 0x1b00}, u"⌃⌥⇧⌘Z"_qs},
        Row{"namedBeforeTyped", {.keyCode = 49, .modifiers = 0x1100}, u"⌃⌘Space"_qs},
        Row{"namedInTwoUnits", {.keyCode = 114, .modifiers = 0x800}, u"⌥?⃝"_qs},
        Row{"umlaut", {.keyCode = 41, .modifiers = 0x100}, u"⌘Ö"_qs},
        Row{"upperCaseIsLonger", {.keyCode = 27, .modifiers = 0x100}, u"⌘SS"_qs},
        Row{"typesNothing", {.keyCode = 50, .modifiers = 0x100}, u"⌘Key 50"_qs},
        Row{"noSuchKey", {.keyCode = 127, .modifiers = 0x100}, u"⌘Key 127"_qs},
        Row{"unknownBitsHaveNoSign", {.keyCode = 22, .modifiers = 0xffff0100U}, u"⌘6"_qs},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.shortcut.displayString(german), row.shown) << row.name;
}

TEST(HotKeyShortcutTest, aKeyPressIsReadByItsPlace)
{
    struct Row {
        const char* name;
        QEvent::Type type;
        int key;
        Qt::KeyboardModifiers modifiers;
        quint32 scanCode;
        std::optional<HotKeyShortcut> shortcut;
    };
    using S = HotKeyShortcut;
    const std::array rows{
        Row{"default", QEvent::KeyPress, Qt::Key_AsciiCircum,
            Qt::ControlModifier | Qt::ShiftModifier, 15, S()},
        Row{"noModifier", QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, 38,
            S{.keyCode = 0, .modifiers = 0}},
        Row{"sameKeyInCyrillic", QEvent::KeyPress, 0x424, Qt::AltModifier, 38,
            S{.keyCode = 0, .modifiers = 0x800}},
        Row{"superAndKeypad", QEvent::KeyPress, Qt::Key_1, Qt::MetaModifier | Qt::KeypadModifier,
            87, S{.keyCode = 83, .modifiers = 0x1000}},
        Row{"otherFlagsAreDropped", QEvent::KeyPress, Qt::Key_A,
            Qt::GroupSwitchModifier | Qt::ControlModifier, 38, S{.keyCode = 0, .modifiers = 0x100}},
        Row{"printScreen", QEvent::KeyPress, Qt::Key_Print, Qt::ControlModifier, 107,
            S{.keyCode = 105, .modifiers = 0x100}},
        Row{"release", QEvent::KeyRelease, Qt::Key_A, Qt::ControlModifier, 38, std::nullopt},
        Row{"modifierByItself", QEvent::KeyPress, Qt::Key_Control, Qt::ControlModifier, 37,
            std::nullopt},
        Row{"modifierInAnotherPlace", QEvent::KeyPress, Qt::Key_CapsLock, Qt::NoModifier, 9,
            std::nullopt},
        Row{"deadKey", QEvent::KeyPress, Qt::Key_Dead_Circumflex, Qt::ControlModifier, 49,
            std::nullopt},
        Row{"noCodeForTheKey", QEvent::KeyPress, Qt::Key_MediaPlay, Qt::ControlModifier, 172,
            std::nullopt},
        Row{"withoutScanCode", QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier, 0, std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(HotKeyShortcut::fromEvent(
                      QKeyEvent(row.type, row.key, row.modifiers, row.scanCode, 0, 0)),
            row.shortcut)
            << row.name;
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
