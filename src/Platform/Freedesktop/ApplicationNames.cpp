#include "Platform/Freedesktop/ApplicationNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <utility>

namespace Platform {

namespace {

constexpr qint64 longestEntry = 1 << 20; // Bytes. None of a real program comes near.

/// The lines of the group that describes the application, by key.
QHash<QString, QString> readGroup(const QString& path)
{
    QFile file(path);
    QHash<QString, QString> values;
    if (!file.open(QIODevice::ReadOnly))
        return values;
    bool isInGroup = false;
    for (const auto& line : file.read(longestEntry).split('\n')) {
        const auto text = QString::fromUtf8(line).trimmed();
        const auto equals = text.indexOf(u'=');
        if (text.startsWith(u'['))
            isInGroup = text == QStringLiteral("[Desktop Entry]");
        else if (isInGroup && equals > 0)
            values.insert(text.left(equals).trimmed(), text.mid(equals + 1).trimmed());
    }
    return values;
}

QString localized(const QHash<QString, QString>& values, const QString& key)
{
    const auto locale = QLocale().name(); // Such as de_AT.
    for (const auto& language : {locale, locale.section(u'_', 0, 0)})
        if (auto value = values.value(key + u'[' + language + u']'); !value.isEmpty())
            return value;
    return values.value(key);
}

} // namespace

ApplicationNames::ApplicationNames(QStringList folders)
    : m_folders(std::move(folders))
{
}

QStringList ApplicationNames::standardFolders()
{
    return QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
}

QString ApplicationNames::name(const QString& instanceName, const QString& className)
{
    readIfChanged();
    for (const auto& windowClass : {className, instanceName})
        if (auto name = entryName(windowClass); !name.isEmpty())
            return name;
    return className.isEmpty() ? instanceName : className;
}

QString ApplicationNames::entryName(const QString& windowClass) const
{
    const auto key = windowClass.toLower();
    const auto declared = m_namesByClass.value(key);
    return declared.isEmpty() ? m_namesByFile.value(key) : declared;
}

void ApplicationNames::readIfChanged()
{
    QList<QDateTime> changeTimes;
    for (const auto& folder : m_folders)
        changeTimes.append(QFileInfo(folder).lastModified());
    if (changeTimes == m_changeTimes)
        return;
    m_changeTimes = changeTimes;
    m_namesByClass.clear();
    m_namesByFile.clear();
    for (const auto& folder : m_folders)
        for (const auto& entry : QDir(folder).entryInfoList({QStringLiteral("*.desktop")}))
            readEntry(entry.filePath());
}

void ApplicationNames::readEntry(const QString& path)
{
    const auto values = readGroup(path);
    const auto name = localized(values, QStringLiteral("Name"));
    const auto add = [&name](QHash<QString, QString>& names, const QString& key) {
        if (!key.isEmpty() && !name.isEmpty() && !names.contains(key.toLower()))
            names.insert(key.toLower(), name);
    };
    add(m_namesByClass, values.value(QStringLiteral("StartupWMClass")));
    add(m_namesByFile, QFileInfo(path).completeBaseName());
}

} // namespace Platform
