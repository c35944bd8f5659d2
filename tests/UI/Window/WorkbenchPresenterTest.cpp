#include "WorkbenchPresenter.h"

#include "Fakes/FakeApplicationActivation.h"
#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeFileSystem.h"
#include "Fakes/FakeFloatingWindows.h"
#include "Fakes/FakeImageDrag.h"
#include "Model/WorkbenchFixture.h"

#include <QAbstractButton>
#include <QTest>

using namespace Lumenote;
using Harness::waitFor;

namespace {

/// Workbenches on a scripted desktop, by the keys and clicks of its user.
class WorkbenchPresenterTest : public WorkbenchFixture {
protected:
    void TearDown() override
    {
        presenter.reset();
        history.reset();
        WorkbenchFixture::TearDown();
    }

    std::shared_ptr<WorkbenchModel> presentCapture(const QStringList& lines = {})
    {
        auto model = makeModel(storedText(lines));
        history->record(model);
        presenter->present(model);
        return model;
    }

    WorkbenchWindow& window(std::size_t index = 0) const
    {
        return presenter->workbenches().at(index)->window();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        QTest::keyClick(&window(), key, modifiers);
    }
    QAbstractButton* button(const char* name) const
    {
        return window().findChild<QAbstractButton*>(QString::fromLatin1(name));
    }
    bool waitUntilClosed() const
    {
        return waitFor([this] { return presenter->workbenches().empty(); });
    }
    bool waitForMessage(const WorkbenchModel& model, const char* message)
    {
        return waitFor([&] { return model.statusMessage() == QString::fromLatin1(message); });
    }

public:
    const std::shared_ptr<Fakes::FakeFileSystem> files = std::make_shared<Fakes::FakeFileSystem>();
    Fakes::FakeApplicationActivation activation;
    Fakes::FakeDisplayServer displayServer;
    Fakes::FakeFloatingWindows floatingWindows;
    Fakes::FakeImageDrag imageDrag;
    std::optional<CaptureHistory> history{
        std::in_place, CaptureStore(files->root() / "Captures", files), services};
    std::optional<WorkbenchPresenter> presenter{std::in_place,
        WorkbenchWindowController::Services{.desktop = {.activation = activation,
                                                .displayServer = displayServer,
                                                .floatingWindows = floatingWindows},
            .history = *history,
            .imageDrag = imageDrag}};
};

TEST_F(WorkbenchPresenterTest, theKeyboardIsAskedForUntilItIsThereAndGivenBackInTheEnd)
{
    activation.refusals = 2;
    presentCapture();
    EXPECT_TRUE(waitFor([this] { return activation.keyWindow == window().windowHandle(); }));
    EXPECT_EQ(activation.requests.size(), 3);
    EXPECT_EQ(floatingWindows.windows.size(), 1);
    presenter->dismissAll();
    presenter->dismissAll();
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(activation.givenBack, 1);
}

TEST_F(WorkbenchPresenterTest, theKeysDoWhatTheyDoInTheWholeWindow)
{
    const auto model = presentCapture({QStringLiteral("one line"), QStringLiteral("another")});
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForMessage(*model, "Image copied"));
    EXPECT_FALSE(pasteboard.png.isEmpty());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text, u"one line\nanother");

    model->addAnnotation({.tool = AnnotationTool::arrow, .start = {10, 10}, .end = {90, 90}});
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(model->annotations().isEmpty());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(model->annotations().size(), 1);
    model->setSelectedAnnotationID(model->annotations().constFirst().id);
    press(Qt::Key_Backspace);
    EXPECT_TRUE(model->annotations().isEmpty());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(savePanel.suggestedName.endsWith(u".png"));

    ASSERT_TRUE(waitFor([&] { return !model->statusMessage(); }));
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_TRUE(window().findChild<QWidget*>(QStringLiteral("extractedText"))->isVisible());
    press(Qt::Key_Return);
    EXPECT_EQ(pasteboard.text, u"one line\nanother");
    press(Qt::Key_Escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(WorkbenchPresenterTest, theToolsFollowTheHand)
{
    const auto model = presentCapture();
    EXPECT_FALSE(button("arrow")->isVisible());
    button("toolsToggle")->click();
    EXPECT_TRUE(waitFor([this] { return button("redo")->isVisible(); }));
    button("arrow")->click();
    EXPECT_EQ(model->activeTool(), CanvasTool::draw(AnnotationTool::arrow));
    EXPECT_TRUE(button("arrow")->isChecked());
    button("arrow")->click();
    EXPECT_FALSE(model->activeTool());
    EXPECT_FALSE(button("arrow")->isChecked());
    button("blackout")->click();
    button("toolsToggle")->click();
    EXPECT_FALSE(model->activeTool()) << "closed tools are put down";
    EXPECT_FALSE(button("undo")->isEnabled());
}

TEST_F(WorkbenchPresenterTest, anotherCaptureOpensAnotherWindowAndReadingGoesOnWhileItIsShown)
{
    recognizer->queueHang();
    const auto first = makeModel();
    history->record(first);
    const auto second = presentCapture();
    const auto firstID = history->entries().at(1).id;
    presenter->restoreCapture(firstID);
    ASSERT_TRUE(waitFor([&] {
        return presenter->workbenches().size() == 1
            && presenter->workbenches().front()->model() == first;
    }));
    presenter->restoreCapture(firstID);
    QTest::qWait(50);
    EXPECT_EQ(presenter->workbenches().size(), 1) << "it is on screen already";
    presenter->present(first); // In a window of its own, while the other fades.
    EXPECT_TRUE(waitFor([&] { return presenter->workbenches().size() == 1; }));
    EXPECT_FALSE(first->recognitionInterrupted());
    presenter->dismissAll();
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(first->recognitionInterrupted());
    recognizer->releaseHangs();
}

TEST_F(WorkbenchPresenterTest, withoutAnImageTheWindowSaysSoAndCloses)
{
    presenter->present(nullptr);
    EXPECT_TRUE(window().findChild<QWidget*>(QStringLiteral("failure"))->isVisible());
    press(Qt::Key_Return);
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(WorkbenchPresenterTest, theImageIsDraggedOutOnceAPress)
{
    presentCapture();
    auto* const handle = button("dragOut");
    const auto centre = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, centre);
    for (int step = 1; step < 5; ++step)
        QTest::mouseMove(handle, centre + QPoint(20 * step, 0));
    QTest::mouseRelease(handle, Qt::LeftButton, {}, centre);
    ASSERT_EQ(imageDrag.dragged.size(), 1);
    const auto& dragged = imageDrag.dragged.constFirst();
    EXPECT_TRUE(dragged.name.startsWith(u"Lumenote ") && dragged.name.endsWith(u".png"));
    ASSERT_TRUE(Harness::waitForFinished(dragged.png));
    EXPECT_EQ(QImage::fromData(*dragged.png.result()).size(), picture().size());
    EXPECT_FALSE(presenter->workbenches().front()->model()->statusMessage());
    QTest::mouseClick(handle, Qt::LeftButton);
    EXPECT_TRUE(presenter->workbenches().front()->model()->statusMessage());
}

} // namespace
