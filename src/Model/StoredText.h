#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace Lumenote {

/// The recognised text of a capture, as its JSON file holds it.
struct StoredText {
    static constexpr int currentVersion = 1;

    struct Line {
        QString text;
        /// The box of the recognised line, in the same space as there.
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;

        bool operator==(const Line&) const = default;
    };

    int version = currentVersion;
    QList<Line> lines;

    bool operator==(const StoredText&) const = default;
};

/// One compact JSON object. Boxes that aren't finite can't be told in JSON and won't be read back.
QByteArray toJson(const StoredText& text);

/// Nothing unless every field is there and of its type, and the version is the current one.
std::optional<StoredText> storedTextFromJson(const QByteArray& json);

} // namespace Lumenote
