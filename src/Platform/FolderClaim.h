#pragma once

#include <functional>

namespace Platform {

/// A running copy's claim on a folder that several copies of the program may share. What one copy
/// lists, no other may remove on its own account: that is only done while no other copy holds a
/// claim. Claims of processes that ended, in whatever way, are void. Any thread.
class FolderClaim {
public:
    virtual ~FolderClaim() = default;

    /// Takes the claim, or takes it anew where the folder was replaced since. To be called before
    /// the folder is listed and before something is put into it. Never fails and never blocks for
    /// long: what is not to be had now is tried again by the next call.
    virtual void hold() = 0;

    /// Runs @p work while no other copy holds a claim, and lets none take one before it is done.
    /// Others wait for that, so @p work is one quick removal. False when there is another copy, or
    /// when it can't be known; @p work didn't run then.
    virtual bool runAlone(const std::function<void()>& work) = 0;
};

} // namespace Platform
