#pragma once

#include "Platform/Freedesktop/FreedesktopFileSystem.h"

#include <QMap>
#include <QString>
#include <QTemporaryDir>

#include <mutex>

namespace Fakes {

/// The real one below a temporary folder, which holds the data folder and the Trash as well, with
/// failures on order. Doesn't wait for the disk when it writes. Any thread.
class FakeFileSystem final : public Platform::FileSystem {
public:
    enum class Operation { prepare, write, read, list, remove, trash };

    std::filesystem::path root() const { return m_root.path().toStdString(); }
    std::filesystem::path trash() const { return root() / "Trash"; }

    /// Lets @p operation fail for this reason until all is healed.
    void fail(Operation operation, const QString& reason);
    void heal();

    std::filesystem::path userDataFolder() override { return root() / "data"; }
    Platform::Result<void> preparePrivateFolder(const std::filesystem::path& folder) override;
    Platform::Result<void> writeFile(
        const std::filesystem::path& file, const QByteArray& bytes) override;
    Platform::Result<QByteArray> readFile(const std::filesystem::path& file, qint64 limit) override;
    Platform::Result<std::vector<std::filesystem::path>> names(
        const std::filesystem::path& folder) override;
    Platform::Result<void> remove(const std::filesystem::path& file) override;
    Platform::Result<void> removeFolder(const std::filesystem::path& folder) override;
    Platform::Result<void> moveToTrash(const std::filesystem::path& file) override;
    void sweepUnfinished(const std::filesystem::path& folder) override;
    std::unique_ptr<Platform::FolderClaim> claim(const std::filesystem::path& folder) override;

private:
    Platform::Result<void> outcome(Operation operation) const;

    QTemporaryDir m_root;
    Platform::FreedesktopFileSystem m_files;
    mutable std::mutex m_lock; ///< Guards the failures.
    QMap<Operation, QString> m_failures;
};

} // namespace Fakes
