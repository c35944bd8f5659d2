#include "Model/CaptureHistory.h"

#include "Fakes/FakeFileSystem.h"
#include "Fakes/FakeSystemLog.h"
#include "Model/WorkbenchFixture.h"

#include <QColorSpace>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>

using namespace Lumenote;

namespace {

using Outcome = CaptureHistory::Selection::Outcome;

class CaptureHistoryTest : public WorkbenchFixture {
protected:
    void SetUp() override { start(); }

    void TearDown() override
    {
        end();
        WorkbenchFixture::TearDown();
    }

    /// What the program's start does, up to the moment before it looks at the disk.
    void start() { history.emplace(CaptureStore(captures, files), services); }

    /// Quits; all that was to be written is on disk then.
    void end() { history.reset(); }

    void restart()
    {
        end();
        start();
        load();
    }

    /// Returns once what the scan found is in the list.
    void load()
    {
        history->loadPersisted();
        settle();
    }

    /// Returns once everything asked of the disk until now is done and has been reported: a
    /// capture that is recorded now is stored after all that.
    void settle()
    {
        const auto marker = history->record(makeModel(storedText({})));
        EXPECT_TRUE(Harness::waitFor([&] { return entry(marker.id)->isStored; }));
        history->deleteEntry(marker.id);
    }

    CaptureHistory::Entry recordCapture(const std::optional<StoredText>& text = StoredText())
    {
        return history->record(makeModel(text));
    }

    QList<QUuid> recordCaptures(int count)
    {
        QList<QUuid> ids;
        for (int index = 0; index < count; ++index)
            ids.append(recordCapture().id);
        return ids;
    }

    const CaptureHistory::Entry* entry(const QUuid& id) const
    {
        for (const auto& entry : history->entries())
            if (entry.id == id)
                return &entry;
        return nullptr;
    }

    bool waitUntilStored(const QUuid& id) const
    {
        return Harness::waitFor([&] { return !entry(id) || entry(id)->isStored; });
    }

    bool waitUntilReleased(const QUuid& id) const
    {
        return Harness::waitFor([&] { return entry(id) && !entry(id)->model; });
    }

    CaptureHistory::Selection selected(const QUuid& id)
    {
        const auto future = history->select(id);
        EXPECT_TRUE(Harness::waitForFinished(future));
        return future.result();
    }

    std::filesystem::path textFile(const QUuid& id) const
    {
        return captures / "Text" / (uuidText(id) + ".json");
    }

    void failWrites() { files->fail(Fakes::FakeFileSystem::Operation::write, u"no space left"_qs); }

    bool waitForLog(const QString& message) const
    {
        return Harness::waitFor([&] { return systemLog->messages().contains(message); });
    }

