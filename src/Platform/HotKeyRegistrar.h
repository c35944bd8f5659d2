#pragma once

#include "Platform/Error.h"

#include <functional>

namespace Platform {

/// Error::code of a hot key that the system was not even asked for. Positive codes are the system's
/// own: under X11 the number of the X error, 10 (BadAccess) where another program has the key.
namespace HotKeyStatus {
inline constexpr int notConnected = -1; ///< There is no display server, or it has gone.
inline constexpr int noAnswer = -2; ///< The display server did not answer in time.
inline constexpr int noSuchKey = -3; ///< The keyboard lacks the key or a modifier.
} // namespace HotKeyStatus

/// The one system-wide hot key, which works whichever program has the keyboard. Main thread; waits
/// for the system no longer than about a second.
class HotKeyRegistrar {
public:
    /// Called from the event loop, never from within a call of this class, and must not call it.
    struct Handler {
        /// The key went down. Once for each time, however long it is held.
        std::function<void()> onPressed;

        /// The system took the registration away, or can't take one any more. The handler is to be
        /// installed again before the next one.
        std::function<void(const Error&)> onLost;
    };

    virtual ~HotKeyRegistrar() = default;

    /// Comes before the first registration.
    virtual Result<void> installHandler(Handler handler) = 0;

    /// Drops the registration too.
    virtual void removeHandler() = 0;

    /// Replaces the registration; when it fails there is none. @p modifiers are bits of
    /// HotKeyModifier; others are dropped. The state of Caps Lock and its like does not matter.
    virtual Result<void> registerHotKey(quint32 virtualKeyCode, quint32 modifiers) = 0;

    virtual void unregisterHotKey() = 0;
};

} // namespace Platform
