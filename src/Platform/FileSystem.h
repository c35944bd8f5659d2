#pragma once

#include "Platform/Error.h"
#include "Platform/FolderClaim.h"

#include <QByteArray>

#include <filesystem>
#include <memory>
#include <vector>

namespace Platform {

/// Files in folders of the program's own. Everything blocks; any thread.
///
/// The message of an error is the system's own words for the reason.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Where programs keep what belongs to the user, made if it is missing; failing that, a folder
    /// for this user alone below the temporary folder.
    virtual std::filesystem::path userDataFolder() = 0;

    /// Makes @p folder and those above it where they are missing, for the user alone (0700). A
    /// folder that was there before is made private too and, like a new one, marked to be left out
    /// of backups; both as far as the file system lets us. A symbolic link to a folder serves as
    /// that folder.
    virtual Result<void> preparePrivateFolder(const std::filesystem::path& folder) = 0;

    /// Puts a file with @p bytes, for the user alone (0600), in the place of whatever file or link
    /// has that name. Even a loss of power leaves the whole file or what was there before, and once
    /// this has returned, the whole file. After a failure it is what was there before too, but for
    /// one case: when the last step alone fails, which is to make the name itself durable.
    virtual Result<void> writeFile(const std::filesystem::path& file, const QByteArray& bytes) = 0;

    /// The first bytes of @p file, at most @p limit. Regular files only, through links too.
    virtual Result<QByteArray> readFile(const std::filesystem::path& file, qint64 limit) = 0;

    /// The names in @p folder, in no order.
    virtual Result<std::vector<std::filesystem::path>> names(
        const std::filesystem::path& folder) = 0;

    /// Removes a file, a link (not what it points to) or an empty folder for good.
    virtual Result<void> remove(const std::filesystem::path& file) = 0;

    /// Removes a folder with all it holds, or a link to a folder, for good.
    virtual Result<void> removeFolder(const std::filesystem::path& folder) = 0;

    /// Puts a file where the user can bring it back from.
    virtual Result<void> moveToTrash(const std::filesystem::path& file) = 0;

    /// Removes what writers left in @p folder that were killed in the middle of a writeFile().
    virtual void sweepUnfinished(const std::filesystem::path& folder) = 0;

    /// A claim on @p folder, not yet held. It ends with the object.
    virtual std::unique_ptr<FolderClaim> claim(const std::filesystem::path& folder) = 0;
};

} // namespace Platform
