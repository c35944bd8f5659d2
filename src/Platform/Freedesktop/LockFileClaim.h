#pragma once

#include "Platform/Descriptor.h"
#include "Platform/FolderClaim.h"

#include <filesystem>
#include <mutex>

namespace Platform {

/// A claim by a lock on the file ".lock" in the folder: shared while it is held, exclusive while
/// work runs alone. It is an open-file-description lock, which the system drops with the process,
/// and which goes from shared to exclusive in one step and stays shared where it can't.
///
/// Where the file system has no locks, every copy takes itself to be alone.
class LockFileClaim final : public FolderClaim {
public:
    explicit LockFileClaim(const std::filesystem::path& folder);

    void hold() override;
    bool runAlone(const std::function<void()>& work) override;

private:
    enum class State {
        none,
        held,
        unsupported, ///< The file is open, but there are no locks.
    };

    void holdLocked();
    void release();
    bool isLockOfFolder() const;

    std::filesystem::path m_path;
    std::mutex m_mutex; ///< Guards the two below, and the lock while it is exclusive.
    Descriptor m_file;
    State m_state = State::none;
};

} // namespace Platform
