#include "Platform/Tesseract/TextFilter.h"

#include <gtest/gtest.h>

using Platform::LineReading;
using Platform::PageLayout;

namespace {

/// One line of a page.
struct Line {
    QString text;
    double confidence;
    QRect box;
    bool isKept = true;
    int level = 0;
};

struct Page {
    const char* name;
    std::vector<Line> lines;
};

/// In pixels of the line's level. One or two letters are taken for capitals.
double letterHeightOf(const Line& line)
{
    const double height = line.box.height() / double(line.level + 1);
    return line.text.size() > 2 ? height : height / 0.75;
}

LineReading readingOf(const Line& line)
{
    LineReading reading;
    bool startsWord = true;
    for (const QChar character : line.text) {
        if (character != u' ')
            reading.symbols.push_back({QString(character), 0, startsWord, line.confidence});
        startsWord = character == u' ';
    }
    reading.confidence = line.confidence;
    return reading;
}

struct ReadPage {
    PageLayout layout;
    std::vector<LineReading> readings;
};

/// @p lines as they were found and read; @p componentsOf tells how many shapes a line has.
template <typename ComponentsOf>
ReadPage readPageOf(const std::vector<Line>& lines, ComponentsOf componentsOf)
{
    ReadPage page;
    page.layout.levels.resize(2);
    page.layout.levels[1].reduction = 2;
    for (const Line& line : lines) {
        Platform::TextLine found;
        found.letterHeight = letterHeightOf(line);
        found.components.resize(std::size_t(componentsOf(line)));
        page.layout.lines.push_back({found, line.level, line.box});
        page.readings.push_back(readingOf(line));
    }
    return page;
}

std::vector<Page> pages()
{
    const Line text{u"Some sure text"_qs, 94, {40, 10, 120, 16}};
    const Line more{u"Another sure line"_qs, 92, {40, 40, 130, 15}};
    const auto dropped = [](const QString& read, double confidence, const QRect& box) {
        return Line{read, confidence, box, false};
    };
    return {
        {"empty", {}},
        {"text", {text, more}},
        {"nothingRead", {text, dropped({}, 0, {10, 10, 16, 16})}},
        {"icons",
            {dropped(u"O"_qs, 60, {8, 8, 20, 20}), text, dropped(u"©"_qs, 80, {10, 40, 15, 15}),
                more, dropped(u"=="_qs, 90, {10, 70, 15, 15}),
                dropped(u"on"_qs, 70, {10, 90, 15, 15})}},
        {"iconsOnly",
            {dropped(u"Q"_qs, 80, {8, 8, 20, 20}), dropped(u"®"_qs, 90, {48, 8, 20, 20}),
                dropped(u"O0"_qs, 60, {88, 8, 24, 20}), dropped(u"x"_qs, 88, {128, 8, 20, 20})}},
        {"picture", {dropped(u"wrasl i7"_qs, 40, {0, 0, 200, 40})}},
        {"cells",
            {text, {u"7"_qs, 90, {200, 12, 8, 13}}, {u"12"_qs, 70, {200, 42, 16, 13}},
                {u"Ok"_qs, 80, {230, 42, 20, 14}}}},
        {"flatDigit", {text, dropped(u"7"_qs, 90, {200, 12, 18, 13})}},
        {"largeDigit", {text, {u"42"_qs, 96, {200, 10, 44, 40}}}},
        {"largeIcon", {text, dropped(u"D"_qs, 96, {200, 10, 40, 48})}},
        {"digitAlone", {{u"7"_qs, 95, {40, 40, 30, 44}}}},
        {"code",
            {{u"void f() {"_qs, 90, {10, 10, 90, 16}}, {u"});"_qs, 85, {10, 30, 24, 16}},
                {u"}"_qs, 80, {10, 50, 8, 16}}, dropped(u"~"_qs, 95, {10, 70, 8, 16}),
                dropped(u"}"_qs, 50, {60, 50, 8, 16})}},
        {"doubtfulWord", {text, {u"Gnorx"_qs, 30, {40, 70, 60, 16}}}},
        {"doubtfulPicture", {text, dropped(u"~i|x/"_qs, 30, {40, 70, 60, 16})}},
        {"fragmentsOfLargeLetters",
            {text, dropped(u"Hea"_qs, 60, {0, 100, 90, 40}),
                dropped(u"iny"_qs, 70, {92, 100, 90, 40}),
                {u"Heading"_qs, 95, {0, 100, 200, 44}, true, 1}}},
        {"linesThatLookLarge",
            {text, more, {u"A third line of it"_qs, 90, {40, 60, 130, 15}},
                {u"Swam"_qs, 60, {38, 8, 134, 68}, false, 1}}},
        {"sameOnTwoLevels",
            {{u"Title"_qs, 95, {10, 10, 120, 40}}, {u"Title"_qs, 94, {10, 10, 120, 40}, false, 1}}},
        {"largeBesideSmall", {text, {u"Large"_qs, 95, {300, 10, 120, 28}, true, 1}}},
    };
}

TEST(TextFilterTest, picturesAreDroppedAndTextIsKept)
{
    for (const auto& [name, lines] : pages()) {
        const ReadPage page = readPageOf(lines, [](const Line& line) { return line.text.size(); });
        std::vector<int> expected;
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (lines[line].isKept)
                expected.push_back(int(line));
        EXPECT_EQ(Platform::linesWithText(page.layout, page.readings), expected) << name;
    }
}

TEST(TextFilterTest, aLoneLetterAsTallAsACapitalIsOne)
{
    struct Letter {
        QString read;
        int height;
        int components;
        QString expected;
    };
    const std::vector<Letter> letters{
        {u"s"_qs, 12, 1, u"S"_qs},
        {u"WwW"_qs, 12, 1, u"W"_qs},
        {u"zZ"_qs, 11, 1, u"Z"_qs},
        {u"x"_qs, 8, 1, u"x"_qs},
        {u"e"_qs, 12, 1, u"e"_qs},
        {u"cC"_qs, 12, 2, u"cC"_qs},
    };
    for (const Letter& letter : letters) {
        const std::vector<Line> lines{{u"Some sure text"_qs, 94, {40, 10, 120, 16}},
            {letter.read, 70, {200, 10, 10, letter.height}}};
        ReadPage page = readPageOf(lines, [&](const Line&) { return letter.components; });
        Platform::settleLoneLetters(page.layout, page.readings);
        EXPECT_EQ(Platform::textOf(page.readings[1].symbols), letter.expected)
            << qPrintable(letter.read);
    }
}

} // namespace
