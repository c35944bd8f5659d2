#pragma once

#include "Options.h"
#include "Scorer.h"

#include <QMap>

namespace Lumenote::Bench {

/// What a run cost; the medians of several runs, each by itself.
struct Cost {
    double wallSeconds = 0;
    double cpuSeconds = 0;
    double peakMegabytes = 0;
};

/// One reader's work on one picture.
struct Measurement {
    Score score;
    Cost cost;
    int boxHits = -1; ///< Pieces whose place was found; negative where nobody asked.
    int failures = 0; ///< Runs that ended with another exit code than 0.
};

/// By picture and by reader.
struct Measurements {
    using ByReader = QMap<QString, Measurement>;

    QList<Picture> pictures; ///< All that were measured.
    QMap<QString, ByReader> once; ///< One run each: the accuracy, and what it cost.
    QMap<QString, ByReader> repeated; ///< The same runs in turn, for the costs.
};

/// Runs the readers on @p pictures and tells the progress on standard error.
///
/// As installed, Tesseract reads the same text as it does with one thread, so that its accuracy is
/// taken from there; its time is measured on what is run repeatedly: dense pictures, growing ones,
/// and a sample of small ones.
Measurements measure(const QList<Picture>& pictures, const Options& options);

/// Whether @p group counts for its time and memory only.
bool isGrowthGroup(const QString& group);
bool isDenseGroup(const QString& group);

} // namespace Lumenote::Bench
