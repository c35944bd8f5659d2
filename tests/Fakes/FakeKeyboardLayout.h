#pragma once

#include "Platform/KeyboardLayout.h"

#include <QHash>

namespace Fakes {

/// A layout that is what its table says.
class FakeKeyboardLayout final : public Platform::KeyboardLayout {
public:
    std::optional<QString> character(quint32 virtualKeyCode) const override
    {
        const auto key = characters.constFind(virtualKeyCode);
        return key == characters.end() ? std::nullopt : std::optional(*key);
    }

    QHash<quint32, QString> characters;
};

} // namespace Fakes
