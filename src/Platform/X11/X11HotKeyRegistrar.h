#pragma once

#include "Platform/HotKeyRegistrar.h"

#include <QList>

#include <memory>
#include <optional>

namespace Platform {

namespace X11 {
class WatchedConnection;
}

/// Grabs the key on the root window, on a connection of its own that opens with the handler and
/// closes with it. While the key is held down, the server sends all keys here.
class X11HotKeyRegistrar final : public HotKeyRegistrar {
public:
    /// @p display is as in DISPLAY; empty means that very variable.
    explicit X11HotKeyRegistrar(QString display = {});
    ~X11HotKeyRegistrar() override;
    X11HotKeyRegistrar(const X11HotKeyRegistrar&) = delete;
    X11HotKeyRegistrar& operator=(const X11HotKeyRegistrar&) = delete;

    Result<void> installHandler(Handler handler) override;
    void removeHandler() override;
    Result<void> registerHotKey(quint32 virtualKeyCode, quint32 modifiers) override;
    void unregisterHotKey() override;

private:
    struct Shortcut {
        quint32 virtualKeyCode;
        quint32 modifiers;
    };

    /// What the server is asked to send here.
    struct Grabs {
        quint8 keyCode;
        QList<quint16> masks;

        bool operator==(const Grabs&) const = default;
    };

    Result<Grabs> grabsFor(const Shortcut& shortcut);
    Result<void> grab(const Grabs& grabs);
    void ungrab(const Grabs& grabs) const;
    void release();
    void keyWentDown(quint8 keyCode, quint32 time);
    void keyWentUp(quint8 keyCode, quint32 time);
    void mappingChanged();
    void lose(const Error& error);

    QString m_display;
    Handler m_handler;
    std::unique_ptr<X11::WatchedConnection> m_connection;
    std::optional<Shortcut> m_shortcut;
    Grabs m_grabs{}; ///< For the shortcut, if there is one.
    std::optional<quint32> m_releasedAt; ///< By the clock of the server, in milliseconds.
};

} // namespace Platform
