#include "Platform/Bundle.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace Platform {

std::optional<Bundle> readBundle(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto fields = QJsonDocument::fromJson(file.readAll()).object();
    const auto identifier = fields.value(u"identifier");
    const auto shortVersion = fields.value(u"shortVersion");
    const auto version = fields.value(u"version");
    if (!identifier.isString() || !shortVersion.isString() || !version.isString())
        return std::nullopt;
    return Bundle{.identifier = identifier.toString(),
        .shortVersion = shortVersion.toString(),
        .version = version.toString()};
}

std::optional<Bundle> mainBundle()
{
    // Not through the application object, since `--version` has none.
    const QFileInfo program(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    return readBundle(program.path() + QStringLiteral("/../share/lumenote/bundle.json"));
}

} // namespace Platform
