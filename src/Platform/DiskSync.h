#pragma once

namespace Platform {

/// Waits until what an open file holds is on the disk. False, with errno, where that fails.
bool syncFile(int file);

/// The same for the names in an open folder. Some file systems have no such thing for folders; then
/// true as well.
bool syncFolder(int folder);

} // namespace Platform
