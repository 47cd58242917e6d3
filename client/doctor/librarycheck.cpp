// SPDX-License-Identifier: BSD-3-Clause
#include "checkup.h"
#include "stuckfolders.h"
#include "unfinishedrebuild.h"

#include "libraryfault.h"
#include "printabletext.h"
#include "text.h"

#include <QLocale>

#include <libraryreader.h>

namespace {

using State = Checkup::State;

const auto Rebuild = QStringLiteral("moodsetctl doctor --rebuild");

Checkup checkSchema(const LibraryReader& library)
{
    const auto id = QStringLiteral("schema");
    const int version = library.schemaVersion();
    if (version == LibraryReader::SchemaVersion) {
        return {id, State::Good, Text::tr("the database is of version %1").arg(version), {}};
    }
    return {
        id, State::Problem,
        Text::tr("the database is of version %1, and not of %2")
            .arg(version)
            .arg(int(LibraryReader::SchemaVersion)),
        Rebuild};
}

Checkup checkPages(const LibraryReader& library)
{
    const auto id = QStringLiteral("database");
    QStringList damages = library.damages();
    if (!library.error().isEmpty()) {
        damages.append(library.error());
    }
    if (damages.isEmpty()) {
        return {id, State::Good, Text::tr("the database is sound"), {}};
    }
    return {
        id, State::Problem,
        Text::tr("the database is damaged: %1").arg(printableText(damages.constFirst())), Rebuild};
}

Checkup checkFolders(const LibraryReader& library)
{
    const auto id = QStringLiteral("folders");
    const StuckFolders stuck = findStuckFolders(library.directories());
    if (!stuck.unscanned.isEmpty()) {
        return {
            id, State::Problem,
            Text::tr("the scan of %1 fails at every start, because %2 was already in the "
                     "database when it was moved there")
                .arg(
                    printableText(stuck.unscanned.constFirst().parent),
                    printableText(stuck.unscanned.constFirst().folder)),
            Rebuild};
    }
    if (!stuck.leftOver.isEmpty()) {
        return {
            id, State::Problem,
            Text::tr("%1 is still in the database from before its parent folder was removed, "
                     "so the daemon does not follow it when that folder comes back")
                .arg(printableText(stuck.leftOver.constFirst())),
            Rebuild};
    }
    return {id, State::Good, Text::tr("all folders can be scanned"), {}};
}

/// There is no result unless a rebuild was interrupted.
Checkups checkRebuild()
{
    const QString edits = UnfinishedRebuild::find();
    if (edits.isEmpty()) {
        return {};
    }
    return {
        {QStringLiteral("rebuild"), State::Problem,
         Text::tr("a rebuild was interrupted, and its saved edits are not restored yet"),
         QStringLiteral("moodsetctl restore %1").arg(edits)}};
}

Checkup checkWaiting(const LibraryReader& library)
{
    const auto id = QStringLiteral("waiting");
    const LibraryReader::Counts counts = library.counts();
    const QLocale locale;
    if (counts.waitingPhotos == 0) {
        return {id, State::Good, Text::tr("no picture waits to be read"), {}};
    }
    return {
        id, State::Advice,
        Text::tr("%1 of %2 pictures wait to be read")
            .arg(locale.toString(counts.waitingPhotos), locale.toString(counts.photos)),
        QStringLiteral("moodsetctl wait")};
}

} // namespace

Checkups checkLibrary()
{
    Checkups checkups = checkRebuild();
    LibraryReader library;
    if (!library.open()) {
        checkups.push_back(
            {QStringLiteral("database"), State::Problem, libraryFault(library),
             QStringLiteral("moodsetctl wait")});
        return checkups;
    }
    const Checkup pages = checkPages(library);
    const Checkup schema = checkSchema(library);
    checkups.push_back(pages);
    checkups.push_back(schema);
    if (pages.state == State::Good && schema.state == State::Good) {
        checkups.push_back(checkFolders(library));
        checkups.push_back(checkWaiting(library));
    }
    return checkups;
}
