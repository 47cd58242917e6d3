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
        QT_TRANSLATE_NOOP("Text", "make a moodset of a picture, and leave the active one"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes a moodset of a picture, and leaves the active one as it is. A "
            "picture on the network is downloaded by the daemon, which is waited for."),
        {{"PICTURE", ValueKind::Picture}},
        networkOptions(),
        {{"create ~/Pictures/sea.jpg",
          QT_TRANSLATE_NOOP("Text", "make a moodset to set or edit later")}},
        run};
}
