#pragma once

#include <QCoreApplication>
#include <QString>

namespace Lumenote {

class WorkbenchModel;

/// What the text face has to tell of a capture's text, and how it says so.
struct ExtractedTextState {
    enum class Content {
        reading, ///< The recognition goes on.
        failed, ///< It didn't finish, and can be tried again.
        noText, ///< The capture has none.
        text, ///< The lines that the filter leaves.
        noMatch, ///< The filter leaves none.
    };

    bool isRecognizing = false;
    bool awaitingModels = false;
    bool recognitionFailed = false;
    qsizetype lineCount = 0;
    qsizetype matchCount = 0; ///< Of lines that the filter leaves.
    qsizetype wordCount = 0;
    QString query = {}; ///< The filter.

    static ExtractedTextState of(const WorkbenchModel& model);

    Content content() const;
    QString summary() const; ///< A line for the header.
    QString message() const; ///< In the place of the text; empty where there is text to show.

    bool operator==(const ExtractedTextState&) const = default;

private:
    Q_DECLARE_TR_FUNCTIONS(ExtractedTextView)

    QString counts() const;
};

} // namespace Lumenote
