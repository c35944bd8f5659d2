#include "Platform/Freedesktop/UserDefaultsFile.h"

#include "Platform/Bundle.h"

#include <QSettings>
#include <QStandardPaths>

namespace Platform {

namespace {

/// An INI file holds numbers and Booleans as texts; dates have a form of their own.
QVariant withItsType(const QVariant& stored)
{
    const auto text = stored.toString();
    if (stored.typeId() != QMetaType::QString)
        return stored;
    if (text == u"true" || text == u"false")
        return text == u"true";
    bool isNumber = false;
    const auto number = text.toLongLong(&isNumber);
    return isNumber ? QVariant(number) : stored;
}

} // namespace

UserDefaultsFile::UserDefaultsFile(const QString& path)
    : m_path(path)
{
    const QSettings file(path, QSettings::IniFormat);
    const auto keys = file.allKeys();
    for (const auto& key : keys)
        m_values.insert(key, withItsType(file.value(key)));
}

QString UserDefaultsFile::standardPath(const std::optional<Bundle>& bundle)
{
    const auto name = bundle ? bundle->identifier : QStringLiteral("Lumenote (dev)");
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name
        + QStringLiteral(".ini");
}

QVariant UserDefaultsFile::value(const QString& key) const
{
    return m_values.value(key);
}

void UserDefaultsFile::setValue(const QString& key, const QVariant& value)
{
    m_values.insert(key, value);
    m_disk.run([path = m_path, key, value] {
        QSettings(path, QSettings::IniFormat).setValue(key, value);
    });
}

void UserDefaultsFile::remove(const QString& key)
{
    m_values.remove(key);
    m_disk.run([path = m_path, key] { QSettings(path, QSettings::IniFormat).remove(key); });
}

} // namespace Platform
