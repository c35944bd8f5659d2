#include "UI/Text/ExtractedTextView.h"

#include "Model/WorkbenchFixture.h"
#include "UI/Text/SelectableTextArea.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

using namespace Lumenote;

namespace {

/// What the text face stands in: shortcuts, and what is left over of presses and keys.
class Surroundings : public QWidget {
public:
    Surroundings()
    {
        resize(640, 420);
        for (const auto& keys :
            {u"Return"_qs, u"Esc"_qs, u"Ctrl+C"_qs, u"Ctrl+Z"_qs, u"Ctrl+Shift+Z"_qs})
            addShortcut(QKeySequence(keys));
    }

    int shortcuts = 0;
    int keys = 0;
    int presses = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() != Qt::Key_Control && event->key() != Qt::Key_Shift)
            ++keys;
    }
    void mousePressEvent(QMouseEvent* /*event*/) override { ++presses; }

private:
    void addShortcut(const QKeySequence& keys)
    {
        auto* const action = new QAction(this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, [this] { ++shortcuts; });
        addAction(action);
    }
};

class ExtractedTextViewTest : public WorkbenchFixture {
protected:
    void show(const std::shared_ptr<WorkbenchModel>& shownModel)
    {
        model = shownModel;
        view = new ExtractedTextView(*model, &around);
        view->resize(around.size());
        around.show();
        around.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&around));
    }

    void TearDown() override
    {
        delete view;
        model.reset();
        WorkbenchFixture::TearDown();
    }

    template <typename Widget>
    Widget* find(const char* name) const
    {
        return view->findChild<Widget*>(QString::fromLatin1(name));
    }
    QLineEdit* filter() const { return find<QLineEdit>("filterField"); }
    SelectableTextArea* text() const { return find<SelectableTextArea>("extractedText"); }
    QString summary() const { return find<QLabel>("textSummary")->text(); }
    QString message() const
    {
        auto* const label = find<QLabel>("textMessageLabel");
        return label->isVisible() ? label->text() : QString();
    }

public:
    std::shared_ptr<WorkbenchModel> model;
    Surroundings around;
    ExtractedTextView* view = nullptr;
};

TEST_F(ExtractedTextViewTest, theFilterIsTheModelsAndLeavesWhatIsCopied)
{
    show(makeReadModel({u"alpha"_qs, u"beta"_qs, u"Alps"_qs}));
    auto* const copy = find<QAbstractButton>("copyRowsButton");
    EXPECT_EQ(text()->toPlainText(), u"alpha\nbeta\nAlps"_qs);
    const auto tip = copy->accessibleName();

    QTest::keyClicks(filter(), u"alp"_qs);
    EXPECT_EQ(model->textQuery(), u"alp"_qs);
    EXPECT_EQ(text()->toPlainText(), u"alpha\nAlps"_qs);
    EXPECT_EQ(summary(), u"2 of 3 lines match"_qs);
    EXPECT_NE(copy->accessibleName(), tip);
    QTest::mouseClick(copy, Qt::LeftButton);
    EXPECT_EQ(pasteboard.text, u"alpha\nAlps"_qs);

    filter()->insert(u"s⌘C"_qs);
    EXPECT_EQ(message(), u"No line matches “alps⌘C”"_qs);
    EXPECT_FALSE(text()->isVisible());
    EXPECT_FALSE(copy->isEnabled());
    EXPECT_TRUE(filter()->hasFocus());

    QTest::mouseClick(find<QAbstractButton>("clearFilterButton"), Qt::LeftButton);
    EXPECT_EQ(model->textQuery(), QString());
    EXPECT_EQ(text()->toPlainText(), u"alpha\nbeta\nAlps"_qs);
    model->setTextQuery(u"beta"_qs);
    EXPECT_EQ(filter()->text(), u"beta"_qs);
}

TEST_F(ExtractedTextViewTest, aRecognitionThatFailsCanBeTriedAgainAndThenShowsItsText)
{
    recognizer->queueHang();
    show(makeModel());
    EXPECT_EQ(summary(), u"Reading the capture…"_qs);
    EXPECT_EQ(message(), u"Extracting text…"_qs);
    model->cancelRecognition();
    recognizer->releaseHangs();
    auto* const retry = find<QAbstractButton>("retryButton");
    ASSERT_TRUE(Harness::waitFor([&] { return retry->isVisible(); }));
    EXPECT_EQ(message(), u"Text recognition didn't finish."_qs);
    EXPECT_FALSE(filter()->isVisible());
    EXPECT_FALSE(find<QAbstractButton>("copyRowsButton")->isVisible());

    recognizer->queueLines({u"one"_qs});
    QTest::mouseClick(retry, Qt::LeftButton);
    EXPECT_EQ(message(), u"Extracting text…"_qs);
    ASSERT_TRUE(Harness::waitFor([&] { return text()->isVisible(); }));
    EXPECT_EQ(text()->toPlainText(), u"one"_qs);
    EXPECT_EQ(summary(), u"1 line · 1 word"_qs);
    EXPECT_TRUE(filter()->isVisible());
}

