#include "UI/Capture/CaptureFace.h"

#include "Model/WorkbenchFixture.h"
#include "Rendering/LumenoteRenderer.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>
#include <cstdlib>

using namespace Lumenote;

namespace {

/// In any channel of any pixel.
int largestDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 256;
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const auto p = a.pixel(x, y);
            const auto q = b.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(p) - qRed(q)),
                std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
        }
    return largest;
}

/// Takes the presses that the face lets through.
class Window : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { ++presses; }
};

class CaptureFaceTest : public WorkbenchFixture {
protected:
    /// At its own size, in the middle of a face with a margin of 10 points.
    void show(const std::shared_ptr<WorkbenchModel>& shown)
    {
        model = shown;
        window.resize(model->pixelSize() + QSize(20, 20));
        face = std::make_unique<CaptureFace>(*model, &window);
        face->resize(window.size());
        window.show();
        ASSERT_TRUE(Harness::waitFor([this] { return !model->thumbnail(10).isNull(); }));
    }

    void TearDown() override
    {
        face.reset();
        model.reset();
        WorkbenchFixture::TearDown();
    }

    /// Points of the image.
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {}) const
    {
        const auto at = [this](QPointF point) { return face->fit().toView(point).toPoint(); };
        QTest::mousePress(face.get(), Qt::LeftButton, modifiers, at(from));
        for (const auto part : {0.5, 1.0})
            QTest::mouseMove(face.get(), at(from + (to - from) * part));
        QTest::mouseRelease(face.get(), Qt::LeftButton, modifiers, at(to));
    }
    void click(QPointF point) const { drag(point, point); }

    static Annotation annotation(AnnotationTool tool, QPointF start, QPointF end)
    {
        return {.tool = tool, .start = start, .end = end};
    }

    QImage shownPicture() const
    {
        auto picture = face->grab().toImage().convertToFormat(QImage::Format_RGB32);
        return picture.copy(face->fit().rect.toRect());
    }

public:
    Window window;
    std::shared_ptr<WorkbenchModel> model;
    std::unique_ptr<CaptureFace> face;
};

TEST_F(CaptureFaceTest, whatIsShownIsWhatIsExported)
{
    const QRectF inside(40.3, 30.7, 200.4, 120.2);
    const QRectF beyondTheEdge(500, 300, 400, 300);
    for (const auto tool : AnnotationTools::allCases)
        for (const auto& rect : {inside, beyondTheEdge}) {
            SCOPED_TRACE(qPrintable(AnnotationTools::rawValue(tool)));
            show(makeModel(storedText({})));
            model->addAnnotation(annotation(tool, rect.topLeft(), rect.bottomRight()));
            const auto exported =
                LumenoteRenderer::render(model->image(), model->pixelSize(), model->annotations());
            EXPECT_LE(largestDifference(shownPicture(), exported), 10); // A corner's rounding.
            face.reset();
        }
}

TEST_F(CaptureFaceTest, aDragDrawsAndAClickPicksUp)
{
    show(makeModel(storedText({})));
    model->setActiveTool(CanvasTool::draw(AnnotationTool::rectangle));
    drag({100, 100}, {300, 200});
    drag({50, 50}, {9000, 52}); // Too low, and held inside the image.
    ASSERT_EQ(model->annotations().size(), 1);
    EXPECT_EQ(model->annotations().constFirst().rect(), QRectF(100, 100, 200, 100));
    EXPECT_EQ(window.presses, 0);

    click({400, 300});
    EXPECT_EQ(model->activeTool(), CanvasTool::draw(AnnotationTool::rectangle));
    click({200, 150});
    EXPECT_EQ(model->activeTool(), CanvasTool::select());
    EXPECT_EQ(model->selectedAnnotationID(), model->annotations().constFirst().id);
}

