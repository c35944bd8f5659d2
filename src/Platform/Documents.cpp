#include "Platform/Documents.h"

#include "Platform/Descriptor.h"
#include "Platform/DiskSync.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace Platform {

namespace {

/// Of what @p file is or, where it is a link, leads to. A folder that we may write but not read
/// can't be synced.
Result<void> makeNameDurable(const std::filesystem::path& file)
{
    std::error_code error;
    const auto target = std::filesystem::canonical(file, error);
    const Descriptor folder(open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder && !syncFolder(folder.number()))
        return tl::make_unexpected(Error{.message = qt_error_string(errno)});
    return {};
}

} // namespace

Result<void> saveDocument(const std::filesystem::path& file, const QByteArray& bytes)
{
    QSaveFile document(QFile::decodeName(file.c_str()));
    if (!document.open(QIODevice::WriteOnly) || document.write(bytes) != bytes.size()
        || !document.commit())
        return tl::make_unexpected(Error{.message = document.errorString()});
    return makeNameDurable(file);
}

} // namespace Platform
