#pragma once

#include "Platform/HotKeyRegistrar.h"

#include <QList>

#include <optional>
#include <utility>

namespace Fakes {

/// Registers what isn't taken, refuses on order, and presses the key itself.
class FakeHotKeyRegistrar final : public Platform::HotKeyRegistrar {
public:
    using Key = std::pair<quint32, quint32>; ///< Virtual key code and modifiers.

    Platform::Result<void> installHandler(Handler newHandler) override
    {
        ++installations;
        if (handlerError)
            return tl::make_unexpected(*handlerError);
        handler = std::move(newHandler);
        return {};
    }

    void removeHandler() override
    {
        handler.reset();
        registered.reset();
    }

    Platform::Result<void> registerHotKey(quint32 virtualKeyCode, quint32 modifiers) override
    {
        ++registrations;
        registered.reset();
        const Key key(virtualKeyCode, modifiers);
        if (taken.contains(key))
            return tl::make_unexpected(Platform::Error{.message = {}, .code = 10});
        registered = key;
        return {};
    }

    void unregisterHotKey() override { registered.reset(); }

    void press() const { handler->onPressed(); }

    void lose(int code)
    {
        registered.reset();
        const auto last = std::exchange(handler, std::nullopt);
        last->onLost({.message = {}, .code = code});
    }

    std::optional<Handler> handler;
    std::optional<Key> registered;
    QList<Key> taken;
    std::optional<Platform::Error> handlerError;
    int installations = 0;
    int registrations = 0;
};

} // namespace Fakes