TEST_F(CaptureFaceTest, thePointerMovesReshapesAndLeavesTheRestToTheWindow)
{
    show(makeModel(storedText({})));
    model->addAnnotation(annotation(AnnotationTool::rectangle, {100, 100}, {200, 200}));
    drag({150, 150}, {170, 160});
    EXPECT_EQ(model->annotations().constFirst().rect(), QRectF(120, 110, 100, 100));
    drag({220, 210}, {60, 50}); // By its end, across the opposite corner.
    EXPECT_EQ(model->annotations().constFirst().rect(), QRectF(60, 50, 60, 60));
    EXPECT_EQ(window.presses, 0);
    model->undo();
    model->undo();
    EXPECT_EQ(model->annotations().constFirst().rect(), QRectF(100, 100, 100, 100));

    click({600, 300});
    EXPECT_FALSE(model->selectedAnnotationID());
    EXPECT_EQ(window.presses, 1);
}

TEST_F(CaptureFaceTest, aGestureThatIsGivenUpLeavesNothing)
{
    show(makeModel(storedText({})));
    model->addAnnotation(annotation(AnnotationTool::highlight, {100, 100}, {200, 200}));
    const auto before = model->annotations();
    const auto pressAndMove = [this](QPoint from, QPoint to) {
        const auto offset = face->fit().rect.topLeft().toPoint();
        QTest::mousePress(face.get(), Qt::LeftButton, {}, offset + from);
        QTest::mouseMove(face.get(), offset + to);
        EXPECT_TRUE(face->isInGesture());
        face->cancelGesture();
        EXPECT_FALSE(face->isInGesture());
        QTest::mouseRelease(face.get(), Qt::LeftButton, {}, offset + to);
    };
    pressAndMove({150, 150}, {300, 300});
    EXPECT_EQ(model->annotations(), before);
    model->undo();
    EXPECT_TRUE(model->annotations().isEmpty()) << "giving up was no step of its own";

    model->setActiveTool(CanvasTool::draw(AnnotationTool::arrow));
    pressAndMove({150, 150}, {300, 300});
    EXPECT_TRUE(model->annotations().isEmpty());
}

TEST_F(CaptureFaceTest, aClickCopiesTheLineBelowAndADragDoesNot)
{
    auto text = storedText({QStringLiteral("first"), QStringLiteral("second")});
    for (int i = 0; i < 2; ++i) {
        text.lines[i].y = 40 + 100 * i;
        text.lines[i].height = 20;
        text.lines[i].width = 200;
    }
    show(makeModel(text));
    click({50, 150});
    EXPECT_EQ(pasteboard.text, u"second");
    pasteboard.text.clear();
    drag({50, 150}, {500, 300});
    EXPECT_TRUE(pasteboard.text.isEmpty());
    EXPECT_EQ(window.presses, 2) << "the window is moved by lines, too";

    model->addAnnotation(annotation(AnnotationTool::blackout, {0, 130}, {300, 180}));
    click({50, 150});
    EXPECT_TRUE(pasteboard.text.isEmpty()) << "the annotation lies above";
    model->setActiveTool(CanvasTool::draw(AnnotationTool::arrow));
    click({50, 50});
    EXPECT_TRUE(pasteboard.text.isEmpty());
}

TEST_F(CaptureFaceTest, theLinesAreThereForAssistivePrograms)
{
    auto text = storedText({QStringLiteral("first"), QStringLiteral("second")});
    text.lines[1].y = 100;
    show(makeModel(text));
    auto* const accessible = QAccessible::queryAccessibleInterface(face.get());
    ASSERT_EQ(accessible->childCount(), 2);
    auto* const line = accessible->child(1);
    EXPECT_EQ(line->text(QAccessible::Name), u"second");
    EXPECT_EQ(accessible->indexOfChild(line), 1);
    const auto centre = line->rect().center();
    EXPECT_EQ(accessible->childAt(centre.x(), centre.y()), line);
    line->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(pasteboard.text, u"second");

    model->setActiveTool(CanvasTool::draw(AnnotationTool::arrow));
    EXPECT_EQ(accessible->childCount(), 0);
}

} // namespace
