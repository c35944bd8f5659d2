#include "Model/WorkbenchFixture.h"

#include <QSignalSpy>

using namespace Lumenote;

namespace {

class WorkbenchModelText : public WorkbenchFixture { };

TEST_F(WorkbenchModelText, takesPagesOfAnyLength)
{
    QStringList lines;
    for (int number = 0; number < 5000; ++number)
        lines.append(u"line %1"_qs.arg(number));
    const auto model = makeModel(storedText(lines));
    model->setTextQuery(u"LINE 499"_qs);
    EXPECT_EQ(model->matches().size(), 11);
    EXPECT_EQ(model->visibleWordCount(), 10'000);
    EXPECT_TRUE(model->visibleText().endsWith(u"\nline 4999"_qs));
}

TEST_F(WorkbenchModelText, needsAnImageWhichIsAsLargeAsItSaysOrAsItsPixels)
{
    EXPECT_EQ(WorkbenchModel::create({}, {10, 10}, {}, services), nullptr);
    const auto pointSize = [this](const QSizeF& size) {
        return WorkbenchModel::create(picture(), size, storedText({}), services)->pointSize();
    };
    EXPECT_EQ(pointSize({350, 200}), QSizeF(350, 200));
    EXPECT_EQ(pointSize({350, 0}), QSizeF(700, 400));
}

TEST_F(WorkbenchModelText, takesOverStoredTextWithoutReadingAgain)
{
    const auto model = makeModel(storedText({u"one two"_qs, u"three"_qs}));
    EXPECT_FALSE(model->isRecognizing());
    EXPECT_FALSE(model->awaitingModels());
    EXPECT_EQ(model->displayText(), u"one two\nthree"_qs);
    EXPECT_EQ(model->visibleWordCount(), 3);
    EXPECT_EQ(model->lines().constFirst().boundingBox, QRectF(1, 2, 30, 4));
    EXPECT_TRUE(model->pendingTextReveal());
    EXPECT_FALSE(makeModel(storedText({}))->pendingTextReveal());
    EXPECT_EQ(recognizer->callCount(), 0);
}

TEST_F(WorkbenchModelText, isReadOnceItIsMade)
{
    recognizer->queueLines({u"first"_qs, u"second line"_qs});
    const auto model = makeModel();
    std::optional<StoredText> processed;
    model->setOnProcessedTextChanged([&](const StoredText& text) { processed = text; });
    EXPECT_TRUE(model->isRecognizing());
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_FALSE(model->recognitionFailed());
    EXPECT_EQ(model->visibleText(), u"first\nsecond line"_qs);
    ASSERT_TRUE(processed);
    ASSERT_EQ(processed->lines.size(), 2);
    const auto& box = model->lines().at(1).boundingBox;
    EXPECT_EQ(processed->lines.at(1),
        (StoredText::Line{u"second line"_qs, box.x(), box.y(), box.width(), box.height()}));
}

TEST_F(WorkbenchModelText, tellsItsHistoryOfAPageWithoutTextButNotOfAFailure)
{
    int told = 0;
    const auto read = [&] {
        const auto model = makeModel();
        model->setOnProcessedTextChanged([&](const StoredText&) { ++told; });
        EXPECT_TRUE(waitUntilRead(*model));
        return model->recognitionFailed();
    };
    recognizer->queueError(Platform::Error::Kind::failed);
    EXPECT_TRUE(read());
    EXPECT_EQ(told, 0);
    EXPECT_FALSE(read());
    EXPECT_EQ(told, 1);
}

TEST_F(WorkbenchModelText, dropsWhatAnEarlierRecognitionFinds)
{
    recognizer->queueHang({u"stale"_qs});
    recognizer->queueLines({u"fresh"_qs});
    const auto model = makeModel();
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    const QSignalSpy changes(model.get(), &WorkbenchModel::textChanged);
    model->startRecognition();
    ASSERT_TRUE(waitUntilRead(*model));
    recognizer->releaseHangs();
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer.use_count() == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(model->displayText(), u"fresh"_qs);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(WorkbenchModelText, endsAsFailedWhenCancelled)
{
    recognizer->queueHang();
    const auto model = makeModel();
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    model->cancelRecognition();
    EXPECT_TRUE(model->isRecognizing());
    EXPECT_TRUE(model->recognitionInterrupted());
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_TRUE(model->recognitionFailed());
    model->startRecognition();
    EXPECT_FALSE(model->recognitionInterrupted());
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_FALSE(model->recognitionFailed());
}

TEST_F(WorkbenchModelText, callsASlowRecognitionAWaitForModels)
{
    services.slowRecognition = std::chrono::milliseconds(1);
    recognizer->queueHang();
    const auto model = makeModel();
    EXPECT_FALSE(model->awaitingModels());
    EXPECT_TRUE(Harness::waitFor([&] { return model->awaitingModels(); }));
    recognizer->releaseHangs();
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_FALSE(model->awaitingModels());
}

TEST_F(WorkbenchModelText, isWholeBeforeAnySignalTellsOfItsText)
{
    recognizer->queueLines({u"one"_qs, u"two words"_qs});
    const auto model = makeModel();
    model->setTextQuery(u"o"_qs);
    QStringList told;
    const auto note = [&](const QString& signal) {
        told.append(signal);
        EXPECT_FALSE(model->isRecognizing());
        EXPECT_EQ(model->lines().size(), 2);
        EXPECT_EQ(model->matches().size(), 2);
        EXPECT_EQ(model->visibleWordCount(), 3);
        EXPECT_EQ(model->displayText(), u"one\ntwo words"_qs);
        EXPECT_TRUE(model->pendingTextReveal());
    };
    const auto watch = [&](auto signal, const QString& name) {
        QObject::connect(model.get(), signal, model.get(), [=] { note(name); });
    };
    watch(&WorkbenchModel::recognitionChanged, u"recognition"_qs);
    watch(&WorkbenchModel::textChanged, u"text"_qs);
    watch(&WorkbenchModel::pendingTextRevealChanged, u"reveal"_qs);
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_EQ(told, (QStringList{u"recognition"_qs, u"text"_qs, u"reveal"_qs}));
}

TEST_F(WorkbenchModelText, eachStepOfARecognitionIsTold)
{
    recognizer->queueHang();
    services.slowRecognition = std::chrono::milliseconds(1);
    const auto model = makeModel();
    const QSignalSpy changes(model.get(), &WorkbenchModel::recognitionChanged);
    ASSERT_TRUE(Harness::waitFor([&] { return model->awaitingModels(); }));
    EXPECT_EQ(changes.count(), 1);
    model->cancelRecognition();
    EXPECT_EQ(changes.count(), 2);
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_EQ(changes.count(), 3);
    model->startRecognition();
    EXPECT_EQ(changes.count(), 4);
    ASSERT_TRUE(waitUntilRead(*model));
    EXPECT_FALSE(model->recognitionFailed());
}

TEST_F(WorkbenchModelText, twoRecognitionsAtOnceGiveOneText)
{
    recognizer->queueLines({u"first"_qs});
    recognizer->queueLines({u"second"_qs});
    const auto model = makeModel();
    const QSignalSpy texts(model.get(), &WorkbenchModel::textChanged);
    model->startRecognition();
    model->startRecognition();
    ASSERT_TRUE(waitUntilRead(*model));
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer.use_count() == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(texts.count(), 1);
    EXPECT_FALSE(model->recognitionFailed());
}

TEST_F(WorkbenchModelText, takesItsRecognitionAlongWhenItGoes)
{
    std::atomic<bool> isAsked = false;
    recognizer->queue([&](const std::stop_token& stop) -> Fakes::FakeTextRecognizer::Answer {
        const std::stop_callback noteStop(stop, [&] { isAsked = true; });
        while (!stop.stop_requested())
            std::this_thread::yield();
        return Fakes::observations({});
    });
    auto model = makeModel();
    ASSERT_TRUE(Harness::waitFor([this] { return recognizer->callCount() == 1; }));
    model.reset();
    EXPECT_TRUE(Harness::waitFor([&] { return isAsked.load(); }));
}

TEST_F(WorkbenchModelText, filterNarrowsOnlyWhatIsCopied)
{
    const auto model = makeModel(storedText({u"Café au lait"_qs, u"tea"_qs, u"CAFE noir"_qs}));
    EXPECT_EQ(model->matches().size(), 3);
    const QSignalSpy queries(model.get(), &WorkbenchModel::textQueryChanged);
    model->setTextQuery(u"cafe"_qs);
    model->setTextQuery(u"cafe"_qs);
    EXPECT_EQ(queries.count(), 1);
    EXPECT_EQ(model->matches(),
        (QList<TextSearch::Match>{{.row = 0, .ranges = {{0, 4}}}, {.row = 2, .ranges = {{0, 4}}}}));
    EXPECT_EQ(model->visibleText(), u"Café au lait\nCAFE noir"_qs);
    EXPECT_EQ(model->visibleWordCount(), 6);
    EXPECT_EQ(model->visibleLines().size(), 3);
    model->setTextQuery(u"milk"_qs);
    EXPECT_TRUE(model->matches().isEmpty());
    EXPECT_EQ(model->visibleText(), QString());
    EXPECT_FALSE(model->displayText().isEmpty());
}

} // namespace
