// Copies of the program as processes of their own, which are killed.
//
// LUMENOTE_KILLS is how many are killed while they record, LUMENOTE_KILL_SEED what the moments
// follow from.

#include "Model/CaptureStore.h"
#include "Platform/Freedesktop/FreedesktopFileSystem.h"
#include "RecordedCapture.h"

#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <thread>

namespace {

using namespace Lumenote;
namespace fs = std::filesystem;

constexpr int limit = 30;
constexpr int patience = 60'000; // Milliseconds.

/// Another copy of the program, running until it is killed.
class Copy {
public:
    explicit Copy(const QStringList& arguments)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(LUMENOTE_CAPTURE_COPY), arguments);
    }
    ~Copy() { kill(); }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    bool saysLine()
    {
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead(patience))
                return false;
        return true;
    }

    QByteArray readLine() { return m_process.readLine().trimmed(); }
    bool hasLine() const { return m_process.canReadLine(); }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(patience);
    }

    bool wasKilled() const { return m_process.exitStatus() == QProcess::CrashExit; }

private:
    QProcess m_process;
};

class RunningCopiesTest : public testing::Test {
protected:
    CaptureStore store() const { return {m_folder, m_files}; }

    QByteArray read(const fs::path& file) const
    {
        return m_files->readFile(file, 1 << 20).value_or(QByteArray());
    }

    std::vector<fs::path> names(const fs::path& folder) const
    {
        return m_files->names(folder).value_or(std::vector<fs::path>());
    }

    QTemporaryDir m_root;
    QString m_path = m_root.filePath(u"Captures"_qs);
    fs::path m_folder = m_path.toStdString();
    fs::path m_textFolder = m_folder / "Text";
    std::shared_ptr<Platform::FileSystem> m_files =
        std::make_shared<Platform::FreedesktopFileSystem>();
};

TEST_F(RunningCopiesTest, whatAKilledCopyListedIsNoLongerKept)
{
    for (int i = 0; i < 5; ++i) {
        const CaptureIdentity capture{
            .id = QUuid::createUuid(), .capturedAt = QDateTime::currentDateTimeUtc().addDays(i)};
        ASSERT_TRUE(
            store().write(RecordedCapture::picture(capture.id), store().fileFor(capture), 1));
    }
    Copy other({u"list"_qs, m_path, u"5"_qs});
    ASSERT_TRUE(other.saysLine());
    EXPECT_EQ(store().load(3).size(), 3);
    EXPECT_EQ(store().load(5).size(), 5);
    other.kill();
    EXPECT_EQ(store().load(3).size(), 3);
    EXPECT_EQ(store().load(5).size(), 3);
}

/// Kills copies one after the other while they record, and looks at what they leave.
class KillTest : public RunningCopiesTest {
protected:
    struct Counts {
        int kills = 0;
        int images = 0; ///< Reported as stored.
        int texts = 0;
        int unreported = 0; ///< Found whole, but killed before it could be reported.
        int unfinished = 0; ///< Found after a kill and gone after the next start.
    };

    static int variable(const char* name, int usual)
    {
        bool isSet = false;
        const auto value = qEnvironmentVariableIntValue(name, &isSet);
        return isSet ? value : usual;
    }

