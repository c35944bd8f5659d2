#pragma once

#include "Platform/Error.h"

#include <QByteArray>

#include <filesystem>

namespace Platform {

/// FileSystem::writeFile(): the bytes reach the disk before the file gets its name, and the name
/// does before the call returns.
Result<void> writeDurableFile(const std::filesystem::path& file, const QByteArray& bytes);

/// FileSystem::sweepUnfinished(). Leaves alone what a living writer is at.
void sweepUnfinishedFiles(const std::filesystem::path& folder);

} // namespace Platform
