#include "Log.h"

#include "Fakes/FakeSystemLog.h"

#include <QByteArrayList>

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace Lumenote;

namespace {

/// Takes standard error's place and keeps what arrives, one entry for each write.
class StandardErrorWrites {
public:
    StandardErrorWrites()
        : m_original(dup(STDERR_FILENO))
    {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0, m_ends.data()), 0);
        dup2(m_ends[1], STDERR_FILENO);
    }
    ~StandardErrorWrites()
    {
        dup2(m_original, STDERR_FILENO);
        for (const int descriptor : {m_original, m_ends[0], m_ends[1]})
            close(descriptor);
    }
    StandardErrorWrites(const StandardErrorWrites&) = delete;
    StandardErrorWrites& operator=(const StandardErrorWrites&) = delete;

    QByteArrayList take() const
    {
        QByteArrayList writes;
        std::array<char, 4096> buffer{};
        for (;;) {
            const auto count = recv(m_ends[0], buffer.data(), buffer.size(), 0);
            if (count < 0)
                return writes;
            writes.append(QByteArray(buffer.data(), count));
        }
    }

    void dropReader() const { shutdown(m_ends[0], SHUT_RDWR); }

private:
    int m_original;
    std::array<int, 2> m_ends{};
};

class LogTest : public testing::Test {
protected:
    void SetUp() override { Log::setSystemLog(m_systemLog, QStringLiteral("Lumenote")); }
    void TearDown() override
    {
        Log::setSystemLog(nullptr, {});
        Log::setMirrorsToStandardError(false);
    }

    std::shared_ptr<Fakes::FakeSystemLog> m_systemLog = std::make_shared<Fakes::FakeSystemLog>();
};

TEST_F(LogTest, aLineReachesTheSystemLogAndTheMirror)
{
    struct Row {
        const char* name;
        Log::Logger logger;
        QString message;
        Fakes::FakeSystemLog::Entry entry;
        QByteArray mirrored;
    };
    const QString subsystem = QStringLiteral("Lumenote");
    const std::array rows{
        Row{"prefixInCapitals", Log::ocr, QStringLiteral("3 lines in 20ms"),
            {subsystem, QStringLiteral("ocr"), QStringLiteral("OCR: 3 lines in 20ms")},
            "lumenote: OCR 3 lines in 20ms\n"},
        Row{"percentIsLiteral", Log::history, QStringLiteral("50%s %n full"),
            {subsystem, QStringLiteral("history"), QStringLiteral("history: 50%s %n full")},
            "lumenote: history 50%s %n full\n"},
        Row{"lineFeedAndDash", Log::hotkey, QStringLiteral("a\n — b"),
            {subsystem, QStringLiteral("hotkey"), QStringLiteral("hotkey: a\n — b")},
            "lumenote: hotkey a\n — b\n"},
        Row{"empty", Log::picker, QString(),
            {subsystem, QStringLiteral("picker"), QStringLiteral("picker: ")},
            "lumenote: picker \n"},
    };
    Log::setMirrorsToStandardError(true);
    for (const auto& row : rows) {
        QByteArrayList writes;
        {
            const StandardErrorWrites standardError;
            Log::write(row.logger, row.message);
            writes = standardError.take();
        }
        EXPECT_EQ(m_systemLog->entries().last(), row.entry) << row.name;
        EXPECT_EQ(writes, QByteArrayList{row.mirrored}) << row.name;
    }
}

TEST_F(LogTest, nothingIsMirroredWhereThatIsOff)
{
    Log::setMirrorsToStandardError(false);
    const StandardErrorWrites standardError;
    Log::write(Log::ocr, QStringLiteral("quiet"));
    EXPECT_EQ(standardError.take(), QByteArrayList());
    EXPECT_EQ(m_systemLog->messages(), QStringList{QStringLiteral("OCR: quiet")});
}

TEST_F(LogTest, linesOfSeveralThreadsStayWhole)
{
    constexpr int threadCount = 4;
    constexpr int linesEach = 2; // All fit into the socket's queue, which may be as short as ten.
    Log::setMirrorsToStandardError(true);
    QByteArrayList writes;
    {
        const StandardErrorWrites standardError;
        {
            std::array<std::jthread, threadCount> threads;
            for (auto& thread : threads)
                thread = std::jthread([] {
                    for (int line = 0; line < linesEach; ++line)
                        Log::write(Log::ocr, QStringLiteral("whole"));
                });
        }
        writes = standardError.take();
    }
    constexpr qsizetype allLines = qsizetype(threadCount) * linesEach;
    EXPECT_EQ(writes, QByteArrayList(allLines, "lumenote: OCR whole\n"));
    EXPECT_EQ(m_systemLog->entries().size(), allLines);
}

TEST_F(LogTest, aMirrorThatTakesNothingIsIgnored)
{
    Log::setMirrorsToStandardError(true);
    const StandardErrorWrites standardError;
    standardError.dropReader();
    for (int i = 0; i < 1000; ++i)
        Log::write(Log::ocr, QStringLiteral("nobody listens"));
    EXPECT_EQ(m_systemLog->entries().size(), 1000);
}

} // namespace
