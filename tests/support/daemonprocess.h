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
/// "fatal". Lines of warning level and worse that no one has taken when the object goes fail the
/// test. A daemon that still runs then is killed.
///
/// The daemon finds a phone that wears no cover, unless the test plays the back-cover daemon itself
/// and has it appear before it makes this object.
///
/// The functions that wait turn the event loop, and return false after the deadline. Its length
/// makes no difference to a test that passes.
class DaemonProcess
{
public:
    static constexpr int deadlineMs = 30000;

    /// A daemon that is not started yet. executable is for the tests of this class.
    explicit DaemonProcess(const QString& executable = QString());
    ~DaemonProcess();
    Q_DISABLE_COPY_MOVE(DaemonProcess)

    /// Makes folder, which need not exist, the user's pictures folder. This holds for all
    /// processes that have this one's XDG_CONFIG_HOME, and must come before start(). Returns false
    /// if that folder cannot be written.
    Q_REQUIRED_RESULT static bool setPicturesFolder(const QString& folder);

    /// Sets a variable of the daemon's environment, which is otherwise that of the test.
    void setEnvironment(const QString& name, const QString& value);

    /// Starts the process, and does not wait for its bus name. An earlier one must have ended.
    bool start();
    qint64 processId() const;
    bool isRunning() const;

    /// Waits until this process owns the daemon's bus name, and its object, which comes a moment
    /// later, answers calls.
    bool waitForName();

    /// Waits until the log has a line with the text text, which can be a part of the line.
    bool waitForLine(const QString& text);

    /// Waits until the daemon has said that file indexing is idle once more than it had at the end
    /// of the last call. Not every change makes it say so: a file that is entered by hand, in a
    /// folder that is watched, starts no work.
    bool waitForIdle();

    /// Waits for the end of the process, by itself.
    bool waitForEnd();

    /// Stops all threads of the process until resume(), so that what happens meanwhile meets it
    /// all at once. Returns false after the deadline, or if it does not run.
    bool pause();
    void resume();

    /// Ends the process with SIGTERM, and waits for its end.
    bool terminate();

    /// Ends the process with SIGKILL, and waits for its end.
    bool kill();

    /// How the process has ended. The code of a process that a signal ended is the signal's.
    QProcess::ExitStatus exitStatus() const;
    int exitCode() const;

    /// All log lines so far. They survive the process, and a further start().
    QStringList lines() const;

    /// Takes the texts, without type, of the lines of warning level and worse so far. What the
    /// daemon has logged before its last reply on the bus is among them.
    QStringList takeWarnings();

private:
    bool waitFor(const std::function<bool()>& condition);
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
