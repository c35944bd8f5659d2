#pragma once

#include <QString>
#include <QVariant>

namespace Platform {

/// The few settings that outlive a run. Main thread; a change is seen by the next question at once
/// and reaches the disk later, so nothing here waits for it.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// What was set, with its type: a Boolean, a whole number, a QDateTime or a text; invalid where
    /// nothing was. Whoever edits the file by hand can put any of these anywhere.
    virtual QVariant value(const QString& key) const = 0;
    virtual void setValue(const QString& key, const QVariant& value) = 0;
    virtual void remove(const QString& key) = 0;
};

} // namespace Platform
