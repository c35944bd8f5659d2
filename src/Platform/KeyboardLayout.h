#pragma once

#include <QString>

#include <optional>

namespace Platform {

/// What is printed on the keys, as far as the current layout tells. Main thread; quick.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    /// What the key with this virtual key code types without any modifier in the current layout or,
    /// where that has no Latin letters, in the layout last used that has them. Nothing for a key
    /// that types nothing.
    virtual std::optional<QString> character(quint32 virtualKeyCode) const = 0;
};

} // namespace Platform
