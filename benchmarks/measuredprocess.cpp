// SPDX-License-Identifier: BSD-3-Clause
#include "measuredprocess.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

/// This is far longer than any step takes. A program that needs longer hangs.
constexpr int LineTimeout = 300000; // milliseconds

void check(int result, const char* what)
{
    if (result < 0) {
        giveUp(QByteArray(what) + ": " + QByteArray(std::strerror(errno)));
    }
}

struct Pipe
{
    Pipe() { check(pipe2(ends.data(), O_CLOEXEC), "pipe2"); }

    /// To read from, and to write to.
    std::array<int, 2> ends{-1, -1};
};

pid_t spawn(const QByteArrayList& command, const posix_spawn_file_actions_t& actions)
{
    std::vector<char*> arguments;
    for (const QByteArray& argument : command) {
        arguments.push_back(const_cast<char*>(argument.constData()));
    }
    arguments.push_back(nullptr);
    pid_t id = -1;
    const int error =
        posix_spawnp(&id, arguments.front(), &actions, nullptr, arguments.data(), environ);
    if (error != 0) {
        giveUp(command.first() + ": " + QByteArray(std::strerror(error)));
    }
    return id;
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        giveUp("cannot read " + QFile::encodeName(path));
    }
    return file.readAll();
}

/// The number after `name` in a file of /proc with a name and a number in each line.
long long numberIn(const QString& path, const QByteArray& name)
{
    const QByteArrayList lines = readAll(path).split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':')) {
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong();
        }
    }
    giveUp("no " + name + " in " + QFile::encodeName(path));
}

Milliseconds duration(const timeval& time)
{
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

} // namespace

void giveUp(const QByteArray& message)
{
    std::cerr << "benchmark: " << message.constData() << '\n';
    std::exit(EXIT_FAILURE);
}

MeasuredProcess::MeasuredProcess(const QByteArrayList& command, const QByteArray& input)
{
    const Pipe inputPipe;
    const Pipe outputPipe;
    m_input = inputPipe.ends[1];
    m_output = outputPipe.ends[0];
    write(input);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, inputPipe.ends[0], STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, outputPipe.ends[1], STDERR_FILENO);
    m_start = std::chrono::steady_clock::now();
    m_id = spawn(command, actions);
    posix_spawn_file_actions_destroy(&actions);
    close(inputPipe.ends[0]);
    close(outputPipe.ends[1]);
}

MeasuredProcess::MeasuredProcess(MeasuredProcess&& other) noexcept
    : m_id(std::exchange(other.m_id, -1))
    , m_input(std::exchange(other.m_input, -1))
    , m_output(std::exchange(other.m_output, -1))
    , m_unread(std::move(other.m_unread))
    , m_start(other.m_start)
{
}

MeasuredProcess::~MeasuredProcess()
{
    if (m_id > 0) {
        stop(SIGKILL);
    }
    if (m_input >= 0) {
        close(m_input);
        close(m_output);
    }
}

void MeasuredProcess::write(const QByteArray& input)
{
    const auto length = size_t(input.size());
    check(int(::write(m_input, input.constData(), length)), "write");
}

QByteArray MeasuredProcess::waitForLine(const QByteArray& start)
{
    while (true) {
        const QByteArray line = readLine();
        if (line.startsWith(start)) {
            return line.mid(start.size());
        }
    }
}

QByteArray MeasuredProcess::readLine()
{
    while (!m_unread.contains('\n')) {
        pollfd output{m_output, POLLIN, 0};
        std::array<char, 4096> buffer;
        const bool isReady = poll(&output, 1, LineTimeout) > 0;
        const ssize_t length = isReady ? read(m_output, buffer.data(), buffer.size()) : 0;
        if (length <= 0) {
            giveUp("a measured program ended or hangs; its last words: " + m_unread);
        }
        m_unread.append(buffer.data(), int(length));
    }
    const int end = m_unread.indexOf('\n');
    QByteArray line = m_unread.left(end);
    m_unread.remove(0, end + 1);
    return line;
}

Milliseconds MeasuredProcess::processorTime() const
{
    clockid_t clock;
    timespec time;
    if (clock_getcpuclockid(m_id, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        giveUp("cannot read a process's clock");
    }
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

MemoryUse MeasuredProcess::memory() const
{
    const QString folder = QStringLiteral("/proc/%1/").arg(m_id);
    const auto number = [&folder](const char* file, const char* name) {
        return int(numberIn(folder + QLatin1String(file), name));
    };
    return {number("status", "VmHWM"), number("status", "VmRSS"), number("smaps_rollup", "Pss")};
}

Activity MeasuredProcess::activity() const
{
    // The indexes of the fields after the program's name, in the order of proc(5). The name may
    // contain anything.
    constexpr int userTime = 11;
    constexpr int systemTime = 12;
    const QString folder = QStringLiteral("/proc/%1/").arg(m_id);
    const QByteArray status = readAll(folder + QStringLiteral("stat"));
    const QByteArrayList fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    Activity activity;
    activity.ticks = fields.at(userTime).toLongLong() + fields.at(systemTime).toLongLong();
    const QDir tasks(folder + QStringLiteral("task"));
    const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& thread : threads) {
        activity.wakeUps +=
            numberIn(tasks.filePath(thread) + QStringLiteral("/status"), "voluntary_ctxt_switches");
    }
    return activity;
}

void MeasuredProcess::stop(int signal)
{
    kill(m_id, signal);
    check(waitpid(m_id, nullptr, 0), "waitpid");
    m_id = -1;
}

FinishedRun runToEnd(const QByteArrayList& command)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    const pid_t id = spawn(command, actions);
    int status = 0;
    rusage usage;
    check(wait4(id, &status, 0, &usage), "wait4");
    const Milliseconds wall = std::chrono::steady_clock::now() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        giveUp(command.first() + " failed");
    }
    return {wall, duration(usage.ru_utime) + duration(usage.ru_stime)};
}
