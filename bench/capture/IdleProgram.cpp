#include "IdleProgram.h"

#include "WakeUps.h"
#include "reading/Table.h"

#include <QFile>

#include <thread>

namespace Lumenote::Bench {

namespace {

constexpr auto watched = std::chrono::minutes(1);

/// Megabytes that @p file of /proc tells by @p name.
QString megabytes(qint64 processID, const char* file, const QByteArray& name)
{
    QFile facts(QStringLiteral("/proc/%1/%2").arg(processID).arg(QString::fromLatin1(file)));
    require(facts.open(QIODevice::ReadOnly), "a program has ended");
    for (const auto& line : facts.readAll().split('\n'))
        if (line.startsWith(name + ':'))
            return Table::number(line.simplified().split(' ').value(1).toDouble() / 1024, 0);
    return {};
}

} // namespace

IdleProgram::IdleProgram()
    : m_desk("1920x1080x24")
    , m_program(Harness::Desktop(m_desk.environment()).start(LUMENOTE_PROGRAM, {}))
{
    require(m_program->waitForStarted(), "the program can't be started");
    waitUntilQuiet(m_program->processId());
    m_wakeUpsBefore = wakeUps(m_program->processId());
    m_start = Clock::now();
}

void IdleProgram::report() const
{
    std::this_thread::sleep_until(m_start + watched);
    const auto processID = m_program->processId();
    const std::chrono::duration<double> time = Clock::now() - m_start;
    const auto count = wakeUps(processID) - m_wakeUpsBefore;
    Table table({QStringLiteral("the program at rest"), QStringLiteral("figure")});
    table.addRow({QStringLiteral("wake-ups of all threads in %1 s").arg(time.count(), 0, 'f', 0),
        QString::number(count)});
    table.addRow({QStringLiteral("resident memory, MB"), megabytes(processID, "status", "VmRSS")});
    table.addRow({QStringLiteral("of which its own alone, MB"),
        megabytes(processID, "smaps_rollup", "Private_Dirty")});
    print(table.toMarkdown());
}

} // namespace Lumenote::Bench
