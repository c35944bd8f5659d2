#include "Measurements.h"

#include "Reader.h"

#include <algorithm>
#include <cstdio>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
constexpr int smallSample = 8; ///< Small pictures that are timed repeatedly.
const QString asInstalled = u"tesseract"_s;
const QString doubled = u"tesseract-2x"_s;

double median(QList<double> values)
{
    const auto middle = values.begin() + values.size() / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The runs of one reader on one picture.
struct Runs {
    QList<double> wall;
    QList<double> cpu;
    QList<double> peak;
    int failures = 0;

    void append(const CommandRun& run)
    {
        wall.append(run.wallSeconds);
        cpu.append(run.cpuSeconds);
        peak.append(run.peakMegabytes);
        failures += run.exitCode == 0 ? 0 : 1;
    }

    Cost medians() const { return {median(wall), median(cpu), median(peak)}; }
};

void tell(const QString& what, qsizetype done, qsizetype all)
{
    std::fprintf(stderr, "[%d/%d] %s\n", int(done), int(all), qPrintable(what));
}

Measurement readOnce(const QString& reader, const Picture& picture, const Options& options)
{
    const CommandRun run = Readers::read(reader, picture, options);
    Measurement measurement{
        .score = Scorer::score(picture.pieces, QString::fromUtf8(run.output)),
        .cost = {run.wallSeconds, run.cpuSeconds, run.peakMegabytes},
        .failures = run.exitCode == 0 ? 0 : 1,
    };
    if (reader == "lumenote"_L1) {
        if (const auto missed = Readers::missedBoxes(picture, options))
            measurement.boxHits = int(picture.pieces.size() - missed->size());
    }
    return measurement;
}

/// Runs the readers in turn, so that a busy machine hits all of them alike.
Measurements::ByReader readInTurn(
    const QStringList& readers, const Picture& picture, int count, const Options& options)
{
    QMap<QString, Runs> runs;
    for (int i = 0; i < count; ++i) {
        for (const QString& reader : readers)
            runs[reader].append(Readers::read(reader, picture, options));
    }
    Measurements::ByReader measurements;
    for (const QString& reader : readers)
        measurements[reader] = {
            .score = {}, .cost = runs[reader].medians(), .failures = runs[reader].failures};
    return measurements;
}

QStringList without(const QStringList& readers, const QString& name)
{
    QStringList others = readers;
    others.removeAll(name);
    return others;
}

QList<Picture> repeatedPictures(const QList<Picture>& pictures)
{
    QList<Picture> repeated;
    int small = 0;
    for (const Picture& picture : pictures) {
        if (isDenseGroup(picture.group) || isGrowthGroup(picture.group)
            || (picture.group == "small"_L1 && small++ % 5 == 0 && small <= 5 * smallSample))
            repeated.append(picture);
    }
    return repeated;
}
} // namespace

bool isGrowthGroup(const QString& group)
{
    return group.startsWith("growth-"_L1);
}

bool isDenseGroup(const QString& group)
{
    return group.startsWith("dense-"_L1);
}

Measurements measure(const QList<Picture>& pictures, const Options& options)
{
    Measurements measurements{.pictures = pictures, .once = {}, .repeated = {}};
    qsizetype done = 0;
    for (const Picture& picture : pictures) {
        tell(picture.name, ++done, pictures.size());
        if (isGrowthGroup(picture.group))
            continue;
        Measurements::ByReader& byReader = measurements.once[picture.name];
        for (const QString& reader : without(options.readers, asInstalled))
            byReader[reader] = readOnce(reader, picture, options);
    }
    if (options.accuracyOnly)
        return measurements;

    const QList<Picture> repeated = repeatedPictures(pictures);
    done = 0;
    for (const Picture& picture : repeated) {
        tell(picture.name + u", in turn"_s, ++done, repeated.size());
        const int count = isGrowthGroup(picture.group) ? std::min(3, options.runs) : options.runs;
        measurements.repeated[picture.name] =
            readInTurn(without(options.readers, doubled), picture, count, options);
    }
    return measurements;
}

} // namespace Lumenote::Bench
