// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "moodsetcommands.h"
#include "moodsetlibrary.h"
#include "needs.h"
#include "subject.h"
#include "undorecord.h"

namespace {

Outcome undoSet(const MoodsetService& service, const UndoRecord& record)
{
    if (record.file.isEmpty()) {
        return Outcome::failed(Text::tr("nothing was active before"));
    }
    const QString replaced = readActiveMoodset();
    Outcome outcome =
        activate(service, QUrl::fromLocalFile(record.file), record.file, NetworkWait());
    if (!hasFailed(outcome)) {
        outcome.error = UndoRecord{UndoRecord::Kind::Set, replaced, {}}.write();
    }
    return outcome;
}

Outcome undoEdit(const MoodsetService& service, const UndoRecord& record)
{
    MoodsetLibrary library;
    const Moodset moodset = library.moodset(QUrl::fromLocalFile(record.file));
    if (!library.error().isEmpty()) {
        return Outcome::failed(library.error());
    }
    if (!moodset) {
        return Outcome::failed(about(record.file, Text::tr("the moodset has gone")));
    }
    return editMoodset(service, moodset, record.attributes);
}

Outcome run(const Invocation& /*invocation*/)
{
    const UndoRecord record = UndoRecord::read();
    if (record.kind == UndoRecord::Kind::None) {
        return Outcome::failed(Text::tr("there is nothing to undo"));
    }
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    outcome =
        record.kind == UndoRecord::Kind::Set ? undoSet(service, record) : undoEdit(service, record);
    if (!hasFailed(outcome)) {
        outcome.text = Text::tr("Undone: %1").arg(outcome.text);
    }
    return outcome;
}

} // namespace

Command undoCommand()
{
    return {
        "undo",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "undo the last set, edit or favorite"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Restores what the last set, edit or favorite of this tool has replaced. "
            "A second undo reverses the first one."),
        {},
        {},
        {{"undo", QT_TRANSLATE_NOOP("Text", "restore the former moodset or the former values")}},
        run};
}
