#include "Platform/Freedesktop/DurableFile.h"

#include "Platform/Descriptor.h"
#include "Platform/DiskSync.h"
#include "Platform/Freedesktop/SystemError.h"

#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Platform {

namespace {

constexpr mode_t privateMode = 0600;
constexpr auto unfinishedPrefix = ".unfinished-";
constexpr int nameTries = 100;

std::string unfinishedName()
{
    return unfinishedPrefix + std::to_string(QRandomGenerator::system()->generate64());
}

/// A file in the making. It has no name where the file system can do that, so that nothing is left
/// of it when its writer dies; otherwise one by which a sweep knows it. Its writer holds a lock on
/// it, which the system drops when the writer dies: what can be locked has no writer.
class Draft {
public:
    static Draft unnamed(int folder)
    {
        Draft draft(folder);
        draft.m_file =
            Descriptor(openat(folder, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, privateMode));
        if (draft.m_file)
            draft.lock();
        return draft;
    }

    static Draft named(int folder)
    {
        Draft draft(folder);
        for (int i = 0; i < nameTries; ++i) {
            const auto name = unfinishedName();
            draft.m_file = Descriptor(openat(folder, name.c_str(),
                O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, privateMode));
            if (!draft.m_file && errno != EEXIST)
                break;
            if (draft.m_file && draft.lock() && draft.hasName()) {
                draft.m_name = name;
                break;
            }
        }
        return draft;
    }

    Draft(Draft&&) = default;
    Draft& operator=(Draft&&) = delete;
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft()
    {
        if (m_file && m_name)
            unlinkat(m_folder, m_name->c_str(), 0);
    }

    explicit operator bool() const { return static_cast<bool>(m_file); }

    /// Puts the bytes on the disk.
    bool fill(const QByteArray& bytes)
    {
        qsizetype written = 0;
        while (written < bytes.size()) {
            const auto count = ::write(m_file.number(), bytes.constData() + written,
                static_cast<size_t>(bytes.size() - written));
            if (count > 0)
                written += count;
            else if (count == 0 || errno != EINTR)
                return false;
        }
        return syncFile(m_file.number());
    }

    /// Puts the file in the place of what has that name.
    bool become(const std::string& name)
    {
        if (!m_name) {
            if (link(name))
                return true;
            // A link can't replace; a renamed file can.
            if (errno != EEXIST || !linkAsUnfinished())
                return false;
        }
        if (renameat(m_folder, m_name->c_str(), m_folder, name.c_str()) != 0)
            return false;
        m_name.reset();
        return true;
    }

private:
    explicit Draft(int folder)
        : m_folder(folder)
    {
    }

    /// False when a sweep was quicker. Where there are no locks, no sweep removes anything.
    bool lock() const
    {
        return flock(m_file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }

    bool hasName() const
    {
        struct stat status { };
        return fstat(m_file.number(), &status) == 0 && status.st_nlink > 0;
    }

    bool link(const std::string& name) const
    {
        const auto self = "/proc/self/fd/" + std::to_string(m_file.number());
        return linkat(AT_FDCWD, self.c_str(), m_folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    bool linkAsUnfinished()
    {
        for (int i = 0; i < nameTries; ++i) {
            auto name = unfinishedName();
            if (link(name)) {
                m_name = std::move(name);
                return true;
            }
            if (errno != EEXIST)
                return false;
        }
        return false;
    }

    int m_folder; ///< Borrowed; outlives the draft.
    Descriptor m_file;
    std::optional<std::string> m_name;
};

/// 0, or what went wrong.
int store(Draft draft, const QByteArray& bytes, const std::string& name)
{
    return draft && draft.fill(bytes) && draft.become(name) ? 0 : errno;
}

} // namespace

Result<void> writeDurableFile(const std::filesystem::path& file, const QByteArray& bytes)
{
    const Descriptor folder(open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        return systemError();
    const auto name = file.filename().native();
    // Not every file system has files without a name, and naming them later takes /proc.
    if (store(Draft::unnamed(folder.number()), bytes, name) != 0)
        if (const auto number = store(Draft::named(folder.number()), bytes, name); number != 0)
            return systemError(number);
    return syncFolder(folder.number()) ? Result<void>() : systemError();
}

void sweepUnfinishedFiles(const std::filesystem::path& folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entries(folder, error), end; !error && entries != end;
         entries.increment(error)) {
        const auto& path = entries->path();
        if (!path.filename().native().starts_with(unfinishedPrefix))
            continue;
        const Descriptor file(open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file && flock(file.number(), LOCK_EX | LOCK_NB) == 0)
            unlink(path.c_str());
    }
}

} // namespace Platform
