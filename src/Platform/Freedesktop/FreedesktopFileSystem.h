#pragma once

#include "Platform/FileSystem.h"

namespace Platform {

/// The files of a Linux desktop: the data folder of the XDG base directories, the Trash of
/// freedesktop.org, and the attribute "user.xdg.robots.backup" to be left out of backups.
class FreedesktopFileSystem final : public FileSystem {
public:
    std::filesystem::path userDataFolder() override;
    Result<void> preparePrivateFolder(const std::filesystem::path& folder) override;
    Result<void> writeFile(const std::filesystem::path& file, const QByteArray& bytes) override;
    Result<QByteArray> readFile(const std::filesystem::path& file, qint64 limit) override;
    Result<std::vector<std::filesystem::path>> names(const std::filesystem::path& folder) override;
    Result<void> remove(const std::filesystem::path& file) override;
    Result<void> removeFolder(const std::filesystem::path& folder) override;
    Result<void> moveToTrash(const std::filesystem::path& file) override;
    void sweepUnfinished(const std::filesystem::path& folder) override;
    std::unique_ptr<FolderClaim> claim(const std::filesystem::path& folder) override;
};

} // namespace Platform