    qsizetype pngCount() const
    {
        return std::ranges::count(
            files->names(captures).value(), ".png", &std::filesystem::path::extension);
    }

public:
    const Fakes::CollectedLog systemLog;
    const std::shared_ptr<Fakes::FakeFileSystem> files = std::make_shared<Fakes::FakeFileSystem>();
    const std::filesystem::path captures = files->root() / "Captures";
    std::optional<CaptureHistory> history;
};

TEST_F(CaptureHistoryTest, aCaptureComesBackAfterARestartWithoutBeingReadAgain)
{
    recognizer->queueLines({u"hello"_qs, u"world"_qs});
    const auto id = history->record(makeModel()).id;
    ASSERT_TRUE(Harness::waitFor([&] { return entry(id)->isTextStored; }));
    restart();
    ASSERT_TRUE(entry(id));
    EXPECT_TRUE(entry(id)->isStored);
    EXPECT_FALSE(entry(id)->model);
    EXPECT_EQ(entry(id)->pixelSize, QSize(700, 400));
    EXPECT_EQ(entry(id)->thumbnail.width(), 200);
    const auto selection = selected(id);
    ASSERT_EQ(selection.outcome, Outcome::current);
    EXPECT_EQ(history->currentID(), id);
    EXPECT_EQ(selection.model->displayText(), u"hello\nworld"_qs);
    EXPECT_EQ(selection.model->image().pixelColor(3, 3), QColor(Qt::darkCyan));
    EXPECT_TRUE(entry(id)->isTextStored);
    EXPECT_EQ(recognizer->callCount(), 1);
}

TEST_F(CaptureHistoryTest, aThumbnailComesLaterAndLooksTheSameAfterARestart)
{
    QImage wide(700, 400, QImage::Format_RGB32);
    wide.setColorSpace(QColorSpace::DisplayP3);
    wide.fill(qRgb(234, 51, 35)); // The red of sRGB.
    const auto id = history->record(makeModel(storedText({}), wide)).id;
    EXPECT_TRUE(entry(id)->thumbnail.isNull());
    QSignalSpy changes(&*history, &CaptureHistory::entriesChanged);
    ASSERT_TRUE(Harness::waitFor([&] { return !entry(id)->thumbnail.isNull(); }));
    EXPECT_EQ(changes.count(), 1);
    const auto color = [](const QImage& image) { return image.pixelColor(5, 5); };
    const auto thumbnail = color(entry(id)->thumbnail);
    EXPECT_EQ(thumbnail, color(entry(id)->model->displayImage()));
    EXPECT_NEAR(thumbnail.green(), 0, 6);
    EXPECT_GE(thumbnail.red(), 252);
    restart();
    EXPECT_EQ(color(entry(id)->thumbnail), thumbnail);
    const auto model = selected(id).model;
    ASSERT_TRUE(Harness::waitFor([&] { return !model->displayImage().isNull(); }));
    EXPECT_EQ(color(model->displayImage()), thumbnail);
}

TEST_F(CaptureHistoryTest, savesEndBeforeTheHistoryDoes)
{
    const QTemporaryDir folder;
    const auto file = folder.filePath(u"saved.png"_qs);
    recordCapture().model->saveImage();
    savePanel.answer(file.toStdString());
    end();
    EXPECT_EQ(QImage(file).size(), QSize(700, 400));
}

TEST_F(CaptureHistoryTest, textOfAnotherVersionIsReadAndStoredAnew)
{
    const auto id = recordCapture().id;
    restart();
    std::filesystem::create_directory(captures / "Text");
    ASSERT_TRUE(files->writeFile(textFile(id), R"({"version":2,"lines":[]})"));
    recognizer->queueLines({u"anew"_qs});
    const auto model = selected(id).model;
    ASSERT_TRUE(model);
    EXPECT_TRUE(Harness::waitFor([&] { return entry(id)->isTextStored; }));
    EXPECT_EQ(model->displayText(), u"anew"_qs);
}

TEST_F(CaptureHistoryTest, datesRiseByAMillisecondWhateverTheClockSays)
{
    const auto first = recordCapture().capturedAt;
    EXPECT_EQ(first, now);
    EXPECT_EQ(recordCapture().capturedAt, first.addMSecs(1));
    now = now.addDays(-3);
    EXPECT_EQ(recordCapture().capturedAt, first.addMSecs(2));
    now = now.addDays(4);
    EXPECT_EQ(recordCapture().capturedAt, now);
}

TEST_F(CaptureHistoryTest, anOpenedImageStaysInItsOwnFile)
{
    const QTemporaryDir elsewhere;
    const std::filesystem::path source = elsewhere.filePath(u"opened.png"_qs).toStdString();
    ASSERT_TRUE(picture().save(elsewhere.filePath(u"opened.png"_qs)));
    recognizer->queueLines({u"text"_qs});
    const auto model = makeModel();
    const auto id = history->record(model, source).id;
    ASSERT_TRUE(waitUntilRead(*model));
    recordCaptures(7);
    EXPECT_TRUE(waitUntilReleased(id));
    EXPECT_FALSE(entry(id)->fileURL);
    EXPECT_EQ(selected(id).outcome, Outcome::current);
    history->deleteEntry(id);
    end();
    EXPECT_EQ(pngCount(), 7);
    EXPECT_FALSE(std::filesystem::exists(textFile(id)));
    EXPECT_TRUE(std::filesystem::exists(source));
}

TEST_F(CaptureHistoryTest, eachKindIsKeptToItsLimit)
{
    const auto oldest = recordCapture(storedText({}));
    const auto opened = history->record(makeModel(storedText({})), "/a.png");
    ASSERT_TRUE(waitUntilStored(oldest.id));
    recordCaptures(30);
    for (int index = 0; index < 29; ++index)
        history->record(makeModel(storedText({})), "/b.png");
    EXPECT_EQ(history->entries().size(), 60);
    EXPECT_FALSE(entry(oldest.id));
    EXPECT_TRUE(entry(opened.id));
    settle();
    EXPECT_FALSE(std::filesystem::exists(*oldest.fileURL));
    EXPECT_LE(pngCount(), 30);
}

TEST_F(CaptureHistoryTest, theEntryOnShowIsNeverTrimmed)
{
    recordCaptures(30);
    end();
    now = now.addDays(-1);
    start();
    const auto shown = recordCapture().id;
    history->loadPersisted();
    ASSERT_TRUE(Harness::waitFor([this] { return history->entries().size() > 1; }));
    EXPECT_EQ(history->entries().size(), 31);
    EXPECT_EQ(history->entries().constLast().id, shown);
}

TEST_F(CaptureHistoryTest, modelsThatNobodyNeedsAreReleased)
{
    const auto ids = recordCaptures(7);
    EXPECT_TRUE(waitUntilReleased(ids.constFirst()));
    for (const auto& id : ids.sliced(1))
        EXPECT_TRUE(entry(id)->model);
}

TEST_F(CaptureHistoryTest, workThatExistsNowhereElseIsKept)
{
    const auto marked = recordCapture();
    marked.model->addAnnotation({.start = QPointF(1, 1), .end = QPointF(50, 50)});
    marked.model->undo();
    const auto unwritten = recordCapture();
    ASSERT_TRUE(waitUntilStored(unwritten.id));
    failWrites();
    recognizer->queueLines({u"not on disk"_qs});
    unwritten.model->startRecognition();
    EXPECT_TRUE(waitForLog(u"history: couldn't store recognized text — no space left"_qs));
    files->heal();
    const auto idle = recordCapture().id;
    recordCaptures(7);
    ASSERT_TRUE(waitUntilReleased(idle));
    EXPECT_TRUE(entry(marked.id)->model);
    EXPECT_TRUE(entry(unwritten.id)->model);
}

TEST_F(CaptureHistoryTest, aCaptureThatCouldNotBeWrittenStaysInMemory)
{
    failWrites();
    const auto failed = recordCapture();
    ASSERT_TRUE(Harness::waitFor([&] { return !entry(failed.id)->fileURL; }));
    EXPECT_TRUE(waitForLog(u"history: couldn't store capture — no space left"_qs));
    files->heal();
    EXPECT_TRUE(waitUntilReleased(recordCaptures(8).constFirst()));
    EXPECT_EQ(selected(failed.id).model, failed.model);
    recognizer->queueLines({u"text without an image"_qs});
    failed.model->startRecognition();
    ASSERT_TRUE(waitUntilRead(*failed.model));
    end();
    EXPECT_FALSE(std::filesystem::exists(textFile(failed.id)));
}

TEST_F(CaptureHistoryTest, aCaptureWhoseFileIsGoneLeavesTheList)
{
    const auto kept = recordCapture().id;
    const auto removed = recordCapture();
    restart();
    ASSERT_TRUE(std::filesystem::remove(*removed.fileURL));
    EXPECT_EQ(selected(removed.id).outcome, Outcome::gone);
    EXPECT_FALSE(entry(removed.id));
    EXPECT_TRUE(entry(kept));
    EXPECT_EQ(selected(QUuid::createUuid()).outcome, Outcome::gone);
}

TEST_F(CaptureHistoryTest, theLatestWishWins)
{
    const auto ids = recordCaptures(3);
    restart();
    const auto first = history->select(ids.at(0));
    const auto second = history->select(ids.at(1));
    ASSERT_TRUE(Harness::waitForFinished(first) && Harness::waitForFinished(second));
    EXPECT_EQ(first.result().outcome, Outcome::superseded);
    EXPECT_EQ(history->currentID(), ids.at(1));

    const auto overtaken = history->select(ids.at(2));
    const auto captured = recordCapture().id;
    ASSERT_TRUE(Harness::waitForFinished(overtaken));
    EXPECT_EQ(history->currentID(), captured);

    const auto cleared = history->select(ids.at(0));
    history->clear();
    ASSERT_TRUE(Harness::waitForFinished(cleared));
    EXPECT_EQ(cleared.result().outcome, Outcome::superseded);
    EXPECT_FALSE(history->currentID());
}

TEST_F(CaptureHistoryTest, leavingTheScreenGivesUpTheCaches)
{
    const auto model = recordCapture().model;
    model->addAnnotation({.start = QPointF(1, 1), .end = QPointF(50, 50)});
    const auto kept = model->draggableImage()->png;
    recordCapture();
    const auto anew = model->draggableImage()->png;
    ASSERT_TRUE(Harness::waitForFinished(kept) && Harness::waitForFinished(anew));
    EXPECT_NE(kept.result()->constData(), anew.result()->constData());
}

TEST_F(CaptureHistoryTest, historyIsWhatIsNotOnShow)
{
    EXPECT_FALSE(history->hasHistory());
    const auto first = recordCapture().id;
    EXPECT_FALSE(history->hasHistory());
    const auto second = recordCapture().id;
    EXPECT_TRUE(history->hasHistory());
    history->deleteEntry(first);
    EXPECT_FALSE(history->hasHistory());
    EXPECT_EQ(history->current()->id, second);
}

TEST_F(CaptureHistoryTest, deletingMovesTheImageToTheTrashAndRemovesTheText)
{
    recognizer->queueLines({u"text"_qs});
    const auto deleted = history->record(makeModel());
    ASSERT_TRUE(Harness::waitFor([&] { return entry(deleted.id)->isTextStored; }));
    history->deleteEntry(deleted.id);
    EXPECT_FALSE(history->currentID());
    EXPECT_FALSE(entry(deleted.id));
    end();
    EXPECT_FALSE(std::filesystem::exists(*deleted.fileURL));
    EXPECT_FALSE(std::filesystem::exists(textFile(deleted.id)));
    EXPECT_TRUE(std::filesystem::exists(files->trash() / deleted.fileURL->filename()));
}

TEST_F(CaptureHistoryTest, clearingStopsWhatIsNotOnShowAndAScanUnderWay)
{
    recordCaptures(2);
    restart();
    recognizer->queueHang();
    const auto idle = history->record(makeModel()).model;
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    recognizer->queueHang();
    const auto shown = history->record(makeModel()).model;
    history->loadPersisted();
    history->clear();
    EXPECT_TRUE(history->entries().isEmpty());
    EXPECT_TRUE(idle->recognitionInterrupted());
    EXPECT_FALSE(shown->recognitionInterrupted());
    settle();
    EXPECT_TRUE(history->entries().isEmpty());
    recognizer->releaseHangs();
    ASSERT_TRUE(waitUntilRead(*shown));
    end();
    EXPECT_EQ(pngCount(), 0);
}

TEST_F(CaptureHistoryTest, textWithoutItsImageIsSweptAtTheStart)
{
    const auto stray = textFile(QUuid::createUuid());
    std::filesystem::create_directories(stray.parent_path());
    ASSERT_TRUE(files->writeFile(stray, {}));
    load();
    end();
    EXPECT_FALSE(std::filesystem::exists(stray));
}

} // namespace
