// SPDX-License-Identifier: BSD-3-Clause
#include "rebuild.h"

#include "doctor/unfinishedrebuild.h"
#include "editsbackup.h"
#include "idleoutcome.h"
#include "jsonrecord.h"
#include "libraryfault.h"
#include "moodsetservice.h"
#include "subject.h"
#include "text.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <csignal>
#include <libraryreader.h>

namespace {

constexpr int EndTimeoutMs = 30000;
constexpr unsigned long PauseMs = 20;

/// Renames the database and its write-ahead log. A running daemon keeps using them. The next daemon
/// finds no database.
QString setAside(QString* kept)
{
    const QString path = LibraryReader::standardPath();
    *kept = path
        + QDateTime::currentDateTime().toString(
            QStringLiteral("'.before-rebuild-'yyyyMMdd-hhmmss-zzz"));
    for (const char* const suffix : {"-shm", "-wal", ""}) {
        const QString from = path + QLatin1String(suffix);
        const QString to = *kept + QLatin1String(suffix);
        if (QFileInfo::exists(from) && !QFile::rename(from, to)) {
            return about(from, Text::tr("cannot be renamed"));
        }
    }
    return {};
}

/// Ends the daemon, which keeps nothing in memory that is worth saving.
QString stop(const MoodsetService& service)
{
    const qint64 processId = service.processId();
    if (processId == 0) {
        return {};
    }
    if (kill(pid_t(processId), SIGTERM) != 0) {
        return Text::tr("the daemon cannot be stopped");
    }
    const QDeadlineTimer deadline(EndTimeoutMs);
    while (service.processId() == processId) {
        if (deadline.hasExpired()) {
            return Text::tr("the daemon does not end");
        }
        QThread::msleep(PauseMs);
    }
    return {};
}

/// Where the edits and the old database are now.
struct Saved
{
    QString backup;
    /// The reason why the edits could not be read. Then they are only in the old database.
    QString unreadable;
    /// The path of the old database. Empty if there was none.
    QString database;
};

/// Saves the edits and renames the database, while no daemon runs. Returns the reason of a failure,
/// after which nothing has changed, or an empty text.
QString saveAndSetAside(Saved* saved)
{
    if (!QFileInfo::exists(LibraryReader::standardPath())) {
        return {};
    }
    const QJsonObject edits = EditsBackup::collect(&saved->unreadable);
    // A lock does not mean that the database is damaged, and it will go.
    if (saved->unreadable.contains(QLatin1String("locked"))) {
        return saved->unreadable;
    }
    if (saved->unreadable.isEmpty()) {
        const QString path = UnfinishedRebuild::newPath();
        QString fault = EditsBackup::save(edits, path);
        if (!fault.isEmpty()) {
            return fault;
        }
        saved->backup = path;
    }
    return setAside(&saved->database);
}

/// Renames the old database and makes the daemon build a new one. The outcome is done() when the
/// daemon is idle.
Outcome buildAnew(Saved* saved, bool showProgress)
{
    const MoodsetService stopped;
    QString fault = stop(stopped);
    if (fault.isEmpty()) {
        fault = saveAndSetAside(saved);
    }
    if (fault.isEmpty()) {
        // Another client may have started the daemon in the meantime, with the old database.
        fault = stop(stopped);
    }
    MoodsetService service;
    const QString startFault = service.start();
    if (!fault.isEmpty()) {
        return Outcome::failed(fault);
    }
    if (!startFault.isEmpty()) {
        return Outcome::failed(startFault, ExitStatus::NoDaemon);
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    return awaitIdle(&service, library, QString(), 0, showProgress);
}

/// Adds the paths of the saved edits and of the old database to the outcome.
Outcome withSaved(Outcome outcome, const Saved& saved)
{
    outcome.result.insert(QStringLiteral("backup"), JsonRecord::text(saved.backup));
    outcome.result.insert(QStringLiteral("oldDatabase"), JsonRecord::text(saved.database));
    if (outcome.status != ExitStatus::Done && !saved.backup.isEmpty()) {
        outcome.error +=
            Text::tr("; the edits are in %1, see moodsetctl restore").arg(saved.backup);
    }
    if (!saved.unreadable.isEmpty() && !saved.database.isEmpty()) {
        const QString text =
            Text::tr("the library was rebuilt without the edits, which could not be read: %1; "
                     "the old database is %2")
                .arg(saved.unreadable, saved.database);
        outcome.error += outcome.error.isEmpty() ? text : QStringLiteral("; ") + text;
        outcome.status = ExitStatus::Failed;
    }
    return outcome;
}

} // namespace

Outcome rebuildLibrary(bool showProgress)
{
    if (!MoodsetService::canBeStarted()) {
        return Outcome::failed(
            Text::tr("the session bus cannot start the daemon, so it is not stopped"),
            ExitStatus::NoDaemon);
    }
    const QString unfinished = UnfinishedRebuild::find();
    if (!unfinished.isEmpty()) {
        return Outcome::failed(
            Text::tr("a rebuild was interrupted; first restore its edits: moodsetctl restore "
                     "%1")
                .arg(unfinished));
    }
    Saved saved;
    Outcome outcome = buildAnew(&saved, showProgress);
    outcome.result = EditsBackup::noneRestored();
    if (outcome.status == ExitStatus::Done && !saved.backup.isEmpty()) {
        bool isTried = false;
        outcome = EditsBackup::restore(MoodsetService(), saved.backup, &isTried);
        if (isTried) {
            saved.backup = UnfinishedRebuild::finish(saved.backup);
        }
    }
    if (outcome.status == ExitStatus::Done && saved.unreadable.isEmpty()) {
        outcome.text = saved.database.isEmpty()
            ? Text::tr("The library was built; there was none before.") + QLatin1Char('\n')
            : Text::tr("The library was rebuilt, and the edits are restored.") + QLatin1Char(' ')
                + outcome.text
                + Text::tr("The old database is %1, the saved edits are %2.")
                      .arg(saved.database, saved.backup)
                + QLatin1Char('\n');
    }
    return withSaved(outcome, saved);
}
