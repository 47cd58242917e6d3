// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"
#include "daemonprocess.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "librarycommands.h"
#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "printabletext.h"
#include "subject.h"
#include "text.h"
#include "texttable.h"
#include "theme.h"

#include <QFileInfo>
#include <QLocale>

#include <libraryreader.h>

namespace {

/// The state to report, read once.
struct Status
{
    Theme theme;
    Moodset active;
    DaemonState daemon;
    LibraryReader::Counts counts;
    /// The size in bytes, with the write-ahead log. -1 if there is no database.
    qint64 databaseSize = -1;
};

Status readStatus()
{
    Status status;
    status.theme = Theme::read();
    status.daemon = DaemonState::read(MoodsetService().processId());
    LibraryReader library;
    if (!library.open()) {
        return status;
    }
    status.counts = library.counts();
    const QString path = LibraryReader::standardPath();
    status.databaseSize = QFileInfo(path).size() + QFileInfo(path + QStringLiteral("-wal")).size();
    if (!status.theme.activeMoodset.isEmpty()) {
        status.active = MoodsetLibrary().moodset(QUrl::fromLocalFile(status.theme.activeMoodset));
    }
    return status;
}

QString activeText(const Status& status)
{
    if (status.theme.activeMoodset.isEmpty()) {
        return Text::tr("none");
    }
    const QString name = status.active ? calledName(*status.active)
                                       : QFileInfo(status.theme.activeMoodset).completeBaseName();
    const ColorStyle style = standardOutputColorStyle();
    QStringList parts;
    for (const QColor& color :
         {status.theme.primary, status.theme.secondary, status.theme.highlight,
          status.theme.secondaryHighlight}) {
        parts.append(displayColor(JsonRecord::colorText(color), style));
    }
    parts.append(printableText(name));
    return parts.join(QLatin1Char(' '));
}

QString daemonText(const DaemonState& daemon)
{
    if (daemon.processId == 0) {
        return MoodsetService::canBeStarted() ? Text::tr("not running; it starts when it is needed")
                                              : Text::tr("not running");
    }
    const QString version =
        daemon.version.isEmpty() ? Text::tr("of unknown version") : daemon.version;
    return Text::tr("running, %1, process %2").arg(version).arg(daemon.processId);
}

QString waitingText(const LibraryReader::Counts& counts)
{
    if (counts.waitingPhotos == 0 && counts.waitingMoodsets == 0) {
        return Text::tr("nothing");
    }
    return numbered(
               counts.waitingPhotos, QT_TRANSLATE_NOOP("Text", "%1 picture"),
               QT_TRANSLATE_NOOP("Text", "%1 pictures"))
        + QStringLiteral(", ")
        + numbered(
               counts.waitingMoodsets, QT_TRANSLATE_NOOP("Text", "%1 file of bundles"),
               QT_TRANSLATE_NOOP("Text", "%1 files of bundles"));
}

QString libraryText(const LibraryReader::Counts& counts)
{
    return QStringList{
        numbered(
            counts.photos, QT_TRANSLATE_NOOP("Text", "%1 picture"),
            QT_TRANSLATE_NOOP("Text", "%1 pictures")),
        numbered(
            counts.folders, QT_TRANSLATE_NOOP("Text", "%1 folder"),
            QT_TRANSLATE_NOOP("Text", "%1 folders")),
        numbered(
            counts.moodsets, QT_TRANSLATE_NOOP("Text", "%1 moodset"),
            QT_TRANSLATE_NOOP("Text", "%1 moodsets")),
        numbered(
            counts.favorites, QT_TRANSLATE_NOOP("Text", "%1 favourite"),
            QT_TRANSLATE_NOOP("Text", "%1 favourites"))}
        .join(QStringLiteral(", "));
}

QString statusText(const Status& status)
{
    QVector<QStringList> lines{
        {Text::tr("Active"), activeText(status)}, {Text::tr("Daemon"), daemonText(status.daemon)}};
    if (status.databaseSize < 0) {
        lines.append({Text::tr("Library"), Text::tr("none yet")});
        return textTable(lines);
    }
    lines.append({Text::tr("Library"), libraryText(status.counts)});
    lines.append({Text::tr("Waiting"), waitingText(status.counts)});
    lines.append({Text::tr("Database"), QLocale().formattedDataSize(status.databaseSize, 1)});
    if (status.daemon.watches >= 0) {
        lines.append(
            {Text::tr("Followed folders"),
             Text::tr("%1 of %2 that the system allows")
                 .arg(
                     QLocale().toString(status.daemon.watches), QLocale().toString(watchLimit()))});
    }
    return textTable(lines);
}

QJsonObject daemonRecord(const DaemonState& daemon)
{
    return {
        {QStringLiteral("running"), daemon.processId != 0},
        {QStringLiteral("canBeStarted"), MoodsetService::canBeStarted()},
        {QStringLiteral("processId"),
         daemon.processId == 0 ? QJsonValue() : QJsonValue(daemon.processId)},
        {QStringLiteral("version"), JsonRecord::text(daemon.version)},
        {QStringLiteral("outdated"), daemon.isOutdated},
        {QStringLiteral("watches"), daemon.watches < 0 ? QJsonValue() : QJsonValue(daemon.watches)},
        {QStringLiteral("watchLimit"), watchLimit()}};
}

Outcome run(const Invocation& /*invocation*/)
{
    const Status status = readStatus();
    return Outcome::done(
        statusText(status),
        {{QStringLiteral("theme"), JsonRecord::theme(status.theme)},
         {QStringLiteral("active"),
          status.active
              ? QJsonValue(JsonRecord::wholeMoodset(*status.active, status.theme.activeMoodset))
              : QJsonValue()},
         {QStringLiteral("daemon"), daemonRecord(status.daemon)},
         {QStringLiteral("counts"), JsonRecord::counts(status.counts)},
         {QStringLiteral("databaseSize"),
          status.databaseSize < 0 ? QJsonValue() : QJsonValue(status.databaseSize)}});
}

} // namespace

Command statusCommand()
{
    return {
        "status",
        Command::Group::Overview,
        QT_TRANSLATE_NOOP(
            "Text", "show the active moodset, the daemon and the library at a glance"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints the active moodset with its colours, the daemon and its version, "
            "the number of records in the library, the files that wait to be read, "
            "the size of the database, and how many folders the daemon follows and "
            "may follow. The daemon need not run."),
        {},
        {},
        {{"status", QT_TRANSLATE_NOOP("Text", "see the present state")}},
        run};
}
