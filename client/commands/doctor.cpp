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
        QT_TRANSLATE_NOOP("Text", "look for what is wrong, and say how to mend it"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Looks at the bus, the daemon, its unit and limits, the database, the folders that it "
            "is stuck with, the key/value store and its defaults, the theme and the wallpapers, "
            "and "
            "says for each what is wrong and which command mends it. The exit status is 1 if there "
            "is a problem.\n"
            "With --rebuild, the edits are saved, the daemon is stopped, a new database is built, "
            "and the edits are put back; the old database is kept. Favourites come back in their "
            "order, but not since when each is one. Where this is cut short, doctor says how to "
            "put the edits back."),
        {},
        {{"rebuild", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "have a new database built, and keep what was edited")}},
        {{"doctor", QT_TRANSLATE_NOOP("Text", "find out why something does not work")},
         {"doctor --rebuild",
          QT_TRANSLATE_NOOP("Text", "mend a library that does not see its pictures")}},
        run};
}
