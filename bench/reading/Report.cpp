#include "Report.h"

#include "CommandRun.h"
#include "Table.h"

#include <QFile>
#include <QJsonArray>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>
#include <functional>

namespace Lumenote::Bench::Report {

using namespace Qt::StringLiterals;

namespace {
const QString ours = u"lumenote"_s;
const QString oneThread = u"tesseract-1"_s;

/// A reader's work on a group of pictures.
struct Sum {
    Score score;
    Cost cost; ///< Seconds are added, of the peaks the highest counts.
    int boxHits = 0;
    int failures = 0;
    int pictures = 0;

    void add(const Measurement& measurement)
    {
        score += measurement.score;
        cost.wallSeconds += measurement.cost.wallSeconds;
        cost.cpuSeconds += measurement.cost.cpuSeconds;
        cost.peakMegabytes = std::max(cost.peakMegabytes, measurement.cost.peakMegabytes);
        boxHits += std::max(0, measurement.boxHits);
        failures += measurement.failures;
        ++pictures;
    }
};

QString rowName(const Picture& picture)
{
    return picture.group.startsWith("script-"_L1) ? u"scripts"_s : picture.group;
}

using Wanted = std::function<bool(const Picture&)>;

Sum sumOf(const Measurements& measurements, const QString& reader, const Wanted& isWanted)
{
    Sum sum;
    for (const Picture& picture : measurements.pictures) {
        const Measurements::ByReader byReader = measurements.once.value(picture.name);
        if (byReader.contains(reader) && isWanted(picture))
            sum.add(byReader[reader]);
    }
    return sum;
}

/// The rows of the tables in the order of the catalogue, each with the pictures that it counts.
QList<std::pair<QString, Wanted>> rows(const Measurements& measurements)
{
    static const QStringList order{u"small"_s, u"photo"_s, u"scaled"_s, u"jpeg"_s, u"german"_s,
        u"french"_s, u"mixed"_s, u"dense-1080p"_s, u"dense-4k"_s, u"scripts"_s, u"no-text"_s};
    QList<std::pair<QString, Wanted>> found;
    for (const QString& name : order) {
        for (const Split split : {Split::tuning, Split::test}) {
            const Wanted isWanted = [=](const Picture& picture) {
                return rowName(picture) == name && picture.split == split;
            };
            if (std::ranges::any_of(measurements.pictures, isWanted))
                found.append({name + (split == Split::test ? u""_s : u" (tuning)"_s), isWanted});
        }
    }
    return found;
}

QString seconds(double value)
{
    return Table::number(value, value < 10 ? 2 : 1);
}

QString ratio(double ourValue, double otherValue)
{
    return otherValue > 0 ? Table::number(ourValue / otherValue) : u"-"_s;
}

QString accuracyTable(const Measurements& measurements, const QStringList& readers)
{
    Table table({u"group"_s, u"reader"_s, u"pictures"_s, u"characters"_s, u"CER %"_s, u"lost %"_s,
        u"extra %"_s, u"boxes %"_s, u"wall s"_s, u"CPU s"_s, u"peak MB"_s, u"failed"_s});
    for (const auto& [name, isWanted] : rows(measurements)) {
        for (const QString& reader : readers) {
            const Sum sum = sumOf(measurements, reader, isWanted);
            if (sum.pictures == 0)
                continue;
            const bool hasText = sum.score.characters > 0;
            table.addRow(
                {name, reader, QString::number(sum.pictures), QString::number(sum.score.characters),
                    hasText ? Table::number(sum.score.errorPercent()) : u"-"_s,
                    hasText ? Table::number(sum.score.lostPercent()) : u"-"_s,
                    hasText ? Table::number(sum.score.extraPercent())
                            : u"%1 characters"_s.arg(sum.score.extra),
                    hasText && sum.boxHits > 0
                        ? Table::number(100.0 * sum.boxHits / sum.score.pieces, 1)
                        : u"-"_s,
                    seconds(sum.cost.wallSeconds / sum.pictures),
                    seconds(sum.cost.cpuSeconds / sum.pictures),
                    Table::number(sum.cost.peakMegabytes, 0), QString::number(sum.failures)});
        }
    }
    return table.isEmpty() ? QString() : table.toMarkdown();
}

QString accuracyRatios(const Measurements& measurements)
{
    Table table({u"group"_s, u"CER, lumenote to tesseract"_s, u"lost, lumenote to tesseract"_s});
    const auto addRow = [&](const QString& name, const Wanted& isWanted) {
        const Score our = sumOf(measurements, ours, isWanted).score;
        const Score other = sumOf(measurements, oneThread, isWanted).score;
        if (our.characters > 0 && other.characters > 0)
            table.addRow({name, ratio(our.errorPercent(), other.errorPercent()),
                ratio(our.lostPercent(), other.lostPercent())});
    };
    for (const auto& [name, isWanted] : rows(measurements))
        addRow(name, isWanted);
    addRow(u"all flat"_s, [](const Picture& picture) { return picture.isFlat; });
    addRow(u"all"_s, [](const Picture&) { return true; });
    return table.isEmpty() ? QString() : table.toMarkdown();
}

QString median(QList<double> values)
{
    std::ranges::sort(values);
    return Table::number(values[values.size() / 2]);
}

/// Costs of repeated runs on the pictures that @p isWanted, and ours in relation to the others.
QString costTable(
    const Measurements& measurements, const QStringList& readers, const Wanted& isWanted)
{
    Table table({u"picture"_s, u"megapixels"_s, u"pieces"_s, u"reader"_s, u"wall s"_s, u"CPU s"_s,
        u"peak MB"_s, u"lumenote's wall to this"_s, u"lumenote's CPU to this"_s});
    QMap<QString, QList<double>> wallRatios;
    QMap<QString, QList<double>> cpuRatios;
    for (const Picture& picture : measurements.pictures) {
        const Measurements::ByReader byReader = measurements.repeated.value(picture.name);
        if (byReader.isEmpty() || !isWanted(picture))
            continue;
        const Cost our = byReader.value(ours).cost;
        for (const QString& reader : readers) {
            const Cost cost = byReader.value(reader).cost;
            const bool isCompared = reader != ours && byReader.contains(ours);
            table.addRow({picture.name,
                Table::number(double(picture.size.width()) * picture.size.height() / 1e6, 1),
                QString::number(picture.pieces.size()), reader, seconds(cost.wallSeconds),
                seconds(cost.cpuSeconds), Table::number(cost.peakMegabytes, 0),
                isCompared ? ratio(our.wallSeconds, cost.wallSeconds) : u"-"_s,
                isCompared ? ratio(our.cpuSeconds, cost.cpuSeconds) : u"-"_s});
            if (isCompared) {
                wallRatios[reader].append(our.wallSeconds / cost.wallSeconds);
                cpuRatios[reader].append(our.cpuSeconds / cost.cpuSeconds);
            }
        }
    }
    for (auto each = wallRatios.cbegin(); each != wallRatios.cend(); ++each)
        table.addRow({u"median of the above"_s, u"-"_s, u"-"_s, each.key(), u"-"_s, u"-"_s, u"-"_s,
            median(each.value()), median(cpuRatios[each.key()])});
    return table.isEmpty() ? QString() : table.toMarkdown();
}

/// The machine and the reader that the figures belong to.
QString circumstances()
{
    QFile processors(u"/proc/cpuinfo"_s);
    QString model = u"an unknown processor"_s;
    if (processors.open(QIODevice::ReadOnly)) {
        static const QRegularExpression name(u"model name\\s*: (.*)"_s);
        const auto match = name.match(QString::fromUtf8(processors.readAll()));
        model = match.hasMatch() ? match.captured(1) : model;
    }
    const QString version =
        QString::fromUtf8(runCommand({u"tesseract"_s, u"--version"_s}).output.split('\n').first());
    return u"Measured on %1, %2 cores, against %3. Each run is a whole command, start to end.\n"_s
        .arg(model, QString::number(QThread::idealThreadCount()), version);
}

QJsonObject toJson(const Measurement& measurement)
{
    return {
        {u"characters"_s, measurement.score.characters},
        {u"errors"_s, measurement.score.errors},
        {u"extra"_s, measurement.score.extra},
        {u"pieces"_s, measurement.score.pieces},
        {u"lost"_s, measurement.score.lost},
        {u"boxHits"_s, measurement.boxHits},
        {u"failures"_s, measurement.failures},
        {u"wallSeconds"_s, measurement.cost.wallSeconds},
        {u"cpuSeconds"_s, measurement.cost.cpuSeconds},
        {u"peakMegabytes"_s, measurement.cost.peakMegabytes},
    };
}

QJsonObject toJson(const Measurements::ByReader& byReader)
{
    QJsonObject json;
    for (auto each = byReader.cbegin(); each != byReader.cend(); ++each)
        json.insert(each.key(), toJson(each.value()));
    return json;
}
} // namespace

QString toMarkdown(const Measurements& measurements, const Options& options)
{
    QString text = circumstances();
    const auto add = [&text](const QString& title, const QString& table, const QString& note) {
        if (!table.isEmpty())
            text += u"\n### "_s + title + u"\n\n"_s + table + u'\n' + note + u'\n';
    };
    add(u"Accuracy"_s, accuracyTable(measurements, options.readers),
        u"Seconds are means per picture of one run each, the peak is the highest. As installed,\n"
        u"Tesseract reads the same text as with one thread, so that it has no rows here."_s);
    add(u"Accuracy, compared"_s, accuracyRatios(measurements),
        u"Against Tesseract at the pictures' own size."_s);

    QStringList readers = options.readers;
    readers.removeAll(u"tesseract-2x"_s);
    const auto addCosts = [&](const QString& title, const QString& group, int runs) {
        add(title,
            costTable(measurements, readers,
                [&group](const Picture& picture) { return picture.group.startsWith(group); }),
            u"Medians of %1 runs, the readers in turn."_s.arg(runs));
    };
    const int fewRuns = std::min(3, options.runs);
    addCosts(u"Dense pictures"_s, u"dense-"_s, options.runs);
    addCosts(u"Small pictures from a cold start"_s, u"small"_s, options.runs);
    addCosts(u"More and more lines"_s, u"growth-lines"_s, fewRuns);
    addCosts(u"More and more pixels"_s, u"growth-pixels"_s, fewRuns);
    return text;
}

QJsonObject toJson(const Measurements& measurements)
{
    QJsonArray pictures;
    for (const Picture& picture : measurements.pictures) {
        pictures.append(QJsonObject{
            {u"name"_s, picture.name},
            {u"group"_s, picture.group},
            {u"split"_s, picture.split == Split::tuning ? u"tuning"_s : u"test"_s},
            {u"width"_s, picture.size.width()},
            {u"height"_s, picture.size.height()},
            {u"once"_s, toJson(measurements.once.value(picture.name))},
            {u"repeated"_s, toJson(measurements.repeated.value(picture.name))},
        });
    }
    return {{u"version"_s, 1}, {u"pictures"_s, pictures}};
}

} // namespace Lumenote::Bench::Report
