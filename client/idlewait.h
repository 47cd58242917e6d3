// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <libraryreader.h>

#include <QFile>
#include <QObject>
#include <QTimer>

class MoodsetService;

/// Waits until the daemon has no indexing left to do.
///
/// No bus method tells this, so there are two ways to find out. Both need a database in which no
/// picture waits to be read.
///
/// If the daemon's log is given, the result is exact: the daemon logs a line when it has indexed
/// all files, and another one when it has read all packages.
///
/// Without the log, the result is an estimate. While there is work, the daemon does one step of it
/// between two calls that it answers, and nearly every step writes to the database. This class
/// makes a call every tenth of a second. When the database has not changed during ten calls, the
/// daemon counts as idle. After a restart that finds no changes and writes nothing, this can be too
/// early.
class IdleWait : public QObject
{
    Q_OBJECT

public:
    IdleWait(MoodsetService& service, const LibraryReader& library, QObject* parent = nullptr);

    /// Reads the daemon's log from path. Returns false if it cannot be opened.
    bool setLog(const QString& path);

    void start();

Q_SIGNALS:
    /// The progress of the work, emitted about ten times a second.
    void progress(const LibraryReader::Counts& counts);

    /// The daemon has become idle; emitted once.
    void idle();

private:
    void look();
    bool isIdle(const LibraryReader::Counts& counts);
    bool logSaysIdle();

    MoodsetService& m_service;
    const LibraryReader& m_library;
    QFile m_log;
    bool m_filesIdleInLog = false;
    bool m_packagesIdleInLog = false;
    int m_lastDataVersion = -1;
    int m_quietLooks = 0;
    QTimer m_pause;
};
