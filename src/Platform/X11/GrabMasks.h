#pragma once

#include "Platform/X11/WatchedConnection.h"

#include <QList>

namespace Platform::X11 {

/// Which of the eight modifiers of X the keyboard's modifier keys are.
struct ModifierMasks {
    quint16 alt = 0; ///< Zero where no key carries it, as below.
    quint16 super = 0;
    quint16 numLock = 0;
    quint16 scrollLock = 0;
};

/// Asks the server, in bounded time.
Result<ModifierMasks> lookUpModifiers(WatchedConnection& connection);

/// The modifiers to grab for @p modifiers, bits of HotKeyModifier: one mask for each state of the
/// lock keys, since a grab is for one state exactly. Empty where the keyboard lacks a modifier.
QList<quint16> grabMasks(const ModifierMasks& masks, quint32 modifiers);

} // namespace Platform::X11
