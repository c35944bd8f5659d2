#include "UI/History/HistorySidebar.h"

#include "Fakes/FakeFileSystem.h"
#include "Model/WorkbenchFixture.h"
#include "UI/History/HistoryRow.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWindow>

#include <algorithm>

using namespace Lumenote;

namespace {

class Card : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { ++presses; }
};

class HistorySidebarTest : public WorkbenchFixture {
protected:
    void SetUp() override
    {
        card.resize(600, 700);
        for (qint64 minutes = 3; minutes >= 1; --minutes) // The newest is the current one.
            record(start.addSecs(-60 * minutes));
        now = start;
        sidebar.emplace(history.value(), &card, [this] { return now; });
        QObject::connect(&*sidebar, &HistorySidebar::restoreRequested, &card,
            [this](const QUuid& id) { restored.append(id); });
        QObject::connect(
            &*sidebar, &HistorySidebar::deleteRequested, &card, [this](const QUuid& id) {
                deleted.append(id);
                history->deleteEntry(id);
            });
        card.show();
        card.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&card));
    }

    void TearDown() override
    {
        sidebar.reset();
        history.reset();
        WorkbenchFixture::TearDown();
    }

    void record(const QDateTime& date)
    {
        now = date;
        history->record(makeModel(storedText({})));
    }

    QUuid id(qsizetype index) const { return history->entries().at(index).id; }

    QList<HistoryRow*> rows() const
    {
        auto rows = sidebar->findChildren<HistoryRow*>();
        rows.removeIf([](const auto* row) { return row->isHidden(); });
        std::ranges::sort(rows, {}, [](const auto* row) { return row->y(); });
        return rows;
    }

    QStringList names() const
    {
        QStringList names;
        for (const auto* row : rows())
            names.append(row->accessibleName());
        return names;
    }

    static QWidget* trash(const HistoryRow* row)
    {
        return row->findChild<QWidget*>(u"deleteCaptureButton"_qs);
    }

    /// As the window system would, so that what is on top gets it.
    void movePointer(const QWidget* widget, const QPoint& point)
    {
        QTest::mouseMove(card.windowHandle(), widget->mapTo(&card, point));
        QCoreApplication::processEvents();
    }

    void click(const QWidget* widget, const QPoint& point)
    {
        movePointer(widget, point);
        QTest::mouseClick(card.windowHandle(), Qt::LeftButton, {}, widget->mapTo(&card, point));
    }

    int surfaceHeight() const
    {
        const auto margins = HistorySidebar::shadowMargins();
        return sidebar->height() - margins.top() - margins.bottom();
    }

public:
    const std::shared_ptr<Fakes::FakeFileSystem> files = std::make_shared<Fakes::FakeFileSystem>();
    const QDateTime start = now;
    std::optional<CaptureHistory> history{
        std::in_place, CaptureStore(files->root() / "Captures", files), services};
    Card card;
    std::optional<HistorySidebar> sidebar;
    QList<QUuid> restored;
    QList<QUuid> deleted;
};

TEST_F(HistorySidebarTest, rowsFollowTheHistoryAndStayTheSame)
{
    EXPECT_EQ(names(),
        QStringList({u"Current capture, 1 min. ago"_qs, u"Capture from 2 min. ago"_qs,
            u"Capture from 3 min. ago"_qs}));
    const auto before = rows();
    const auto height = surfaceHeight();
    record(start);
    ASSERT_EQ(rows().size(), 4);
    EXPECT_EQ(rows().mid(1), before);
    EXPECT_EQ(surfaceHeight(), height + before.first()->height() + 6);
    EXPECT_EQ(names().mid(0, 2),
        QStringList({u"Current capture, just now"_qs, u"Capture from 1 min. ago"_qs}));

    history->deleteEntry(id(1));
    EXPECT_EQ(rows().mid(1), before.mid(1));
    EXPECT_EQ(surfaceHeight(), height);
    history->clear();
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(surfaceHeight(), 59);
}

