#include "OCR/OCRTimes.h"

namespace Lumenote::OCRTimes {

using namespace std::chrono_literals;

QString format(Duration duration)
{
    const std::chrono::duration<double, std::milli> milliseconds = duration;
    if (duration < 1s)
        return QString::number(milliseconds.count(), 'f', 0) + QStringLiteral("ms");
    const std::chrono::duration<double> seconds = duration;
    return QString::number(seconds.count(), 'f', 1) + QStringLiteral("s");
}

bool isModelLoad(Duration elapsed)
{
    constexpr auto modelLoadThreshold = 2s;
    return elapsed > modelLoadThreshold;
}

QString recognitionLine(qsizetype lineCount, Duration elapsed)
{
    const auto suffix = isModelLoad(elapsed) ? QStringLiteral(" — model load") : QString();
    return QString::number(lineCount) + QStringLiteral(" lines in ") + format(elapsed) + suffix;
}

QString warmUpLine(bool isReady, Duration elapsed, int modelLoads)
{
    auto line =
        (isReady ? QStringLiteral("warm-up ready in ") : QStringLiteral("warm-up failed in "))
        + format(elapsed);
    if (modelLoads == 1)
        line += QStringLiteral(" — 1 model load");
    else if (modelLoads > 1)
        line +=
            QStringLiteral(" — ") + QString::number(modelLoads) + QStringLiteral(" model loads");
    return line;
}

} // namespace Lumenote::OCRTimes
