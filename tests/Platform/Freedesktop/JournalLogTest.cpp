#include "Platform/Freedesktop/JournalLog.h"

#include <QTemporaryDir>

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Where a journal listens that reads when told to.
class SlowJournal {
public:
    SlowJournal()
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = socketPath();
        std::memcpy(address.sun_path, path.data(), path.size());
        EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    SlowJournal(const SlowJournal&) = delete;
    SlowJournal& operator=(const SlowJournal&) = delete;
    ~SlowJournal() { close(m_socket); }

    std::string socketPath() const { return m_folder.filePath(u"j"_qs).toStdString(); }

    /// The next entry; empty where none waits.
    QByteArray read() const
    {
        std::array<char, 4096> buffer{};
        const auto size = recv(m_socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
        return size > 0 ? QByteArray(buffer.data(), size) : QByteArray();
    }

private:
    QTemporaryDir m_folder;
    int m_socket = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

} // namespace

TEST(JournalLogTest, entriesKeepEveryByte)
{
    const SlowJournal journal;
    Platform::JournalLog(journal.socketPath()).write(u"app"_qs, u"OCR"_qs, u"50 %s\nß"_qs);
    const QByteArray entry = journal.read();
    EXPECT_TRUE(entry.startsWith(QByteArrayLiteral("MESSAGE\n\x08\0\0\0\0\0\0\0"
                                                   "50 %s\n\xc3\x9f\nPRIORITY\n")))
        << entry.toPercentEncoding().toStdString();
    EXPECT_TRUE(entry.endsWith(QByteArrayLiteral("LUMENOTE_CATEGORY\n\x03\0\0\0\0\0\0\0"
                                                 "OCR\n")))
        << entry.toPercentEncoding().toStdString();
}

TEST(JournalLogTest, aJournalThatHangsHoldsNobodyUp)
{
    constexpr int moreThanAnyQueue = 20'000;
    const SlowJournal journal;
    Platform::JournalLog log(journal.socketPath());
    for (int entry = 0; entry < moreThanAnyQueue; ++entry)
        log.write(u"app"_qs, u"OCR"_qs, u"entry"_qs);
    while (!journal.read().isEmpty()) { }
    log.write(u"app"_qs, u"OCR"_qs, u"later"_qs);
    EXPECT_TRUE(journal.read().contains("later"));
}

TEST(JournalLogTest, aMissingJournalIsNoFailure)
{
    Platform::JournalLog("/nowhere/socket").write({}, {}, u"lost"_qs);
}
