// SPDX-License-Identifier: BSD-3-Clause
#include "doctor/checkup.h"
#include "doctor/rebuild.h"
#include "invocation.h"
#include "librarycommands.h"
#include "text.h"

#include <QJsonArray>

#include <algorithm>

namespace {

using State = Checkup::State;

QString stateText(State state)
{
    switch (state) {
    case State::Good:
        return Text::tr("good");
    case State::Advice:
        return Text::tr("advice");
    case State::Problem:
        return Text::tr("PROBLEM");
    case State::Unknown:
        return Text::tr("unknown");
    }
    return {};
}

QString checkupLines(const Checkups& checkups)
{
    constexpr int stateColumns = 10;
    QString lines;
    for (const Checkup& checkup : checkups) {
        lines +=
            stateText(checkup.state).leftJustified(stateColumns) + checkup.text + QLatin1Char('\n');
        if (!checkup.mend.isEmpty()) {
            lines += QString(stateColumns, QLatin1Char(' '))
                + Text::tr("mend it with: %1").arg(checkup.mend) + QLatin1Char('\n');
        }
    }
    return lines;
}

Outcome run(const Invocation& invocation)
{
    if (invocation.has("rebuild")) {
        return rebuildLibrary(!invocation.quiet && !invocation.json);
    }
    Checkups checkups;
    for (const auto& check : {checkDaemon, checkLibrary, checkSystem}) {
        for (const Checkup& checkup : check()) {
            checkups.push_back(checkup);
        }
    }
    QJsonArray records;
    for (const Checkup& checkup : checkups) {
        records.append(checkupRecord(checkup));
    }
    const auto problems =
        std::count_if(checkups.cbegin(), checkups.cend(), [](const Checkup& checkup) {
            return checkup.state == State::Problem;
        });
    Outcome outcome =
        Outcome::done(checkupLines(checkups), {{QStringLiteral("checkups"), records}});
    if (problems > 0) {
        outcome.status = ExitStatus::Failed;
        outcome.error = numbered(
            int(problems), QT_TRANSLATE_NOOP("Text", "%1 problem"),
            QT_TRANSLATE_NOOP("Text", "%1 problems"));
    }
    return outcome;
}

} // namespace

Command doctorCommand()
{
    return {
        "doctor",
        Command::Group::Library,
        QT_TRANSLATE_NOOP("Text", "find problems, and show how to repair them"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Checks the bus, the daemon, its unit and limits, the database, the "
            "folders that it cannot follow any more, the key/value store and its "
            "defaults, the theme and the wallpapers. For each, it shows what is "
            "wrong and which command repairs it. The exit status is 1 if there is a "
            "problem.\n"
            "With --rebuild, it saves the edits, ends the daemon, has a new database "
            "built, and restores the edits. The old database is kept. Favourites "
            "keep their order, but not their times. If a rebuild is interrupted, "
            "doctor shows how to restore the edits."),
        {},
        {{"rebuild", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "build a new database, and keep the edits")}},
        {{"doctor", QT_TRANSLATE_NOOP("Text", "find out why something does not work")},
         {"doctor --rebuild",
          QT_TRANSLATE_NOOP("Text", "repair a library that does not find its pictures")}},
        run};
}
