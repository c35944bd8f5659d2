#include "Fakes/FakeFileSystem.h"

#include <fstream>

namespace Fakes {

namespace fs = std::filesystem;
using Platform::Error;
using Platform::Result;

namespace {

Result<void> outcomeOf(const std::error_code& error)
{
    if (error)
        return tl::make_unexpected(Error{.message = QString::fromStdString(error.message())});
    return {};
}

} // namespace

void FakeFileSystem::fail(Operation operation, const QString& reason)
{
    const std::scoped_lock hold(m_lock);
    m_failures.insert(operation, reason);
}

void FakeFileSystem::heal()
{
    const std::scoped_lock hold(m_lock);
    m_failures.clear();
}

Result<void> FakeFileSystem::outcome(Operation operation) const
{
    const std::scoped_lock hold(m_lock);
    if (m_failures.contains(operation))
        return tl::make_unexpected(Error{.message = m_failures.value(operation)});
    return {};
}

Result<void> FakeFileSystem::preparePrivateFolder(const fs::path& folder)
{
    return outcome(Operation::prepare).and_then([&] {
        return m_files.preparePrivateFolder(folder);
    });
}

Result<void> FakeFileSystem::writeFile(const fs::path& file, const QByteArray& bytes)
{
    return outcome(Operation::write).and_then([&] {
        const auto draft = file.parent_path() / (".unfinished-" + file.filename().native());
        std::ofstream(draft, std::ios::binary).write(bytes.constData(), bytes.size());
        std::error_code error;
        fs::permissions(draft, fs::perms::owner_read | fs::perms::owner_write, error);
        if (!error)
            fs::rename(draft, file, error);
        std::error_code ignored;
        fs::remove(draft, ignored);
        return outcomeOf(error);
    });
}

Result<QByteArray> FakeFileSystem::readFile(const fs::path& file, qint64 limit)
{
    return outcome(Operation::read).and_then([&] { return m_files.readFile(file, limit); });
}

Result<std::vector<fs::path>> FakeFileSystem::names(const fs::path& folder)
{
    return outcome(Operation::list).and_then([&] { return m_files.names(folder); });
}

Result<void> FakeFileSystem::remove(const fs::path& file)
{
    return outcome(Operation::remove).and_then([&] { return m_files.remove(file); });
}

Result<void> FakeFileSystem::removeFolder(const fs::path& folder)
{
    return outcome(Operation::remove).and_then([&] { return m_files.removeFolder(folder); });
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
    m_files.sweepUnfinished(folder);
}

std::unique_ptr<Platform::FolderClaim> FakeFileSystem::claim(const fs::path& folder)
{
    return m_files.claim(folder);
}

} // namespace Fakes
