#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Harness {

/// Runs @p test in a process of its own that alone sees an empty file system in memory at
/// @p folder. @p options are those of a tmpfs mount, as in "size=256k". A failed expectation in it
/// fails the calling test, which is skipped where the machine gives its users no name spaces.
void onOwnDisk(const std::filesystem::path& folder, const std::string& options,
    const std::function<void()>& test);

/// To be called in such a test: lets nobody write to the disk at @p folder any more.
bool makeReadOnly(const std::filesystem::path& folder);

} // namespace Harness
