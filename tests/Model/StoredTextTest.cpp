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

TEST(StoredTextTest, whatIsNotWhollyATextIsNone)
{
    for (const char* json : {"", R"({"version":1,"lines":[]}x)", R"([{"version":1,"lines":[]}])",
             R"({"lines":[]})", R"({"version":2,"lines":[]})", R"({"version":1.5,"lines":[]})",
             R"({"version":"1","lines":[]})", R"({"version":1})", R"({"version":1,"lines":{}})"})
        EXPECT_FALSE(storedTextFromJson(json)) << json;
    for (const char* line : {R"("a")", R"({"text":1,"x":0,"y":0,"width":0,"height":0})",
             R"({"text":"a","x":0,"y":0,"width":0})",
             R"({"text":"a","x":null,"y":0,"width":0,"height":0})",
             R"({"text":"a","x":"0","y":0,"width":0,"height":0})",
             R"({"text":"a","x":NaN,"y":0,"width":0,"height":0})",
             R"({"text":"a","x":1e400,"y":0,"width":0,"height":0})",
             R"({"text":"a","x":0,"y":0,"width":0,"height":0},{"text":"b"})",
             "{\"text\":\"\xff\",\"x\":0,\"y\":0,\"width\":0,\"height\":0}"})
        EXPECT_FALSE(storedTextFromJson(R"({"version":1,"lines":[)" + QByteArray(line) + "]}"))
            << line;
    EXPECT_FALSE(storedTextFromJson(QByteArray(100'000, '[')));
    EXPECT_FALSE(storedTextFromJson(QByteArray(R"({"lines":)").repeated(100'000)));
}

} // namespace
