#pragma once

#include <QString>

#include <chrono>

/// What the log says of how long the recogniser took.
namespace Lumenote::OCRTimes {

using Duration = std::chrono::nanoseconds;

/// "250ms" below one second, "1.5s" from there on.
QString format(Duration duration);

/// Whether a run took so long that the recogniser must have loaded a model.
bool isModelLoad(Duration elapsed);

QString recognitionLine(qsizetype lineCount, Duration elapsed);
QString warmUpLine(bool isReady, Duration elapsed, int modelLoads);

} // namespace Lumenote::OCRTimes