TEST_F(ExtractedTextViewTest, pressesBesideTheControlsMoveTheWindow)
{
    show(makeReadModel({}));
    QTest::mousePress(find<QWidget>("textHeader"), Qt::LeftButton, {}, {300, 20});
    EXPECT_EQ(around.presses, 1);
    QTest::mousePress(find<QWidget>("textMessageLabel"), Qt::LeftButton);
    EXPECT_EQ(around.presses, 2);
    QTest::mousePress(find<QWidget>("textMessage"), Qt::LeftButton, {}, {10, 10});
    EXPECT_EQ(around.presses, 3);
}

TEST_F(ExtractedTextViewTest, keysWithoutAUseInTheControlsGoOnToTheWorkbench)
{
    enum class Goes { nowhere, toAShortcut, upAsAKey };
    show(makeReadModel({u"alpha beta"_qs, u"beta"_qs}));
    const auto check = [this](
                           const char* name, QWidget* focused, int key, int modifiers, Goes goes) {
        focused->setFocus(Qt::TabFocusReason);
        around.shortcuts = around.keys = 0;
        QTest::keyClick(
            focused, static_cast<Qt::Key>(key), static_cast<Qt::KeyboardModifiers>(modifiers));
        EXPECT_EQ(around.shortcuts, goes == Goes::toAShortcut ? 1 : 0) << name;
        EXPECT_EQ(around.keys, goes == Goes::upAsAKey ? 1 : 0) << name;
    };
    const int control = Qt::ControlModifier;
    const int shiftedControl = control | Qt::ShiftModifier;

    for (QWidget* const focused :
        {static_cast<QWidget*>(filter()), static_cast<QWidget*>(text())}) {
        check("return", focused, Qt::Key_Return, 0, Goes::toAShortcut);
        check("escape", focused, Qt::Key_Escape, 0, Goes::toAShortcut);
        check("copyWithoutSelection", focused, Qt::Key_C, control, Goes::toAShortcut);
        check("undoOfNothing", focused, Qt::Key_Z, control, Goes::toAShortcut);
        check("redoOfNothing", focused, Qt::Key_Z, shiftedControl, Goes::toAShortcut);
    }

    for (const auto key : {Qt::Key_Space, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_X})
        check("notForTheText", text(), key, 0, Goes::upAsAKey);
    check("navigation", text(), Qt::Key_Down, 0, Goes::nowhere);
    check("selection", text(), Qt::Key_End, Qt::ShiftModifier, Goes::nowhere);
    check("copyOfSelection", text(), Qt::Key_C, control, Goes::nowhere);
    check("selectAll", text(), Qt::Key_A, control, Goes::nowhere);

    check("blankInTheFilter", filter(), Qt::Key_Space, 0, Goes::nowhere);
    check("selectionInTheFilter", filter(), Qt::Key_A, control, Goes::nowhere);
    check("copyFromTheFilter", filter(), Qt::Key_C, control, Goes::nowhere);
    check("deletionInTheFilter", filter(), Qt::Key_Delete, 0, Goes::nowhere);
    check("undoInTheFilter", filter(), Qt::Key_Z, control, Goes::nowhere);
    EXPECT_EQ(filter()->text(), u" "_qs);
    check("redoInTheFilter", filter(), Qt::Key_Z, shiftedControl, Goes::nowhere);
    EXPECT_EQ(filter()->text(), QString());
}

TEST_F(ExtractedTextViewTest, tabLeadsThroughTheFieldTheButtonAndTheText)
{
    show(makeReadModel({u"alpha"_qs}));
    filter()->setFocus();
    QTest::keyClick(filter(), Qt::Key_Tab);
    EXPECT_TRUE(find<QWidget>("copyRowsButton")->hasFocus());
    QTest::keyClick(find<QWidget>("copyRowsButton"), Qt::Key_Tab);
    EXPECT_TRUE(text()->hasFocus());
    QTest::keyClick(text(), Qt::Key_Backtab);
    EXPECT_TRUE(find<QWidget>("copyRowsButton")->hasFocus());
}

} // namespace
