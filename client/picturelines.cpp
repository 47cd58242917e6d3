// SPDX-License-Identifier: BSD-3-Clause
#include "picturelines.h"

#include "envelope.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "moodsetservice.h"
#include "output.h"
#include "phototable.h"
#include "photowatch.h"
#include "text.h"
#include "texttable.h"

#include <QDir>
#include <QEventLoop>
#include <QStandardPaths>

namespace {

QString kindText(PhotoChange::Kind kind)
{
    switch (kind) {
    case PhotoChange::Kind::Added:
        return Text::tr("added  ");
    case PhotoChange::Kind::Changed:
        return Text::tr("changed");
    case PhotoChange::Kind::Removed:
        return Text::tr("removed");
    }
    return {};
}

QString kindName(PhotoChange::Kind kind)
{
    switch (kind) {
    case PhotoChange::Kind::Added:
        return QStringLiteral("added");
    case PhotoChange::Kind::Changed:
        return QStringLiteral("changed");
    case PhotoChange::Kind::Removed:
        return QStringLiteral("removed");
    }
    return {};
}

QString changeLine(const PhotoChange& change, const QString& folder)
{
    QString start =
        kindText(change.kind) + QLatin1Char(' ') + displayPath(change.photo.path, folder);
    if (change.kind == PhotoChange::Kind::Removed) {
        return start;
    }
    return QStringLiteral("%1  %2  %3  %4  %5")
        .arg(
            start, displaySize(change.photo), displayTaken(change.photo),
            displayOrientation(change.photo), change.photo.mimeType);
}

QString changeRecord(const Invocation& invocation, const PhotoChange& change)
{
    return jsonLine(
        invocation.command->name,
        Outcome::done(
            {},
            {{QStringLiteral("change"), kindName(change.kind)},
             {QStringLiteral("picture"), JsonRecord::picture(change.photo)}}));
}

} // namespace

QString shownFolder(const Invocation& invocation)
{
    return invocation.has("folder")
        ? QDir(invocation.value("folder")).absolutePath()
        : QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

Outcome printChanges(
    const Invocation& invocation, const MoodsetService& service, const PhotoWatch& watch)
{
    QString fault;
    const QString folder = shownFolder(invocation);
    QEventLoop loop;
    QObject::connect(&watch, &PhotoWatch::changed, &loop, [&](const QVector<PhotoChange>& changes) {
        for (const PhotoChange& change : changes) {
            fault = invocation.json
                ? Output::writeJson(changeRecord(invocation, change))
                : Output::writeText(changeLine(change, folder) + QLatin1Char('\n'));
            if (!fault.isEmpty()) {
                loop.quit();
                return;
            }
        }
    });
    QObject::connect(&service, &MoodsetService::ended, &loop, &QEventLoop::quit);
    loop.exec();
    return Outcome::failed(fault.isEmpty() ? Text::tr("the daemon has ended") : fault);
}
