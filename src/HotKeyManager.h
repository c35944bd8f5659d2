#pragma once

#include "HotKeyShortcut.h"

#include <QObject>

#include <functional>
#include <optional>

namespace Platform {
struct Error;
class HotKeyRegistrar;
class KeyboardLayout;
} // namespace Platform

namespace Lumenote {

/// Holds the one system-wide hot key of the program, and logs why it can't. Main thread.
class HotKeyManager final : public QObject {
    Q_OBJECT

public:
    /// Borrows both, which outlive it.
    HotKeyManager(Platform::HotKeyRegistrar& registrar, const Platform::KeyboardLayout& layout);
    ~HotKeyManager() override;

    /// Takes the place of the registration before, and says whether it worked. When it did not
    /// there is no hot key at all; to bring back the old one is the caller's task.
    bool registerShortcut(const HotKeyShortcut& shortcut);
    void unregister();

    /// What is registered.
    const std::optional<HotKeyShortcut>& shortcut() const { return m_shortcut; }

    /// Both are queued, so they run once the system has been served.
    std::function<void()> onHotKey; ///< The hot key was pressed.
    std::function<void()> onLost; ///< What was registered is no more, by no call of ours.

private:
    bool installHandler();
    void queue(std::function<void()> HotKeyManager::*callback);
    void lose(const Platform::Error& error);
    void logUnavailable(const HotKeyShortcut& shortcut, const Platform::Error& error) const;

    Platform::HotKeyRegistrar& m_registrar;
    const Platform::KeyboardLayout& m_layout;
    bool m_hasHandler = false;
    std::optional<HotKeyShortcut> m_shortcut;
};

} // namespace Lumenote
