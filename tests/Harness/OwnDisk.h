#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace Harness {

enum class OwnDisk {
    passed,
    failed, ///< The process of the test has told why on its standard output.
    notAllowed, ///< This machine gives its users no name spaces.
};

/// Runs @p test in a process of its own that alone sees an empty file system in memory at
/// @p folder. @p options are those of a tmpfs mount, as in "size=256k". The test passes if it has
/// no failed expectation.
OwnDisk onOwnDisk(const std::filesystem::path& folder, const std::string& options,
    const std::function<void()>& test);

/// To be called in such a test: lets nobody write to the disk at @p folder any more.
bool makeReadOnly(const std::filesystem::path& folder);

} // namespace Harness
