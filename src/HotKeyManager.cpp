#include "HotKeyManager.h"

#include "Log.h"
#include "Platform/HotKeyRegistrar.h"

#include <utility>

namespace Lumenote {

HotKeyManager::HotKeyManager(
    Platform::HotKeyRegistrar& registrar, const Platform::KeyboardLayout& layout)
    : m_registrar(registrar)
    , m_layout(layout)
{
}

HotKeyManager::~HotKeyManager()
{
    if (m_hasHandler)
        m_registrar.removeHandler();
}

bool HotKeyManager::registerShortcut(const HotKeyShortcut& shortcut)
{
    unregister();
    if (!shortcut.canBeRegistered()) {
        Log::write(Log::hotkey,
            QStringLiteral("refusing to register ") + shortcut.displayString(m_layout)
                + QStringLiteral(" — no ⌘, ⌃ or ⌥"));
        return false;
    }
    if (!installHandler())
        return false;
    const auto registered = m_registrar.registerHotKey(shortcut.keyCode, shortcut.modifiers);
    if (!registered) {
        logUnavailable(shortcut, registered.error());
        return false;
    }
    m_shortcut = shortcut;
    return true;
}

void HotKeyManager::unregister()
{
    if (std::exchange(m_shortcut, std::nullopt))
        m_registrar.unregisterHotKey();
}

bool HotKeyManager::installHandler()
{
    if (m_hasHandler)
        return true;
    const auto installed =
        m_registrar.installHandler({.onPressed = [this] { queue(&HotKeyManager::onHotKey); },
            .onLost = [this](const Platform::Error& error) { lose(error); }});
    if (!installed)
        Log::write(Log::hotkey,
            QStringLiteral("couldn't install the hotkey handler (OSStatus %1)")
                .arg(installed.error().code));
    m_hasHandler = installed.has_value();
    return m_hasHandler;
}

void HotKeyManager::queue(std::function<void()> HotKeyManager::*callback)
{
    QMetaObject::invokeMethod(
        this,
        [this, callback] {
            if (this->*callback)
                (this->*callback)();
        },
        Qt::QueuedConnection);
}

void HotKeyManager::lose(const Platform::Error& error)
{
    m_hasHandler = false;
    const auto lost = std::exchange(m_shortcut, std::nullopt);
    if (!lost)
        return;
    logUnavailable(*lost, error);
    queue(&HotKeyManager::onLost);
}

void HotKeyManager::logUnavailable(
    const HotKeyShortcut& shortcut, const Platform::Error& error) const
{
    Log::write(Log::hotkey,
        shortcut.displayString(m_layout)
            + QStringLiteral(" is unavailable (OSStatus %1) — it may be taken by another app or by "
                             "the system")
                  .arg(error.code));
}

} // namespace Lumenote
