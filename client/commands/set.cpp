// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetcommands.h"
#include "needs.h"
#include "subject.h"
#include "theme.h"
#include "undorecord.h"

namespace {

Outcome run(const Invocation& invocation)
{
    const QString subject = invocation.argument();
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    const Found<QUrl> source = namedSource(subject);
    if (!source.fault.isEmpty()) {
        return Outcome::failed(about(subject, source.fault));
    }
    const QString before = Theme::readActiveMoodset();
    outcome = activate(service, source.value, subject, networkWait(invocation));
    if (hasFailed(outcome)) {
        return outcome;
    }
    outcome.error = UndoRecord{UndoRecord::Kind::Set, before, {}}.write();
    return outcome;
}

} // namespace

Command setCommand()
{
    return {
        "set",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "make a moodset active; of a picture, one is made first"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes a moodset the look of the system: its wallpapers, colours, ringer volume and "
            "tones. Of a picture, a moodset is made first. A picture on the network is downloaded "
            "by the daemon, which is waited for. undo brings back what was active before."),
        {{"SOURCE", ValueKind::Source}},
        networkOptions(),
        {{"set \"Coast light\"", QT_TRANSLATE_NOOP("Text", "make the moodset of that name active")},
         {"set ~/Pictures/sea.jpg",
          QT_TRANSLATE_NOOP("Text", "make a picture the look of the system")},
         {"set --timeout 20 https://example.org/sea.jpg",
          QT_TRANSLATE_NOOP(
              "Text", "the same with a picture on the network, for 20 seconds at most")}},
        run};
}