    /// Until a random moment within the time of a few captures.
    void recordAndKill(const QString& mode)
    {
        m_images.clear();
        m_texts.clear();
        Copy copy({mode, m_path});
        ASSERT_TRUE(copy.saysLine() && copy.readLine() == "listed");
        const auto reports = std::uniform_int_distribution(0, 3)(m_random);
        for (int i = 0; i < reports; ++i) {
            ASSERT_TRUE(copy.saysLine());
            takeReport(copy.readLine());
        }
        std::this_thread::sleep_for(
            std::chrono::microseconds(std::uniform_int_distribution(0, 12'000)(m_random)));
        copy.kill();
        EXPECT_TRUE(copy.wasKilled());
        while (copy.hasLine())
            takeReport(copy.readLine());
    }

    void takeReport(const QByteArray& line)
    {
        const auto id = uuidFromText(line.mid(line.indexOf(' ') + 1).toStdString());
        ASSERT_TRUE(id) << line.toStdString();
        if (line.startsWith("trim ")) {
            m_images.remove(*id);
            m_texts.remove(*id);
        } else
            (line.startsWith("image ") ? m_images : m_texts).insert(*id);
    }

    void expectAllWhole()
    {
        m_found.clear();
        for (const auto& name : names(m_folder))
            if (const auto capture = CaptureIdentity::fromFileName(name)) {
                const auto image = CaptureStore::image(m_folder / name);
                ASSERT_TRUE(image) << name;
                EXPECT_TRUE(image->image == RecordedCapture::picture(capture->id)) << name;
                m_found.insert(capture->id);
            }
        EXPECT_TRUE(m_found.contains(m_images));
        QSet<QUuid> foundTexts;
        for (const auto& name : names(m_textFolder))
            if (const auto id = uuidFromText(name.stem().native())) {
                const auto text = storedTextFromJson(read(m_textFolder / name));
                EXPECT_TRUE(
                    text == RecordedCapture::text(*id, 1) || text == RecordedCapture::text(*id, 2))
                    << name;
                foundTexts.insert(*id);
            }
        EXPECT_TRUE(foundTexts.contains(m_texts));
        m_counts.unreported += static_cast<int>((m_found - m_known - m_images).size());
        m_counts.images += static_cast<int>(m_images.size());
        m_counts.texts += static_cast<int>(m_texts.size());
    }

    /// Loads as the next start does.
    void startAgain()
    {
        const auto unfinished = [this] {
            int count = 0;
            for (const auto& folder : {m_folder, m_textFolder})
                for (const auto& name : names(folder))
                    count += name.native().starts_with(".unfinished") ? 1 : 0;
            return count;
        };
        m_counts.unfinished += unfinished();
        QSet<QUuid> ids;
        for (const auto& stored : store().load(limit))
            ids.insert(stored.id);
        EXPECT_EQ(ids.size(), std::min<qsizetype>(m_found.size(), limit));
        store().sweepOrphanedText(ids);
        EXPECT_EQ(unfinished(), 0);
        for (const auto& name : names(m_folder))
            EXPECT_TRUE(name == ".lock" || name == "Text" || CaptureIdentity::fromFileName(name))
                << name;
        for (const auto& name : names(m_textFolder))
            EXPECT_TRUE(ids.contains(uuidFromText(name.stem().native()).value_or(QUuid()))) << name;
        m_known = ids;
    }

    std::mt19937 m_random;
    QSet<QUuid> m_images; ///< Reported in this round and not trimmed again.
    QSet<QUuid> m_texts;
    QSet<QUuid> m_found; ///< After the kill.
    QSet<QUuid> m_known; ///< Before this round.
    Counts m_counts;
};

TEST_F(KillTest, everyFileIsWholeAndEveryReportedCaptureIsThere)
{
    const auto kills = variable("LUMENOTE_KILLS", 300);
    const auto seed = variable("LUMENOTE_KILL_SEED", static_cast<int>(std::random_device()() >> 1));
    std::cout << "LUMENOTE_KILL_SEED=" << seed << std::endl;
    m_random.seed(static_cast<unsigned>(seed));
    for (; m_counts.kills < kills && !HasFailure(); ++m_counts.kills) {
        recordAndKill(m_counts.kills % 3 == 0 ? u"record-with-names"_qs : u"record"_qs);
        expectAllWhole();
        startAgain();
    }
    std::cout << m_counts.kills << " kills: " << m_counts.images << " images and " << m_counts.texts
              << " texts reported, " << m_counts.unreported << " images whole but not reported, "
              << m_counts.unfinished << " unfinished files swept" << std::endl;
    EXPECT_GT(m_counts.images, 0);
    EXPECT_GT(m_counts.texts, 0);
}

} // namespace
