#pragma once

#include "Platform/SerialQueue.h"
#include "Platform/UserDefaults.h"

#include <QHash>

#include <optional>

namespace Platform {

struct Bundle;

/// User defaults in one INI file, read once and kept in memory. Changes are written in order on a
/// thread of their own, the last of them before the destructor is done. What can't be written is
/// forgotten at the end of the run.
class UserDefaultsFile final : public UserDefaults {
public:
    /// @p path need not exist.
    explicit UserDefaultsFile(const QString& path);

    /// The file of the program installed as @p bundle, or of a development build, below
    /// XDG_CONFIG_HOME.
    static QString standardPath(const std::optional<Bundle>& bundle);

    QVariant value(const QString& key) const override;
    void setValue(const QString& key, const QVariant& value) override;
    void remove(const QString& key) override;

private:
    QString m_path;
    QHash<QString, QVariant> m_values;
    SerialQueue m_disk;
};

} // namespace Platform
