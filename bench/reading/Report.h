#pragma once

#include "Measurements.h"

#include <QJsonObject>

namespace Lumenote::Bench::Report {

/// The tables of `docs/PERFORMANCE.md`.
QString toMarkdown(const Measurements& measurements, const Options& options);

/// Every measurement, for programs.
QJsonObject toJson(const Measurements& measurements);

} // namespace Lumenote::Bench::Report
