#pragma once

namespace Fakes {

/// While one lives, the thread that made it can't start others.
class ThreadShortage {
public:
    ThreadShortage();
    ~ThreadShortage();
    ThreadShortage(const ThreadShortage&) = delete;
    ThreadShortage& operator=(const ThreadShortage&) = delete;
};

} // namespace Fakes
