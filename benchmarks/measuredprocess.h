// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <sys/types.h>

using Milliseconds = std::chrono::duration<double, std::milli>;
using SteadyTime = std::chrono::steady_clock::time_point;

/// Memory in KiB, as the kernel counts it.
struct MemoryUse
{
    int peak = 0; ///< VmHWM
    int resident = 0; ///< VmRSS
    int proportional = 0; ///< Pss: shared pages divided among those who share them
};

/// The activity of a process since its start, as far as it costs battery power.
struct Activity
{
    long long ticks = 0; ///< of processor time, 100 in a second
    long long wakeUps = 0; ///< voluntary context switches of all threads
};

/// A program that is measured from outside while it runs. Whatever fails ends this process with a
/// message, since there is nothing to measure then.
class MeasuredProcess
{
public:
    /// Starts a program with this process's environment; `input` goes to its standard input, which
    /// stays open.
    explicit MeasuredProcess(const QByteArrayList& command, const QByteArray& input = {});
    /// Kills the program with SIGKILL if it is still running.
    ~MeasuredProcess();

    MeasuredProcess(MeasuredProcess&& other) noexcept;
    MeasuredProcess(const MeasuredProcess&) = delete;
    MeasuredProcess& operator=(const MeasuredProcess&) = delete;

    pid_t id() const { return m_id; }
    SteadyTime startTime() const { return m_start; }

    /// Writes to the program's standard input.
    void write(const QByteArray& input);
    /// Waits for a line on the program's standard error that begins with `start`, and gives the
    /// rest of it.
    QByteArray waitForLine(const QByteArray& start);

    /// Processor time of all threads so far.
    Milliseconds processorTime() const;
    MemoryUse memory() const;
    Activity activity() const;

    /// Ends the program with a signal, and waits for its end.
    void stop(int signal);

private:
    QByteArray readLine();

    pid_t m_id = -1;
    int m_input = -1;
    int m_output = -1;
    QByteArray m_unread;
    SteadyTime m_start;
};

/// Runs a program to its end with its output thrown away.
struct FinishedRun
{
    Milliseconds wall;
    Milliseconds processor;
};
FinishedRun runToEnd(const QByteArrayList& command);

/// Ends this process with a message.
[[noreturn]] void giveUp(const QByteArray& message);
