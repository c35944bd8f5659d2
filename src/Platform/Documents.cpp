#include "Platform/Documents.h"

#include <QFile>
#include <QSaveFile>

namespace Platform {

Result<void> saveDocument(const std::filesystem::path& file, const QByteArray& bytes)
{
    QSaveFile document(QFile::decodeName(file.c_str()));
    if (document.open(QIODevice::WriteOnly) && document.write(bytes) == bytes.size()
        && document.commit())
        return {};
    return tl::make_unexpected(Error{.message = document.errorString()});
}

} // namespace Platform
