#include "Model/WorkbenchFixture.h"

#include <QSignalSpy>

using namespace Lumenote;

namespace {

class WorkbenchModelEditing : public WorkbenchFixture {
protected:
    static Annotation box(double left)
    {
        return {.tool = AnnotationTool::rectangle,
            .start = QPointF(left, 10),
            .end = QPointF(left + 50, 60)};
    }

    void addBoxes(int count)
    {
        for (int index = 0; index < count; ++index)
            model->addAnnotation(box(index));
    }

    /// Drags the annotation on top through @p offsets.
    void drag(const QList<double>& offsets)
    {
        const auto atGrab = model->annotations().constLast();
        model->setSelectedAnnotationID(atGrab.id);
        model->beginAnnotationEdit();
        for (const auto offset : offsets)
            model->updateAnnotation(atGrab.moved({offset, 0}));
        model->endAnnotationEdit();
    }

    int undoAll()
    {
        int count = 0;
        for (; model->canUndo(); ++count)
            model->undo();
        return count;
    }

public:
    const std::shared_ptr<WorkbenchModel> model = makeModel(storedText({}));
};

TEST_F(WorkbenchModelEditing, aHundredStepsCanBeUndone)
{
    addBoxes(101);
    EXPECT_EQ(undoAll(), 100);
    EXPECT_EQ(model->annotations().size(), 1);
}

TEST_F(WorkbenchModelEditing, redoBringsBackWhatUndoTookUntilANewStep)
{
    addBoxes(2);
    const auto both = model->annotations();
    EXPECT_EQ(undoAll(), 2);
    EXPECT_TRUE(model->annotations().isEmpty());
    model->redo();
    model->redo();
    EXPECT_EQ(model->annotations(), both);
    EXPECT_FALSE(model->canRedo());
    model->undo();
    addBoxes(1);
    EXPECT_FALSE(model->canRedo());
}

TEST_F(WorkbenchModelEditing, aGestureIsOneStep)
{
    addBoxes(1);
    const auto before = model->annotations();
    drag({1, 2, 3, 40, 50});
    EXPECT_EQ(model->annotations().constFirst().start, QPointF(50, 10));
    model->undo();
    EXPECT_EQ(model->annotations(), before);
    EXPECT_EQ(model->selectedAnnotationID(), before.constFirst().id);
}

TEST_F(WorkbenchModelEditing, aDragBackToItsStartIsNoStep)
{
    addBoxes(2);
    model->undo();
    drag({5, 0});
    EXPECT_TRUE(model->canRedo());
    EXPECT_EQ(undoAll(), 1);
}

TEST_F(WorkbenchModelEditing, theFirstBeginningOfAGestureCounts)
{
    addBoxes(1);
    const auto before = model->annotations();
    model->beginAnnotationEdit();
    model->updateAnnotation(before.constFirst().moved({5, 0}));
    drag({9});
    model->undo();
    EXPECT_EQ(model->annotations(), before);
}

TEST_F(WorkbenchModelEditing, updatesKeepTheStackingAndStrangersOut)
{
    addBoxes(3);
    const auto middle = model->annotations().at(1).moved({7, 7});
    model->updateAnnotation(middle);
    EXPECT_EQ(model->annotations().at(1), middle);
    const QSignalSpy changes(model.get(), &WorkbenchModel::annotationsChanged);
    model->updateAnnotation(box(1));
    EXPECT_EQ(model->annotations().size(), 3);
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(WorkbenchModelEditing, theSelectionIsAlwaysOneOfTheAnnotations)
{
    addBoxes(1);
    const auto id = model->annotations().constFirst().id;
    model->setSelectedAnnotationID(QUuid::createUuid());
    EXPECT_FALSE(model->selectedAnnotationID());
    model->setSelectedAnnotationID(id);
    model->undo();
    EXPECT_FALSE(model->selectedAnnotationID());
    model->redo();
    model->setSelectedAnnotationID(id);
    model->deleteSelectedAnnotation();
    EXPECT_FALSE(model->selectedAnnotationID());
    EXPECT_TRUE(model->annotations().isEmpty());
    EXPECT_EQ(undoAll(), 2);
}

TEST_F(WorkbenchModelEditing, drawingToolsTakeTheSelectionAway)
{
    addBoxes(1);
    const auto id = model->annotations().constFirst().id;
    model->setSelectedAnnotationID(id);
    model->setActiveTool(CanvasTool::select());
    model->setActiveTool(std::nullopt);
    EXPECT_EQ(model->selectedAnnotationID(), id);
    model->setActiveTool(CanvasTool::draw(AnnotationTool::arrow));
    EXPECT_FALSE(model->selectedAnnotationID());
}

TEST_F(WorkbenchModelEditing, eachChangeIsTold)
{
    addBoxes(1);
    const auto annotation = model->annotations().constFirst();
    const auto check = [this](const char* step, const std::function<void()>& change,
                           const QStringList& expected) {
        QStringList told;
        const QObject context;
        const auto watch = [&](auto signal, const QString& name) {
            QObject::connect(model.get(), signal, &context, [&told, name] { told.append(name); });
        };
        watch(&WorkbenchModel::annotationsChanged, u"annotations"_qs);
        watch(&WorkbenchModel::undoChanged, u"undo"_qs);
        watch(&WorkbenchModel::activeToolChanged, u"tool"_qs);
        watch(&WorkbenchModel::selectedAnnotationIDChanged, u"selection"_qs);
        change();
        EXPECT_EQ(told, expected) << step;
    };
    const QStringList edited{u"annotations"_qs, u"undo"_qs};
    check(
        "add", [this] { addBoxes(1); }, edited);
    check(
        "undo", [this] { model->undo(); }, edited);
    check(
        "redo", [this] { model->redo(); }, edited);
    check("select", [&] { model->setSelectedAnnotationID(annotation.id); }, {u"selection"_qs});
    check("begin", [this] { model->beginAnnotationEdit(); }, {});
    check("update",
        [&] {
            model->updateAnnotation(annotation.moved({1, 1}));
        },
        {u"annotations"_qs});
    check("end", [this] { model->endAnnotationEdit(); }, {u"undo"_qs});
    check("tool", [this] { model->setActiveTool(CanvasTool::select()); }, {u"tool"_qs});
    check("drawingTool", [this] { model->setActiveTool(CanvasTool::draw(AnnotationTool::arrow)); },
        {u"selection"_qs, u"tool"_qs});
    model->setSelectedAnnotationID(annotation.id);
    check("delete", [this] { model->deleteSelectedAnnotation(); },
        {u"selection"_qs, u"annotations"_qs, u"undo"_qs});
}

TEST_F(WorkbenchModelEditing, nothingToDoChangesNothing)
{
    const QSignalSpy changes(model.get(), &WorkbenchModel::annotationsChanged);
    model->undo();
    model->redo();
    model->endAnnotationEdit();
    model->deleteSelectedAnnotation();
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_FALSE(model->hasUnsavedWork());
}

TEST_F(WorkbenchModelEditing, stepsOfTheHistoryWaitForTheEndOfAGesture)
{
    addBoxes(2);
    model->undo();
    const auto before = model->annotations();
    model->beginAnnotationEdit();
    model->undo();
    model->redo();
    EXPECT_EQ(model->annotations(), before);
    model->updateAnnotation(before.constFirst().moved({5, 0}));
    model->endAnnotationEdit();
    model->undo();
    EXPECT_EQ(model->annotations(), before);
    EXPECT_EQ(undoAll(), 1);
}

} // namespace
