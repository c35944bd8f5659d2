#include "Model/WorkbenchFixture.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Lumenote;

namespace {

class WorkbenchModelOutput : public WorkbenchFixture {
protected:
    static QString message(const WorkbenchModel& model)
    {
        return model.statusMessage().value_or(QString());
    }

    static std::filesystem::path path(const QString& name)
    {
        return QFile::encodeName(name).toStdString();
    }

public:
    const std::shared_ptr<WorkbenchModel> model = makeModel(
        storedText({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")}));
};

TEST_F(WorkbenchModelOutput, copiesTheFinishedImageAlone)
{
    model->addAnnotation(
        {.tool = AnnotationTool::blackout, .start = QPointF(10, 10), .end = QPointF(90, 90)});
    pasteboard.text = QStringLiteral("before");
    ASSERT_TRUE(model->copyImage());
    EXPECT_EQ(message(*model), QStringLiteral("Image copied"));
    EXPECT_EQ(pasteboard.text, QString());
    const auto copied = QImage::fromData(pasteboard.png, "PNG");
    EXPECT_EQ(copied.size(), QSize(700, 400));
    EXPECT_EQ(copied.pixelColor(50, 50), QColor(Qt::black));
    EXPECT_EQ(copied.pixelColor(200, 200), QColor(Qt::darkCyan));
    EXPECT_EQ(copied.dotsPerMeterX(), 2835); // 72 dots an inch.
}

TEST_F(WorkbenchModelOutput, refusedCopiesAreTold)
{
    pasteboard.refuses = true;
    model->setPendingTextReveal(false);
    EXPECT_FALSE(model->copyImage());
    EXPECT_EQ(message(*model), QStringLiteral("Couldn't copy the image"));
    for (const bool asCodeBlock : {false, true}) {
        EXPECT_FALSE(model->copyText(asCodeBlock));
        EXPECT_EQ(message(*model), QStringLiteral("Couldn't copy the text"));
    }
    EXPECT_FALSE(model->copyRecognizedText());
    EXPECT_FALSE(model->pendingTextReveal());
}

TEST_F(WorkbenchModelOutput, copiesTextAsItIsAskedFor)
{
    struct Row {
        const char* name;
        QString query;
        std::function<bool()> copy;
        QString text;
        QString message;
        bool revealsText;
    };
    const auto plain = [this] { return model->copyText(false); };
    const auto codeBlock = [this] { return model->copyText(true); };
    const auto all = [this] { return model->copyRecognizedText(); };
    const auto lines = [this](const QStringList& given) {
        return [this, given] { return model->copyText(given); };
    };
    const auto everything = QStringLiteral("alpha\nbeta\ngamma");
    const auto copied = QStringLiteral("Text copied");
    const auto alpha = QStringLiteral("alpha");
    for (const auto& row : {
             Row{"all", {}, plain, everything, copied, true},
             Row{"filtered", QStringLiteral("ALPHA"), plain, alpha, copied, false},
             Row{"code", alpha, codeBlock, QStringLiteral("```\nalpha\n```"),
                 QStringLiteral("Copied as code block"), false},
             Row{"whateverTheFilter", alpha, all, everything, copied, true},
             Row{"oneLine", {}, lines({alpha}), alpha, QStringLiteral("Line copied"), false},
             Row{"twoLines", {}, lines({alpha, alpha}), QStringLiteral("alpha\nalpha"), copied,
                 false},
         }) {
        model->setPendingTextReveal(false);
        model->setTextQuery(row.query);
        EXPECT_TRUE(row.copy()) << row.name;
        EXPECT_EQ(pasteboard.text, row.text) << row.name;
        EXPECT_EQ(message(*model), row.message) << row.name;
        EXPECT_EQ(model->pendingTextReveal(), row.revealsText) << row.name;
    }
}

TEST_F(WorkbenchModelOutput, nothingToCopyIsTold)
{
    pasteboard.text = QStringLiteral("before");
    model->setTextQuery(QStringLiteral("delta"));
    EXPECT_FALSE(model->copyText(false));
    EXPECT_EQ(message(*model), QStringLiteral("No lines match the filter"));
    EXPECT_FALSE(model->copyText(QStringList()));

    const auto empty = makeModel(storedText({}));
    EXPECT_FALSE(empty->copyRecognizedText());
    EXPECT_FALSE(empty->statusMessage());
    EXPECT_FALSE(empty->copyText(true));
    EXPECT_EQ(message(*empty), QStringLiteral("No text to copy"));
    EXPECT_EQ(pasteboard.text, QStringLiteral("before"));
}

TEST_F(WorkbenchModelOutput, fencesAreLongerThanAnyBackticksWithin)
{
    struct Row {
        const char* text;
        const char* fence;
    };
    for (const auto& [text, fence] : {Row{"none", "```"}, Row{"`a` ``", "```"},
             Row{"```\ncode\n```", "````"}, Row{"a`````b", "``````"}, Row{"", "```"}}) {
        const auto expected = QByteArray(fence) + '\n' + text + '\n' + fence;
        EXPECT_EQ(WorkbenchModel::fenced(QString::fromLatin1(text)).toLatin1(), expected);
    }
}

TEST_F(WorkbenchModelOutput, aNewerMessageStaysItsFullTime)
{
    services.messageDuration = std::chrono::milliseconds(50);
    const auto brief = makeModel(storedText({}));
    QStringList shown;
    QObject::connect(brief.get(), &WorkbenchModel::statusMessageChanged, brief.get(),
        [&] { shown.append(message(*brief)); });
    brief->copyImage();
    brief->copyText(false);
    EXPECT_TRUE(Harness::waitFor([&] { return !brief->statusMessage(); }));
    EXPECT_EQ(shown,
        (QStringList{QStringLiteral("Image copied"), QStringLiteral("No text to copy"), {}}));
}

TEST_F(WorkbenchModelOutput, dragsCarryTheFileItsNameAndThePlainCapture)
{
    model->addAnnotation(
        {.tool = AnnotationTool::whiteout, .start = QPointF(0, 0), .end = QPointF(700, 400)});
    const auto drag = model->draggableImage();
    ASSERT_TRUE(drag);
    EXPECT_EQ(QImage::fromData(drag->png).pixelColor(5, 5), QColor(Qt::white));
    EXPECT_EQ(drag->thumbnail.size(), QSize(160, 91));
    EXPECT_EQ(drag->thumbnail.pixelColor(5, 5), QColor(Qt::darkCyan));
    const auto local = now.toLocalTime().toString(u"yyyy-MM-dd 'at' HH.mm.ss");
    EXPECT_EQ(drag->name, QStringLiteral("Lumenote %1.png").arg(local));
    EXPECT_FALSE(drag->name.contains(u':'));
}

TEST_F(WorkbenchModelOutput, savesWhereThePanelSays)
{
    const QTemporaryDir folder;
    const auto file = folder.filePath(QStringLiteral("a 100 % picture.png"));
    model->saveImage();
    EXPECT_TRUE(savePanel.suggestedName.startsWith(QStringLiteral("Lumenote 2026-01-1")));
    savePanel.answer(path(file));
    ASSERT_TRUE(Harness::waitFor([this] { return message(*model) == QStringLiteral("Saved"); }));
    EXPECT_EQ(QImage(file).size(), QSize(700, 400));
}

TEST_F(WorkbenchModelOutput, savingThatFailsSaysWhyAndKeepsTheFileThatWasThere)
{
    model->saveImage();
    savePanel.answer(path(QStringLiteral("/nowhere/at all.png")));
    ASSERT_TRUE(Harness::waitFor(
        [this] { return message(*model).startsWith(QStringLiteral("Couldn't save: ")); }));
    EXPECT_GT(message(*model).size(), 20);
}

TEST_F(WorkbenchModelOutput, aPanelAnsweredTooLateOrNotAtAllSavesNothing)
{
    model->saveImage();
    savePanel.answer(std::nullopt);
    EXPECT_FALSE(model->statusMessage());
    const QTemporaryDir folder;
    const auto file = folder.filePath(QStringLiteral("late.png"));
    {
        const auto closed = makeModel(storedText({}));
        closed->saveImage();
    }
    savePanel.answer(path(file));
    EXPECT_FALSE(QFile::exists(file));
}

} // namespace
