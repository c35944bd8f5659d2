#include "Platform/DraggedFiles.h"

#include <QUuid>

#include <system_error>
#include <utility>

namespace Platform {

DraggedFiles::DraggedFiles(std::shared_ptr<FileSystem> fileSystem, std::filesystem::path folder)
    : m_fileSystem(std::move(fileSystem))
    , m_folder(std::move(folder))
{
}

std::filesystem::path DraggedFiles::place(const QString& name) const
{
    return m_folder / QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()
        / name.toStdString();
}

Result<void> DraggedFiles::write(const std::filesystem::path& file, const QByteArray& png) const
{
    for (const auto& folder : {m_folder, file.parent_path()})
        if (auto made = m_fileSystem->preparePrivateFolder(folder); !made)
            return made;
    return m_fileSystem->writeFile(file, png);
}

void DraggedFiles::remove(const std::filesystem::path& file) const
{
    static_cast<void>(
        m_fileSystem->removeFolder(file.parent_path())); // The next start tries again.
}

void DraggedFiles::sweep(std::chrono::seconds age) const
{
    const auto names = m_fileSystem->names(m_folder);
    if (!names)
        return;
    const auto newest = std::filesystem::file_time_type::clock::now() - age;
    for (const auto& name : *names) {
        std::error_code error;
        const auto written = std::filesystem::last_write_time(m_folder / name, error);
        if (!error && written < newest)
            static_cast<void>(m_fileSystem->removeFolder(m_folder / name));
    }
}

} // namespace Platform
