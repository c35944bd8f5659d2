#include "Model/StoredText.h"

#include <gtest/gtest.h>

namespace {

using namespace Lumenote;

TEST(StoredTextTest, comesBackAsItWas)
{
    const StoredText text{.lines = {{.text = u"\"Zeile\"\\ \n\t\u0001 caf\u00e9 \U0001f4f8"_qs,
                                        .x = 0.1,
                                        .y = 1.0 / 3,
                                        .width = 5e-324,
                                        .height = 1.7976931348623157e308},
                              {.text = QString(), .x = -0.0, .y = 1e21, .width = 0, .height = -7}}};
    EXPECT_EQ(storedTextFromJson(toJson(text)), text);
    EXPECT_EQ(storedTextFromJson(toJson({})), StoredText());
}

TEST(StoredTextTest, isReadInAnyOrderWithUnknownKeys)
{
    const auto text = storedTextFromJson(
        R"( { "lines" : [ {"height":4,"width":3e0,"y":2,"x":1,"note":null,"text":"a"} ],)"
        R"( "version" : 1.0, "more": [] } )");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->lines,
        QList<StoredText::Line>({{.text = u"a"_qs, .x = 1, .y = 2, .width = 3, .height = 4}}));
}

struct Json {
    const char* name;
    QByteArray json;
};

class BadStoredTextTest : public testing::TestWithParam<Json> { };

TEST_P(BadStoredTextTest, isNothing)
{
    EXPECT_FALSE(storedTextFromJson(GetParam().json));
}

QByteArray lineWith(const char* line)
{
    return R"({"version":1,"lines":[)" + QByteArray(line) + "]}";
}

INSTANTIATE_TEST_SUITE_P(, BadStoredTextTest,
    testing::Values(Json{"empty", ""},
        Json{"truncated", R"({"version":1,"lines":[{"text":"a","x":0,"y":0,"wi)"},
        Json{"trailingGarbage", R"({"version":1,"lines":[]}x)"},
        Json{"noObject", R"([{"version":1,"lines":[]}])"}, Json{"noVersion", R"({"lines":[]})"},
        Json{"laterVersion", R"({"version":2,"lines":[]})"},
        Json{"nearlyTheVersion", R"({"version":1.5,"lines":[]})"},
        Json{"versionAsText", R"({"version":"1","lines":[]})"}, Json{"noLines", R"({"version":1})"},
        Json{"linesAsObject", R"({"version":1,"lines":{}})"},
        Json{"lineAsText", lineWith(R"("a")")},
        Json{"textAsNumber", lineWith(R"({"text":1,"x":0,"y":0,"width":0,"height":0})")},
        Json{"missingHeight", lineWith(R"({"text":"a","x":0,"y":0,"width":0})")},
        Json{"nullBox", lineWith(R"({"text":"a","x":null,"y":0,"width":0,"height":0})")},
        Json{"boxAsText", lineWith(R"({"text":"a","x":"0","y":0,"width":0,"height":0})")},
        Json{"notANumber", lineWith(R"({"text":"a","x":NaN,"y":0,"width":0,"height":0})")},
        Json{"tooLargeANumber", lineWith(R"({"text":"a","x":1e400,"y":0,"width":0,"height":0})")},
        Json{"secondLineBad",
            lineWith(R"({"text":"a","x":0,"y":0,"width":0,"height":0},{"text":"b"})")},
        Json{"noUtf8", lineWith("{\"text\":\"\xff\",\"x\":0,\"y\":0,\"width\":0,\"height\":0}")},
        Json{"deepArrays", QByteArray(100'000, '[')},
        Json{"deepObjects", QByteArray(R"({"lines":)").repeated(100'000)}),
    [](const auto& info) { return info.param.name; });

} // namespace
