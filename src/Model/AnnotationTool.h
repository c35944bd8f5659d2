#pragma once

#include <QString>

#include <array>
#include <optional>

namespace Lumenote {

/// What an annotation is. The values are the tags by which tools are compared.
enum class AnnotationTool { rectangle, arrow, highlight, blackout, whiteout };

namespace AnnotationTools {

inline constexpr std::array allCases{AnnotationTool::rectangle, AnnotationTool::arrow,
    AnnotationTool::highlight, AnnotationTool::blackout, AnnotationTool::whiteout};

/// The two groups of the tool row: those that mark something, and those that hide it.
inline constexpr std::array drawing{
    AnnotationTool::rectangle, AnnotationTool::arrow, AnnotationTool::highlight};
inline constexpr std::array censor{AnnotationTool::blackout, AnnotationTool::whiteout};

constexpr bool isCensor(AnnotationTool tool)
{
    return tool == AnnotationTool::blackout || tool == AnnotationTool::whiteout;
}

/// The name of a tool for programs: its enumerator.
QString rawValue(AnnotationTool tool);

/// The tool with this raw value, to the letter; nothing for any other text.
std::optional<AnnotationTool> fromRawValue(QStringView rawValue);

} // namespace AnnotationTools

/// What the user holds over the image: a tool to draw with, or the pointer that selects.
struct CanvasTool {
    std::optional<AnnotationTool> drawn; ///< Nothing is the pointer.

    static constexpr CanvasTool draw(AnnotationTool tool) { return {tool}; }
    static constexpr CanvasTool select() { return {}; }

    constexpr bool isSelect() const { return !drawn; }

    bool operator==(const CanvasTool&) const = default;
};

} // namespace Lumenote
