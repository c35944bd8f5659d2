#pragma once

#include "Platform/FileSystem.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <mutex>

namespace Fakes {

/// Plain files below a temporary folder, with failures on order. Each claim stands for one running
/// copy of the program. Any thread.
class FakeFileSystem final : public Platform::FileSystem {
public:
    enum class Operation { prepare, write, read, list, remove, trash };

    FakeFileSystem();
    ~FakeFileSystem() override;

    /// The temporary folder; the data folder and the Trash are in it.
    std::filesystem::path root() const;
    std::filesystem::path trash() const { return root() / "Trash"; }

    /// Lets @p operation fail for this reason until it is healed.
    void fail(Operation operation, const QString& reason);
    void failAsReadOnly();
    void failAsFull();
    void heal();

    /// Called by the writing thread before each file; may wait. To be set while nobody writes.
    std::function<void(const std::filesystem::path&)> beforeWrite;

    std::filesystem::path userDataFolder() override;
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
    class Claim;
    class Claims;

    Platform::Result<void> outcome(Operation operation) const;

    QTemporaryDir m_root;
    mutable std::mutex m_lock;
    QMap<Operation, QString> m_failures;
    std::shared_ptr<Claims> m_claims;
};

} // namespace Fakes
