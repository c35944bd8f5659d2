#include "Fakes/FakeSystemLog.h"
#include "Fakes/ThreadShortage.h"
#include "Model/WorkbenchFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Lumenote;

namespace {

class WorkbenchModelOutput : public WorkbenchFixture {
protected:
    static QString message(const WorkbenchModel& model)
    {
        return model.statusMessage().value_or(QString());
    }

    static Annotation censor(AnnotationTool tool, QPointF start, QPointF end)
    {
        return {.tool = tool, .start = start, .end = end};
    }

    static bool answer(const QFuture<bool>& copied)
    {
        EXPECT_TRUE(Harness::waitForFinished(copied));
        return copied.result();
    }

    static QByteArray bytes(const QFuture<FinalImage::Png>& png)
    {
        EXPECT_TRUE(Harness::waitForFinished(png));
        return png.result().value_or(QByteArray());
    }

public:
    const std::shared_ptr<WorkbenchModel> model =
        makeModel(storedText({u"alpha"_qs, u"beta"_qs, u"gamma"_qs}));
};

TEST_F(WorkbenchModelOutput, copiesTheFinishedImageAlone)
{
    model->addAnnotation(censor(AnnotationTool::blackout, {10, 10}, {90, 90}));
    pasteboard.text = u"before"_qs;
    ASSERT_TRUE(answer(model->copyImage()));
    EXPECT_EQ(message(*model), u"Image copied"_qs);
    EXPECT_EQ(pasteboard.text, QString());
    const auto copied = QImage::fromData(pasteboard.png, "PNG");
    EXPECT_EQ(copied.size(), QSize(700, 400));
    EXPECT_EQ(copied.pixelColor(50, 50), QColor(Qt::black));
    EXPECT_EQ(copied.pixelColor(200, 200), QColor(Qt::darkCyan));
    EXPECT_EQ(copied.dotsPerMeterX(), 2835); // 72 dots an inch.
}

TEST_F(WorkbenchModelOutput, aCopyIsAsTheImageWasAtTheCommand)
{
    const auto color = [this] { return QImage::fromData(pasteboard.png).pixelColor(50, 50); };
    const auto before = model->copyImage();
    model->addAnnotation(censor(AnnotationTool::blackout, {10, 10}, {90, 90}));
    ASSERT_TRUE(answer(before));
    EXPECT_EQ(color(), QColor(Qt::darkCyan));
    ASSERT_TRUE(answer(model->copyImage()));
    EXPECT_EQ(color(), QColor(Qt::black));
}

TEST_F(WorkbenchModelOutput, whatIsCopiedLastStaysOnThePasteboard)
{
    const auto small = makeModel(storedText({}), picture({1, 1}));
    const auto large = makeModel(storedText({u"text"_qs}), picture({4000, 3000}));
    const auto overtaken = large->copyImage();
    EXPECT_TRUE(answer(small->copyImage()));
    EXPECT_TRUE(Harness::waitForFinished(overtaken));
    EXPECT_EQ(QImage::fromData(pasteboard.png).size(), QSize(1, 1));

    const auto behindText = large->copyImage();
    EXPECT_TRUE(large->copyText(false));
    EXPECT_FALSE(answer(behindText));
    EXPECT_EQ(pasteboard.text, u"text"_qs);
    EXPECT_EQ(message(*large), u"Text copied"_qs);
}

TEST_F(WorkbenchModelOutput, whatWasCopiedArrivesAlsoWhenItsModelIsGone)
{
    const auto copied = makeModel(storedText({}), picture({30, 20}))->copyImage();
    EXPECT_TRUE(answer(copied));
    EXPECT_EQ(QImage::fromData(pasteboard.png).size(), QSize(30, 20));
}

TEST_F(WorkbenchModelOutput, oneEncodingServesAllUntilTheAnnotationsChange)
{
    ASSERT_TRUE(answer(model->copyImage()));
    const auto* const copied = pasteboard.png.constData();
    EXPECT_EQ(model->draggableImage()->png.result()->constData(), copied);
    model->addAnnotation(censor(AnnotationTool::blackout, {10, 10}, {90, 90}));
    EXPECT_NE(bytes(model->draggableImage()->png), pasteboard.png);
}

TEST_F(WorkbenchModelOutput, anImageThatCannotBeMadeIsTold)
{
    const auto check = [this](const std::function<void()>& command) {
        {
            const Fakes::ThreadShortage shortage;
            command();
        }
        EXPECT_TRUE(Harness::waitFor(
            [this] { return message(*model) == u"Couldn't prepare the image"_qs; }));
        model->flash({});
    };
    check([this] { model->copyImage(); });
    check([this] { EXPECT_FALSE(model->draggableImage()); });
    EXPECT_TRUE(answer(model->copyImage())) << "once that is over";
}

TEST_F(WorkbenchModelOutput, refusedCopiesAreTold)
{
    pasteboard.refuses = true;
    model->setPendingTextReveal(false);
    EXPECT_FALSE(answer(model->copyImage()));
    EXPECT_EQ(message(*model), u"Couldn't copy the image"_qs);
    for (const bool asCodeBlock : {false, true}) {
        EXPECT_FALSE(model->copyText(asCodeBlock));
        EXPECT_EQ(message(*model), u"Couldn't copy the text"_qs);
    }
    EXPECT_FALSE(model->copyRecognizedText());
    EXPECT_FALSE(model->pendingTextReveal());
}

TEST_F(WorkbenchModelOutput, copiesTextAsItIsAskedFor)
{
    const auto plain = [this] { return model->copyText(false); };
    const auto codeBlock = [this] { return model->copyText(true); };
    const auto all = [this] { return model->copyRecognizedText(); };
    const auto lines = [this](const QStringList& given) {
        return [this, given] { return model->copyText(given); };
    };
    const auto everything = u"alpha\nbeta\ngamma"_qs;
    const auto copied = u"Text copied"_qs;
    const auto alpha = u"alpha"_qs;
    const auto check = [&](const char* name, const QString& query,
                           const std::function<bool()>& copy, const QString& text,
                           const QString& told, bool revealsText) {
        SCOPED_TRACE(name);
        model->setPendingTextReveal(false);
        model->setTextQuery(query);
        const QSignalSpy reveals(model.get(), &WorkbenchModel::pendingTextRevealChanged);
        EXPECT_TRUE(copy());
        EXPECT_EQ(reveals.count(), revealsText ? 1 : 0);
        EXPECT_EQ(pasteboard.text, text);
        EXPECT_EQ(message(*model), told);
        EXPECT_EQ(model->pendingTextReveal(), revealsText);
    };
    check("all", {}, plain, everything, copied, true);
    check("filtered", u"ALPHA"_qs, plain, alpha, copied, false);
    check("code", alpha, codeBlock, u"```\nalpha\n```"_qs, u"Copied as code block"_qs, false);
    check("whateverTheFilter", alpha, all, everything, copied, true);
    check("oneLine", {}, lines({alpha}), alpha, u"Line copied"_qs, false);
    check("twoLines", {}, lines({alpha, alpha}), u"alpha\nalpha"_qs, copied, false);
}

TEST_F(WorkbenchModelOutput, nothingToCopyIsTold)
{
    pasteboard.text = u"before"_qs;
    model->setTextQuery(u"delta"_qs);
    EXPECT_FALSE(model->copyText(false));
    EXPECT_EQ(message(*model), u"No lines match the filter"_qs);
    EXPECT_FALSE(model->copyText(QStringList()));

    const auto empty = makeModel(storedText({}));
    EXPECT_FALSE(empty->copyRecognizedText());
    EXPECT_FALSE(empty->statusMessage());
    EXPECT_FALSE(empty->copyText(true));
    EXPECT_EQ(message(*empty), u"No text to copy"_qs);
    EXPECT_EQ(pasteboard.text, u"before"_qs);
}

TEST_F(WorkbenchModelOutput, fencesAreLongerThanAnyBackticksWithin)
{
    const auto check = [&](const char* text, const char* fence) {
        const auto expected = QByteArray(fence) + '\n' + text + '\n' + fence;
        EXPECT_EQ(WorkbenchModel::fenced(QString::fromLatin1(text)).toLatin1(), expected);
    };
    check("none", "```");
    check("`a` ``", "```");
    check("```\ncode\n```", "````");
    check("a`````b", "``````");
    check("", "```");
}

TEST_F(WorkbenchModelOutput, aNewerMessageStaysItsFullTime)
{
    services.messageDuration = std::chrono::milliseconds(50);
    const auto brief = makeModel(storedText({}));
    QStringList shown;
    QObject::connect(brief.get(), &WorkbenchModel::statusMessageChanged, brief.get(),
        [&] { shown.append(message(*brief)); });
    brief->flash(u"older"_qs);
    brief->copyText(false);
    EXPECT_TRUE(Harness::waitFor([&] { return !brief->statusMessage(); }));
    EXPECT_EQ(shown, (QStringList{u"older"_qs, u"No text to copy"_qs, {}}));
}

TEST_F(WorkbenchModelOutput, dragsCarryTheFileItsNameAndThePlainCapture)
{
    model->addAnnotation(censor(AnnotationTool::whiteout, {0, 0}, {700, 400}));
    ASSERT_TRUE(waitUntilDisplayed(*model));
    const auto drag = model->draggableImage();
    ASSERT_TRUE(drag);
    EXPECT_EQ(QImage::fromData(bytes(drag->png)).pixelColor(5, 5), QColor(Qt::white));
    EXPECT_EQ(drag->thumbnail.size(), QSize(160, 91));
    EXPECT_EQ(drag->thumbnail.pixelColor(5, 5), QColor(Qt::darkCyan));
    const auto local = now.toLocalTime().toString(u"yyyy-MM-dd 'at' HH.mm.ss");
    EXPECT_EQ(drag->name, u"Lumenote %1.png"_qs.arg(local));
    EXPECT_FALSE(drag->name.contains(u':'));
}

TEST_F(WorkbenchModelOutput, savesWhereThePanelSays)
{
    const QTemporaryDir folder;
    const auto file = folder.filePath(u"a 100 % picture.png"_qs);
    model->saveImage();
    EXPECT_TRUE(savePanel.suggestedName.startsWith(u"Lumenote 2026-01-1"_qs));
    savePanel.answer(file.toStdString());
    ASSERT_TRUE(Harness::waitFor([this] { return message(*model) == u"Saved"_qs; }));
    EXPECT_EQ(QImage(file).size(), QSize(700, 400));

    model->saveImage();
    savePanel.answer("/nowhere/at all.png");
    ASSERT_TRUE(
        Harness::waitFor([this] { return message(*model).startsWith(u"Couldn't save: "_qs); }));
    EXPECT_GT(message(*model).size(), 20) << "and why";
}

TEST_F(WorkbenchModelOutput, aSaveUnderWayEndsBeforeTheProgramDoes)
{
    const Fakes::CollectedLog systemLog;
    const QTemporaryDir folder;
    const auto file = folder.filePath(u"last.png"_qs);
    model->saveImage();
    savePanel.answer(file.toStdString());
    services.saves->finish(std::chrono::milliseconds(Harness::patience));
    EXPECT_EQ(QImage(file).size(), QSize(700, 400)) << "without a turn of the event loop";

    model->saveImage();
    savePanel.answer("/nowhere/at all.png");
    services.saves->finish(std::chrono::milliseconds(Harness::patience));
    EXPECT_TRUE(
        systemLog->messages().join(u'\n').startsWith(u"capture: couldn't save an image"_qs));
}

TEST_F(WorkbenchModelOutput, aPanelAnsweredTooLateOrNotAtAllSavesNothing)
{
    model->saveImage();
    savePanel.answer(std::nullopt);
    EXPECT_FALSE(model->statusMessage());
    const QTemporaryDir folder;
    const auto file = folder.filePath(u"late.png"_qs);
    {
        const auto closed = makeModel(storedText({}));
        closed->saveImage();
    }
    savePanel.answer(file.toStdString());
    EXPECT_FALSE(QFile::exists(file));
}

} // namespace
