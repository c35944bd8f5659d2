#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace Platform {

/// What the desktop calls an application whose windows have a certain WM_CLASS, by the desktop
/// entries that are installed. One thread at a time.
class ApplicationNames {
public:
    /// Entries of earlier folders hide those of later ones. They are read when first asked for, and
    /// again once a folder has changed.
    explicit ApplicationNames(QStringList folders = standardFolders());

    /// The name in the user's language; where no entry matches, @p className or else
    /// @p instanceName as it is.
    QString name(const QString& instanceName, const QString& className);

private:
    static QStringList standardFolders();

    void readIfChanged();
    void readEntry(const QString& path);
    QString entryName(const QString& windowClass) const;

    QStringList m_folders;
    QList<QDateTime> m_changeTimes; ///< Of the folders, when they were read.
    QHash<QString, QString> m_namesByClass; ///< As entries tell their class. Keys in lower case.
    QHash<QString, QString> m_namesByFile; ///< By the file's name, which is often the class.
};

} // namespace Platform
