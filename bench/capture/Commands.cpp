#include "Commands.h"

#include "Stopwatch.h"
#include "reading/CommandRun.h"
#include "reading/Table.h"

#include <QTemporaryDir>

namespace Lumenote::Bench {

namespace {

constexpr int rounds = 7;

struct Command {
    QStringList words;
    QList<double> cpu = {};
    QList<double> wall = {};
};

} // namespace

void measureCommands()
{
    const QTemporaryDir folder;
    const auto file = folder.filePath(QStringLiteral("picture.png"));
    const auto words = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
    QList<Command> commands{{{QStringLiteral(LUMENOTE_PROGRAM), QStringLiteral("--self-test")}},
        {words("maim -g 64x64+0+0") + QStringList{file}}, {words("maim") + QStringList{file}},
        {words("scrot --overwrite") + QStringList{file}},
        {words("import -window root") + QStringList{file}}};
    for (int round = 0; round < rounds; ++round)
        for (auto& command : commands) {
            const auto run = runCommand(command.words);
            require(run.exitCode == 0, "a command failed");
            command.cpu.append(run.cpuSeconds * 1e3);
            command.wall.append(run.wallSeconds * 1e3);
        }
    Table table({QStringLiteral("command, 1920×1080"), QStringLiteral("CPU ms"),
        QStringLiteral("wall ms")});
    for (auto& command : commands) {
        command.words.first() = command.words.constFirst().section(u'/', -1);
        command.words.removeAll(file);
        table.addRow({command.words.join(u' '), Table::number(median(command.cpu), 1),
            Table::number(median(command.wall), 1)});
    }
    print(table.toMarkdown());
}

} // namespace Lumenote::Bench
