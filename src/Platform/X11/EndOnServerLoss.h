#pragma once

#include <functional>

namespace Platform {

/// While it lives, @p end is called in the main thread when Qt's connection to the X server is
/// lost. It should finish what must not be lost, and end the process: Qt does that by std::exit
/// otherwise, which destroys statics below the threads that still use them. One at a time, within
/// the life of the application.
class EndOnServerLoss {
public:
    explicit EndOnServerLoss(std::function<void()> end);
    ~EndOnServerLoss();
    EndOnServerLoss(const EndOnServerLoss&) = delete;
    EndOnServerLoss& operator=(const EndOnServerLoss&) = delete;
};

} // namespace Platform
