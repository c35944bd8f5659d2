#pragma once

#include <limits>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Fakes {

/// A disk that misbehaves for the thread that made this, as long as it lives, in every program
/// that links it. Keeps the steps that were tried on it, in words.
class DiskFaults {
public:
    struct Plan {
        bool hasUnnamedFiles = true;
        bool canNameThem = true;
        ssize_t room = std::numeric_limits<ssize_t>::max(); ///< Bytes until writing fails …
        int writeError = 0; ///< … with this.
        ssize_t mostAtOnce = std::numeric_limits<ssize_t>::max(); ///< Bytes one write takes.
        bool interruptsWrites = false; ///< Every other one.
        int fileSyncError = 0;
        int folderSyncError = 0;
    };

    explicit DiskFaults(const Plan& plan);
    ~DiskFaults();
    DiskFaults(const DiskFaults&) = delete;
    DiskFaults& operator=(const DiskFaults&) = delete;

    static const std::vector<std::string>& steps();
};

} // namespace Fakes
