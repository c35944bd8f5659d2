#pragma once

#include "Platform/Error.h"
#include "Platform/ImageLimits.h"

#include <QIODevice>

#include <filesystem>
#include <memory>

namespace Platform {

/// Opens the regular file or pipe at @p path for reading at any place; a pipe is read to its end.
///
/// Fails with Error::Kind::unreadable, also for folders, devices and more bytes than the limits
/// allow. Blocks no longer than they allow. Any thread.
Result<std::unique_ptr<QIODevice>> openImageSource(
    const std::filesystem::path& path, const ImageLimits& limits = {});

} // namespace Platform
