#include "Model/StoredText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cmath>
#include <utility>

namespace Lumenote {

namespace {

constexpr auto versionKey = QLatin1String("version");
constexpr auto linesKey = QLatin1String("lines");
constexpr auto textKey = QLatin1String("text");

using BoxField = std::pair<QLatin1String, double StoredText::Line::*>;
constexpr std::array boxFields{
    BoxField{QLatin1String("x"), &StoredText::Line::x},
    BoxField{QLatin1String("y"), &StoredText::Line::y},
    BoxField{QLatin1String("width"), &StoredText::Line::width},
    BoxField{QLatin1String("height"), &StoredText::Line::height},
};

QJsonObject toObject(const StoredText::Line& line)
{
    QJsonObject object{{textKey, line.text}};
    for (const auto& [key, field] : boxFields)
        object.insert(key, line.*field);
    return object;
}

std::optional<StoredText::Line> lineFrom(const QJsonObject& object)
{
    const auto text = object.value(textKey);
    if (!text.isString())
        return std::nullopt;
    StoredText::Line line{.text = text.toString()};
    for (const auto& [key, field] : boxFields) {
        const auto number = object.value(key);
        if (!number.isDouble() || !std::isfinite(number.toDouble()))
            return std::nullopt;
        line.*field = number.toDouble();
    }
    return line;
}

} // namespace

QByteArray toJson(const StoredText& text)
{
    QJsonArray lines;
    for (const auto& line : text.lines)
        lines.append(toObject(line));
    return QJsonDocument(QJsonObject{{versionKey, text.version}, {linesKey, lines}})
        .toJson(QJsonDocument::Compact);
}

std::optional<StoredText> storedTextFromJson(const QByteArray& json)
{
    const auto root = QJsonDocument::fromJson(json).object();
    const auto lines = root.value(linesKey);
    if (root.value(versionKey) != QJsonValue(StoredText::currentVersion) || !lines.isArray())
        return std::nullopt;
    StoredText text;
    for (const auto& value : lines.toArray()) {
        auto line = lineFrom(value.toObject());
        if (!line)
            return std::nullopt;
        text.lines.append(*std::move(line));
    }
    return text;
}

} // namespace Lumenote
