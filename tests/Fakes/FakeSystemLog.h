#pragma once

#include "Platform/SystemLog.h"

#include <QList>
#include <QStringList>

#include <mutex>

namespace Fakes {

/// Collects what is logged.
class FakeSystemLog final : public Platform::SystemLog {
public:
    struct Entry {
        QString subsystem;
        QString category;
        QString message;

        bool operator==(const Entry&) const = default;
    };

    void write(const QString& subsystem, const QString& category, const QString& message) override
    {
        const std::scoped_lock hold(m_lock);
        m_entries.append({.subsystem = subsystem, .category = category, .message = message});
    }

    QList<Entry> entries() const
    {
        const std::scoped_lock hold(m_lock);
        return m_entries;
    }

    QStringList messages() const
    {
        // Not by a copy of the list: a list grows in place once its copies are gone, which it asks
        // without waiting for what was read of them.
        const std::scoped_lock hold(m_lock);
        QStringList messages;
        for (const auto& entry : m_entries)
            messages.append(entry.message);
        return messages;
    }

private:
    mutable std::mutex m_lock;
    QList<Entry> m_entries;
};

} // namespace Fakes
