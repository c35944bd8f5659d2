#include "CommandRun.h"

#include <QList>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Lumenote::Bench {

namespace {
/// The pointers that the system wants, into bytes that live as long as this object.
class CharacterLists {
public:
    void append(const QByteArray& text) { m_texts.append(text); }

    char* const* pointers()
    {
        m_pointers.clear();
        for (QByteArray& text : m_texts)
            m_pointers.append(text.data());
        m_pointers.append(nullptr);
        return m_pointers.constData();
    }

private:
    QList<QByteArray> m_texts;
    QList<char*> m_pointers;
};

double seconds(const timeval& time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

QByteArray readAll(int descriptor)
{
    QByteArray all;
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = read(descriptor, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return all;
        all.append(buffer.data(), count);
    }
}
} // namespace

CommandRun runCommand(const QStringList& command, const QStringList& environment)
{
    CharacterLists arguments;
    for (const QString& argument : command)
        arguments.append(argument.toLocal8Bit());
    CharacterLists variables;
    for (const QString& variable : environment)
        variables.append(variable.toLocal8Bit());
    for (char** variable = environ; *variable; ++variable)
        variables.append(QByteArray(*variable));

    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        qFatal("No pipe: %s", std::strerror(errno));
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments.pointers()[0], &actions, nullptr,
        arguments.pointers(), variables.pointers());
    posix_spawn_file_actions_destroy(&actions);
    close(output[1]);
    if (error != 0)
        qFatal("Cannot run %s: %s", qPrintable(command.first()), std::strerror(error));

    CommandRun run;
    run.output = readAll(output[0]);
    close(output[0]);
    int status = 0;
    rusage usage{};
    while (wait4(child, &status, 0, &usage) < 0 && errno == EINTR) { }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.wallSeconds = wall.count();
    run.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    run.peakMegabytes = double(usage.ru_maxrss) / 1024;
    return run;
}

} // namespace Lumenote::Bench
