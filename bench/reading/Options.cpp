#include "Options.h"

#include "Reader.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

namespace Lumenote::Bench {

using namespace Qt::StringLiterals;

namespace {
/// The program of the build that we are part of.
QString builtProgram()
{
    const QDir here(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(here.filePath(u"../../src/lumenote"_s));
}

std::optional<Split> splitNamed(const QString& name)
{
    if (name == "all"_L1)
        return std::nullopt;
    if (name != "tuning"_L1 && name != "test"_L1)
        qFatal("--split takes tuning, test or all");
    return name == "tuning"_L1 ? Split::tuning : Split::test;
}
} // namespace

Options parseOptions(const QStringList& arguments)
{
    const QString here = QCoreApplication::applicationDirPath();
    const QCommandLineOption out(u"out"_s, u"Folder of the pictures."_s, u"folder"_s,
        QDir::cleanPath(here + u"/../../../reading"_s));
    const QCommandLineOption lumenote(
        u"lumenote"_s, u"Program to measure."_s, u"path"_s, builtProgram());
    const QCommandLineOption only(u"only"_s, u"Measure this group only."_s, u"group"_s);
    const QCommandLineOption split(
        u"split"_s, u"Which half: tuning, test or all."_s, u"half"_s, u"test"_s);
    const QCommandLineOption readers(u"readers"_s, u"Readers, with commas between."_s, u"names"_s,
        Readers::allNames().join(u','));
    const QCommandLineOption json(u"json"_s, u"Write the measurements there too."_s, u"file"_s);
    const QCommandLineOption runs(u"runs"_s, u"Runs per timing."_s, u"count"_s, u"5"_s);
    const QCommandLineOption generate(u"generate"_s, u"Draw the pictures, and no more."_s);
    const QCommandLineOption listErrors(
        u"list-errors"_s, u"List what the first reader misreads, and no more."_s);
    const QCommandLineOption accuracy(
        u"accuracy-only"_s, u"Leave out the timings of dense and growing pictures."_s);
    QCommandLineOption doubling(
        u"double"_s, u"Save a doubled picture as the argument."_s, u"picture"_s);
    doubling.setFlags(QCommandLineOption::HiddenFromHelp);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Draws pictures with known text and compares readers."_s);
    parser.addHelpOption();
    parser.addOptions({out, lumenote, only, split, readers, json, runs, generate, listErrors,
        accuracy, doubling});
    parser.process(arguments);
    Options options{
        .folder = parser.value(out),
        .lumenote = parser.value(lumenote),
        .group = parser.value(only),
        .split = splitNamed(parser.value(split)),
        .readers = parser.value(readers).split(u','),
        .jsonFile = parser.value(json),
        .runs = std::max(1, parser.value(runs).toInt()),
        .drawsOnly = parser.isSet(generate),
        .listsErrors = parser.isSet(listErrors),
        .accuracyOnly = parser.isSet(accuracy),
        .doubling = {},
    };
    if (parser.isSet(doubling))
        options.doubling = QStringList{parser.value(doubling)} + parser.positionalArguments();
    for (const QString& reader : std::as_const(options.readers)) {
        if (!Readers::allNames().contains(reader))
            qFatal("There is no reader %s", qPrintable(reader));
    }
    return options;
}

} // namespace Lumenote::Bench
