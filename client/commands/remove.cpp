// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "moodsetlibrary.h"
#include "needs.h"
#include "printabletext.h"
#include "subject.h"

namespace {

Outcome run(const Invocation& invocation)
{
    const QString subject = invocation.argument();
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    const Found<Moodset> moodset = namedMoodset(subject);
    if (!moodset.value) {
        return Outcome::failed(about(subject, moodset.fault));
    }
    const QString fault = service.removeMoodset(moodset.value->id);
    if (!fault.isEmpty()) {
        return Outcome::failed(about(subject, fault));
    }
    MoodsetLibrary library;
    if (library.moodset(moodset.value->id)) {
        return Outcome::failed(about(subject, Text::tr("the daemon has not removed it")));
    }
    return Outcome::done(
        Text::tr("%1 is removed.").arg(printableText(calledName(*moodset.value)))
            + QLatin1Char('\n'),
        {{QStringLiteral("moodset"),
          JsonRecord::wholeMoodset(*moodset.value, readActiveMoodset())}});
}

} // namespace

Command removeCommand()
{
    return {
        "remove",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "remove a moodset from the library, but not its file"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Removes a moodset from the library, with its edits. Its file stays, and "
            "when the file changes, the moodset comes back. The moodset of a picture "
            "can be made again with create. The theme stays as it is."),
        {{"MOODSET", ValueKind::MoodsetName}},
        {},
        {{"remove \"Coast light\"", QT_TRANSLATE_NOOP("Text", "remove it from the table")}},
        run};
}
