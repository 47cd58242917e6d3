// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <libraryreader.h>

#include <QFile>
#include <QObject>
#include <QTimer>

class MoodsetService;

/// Waits until the daemon has no indexing left to do.
///
/// The bus does not say so, hence two ways to know. Both ask, in the first place, that no picture
/// waits for its data to be read.
///
/// With the daemon's log, it is exact: the daemon writes a line when its indexing of files runs
/// dry, and one when that of packages does.
///
/// Without, it is a judgement. While there is work, the daemon does a step of it between any two
/// calls that it answers, and nearly all steps write to the database. So after ten calls, a tenth
/// of a second apart, between which the database has not changed, it counts as idle. A restart that
/// finds all as it was, and so writes nothing, can count as idle too early.
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
