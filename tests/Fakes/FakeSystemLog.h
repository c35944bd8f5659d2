#pragma once

#include "Log.h"
#include "Platform/SystemLog.h"

#include <QList>
#include <QStringList>

#include <memory>
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

/// Collects what the program logs, for the time of a test.
class CollectedLog {
public:
    CollectedLog() { Lumenote::Log::setSystemLog(m_log, u"Lumenote"_qs); }
    ~CollectedLog() { Lumenote::Log::setSystemLog(nullptr, {}); }
    CollectedLog(const CollectedLog&) = delete;
    CollectedLog& operator=(const CollectedLog&) = delete;

    const FakeSystemLog* operator->() const { return m_log.get(); }

private:
    const std::shared_ptr<FakeSystemLog> m_log = std::make_shared<FakeSystemLog>();
};

} // namespace Fakes
