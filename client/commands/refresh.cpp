// SPDX-License-Identifier: BSD-3-Clause
#include "idleoutcome.h"
#include "librarycommands.h"
#include "libraryfault.h"
#include "needs.h"

#include <QSet>

namespace {

QSet<qint64> moodsetIds(const LibraryReader& library)
{
    QSet<qint64> ids;
    for (const Moodset& moodset : library.moodsets()) {
        ids.insert(moodset->id);
    }
    return ids;
}

Outcome run(const Invocation& invocation)
{
    MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    const QSet<qint64> before = moodsetIds(library);
    const QString fault = service.refreshMoodsets();
    if (!fault.isEmpty()) {
        return Outcome::failed(fault);
    }
    if (invocation.has("no-wait")) {
        return Outcome::done({}, {{QStringLiteral("waited"), false}});
    }
    outcome = awaitIdle(
        &service, library, QString(), invocation.timeoutMs(0),
        !invocation.quiet && !invocation.json);
    const QSet<qint64> after = moodsetIds(library);
    const int added = (after - before).size();
    const int removed = (before - after).size();
    outcome.result = {
        {QStringLiteral("waited"), true},
        {QStringLiteral("added"), added},
        {QStringLiteral("removed"), removed}};
    outcome.text = Text::tr("%1, %2 new, %3 gone.")
                       .arg(numbered(
                           after.size(), QT_TRANSLATE_NOOP("Text", "%1 moodset"),
                           QT_TRANSLATE_NOOP("Text", "%1 moodsets")))
                       .arg(added)
                       .arg(removed)
        + QLatin1Char('\n');
    return outcome;
}

} // namespace

Command refreshCommand()
{
    return {
        "refresh",
        Command::Group::Bundles,
        QT_TRANSLATE_NOOP("Text", "look for new, changed and removed bundles"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes the daemon look for new, changed and removed bundles in "
            "/usr/share/moodset and /usr/share/sounds, and waits until it has."),
        {},
        {{"timeout", "SECONDS", ValueKind::Seconds,
          QT_TRANSLATE_NOOP("Text", "how long to wait; without a limit if not given")},
         {"no-wait", nullptr, ValueKind::Flag, QT_TRANSLATE_NOOP("Text", "do not wait")}},
        {{"refresh", QT_TRANSLATE_NOOP("Text", "see new bundles at once")}},
        run};
}
