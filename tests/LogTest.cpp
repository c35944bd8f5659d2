#include "Log.h"

#include "Fakes/FakeSystemLog.h"

#include <QByteArrayList>

#include <array>
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
    void TearDown() override { Log::setMirrorsToStandardError(false); }

    const Fakes::CollectedLog m_systemLog;
};

TEST_F(LogTest, aLineReachesTheSystemLogAndTheMirrorWhereThatIsOn)
{
    const auto check = [this](const Log::Logger& logger, const char* message, const char* category,
                           const char* line, const QByteArrayList& mirrored) {
        const StandardErrorWrites standardError;
        Log::write(logger, QString::fromUtf8(message));
        EXPECT_EQ(standardError.take(), mirrored);
        EXPECT_EQ(m_systemLog->entries().last(),
            (Fakes::FakeSystemLog::Entry{
                u"Lumenote"_qs, QString::fromUtf8(category), QString::fromUtf8(line)}));
    };
    check(Log::ocr, "quiet", "ocr", "OCR: quiet", {});
    Log::setMirrorsToStandardError(true);
    check(Log::ocr, "3 lines in 20ms", "ocr", "OCR: 3 lines in 20ms",
        {"lumenote: OCR 3 lines in 20ms\n"});
    check(Log::history, "50%s %n full", "history", "history: 50%s %n full",
        {"lumenote: history 50%s %n full\n"});
    check(Log::hotkey, "a\n — b", "hotkey", "hotkey: a\n — b", {"lumenote: hotkey a\n — b\n"});
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
                        Log::write(Log::ocr, u"whole"_qs);
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
        Log::write(Log::ocr, u"nobody listens"_qs);
    EXPECT_EQ(m_systemLog->entries().size(), 1000);
}

} // namespace
