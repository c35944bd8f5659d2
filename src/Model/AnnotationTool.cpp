#include "Model/AnnotationTool.h"

namespace Lumenote::AnnotationTools {

QString rawValue(AnnotationTool tool)
{
    switch (tool) {
    case AnnotationTool::rectangle:
        return QStringLiteral("rectangle");
    case AnnotationTool::arrow:
        return QStringLiteral("arrow");
    case AnnotationTool::highlight:
        return QStringLiteral("highlight");
    case AnnotationTool::blackout:
        return QStringLiteral("blackout");
    case AnnotationTool::whiteout:
        return QStringLiteral("whiteout");
    }
    return {};
}

std::optional<AnnotationTool> fromRawValue(QStringView rawValue)
{
    for (const auto tool : allCases)
        if (AnnotationTools::rawValue(tool) == rawValue)
            return tool;
    return std::nullopt;
}

} // namespace Lumenote::AnnotationTools
