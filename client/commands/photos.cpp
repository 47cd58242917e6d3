// SPDX-License-Identifier: BSD-3-Clause
#include "envelope.h"
#include "jsonrecord.h"
#include "librarycommands.h"
#include "libraryfault.h"
#include "needs.h"
#include "output.h"
#include "phototable.h"
#include "photowatch.h"
#include "picturelines.h"
#include "terminal.h"

#include <QJsonArray>

namespace {

QJsonArray records(const QVector<LibraryFile>& photos)
{
    QJsonArray records;
    for (const LibraryFile& photo : photos) {
        records.append(JsonRecord::picture(photo));
    }
    return records;
}

Outcome listing(
    const Invocation& invocation, const LibraryReader& library, const QVector<LibraryFile>& photos)
{
    const LibraryReader::Counts counts = library.counts();
    if (!library.error().isEmpty()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    if (invocation.json) {
        return Outcome::done(
            {},
            {{QStringLiteral("pictures"), records(photos)},
             {QStringLiteral("counts"), JsonRecord::counts(counts)}});
    }
    return Outcome::done(
        photoTable(photos, shownFolder(invocation), Terminal::outputColumns())
            + summaryLine(counts, photos) + QLatin1Char('\n'),
        {});
}

/// Prints the listing, and then what changes.
Outcome follow(
    const Invocation& invocation, const MoodsetService& service, const LibraryReader& library)
{
    const PhotoWatch watch(service, library);
    Outcome table = listing(invocation, library, watch.photos());
    if (hasFailed(table)) {
        return table;
    }
    const QString fault = invocation.json
        ? Output::writeJson(jsonLine(invocation.command->name, table))
        : Output::writeText(table.text);
    if (!fault.isEmpty()) {
        return Outcome::failed(fault);
    }
    return printChanges(invocation, service, watch);
}

Outcome run(const Invocation& invocation)
{
    const MoodsetService service;
    if (invocation.has("watch")) {
        Outcome outcome = needDaemon(service);
        if (hasFailed(outcome)) {
            return outcome;
        }
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    return invocation.has("watch") ? follow(invocation, service, library)
                                   : listing(invocation, library, library.photos());
}

} // namespace

Command photosCommand()
{
    return {
        "photos",
        Command::Group::Pictures,
        QT_TRANSLATE_NOOP("Text", "show a table of all pictures"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints a table of all pictures, and below it the number of files, "
            "pictures and folders in the database. The daemon need not run, unless "
            "--watch is given."),
        {},
        {{"folder", "DIR", ValueKind::Folder,
          QT_TRANSLATE_NOOP(
              "Text",
              "show paths relative to DIR; relative to the user's pictures folder if "
              "not given")},
         {"watch", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "then show changes, as watch does")}},
        {{"photos", QT_TRANSLATE_NOOP("Text", "see which pictures the library holds")}},
        run};
}
