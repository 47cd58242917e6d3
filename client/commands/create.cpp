// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetcommands.h"
#include "needs.h"
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
    const Found<QUrl> picture = namedPicture(subject);
    if (!picture.fault.isEmpty()) {
        return Outcome::failed(about(subject, picture.fault));
    }
    return createMoodset(service, picture.value, subject, networkWait(invocation));
}

} // namespace

Command createCommand()
{
    return {
        "create",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "make a moodset from a picture, but do not apply it"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes a moodset from a picture, and does not apply it. If the picture "
            "is on the network, the command waits until the daemon has downloaded it."),
        {{"PICTURE", ValueKind::Picture}},
        networkOptions(),
        {{"create ~/Pictures/sea.jpg",
          QT_TRANSLATE_NOOP("Text", "make a moodset that you apply or edit later")}},
        run};
}
