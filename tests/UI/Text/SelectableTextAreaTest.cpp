#include "UI/Text/SelectableTextArea.h"

#include "UI/Shared/Theme.h"
#include "UI/Text/TextRangeRects.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTextLayout>

#include <array>
#include <gmock/gmock.h>

using namespace Lumenote;

namespace {

class SelectableTextAreaTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_area.resize(400, 200);
        m_area.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_area));
    }

    QRect letter(int position) const
    {
        auto cursor = m_area.textCursor();
        cursor.setPosition(position);
        return m_area.cursorRect(cursor);
    }

    int pitch() const { return QFontMetrics(m_area.font()).lineSpacing() + 4; }

    SelectableTextArea m_area{nullptr};
};

TEST_F(SelectableTextAreaTest, theSameTextKeepsSelectionAndPosition)
{
    const auto text = QStringList(100, u"some line of text"_qs).join(u'\n');
    m_area.setText(text, {});
    m_area.selectAll();
    m_area.verticalScrollBar()->setValue(40);
    m_area.setText(text, {{{0, 4}}});
    EXPECT_TRUE(m_area.textCursor().hasSelection());
    EXPECT_EQ(m_area.verticalScrollBar()->value(), 40);
    m_area.setText(text + u'!', {});
    EXPECT_FALSE(m_area.textCursor().hasSelection());
    EXPECT_EQ(m_area.verticalScrollBar()->value(), 0);
}

TEST_F(SelectableTextAreaTest, whatIsCopiedHasNoLooks)
{
    m_area.setText(u"one\ntwo"_qs, {});
    m_area.selectAll();
    QTest::keyClick(&m_area, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->formats(), QStringList(u"text/plain"_qs));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one\ntwo"_qs);
}

TEST_F(SelectableTextAreaTest, linesStandApartAlsoWhereTheyAreWrapped)
{
    const auto check = [this](const char* name, const QString& text, int position, int row) {
        m_area.setText(text, {});
        EXPECT_EQ(letter(0).topLeft(), QPoint(18, 10)) << name;
        EXPECT_EQ(letter(position).top(), 10 + row * pitch()) << name;
    };
    const QString wide(60, u'm');
    check("oneLine", u"one"_qs, 0, 0);
    check("another", u"other"_qs, 0, 0);
    check("twoLines", u"one\ntwo"_qs, 4, 1);
    check("behindAWrappedOne", wide + u"\ntwo"_qs, 61, 2);
    check("wrapped", wide, 59, 1);
}

TEST_F(SelectableTextAreaTest, allMarkedLettersAreMarkedAndNoOthers)
{
    m_area.setText(u"banana\nan"_qs, {});
    const auto plain = m_area.grab().toImage();
    m_area.setText(u"banana\nan"_qs, {{{1, 2}, {3, 2}}, {{0, 2}}});
    const auto marked = m_area.grab().toImage();
    for (int position = 0; position < 9; ++position) {
        const auto from = letter(position);
        // Near the lower edge, where no letter reaches.
        const auto point = from.bottomLeft() + QPoint(3, -1);
        const bool isLetter = position < 5 && position > 0;
        EXPECT_EQ(plain.pixel(point) != marked.pixel(point), isLetter || position >= 7) << position;
    }
}

TEST_F(SelectableTextAreaTest, betweenTwoLinesTheNearestLetterIsMeant)
{
    m_area.setText(u"first line\nsecond line"_qs, {});
    for (int y = letter(0).bottom(); y <= letter(11).top(); ++y) {
        QTest::mouseClick(m_area.viewport(), Qt::LeftButton, {}, {letter(4).x() + 1, y});
        EXPECT_THAT((std::array{4, 15}), testing::Contains(m_area.textCursor().position())) << y;
    }
}

TEST(TextRangeRectsTest, aRangeHasAPieceForEachLineAndDirection)
{
    const auto pieces = [](const QString& text, TextSearch::Range range) {
        QTextLayout layout(text, Theme::monospacedFont(13));
        layout.beginLayout();
        for (auto line = layout.createLine(); line.isValid(); line = layout.createLine())
            line.setLineWidth(100);
        layout.endLayout();
        return rectsOf(range, layout).size();
    };
    EXPECT_EQ(pieces(u"one two"_qs, {1, 4}), 1);
    EXPECT_EQ(pieces(u"one two"_qs, {2, 0}), 0);
    EXPECT_EQ(pieces(u"some words more words"_qs, {6, 8}), 2);
    EXPECT_EQ(pieces(u"ab \u05d0\u05d1\u05d2"_qs, {1, 3}), 2);
    EXPECT_EQ(pieces(u"ab \u05d0\u05d1\u05d2"_qs, {3, 3}), 1);
}

} // namespace
