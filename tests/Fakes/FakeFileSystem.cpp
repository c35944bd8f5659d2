#include "Fakes/FakeFileSystem.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <system_error>

namespace Fakes {

namespace {

namespace fs = std::filesystem;
using Platform::Error;
using Platform::Result;

tl::unexpected<Error> failure(const QString& reason, Error::Kind kind = Error::Kind::failed)
{
    return tl::make_unexpected(Error{.kind = kind, .message = reason});
}

Result<void> outcomeOf(const std::error_code& error)
{
    if (error)
        return failure(QString::fromStdString(error.message()));
    return {};
}

Result<void> removed(std::uintmax_t count, const std::error_code& error)
{
    if (!error && count == 0)
        return failure(u"No such file or directory"_qs);
    return outcomeOf(error);
}

} // namespace

/// Who holds a claim on which folder.
class FakeFileSystem::Claims {
public:
    void hold(const Claim* claim, const fs::path& folder)
    {
        const std::scoped_lock hold(m_lock);
        m_held.emplace(folder, claim);
    }
    void release(const Claim* claim, const fs::path& folder)
    {
        const std::scoped_lock hold(m_lock);
        m_held.erase({folder, claim});
    }
    bool runAlone(const Claim* claim, const fs::path& folder, const std::function<void()>& work)
    {
        const std::scoped_lock hold(m_lock);
        for (const auto& [heldFolder, holder] : m_held)
            if (heldFolder == folder && holder != claim)
                return false;
        work();
        return true;
    }

private:
    std::mutex m_lock;
    std::set<std::pair<fs::path, const Claim*>> m_held;
};

class FakeFileSystem::Claim final : public Platform::FolderClaim {
public:
    Claim(std::shared_ptr<Claims> claims, fs::path folder)
        : m_claims(std::move(claims))
        , m_folder(std::move(folder))
    {
    }
    ~Claim() override { m_claims->release(this, m_folder); }
    Claim(const Claim&) = delete;
    Claim(Claim&&) = delete;
    Claim& operator=(const Claim&) = delete;
    Claim& operator=(Claim&&) = delete;

    void hold() override { m_claims->hold(this, m_folder); }
    bool runAlone(const std::function<void()>& work) override
    {
        return m_claims->runAlone(this, m_folder, work);
    }

private:
    std::shared_ptr<Claims> m_claims;
    fs::path m_folder;
};

FakeFileSystem::FakeFileSystem()
    : m_claims(std::make_shared<Claims>())
{
}

FakeFileSystem::~FakeFileSystem() = default;

fs::path FakeFileSystem::root() const
{
    return m_root.path().toStdString();
}

void FakeFileSystem::fail(Operation operation, const QString& reason)
{
    const std::scoped_lock hold(m_lock);
    m_failures.insert(operation, reason);
}

void FakeFileSystem::failAsReadOnly()
{
    for (const auto operation : {Operation::write, Operation::remove, Operation::trash})
        fail(operation, u"Read-only file system"_qs);
}

void FakeFileSystem::failAsFull()
{
    fail(Operation::write, u"No space left on device"_qs);
}

void FakeFileSystem::heal()
{
    const std::scoped_lock hold(m_lock);
    m_failures.clear();
}

Result<void> FakeFileSystem::outcome(Operation operation) const
{
    const std::scoped_lock hold(m_lock);
    const auto reason = m_failures.constFind(operation);
    if (reason != m_failures.cend())
        return failure(
            *reason, operation == Operation::read ? Error::Kind::unreadable : Error::Kind::failed);
    return {};
}

fs::path FakeFileSystem::userDataFolder()
{
    return root() / "data";
}

Result<void> FakeFileSystem::preparePrivateFolder(const fs::path& folder)
{
    return outcome(Operation::prepare).and_then([&] {
        std::error_code error;
        fs::create_directories(folder, error);
        if (!error)
            fs::permissions(folder, fs::perms::owner_all, error);
        return outcomeOf(error);
    });
}

Result<void> FakeFileSystem::writeFile(const fs::path& file, const QByteArray& bytes)
{
    if (beforeWrite)
        beforeWrite(file);
    return outcome(Operation::write).and_then([&]() -> Result<void> {
        const auto draft = file.parent_path() / ".unfinished";
        std::ofstream stream(draft, std::ios::binary);
        stream.write(bytes.constData(), bytes.size());
        stream.close();
        if (!stream)
            return failure(u"No such file or directory"_qs);
        std::error_code error;
        fs::permissions(draft, fs::perms::owner_read | fs::perms::owner_write, error);
        if (!error)
            fs::rename(draft, file, error);
        if (error)
            fs::remove(draft);
        return outcomeOf(error);
    });
}

Result<QByteArray> FakeFileSystem::readFile(const fs::path& file, qint64 limit)
{
    return outcome(Operation::read).and_then([&]() -> Result<QByteArray> {
        std::error_code error;
        if (!fs::is_regular_file(file, error))
            return failure(
                error ? QString::fromStdString(error.message()) : u"not a regular file"_qs,
                Error::Kind::unreadable);
        std::ifstream stream(file, std::ios::binary);
        QByteArray bytes(std::min<qint64>(limit, static_cast<qint64>(fs::file_size(file))), 0);
        stream.read(bytes.data(), bytes.size());
        if (!stream)
            return failure(u"Input/output error"_qs, Error::Kind::unreadable);
        return bytes;
    });
}

Result<std::vector<fs::path>> FakeFileSystem::names(const fs::path& folder)
{
    return outcome(Operation::list).and_then([&]() -> Result<std::vector<fs::path>> {
        std::error_code error;
        std::vector<fs::path> names;
        for (const auto& entry : fs::directory_iterator(folder, error))
            names.push_back(entry.path().filename());
        if (error)
            return failure(QString::fromStdString(error.message()));
        return names;
    });
}

Result<void> FakeFileSystem::remove(const fs::path& file)
{
    return outcome(Operation::remove).and_then([&] {
        std::error_code error;
        const bool wasThere = fs::remove(file, error);
        return removed(wasThere ? 1 : 0, error);
    });
}

Result<void> FakeFileSystem::removeFolder(const fs::path& folder)
{
    return outcome(Operation::remove).and_then([&] {
        std::error_code error;
        const auto count = fs::remove_all(folder, error);
        return removed(count, error);
    });
}

Result<void> FakeFileSystem::moveToTrash(const fs::path& file)
{
    return outcome(Operation::trash).and_then([&] {
        std::error_code error;
        fs::create_directories(trash(), error);
        fs::rename(file, trash() / file.filename(), error);
        return outcomeOf(error);
    });
}

void FakeFileSystem::sweepUnfinished(const fs::path& folder)
{
    std::error_code error;
    fs::remove(folder / ".unfinished", error);
}

std::unique_ptr<Platform::FolderClaim> FakeFileSystem::claim(const fs::path& folder)
{
    return std::make_unique<Claim>(m_claims, folder);
}

} // namespace Fakes
