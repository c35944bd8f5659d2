#include "Hand.h"

#include "Stopwatch.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace Lumenote::Bench {

namespace {

constexpr std::uint8_t leftButton = 1;
constexpr xcb_keysym_t sixSymbol = '6';
constexpr xcb_keysym_t shiftSymbol = 0xffe1;
constexpr xcb_keysym_t controlSymbol = 0xffe3;
constexpr xcb_keysym_t escapeSymbol = 0xff1b;

} // namespace

Hand::Hand()
    : m_xcb(xcb_connect(nullptr, nullptr))
    , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root)
    , m_six(keyCode(sixSymbol))
    , m_shift(keyCode(shiftSymbol))
    , m_control(keyCode(controlSymbol))
    , m_escape(keyCode(escapeSymbol))
{
}

Hand::~Hand()
{
    xcb_disconnect(m_xcb);
}

void Hand::holdModifiers() const
{
    send(Input::keyDown, m_shift);
    send(Input::keyDown, m_control);
}

void Hand::pressHotKey() const
{
    send(Input::keyDown, m_six);
}

void Hand::releaseHotKey() const
{
    send(Input::keyUp, m_six);
    send(Input::keyUp, m_control);
    send(Input::keyUp, m_shift);
}

void Hand::typeEscape() const
{
    send(Input::keyDown, m_escape);
    send(Input::keyUp, m_escape);
}

void Hand::moveTo(QPoint pixel) const
{
    send(Input::motion, 0, pixel);
}

void Hand::pressButton() const
{
    send(Input::buttonDown, leftButton);
}

void Hand::releaseButton() const
{
    send(Input::buttonUp, leftButton);
}

void Hand::send(Input input, std::uint8_t detail, QPoint pixel) const
{
    xcb_test_fake_input(m_xcb, static_cast<std::uint8_t>(input), detail, XCB_CURRENT_TIME, m_root,
        static_cast<std::int16_t>(pixel.x()), static_cast<std::int16_t>(pixel.y()), 0);
    xcb_flush(m_xcb);
}

std::uint8_t Hand::keyCode(xcb_keysym_t symbol) const
{
    const auto* const setup = xcb_get_setup(m_xcb);
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> mapping(
        xcb_get_keyboard_mapping_reply(m_xcb,
            xcb_get_keyboard_mapping(m_xcb, setup->min_keycode,
                static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1)),
            nullptr),
        &std::free);
    require(mapping != nullptr, "no keyboard");
    const auto* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    const auto* const end = symbols + xcb_get_keyboard_mapping_keysyms_length(mapping.get());
    const auto* const found = std::find(symbols, end, symbol);
    require(found != end, "a key is missing");
    return static_cast<std::uint8_t>(
        setup->min_keycode + (found - symbols) / mapping->keysyms_per_keycode);
}

} // namespace Lumenote::Bench
