#include "Model/CaptureStore.h"

#include "Fakes/FakeFileSystem.h"
#include "Fakes/ThreadShortage.h"
#include "Platform/Bundle.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Lumenote;
using Operation = Fakes::FakeFileSystem::Operation;
using testing::ElementsAre;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

const StoredText someText{.lines = {{.text = u"a"_qs}}};

class CaptureStoreTest : public testing::Test {
protected:
    struct Capture {
        QUuid id;
        fs::path file;
    };

    Capture nameOf(int second, QUuid id = QUuid::createUuid()) const
    {
        const QDateTime date(QDate(2026, 1, 16), QTime(17, 0).addSecs(second), Qt::UTC);
        return {.id = id, .file = m_store.fileFor({.id = id, .capturedAt = date})};
    }

    /// Recorded with its text; its width tells captures apart.
    Capture record(int second, QUuid id = QUuid::createUuid()) const
    {
        auto capture = nameOf(second, id);
        EXPECT_TRUE(m_store.write(picture(second + 1), capture.file, 1));
        EXPECT_TRUE(m_store.writeText(someText, id));
        return capture;
    }

    static QImage picture(int width)
    {
        QImage image(width, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        return image;
    }

    void put(const fs::path& file, const QByteArray& bytes) const
    {
        fs::create_directories(file.parent_path());
        ASSERT_TRUE(m_files->writeFile(file, bytes));
    }

    fs::path textFile(const QUuid& id) const
    {
        return m_store.directory() / "Text" / (uuidText(id) + ".json");
    }

    std::vector<fs::path> names() const { return m_files->names(m_store.directory()).value(); }

    static std::vector<fs::path> filesOf(const QList<CaptureStore::Stored>& captures)
    {
        std::vector<fs::path> files;
        for (const auto& capture : captures)
            files.push_back(capture.file);
        return files;
    }

    static bool isThere(const Capture& capture) { return fs::exists(capture.file); }
    bool hasText(const Capture& capture) const { return fs::exists(textFile(capture.id)); }

    std::shared_ptr<Fakes::FakeFileSystem> m_files = std::make_shared<Fakes::FakeFileSystem>();
    CaptureStore m_store{m_files->root() / "Captures", m_files};
};

TEST_F(CaptureStoreTest, newestCapturesAreListedInOrderAndTheOthersRemoved)
{
    std::vector<Capture> captures;
    for (const int second : {3, 0, 4, 1, 2})
        captures.push_back(record(second));

    const auto stored = m_store.load(3);

    EXPECT_THAT(filesOf(stored), ElementsAre(captures[2].file, captures[0].file, captures[4].file));
    for (qsizetype i = 0; i < stored.size(); ++i) {
        EXPECT_EQ(stored[i].pixelSize, QSize(static_cast<int>(5 - i), 20));
        EXPECT_EQ(CaptureIdentity::fromFileName(stored[i].file.filename()),
            (CaptureIdentity{.id = stored[i].id, .capturedAt = stored[i].capturedAt}));
    }
    for (const size_t removed : {1, 3})
        EXPECT_FALSE(isThere(captures[removed]) || hasText(captures[removed]));
    EXPECT_EQ(m_store.readText(captures[4].id), someText);
}

TEST_F(CaptureStoreTest, whatCanNotBeReadKeepsItsPlace)
{
    const auto oldest = record(0);
    const auto old = record(1);
    const auto damaged = nameOf(2);
    put(damaged.file, "no picture");
    EXPECT_THAT(filesOf(m_store.load(2)), ElementsAre(old.file));
    EXPECT_TRUE(isThere(damaged));
    EXPECT_FALSE(isThere(oldest));
}

TEST_F(CaptureStoreTest, aUuidThatOccursTwiceIsThatOfTheNewest)
{
    const auto id = QUuid::createUuid();
    const auto older = record(0, id);
    const auto newer = record(1, id);
    EXPECT_THAT(filesOf(m_store.load(2)), ElementsAre(newer.file));
    EXPECT_TRUE(isThere(older));

    EXPECT_THAT(filesOf(m_store.load(1)), ElementsAre(newer.file));
    EXPECT_FALSE(isThere(older));
    EXPECT_TRUE(hasText(newer));
}

TEST_F(CaptureStoreTest, scaleComesBackAsPointSize)
{
    const auto check = [&](double scale, QSizeF pointSize) {
        const auto capture = nameOf(0);
        ASSERT_TRUE(m_store.write(picture(100), capture.file, scale));
        EXPECT_EQ(CaptureStore::image(capture.file)->pointSize, pointSize);
        EXPECT_EQ(m_store.load(1).front().pointSize, pointSize);
        m_store.trash(capture.file);
    };
    check(2, {50, 10});
    check(1, {100, 20});
    check(1.5, QSizeF(100, 20) / 1.5);
    check(0, QSizeF(100, 20) / 0.01);
}

TEST_F(CaptureStoreTest, aShortageOfThreadsLosesNothing)
{
    for (int i = 0; i < 5; ++i)
        record(i);
    const Fakes::ThreadShortage shortage;
    EXPECT_EQ(m_store.load(5).size(), 5);
}

TEST_F(CaptureStoreTest, textThatIsNoneIsRemovedAsItIsRead)
{
    const auto capture = record(0);
    for (const auto& json : {QByteArray(R"({"version":2,"lines":[]})"), QByteArray("{"),
             QByteArray(R"({"version":1,"lines":[)") + QByteArray(20 << 20, ' ') + "]}"}) {
        put(textFile(capture.id), json);
        EXPECT_FALSE(m_store.readText(capture.id));
        EXPECT_FALSE(hasText(capture));
    }
    EXPECT_FALSE(m_store.readText(capture.id));

    put(textFile(capture.id), "{");
    m_files->fail(Operation::read, u"Input/output error"_qs);
    EXPECT_FALSE(m_store.readText(capture.id));
    EXPECT_TRUE(hasText(capture));
}

TEST_F(CaptureStoreTest, onlyTextOfKnownCapturesOutlivesASweep)
{
    const auto known = record(0);
    const auto unknown = record(1);
    m_store.sweepOrphanedText({known.id});
    EXPECT_TRUE(hasText(known));
    EXPECT_FALSE(hasText(unknown));
    EXPECT_TRUE(isThere(unknown));
}

TEST_F(CaptureStoreTest, capturesGoToTheTrashAndTheirTextForGood)
{
    const auto capture = record(0);
    record(1);
    put(m_store.directory() / "foreign.png", "");
    EXPECT_EQ(m_store.load(2).size(), 2);
    m_store.trash(capture.file);
    EXPECT_TRUE(hasText(capture));
    m_store.trashAll();
    EXPECT_EQ(m_files->names(m_files->trash()).value().size(), 2);
    EXPECT_THAT(names(), UnorderedElementsAre(".lock", "foreign.png"));

    const auto other = record(2);
    m_files->fail(Operation::trash, u"no Trash"_qs);
    m_store.trash(other.file);
    EXPECT_FALSE(isThere(other));
}

TEST_F(CaptureStoreTest, whatAnotherCopyListsStaysUntilItsEnd)
{
    const std::array captures{record(0), record(1), record(2), record(3)};
    std::optional<CaptureStore> other(std::in_place, m_store.directory(), m_files);
    other->load(30);

    EXPECT_EQ(m_store.load(2).size(), 2);
    m_store.removeTrimmed(captures[3].id, captures[3].file);
    m_store.sweepOrphanedText({});
    for (const auto& capture : captures)
        EXPECT_TRUE(isThere(capture) && hasText(capture));
    m_store.trash(captures[3].file); // The user's own wish.
    m_store.removeText(captures[3].id);
    EXPECT_FALSE(isThere(captures[3]) || hasText(captures[3]));

    other.reset();
    m_store.load(2);
    EXPECT_FALSE(isThere(captures[0]) || hasText(captures[0]));
    m_store.removeTrimmed(captures[1].id, captures[1].file);
    m_store.removeTrimmed(captures[2].id, {});
    EXPECT_FALSE(isThere(captures[1]) || hasText(captures[1]) || hasText(captures[2]));
    EXPECT_TRUE(isThere(captures[2]));
}

TEST_F(CaptureStoreTest, aCopyThatOnlyWritesKeepsItsCapturesToo)
{
    const CaptureStore other(m_store.directory(), m_files);
    const auto capture = nameOf(0);
    ASSERT_TRUE(other.write(picture(1), capture.file, 1));
    m_store.load(0);
    EXPECT_TRUE(isThere(capture));
}

TEST_F(CaptureStoreTest, failuresOfTheDiskAreToldAndLoseNothing)
{
    const auto capture = record(0);
    m_files->fail(Operation::write, u"No space left on device"_qs);
    const auto written = m_store.write(picture(1), nameOf(1).file, 1);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().message.toStdString(), "No space left on device");
    EXPECT_FALSE(m_store.writeText({}, capture.id));
    for (const auto operation : {Operation::write, Operation::remove, Operation::trash})
        m_files->fail(operation, u"Read-only file system"_qs);
    m_store.trash(capture.file);
    EXPECT_EQ(m_store.load(0).size(), 0);
    EXPECT_THAT(filesOf(m_store.load(1)), ElementsAre(capture.file));
    EXPECT_EQ(m_store.readText(capture.id), someText);
    m_files->heal();
    EXPECT_TRUE(m_store.write(picture(1), nameOf(1).file, 1));
}

TEST_F(CaptureStoreTest, aFolderThatVanishedIsMadeAnew)
{
    EXPECT_EQ(m_store.load(30).size(), 0);
    record(0);
    fs::remove_all(m_store.directory());
    EXPECT_EQ(m_store.load(30).size(), 0);
    m_store.sweepOrphanedText({});
    m_store.trashAll();
    const auto capture = record(1);
    EXPECT_THAT(filesOf(m_store.load(30)), ElementsAre(capture.file));
}

TEST_F(CaptureStoreTest, developmentBuildsKeepTheirCapturesApart)
{
    Platform::Bundle bundle;
    bundle.identifier = u"io.github.lumenote.Lumenote"_qs;
    const auto data = m_files->userDataFolder();
    EXPECT_EQ(CaptureStore::applicationSupport(*m_files, bundle), data / "Lumenote/Captures");
    for (const auto& none : {std::optional<Platform::Bundle>(), std::optional(Platform::Bundle())})
        EXPECT_EQ(
            CaptureStore::applicationSupport(*m_files, none), data / "Lumenote (dev)/Captures");
}

} // namespace
