// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "moodsetcommands.h"
#include "needs.h"
#include "subject.h"
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
    const QString before = readActiveMoodset();
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
        QT_TRANSLATE_NOOP("Text", "apply a moodset, or make one from a picture and apply it"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Applies a moodset to the system: its wallpapers, colours, ringer volume "
            "and tones. From a picture, the daemon first makes a moodset. If the "
            "picture is on the network, the command waits until the daemon has "
            "downloaded it. undo applies the former moodset again."),
        {{"SOURCE", ValueKind::Source}},
        networkOptions(),
        {{"set \"Coast light\"", QT_TRANSLATE_NOOP("Text", "apply the moodset with this name")},
         {"set ~/Pictures/sea.jpg",
          QT_TRANSLATE_NOOP("Text", "make a moodset from a picture, and apply it")},
         {"set --timeout 20 https://example.org/sea.jpg",
          QT_TRANSLATE_NOOP(
              "Text", "the same with a picture on the network, for 20 seconds at most")}},
        run};
}
