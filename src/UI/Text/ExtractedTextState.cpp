#include "UI/Text/ExtractedTextState.h"

#include "Model/WorkbenchModel.h"

namespace Lumenote {

ExtractedTextState ExtractedTextState::of(const WorkbenchModel& model)
{
    return {.isRecognizing = model.isRecognizing(),
        .awaitingModels = model.awaitingModels(),
        .recognitionFailed = model.recognitionFailed(),
        .lineCount = model.visibleLines().size(),
        .matchCount = model.matches().size(),
        .wordCount = model.visibleWordCount(),
        .query = model.textQuery()};
}

ExtractedTextState::Content ExtractedTextState::content() const
{
    if (isRecognizing)
        return Content::reading;
    if (recognitionFailed)
        return Content::failed;
    if (lineCount == 0)
        return Content::noText;
    return matchCount > 0 ? Content::text : Content::noMatch;
}

QString ExtractedTextState::summary() const
{
    switch (content()) {
    case Content::reading:
        return awaitingModels ? tr("Preparing text recognition…") : tr("Reading the capture…");
    case Content::failed:
        return tr("Recognition didn't finish");
    case Content::noText:
        return tr("Nothing recognized");
    case Content::text:
    case Content::noMatch:
        return counts();
    }
    return {};
}

QString ExtractedTextState::counts() const
{
    if (matchCount != lineCount)
        return tr("%1 of %2 lines match").arg(matchCount).arg(lineCount);
    return (lineCount == 1 ? tr("%1 line") : tr("%1 lines")).arg(lineCount) + QStringLiteral(" · ")
        + (wordCount == 1 ? tr("%1 word") : tr("%1 words")).arg(wordCount);
}

QString ExtractedTextState::message() const
{
    switch (content()) {
    case Content::reading:
        return awaitingModels ? tr("Vision is building its text models. Once per install, and "
                                   "again after a macOS update.")
                              : tr("Extracting text…");
    case Content::failed:
        return tr("Text recognition didn't finish.");
    case Content::noText:
        return tr("No text found in this capture.");
    case Content::text:
        return {};
    case Content::noMatch:
        return tr("No line matches “") + query + u'”';
    }
    return {};
}

} // namespace Lumenote
