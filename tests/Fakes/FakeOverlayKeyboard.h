#pragma once

#include "Platform/OverlayKeyboard.h"

namespace Fakes {

/// Tells the keys that the test presses, to whoever has taken it.
class FakeOverlayKeyboard final : public Platform::OverlayKeyboard {
public:
    void take() override { isTaken = true; }
    void giveBack() override { isTaken = false; }

    void pressEscape()
    {
        if (isTaken)
            emit escapePressed();
    }

    void pressSpace()
    {
        if (isTaken)
            emit spacePressed();
    }

    bool isTaken = false;
};

} // namespace Fakes
