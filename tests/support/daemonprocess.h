// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class PlayedBackCover;

/// Runs the real daemon for a system test, and reads its log.
///
///     DaemonProcess daemon;
///     daemon.setPicturesFolder(folder.path());
///     QVERIFY(daemon.start());
///     QVERIFY(daemon.waitForIdle());
///     ...
///     QVERIFY(daemon.terminate());
///     QCOMPARE(daemon.takeWarnings(), QStringList());
///
/// Log lines have the form "type: text", with the type "debug", "info", "warning", "critical" or
/// "fatal". When the object is destroyed, warnings and worse that were not taken fail the test, and
/// a running daemon is killed.
///
/// The daemon finds a phone without a back cover. If a test plays the back-cover daemon itself, it
/// must take its bus name before it makes this object.
///
/// The functions that wait run the event loop. They return false at the deadline, or as soon as the
/// process has ended if the condition needs it.
class DaemonProcess
{
public:
    /// How long to wait for a condition, in milliseconds. It does not change how long a passing
    /// test takes. After a test with a daemon has failed, it becomes short, so that other tests
    /// with the same fault fail soon.
    static inline int deadlineMs = 20000;

    /// A daemon that is not started yet. Only the tests of this class set `executable`.
    explicit DaemonProcess(const QString& executable = QString());
    ~DaemonProcess();
    Q_DISABLE_COPY_MOVE(DaemonProcess)

    /// Makes `folder`, which need not exist, the user's pictures folder, for all processes with
    /// this process's XDG_CONFIG_HOME. Call it before start(). Returns false if the configuration
    /// cannot be written.
    Q_REQUIRED_RESULT static bool setPicturesFolder(const QString& folder);

    /// Sets a variable of the daemon's environment. All other variables are those of the test.
    void setEnvironment(const QString& name, const QString& value);

    /// Limits the daemon's address space. Call it before start(). Does not work under the address
    /// sanitizer, which reserves terabytes of addresses.
    void limitAddressSpace(qint64 bytes);

    /// Limits the number of the daemon's open files. Call it before start().
    void limitDescriptors(int count);
    /// Makes the kernel kill the daemon with SIGXFSZ at the first write that would make a file
    /// larger than `bytes`. Call it before start().
    void limitFileSize(qint64 bytes);

    /// Starts the process without waiting for its bus name. An earlier process must have ended.
    bool start();
    qint64 processId() const;
    bool isRunning() const;

    /// Waits until this process owns the daemon's bus name and its object answers calls. The object
    /// appears shortly after the name.
    bool waitForName();

    /// Waits until a line of the log contains `text`.
    bool waitForLine(const QString& text);

    /// Waits until the daemon has logged once more than at the end of the last call that file
    /// indexing is idle. Not every change causes this line: a file that is registered by hand, in a
    /// watched directory, causes no indexing.
    bool waitForIdle();

    /// Waits until the process ends without a signal from the test.
    bool waitForEnd();

    /// Stops all threads of the process until resume(), so that all changes in between reach it at
    /// once. Returns false at the deadline, or if the process is not running.
    bool pause();
    void resume();

    /// Whether the main thread is waiting for another thread.
    bool isWaitingForAThread() const;

    /// Ends the process with SIGTERM, and waits for its end.
    bool terminate();

    /// Ends the process with SIGKILL, and waits for its end.
    bool kill();

    /// How the process has ended. If a signal has ended it, the exit code is the number of the
    /// signal.
    QProcess::ExitStatus exitStatus() const;
    int exitCode() const;

    /// All log lines so far. They stay after the end of the process and after another start().
    QStringList lines() const;

    /// Takes the texts, without the type, of all warnings and worse so far. Everything that the
    /// daemon has logged before its last reply on the bus is included.
    QStringList takeWarnings();

private:
    bool waitFor(const std::function<bool()>& condition);
    void limit(const QStringList& limits);
    bool waitWhileRunning(const std::function<bool()>& condition);
    bool ownsName() const;
    bool isPaused() const;
    bool objectAnswers() const;
    void readLog();

    std::shared_ptr<PlayedBackCover> m_backCover;
    QProcess m_process;
    QByteArray m_unfinishedLine;
    QStringList m_lines;
    int m_linesSearchedForWarnings = 0;
    int m_linesSearchedForIdle = 0;
};