TEST_F(HistorySidebarTest, agesAreThoseOfTheTimeWhenItIsShown)
{
    sidebar->hide();
    now = start.addSecs(3600);
    sidebar->show();
    EXPECT_EQ(names().first(), u"Current capture, 1 hr. ago"_qs);
    const auto* const row = QAccessible::queryAccessibleInterface(rows().first());
    EXPECT_EQ(row->role(), QAccessible::Button);
    EXPECT_EQ(row->text(QAccessible::Description), u"700×400"_qs);
}

TEST_F(HistorySidebarTest, aClickRestoresAndTheButtonBelowThePointerDeletes)
{
    const auto first = rows();
    click(first.at(1), {20, 20});
    EXPECT_EQ(restored, QList{id(1)});
    EXPECT_TRUE(trash(first.at(1))->isVisible());
    EXPECT_FALSE(trash(first.at(0))->isVisible());

    movePointer(first.at(2), {20, 20});
    EXPECT_FALSE(trash(first.at(1))->isVisible());
    const auto third = id(2);
    click(trash(first.at(2)), trash(first.at(2))->rect().center());
    EXPECT_EQ(deleted, QList{third});
    EXPECT_EQ(restored.size(), 1);
    EXPECT_EQ(rows(), first.mid(0, 2));
}

TEST_F(HistorySidebarTest, theKeyboardReachesEverything)
{
    record(start); // Above the others, though it comes last.
    const auto first = rows();
    const auto third = id(2);
    first.at(0)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(first.at(0), Qt::Key_Tab);
    EXPECT_TRUE(trash(first.at(0))->hasFocus());
    QTest::keyClick(trash(first.at(0)), Qt::Key_Tab);
    EXPECT_TRUE(first.at(1)->hasFocus());
    EXPECT_TRUE(Harness::waitFor([&] { return !trash(first.at(0))->isVisible(); }));

    QTest::keyClick(first.at(1), Qt::Key_Return);
    QTest::keyClick(first.at(1), Qt::Key_Down);
    ASSERT_TRUE(first.at(2)->hasFocus());
    QTest::keyClick(first.at(2), Qt::Key_Space);
    EXPECT_EQ(restored, QList({id(1), third}));

    QTest::keyClick(first.at(2), Qt::Key_Up);
    const auto second = id(1);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(first.at(1), &held);
    EXPECT_TRUE(deleted.isEmpty());
    QTest::keyClick(first.at(1), Qt::Key_Delete);
    EXPECT_TRUE(first.at(2)->hasFocus());
    QTest::keyClick(first.at(2), Qt::Key_Tab);
    QTest::keyClick(trash(first.at(2)), Qt::Key_Space);
    EXPECT_TRUE(first.at(3)->hasFocus());
    const auto fourth = id(1);
    QTest::keyClick(first.at(3), Qt::Key_Backspace);
    EXPECT_TRUE(first.at(0)->hasFocus());
    EXPECT_EQ(deleted, QList({second, third, fourth}));
}

TEST_F(HistorySidebarTest, aListThatIsTooHighScrollsToTheFocusedRow)
{
    sidebar->setMaxHeight(200);
    EXPECT_EQ(surfaceHeight(), 200);
    auto* const bar = sidebar->findChild<QScrollArea*>()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    rows().first()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(rows().first(), Qt::Key_End);
    EXPECT_EQ(bar->value(), bar->maximum());
    sidebar->setMaxHeight(2000);
    EXPECT_EQ(bar->maximum(), 0);
}

TEST_F(HistorySidebarTest, pressesInTheMarginsAreNotItsOwn)
{
    QTest::mousePress(&*sidebar, Qt::LeftButton, {}, {2, 2});
    EXPECT_EQ(card.presses, 1);
    QTest::mousePress(&*sidebar, Qt::LeftButton, {}, QPoint(sidebar->width() / 2, 40));
    EXPECT_EQ(card.presses, 1);
    QSignalSpy closes(&*sidebar, &HistorySidebar::closeRequested);
    auto* const close = sidebar->findChild<QWidget*>(u"closeListButton"_qs);
    click(close, close->rect().center());
    EXPECT_EQ(closes.count(), 1);
}

} // namespace
