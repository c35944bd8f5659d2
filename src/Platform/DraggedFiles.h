#pragma once

#include "Platform/FileSystem.h"

#include <QString>

#include <chrono>
#include <filesystem>
#include <memory>

namespace Platform {

/// The files that were dragged out, for the user alone, each with its proper name in a folder of
/// its own. A receiver may read one long after the drop, and even after this program has ended: so
/// a file stays until a later start finds it older than a minute. A value; everything blocks, and
/// any thread may do it.
class DraggedFiles {
public:
    DraggedFiles(std::shared_ptr<FileSystem> fileSystem, std::filesystem::path folder);

    /// Where a file called @p name would go. Another place each time.
    std::filesystem::path place(const QString& name) const;

    Result<void> write(const std::filesystem::path& file, const QByteArray& png) const;

    /// With its folder. Nothing where it was never written.
    void remove(const std::filesystem::path& file) const;

    /// Removes those that are older than @p age.
    void sweep(std::chrono::seconds age = std::chrono::minutes(1)) const;

private:
    std::shared_ptr<FileSystem> m_fileSystem;
    std::filesystem::path m_folder;
};

} // namespace Platform
