#include "UI/Text/ExtractedTextState.h"

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

using Content = ExtractedTextState::Content;

TEST(ExtractedTextStateTest, theFirstThatHoldsIsTold)
{
    const auto check = [](const char* name, const ExtractedTextState& state, Content content,
                           const QString& summary, const QString& message) {
        EXPECT_EQ(state.content(), content) << name;
        EXPECT_EQ(state.summary(), summary) << name;
        EXPECT_EQ(state.message(), message) << name;
    };
    check("reading", {.isRecognizing = true}, Content::reading, u"Reading the capture…"_qs,
        u"Extracting text…"_qs);
    check("waitingForModels", {.isRecognizing = true, .awaitingModels = true}, Content::reading,
        u"Preparing text recognition…"_qs,
        u"Vision is building its text models. Once per install, and again after a macOS update."_qs);
    check("readingAgain", {.isRecognizing = true, .lineCount = 3, .matchCount = 3},
        Content::reading, u"Reading the capture…"_qs, u"Extracting text…"_qs);
    check("failed", {.recognitionFailed = true}, Content::failed, u"Recognition didn't finish"_qs,
        u"Text recognition didn't finish."_qs);
    check("failedWithLines", {.recognitionFailed = true, .lineCount = 3, .matchCount = 3},
        Content::failed, u"Recognition didn't finish"_qs, u"Text recognition didn't finish."_qs);
    check("nothing", {}, Content::noText, u"Nothing recognized"_qs,
        u"No text found in this capture."_qs);
    check("oneOfEach", {.lineCount = 1, .matchCount = 1, .wordCount = 1}, Content::text,
        u"1 line · 1 word"_qs, {});
    check("many", {.lineCount = 2, .matchCount = 2, .wordCount = 0}, Content::text,
        u"2 lines · 0 words"_qs, {});
    check("filterThatAllPass", {.lineCount = 2, .matchCount = 2, .wordCount = 5, .query = u"a"_qs},
        Content::text, u"2 lines · 5 words"_qs, {});
    check("filtered", {.lineCount = 12, .matchCount = 1, .wordCount = 5, .query = u"a"_qs},
        Content::text, u"1 of 12 lines match"_qs, {});
    check("noneLeft", {.lineCount = 1, .matchCount = 0, .wordCount = 5, .query = u"%1"_qs},
        Content::noMatch, u"0 of 1 lines match"_qs, u"No line matches “%1”"_qs);
}

} // namespace
