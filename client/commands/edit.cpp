// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "moodsetedit.h"
#include "moodsetlibrary.h"
#include "needs.h"
#include "printabletext.h"
#include "subject.h"
#include "theme.h"
#include "undorecord.h"

#include <moodsetattributes.h>

namespace {

/// Whether the theme has other colours than the active moodset has now. The daemon does not know
/// that a moodset is active if its picture came from the network.
bool isThemeBehind(const MoodsetData& moodset)
{
    const Theme theme = Theme::read();
    return theme.activeMoodset == moodset.url.toLocalFile()
        && (theme.highlight != moodset.highlightColor || theme.primary != moodset.primaryColor
            || theme.secondary != moodset.secondaryColor
            || theme.secondaryHighlight != moodset.secondaryHighlightColor);
}

Outcome run(const Invocation& invocation)
{
    const QString subject = invocation.argument();
    QVariantMap attributes;
    for (const QString& edit : invocation.arguments.mid(1)) {
        const QString fault = MoodsetEdit::add(&attributes, edit);
        if (!fault.isEmpty()) {
            return Outcome::failed(fault, ExitStatus::Usage);
        }
    }
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    if (hasFailed(outcome)) {
        return outcome;
    }
    const Found<Moodset> moodset = namedMoodset(subject);
    if (!moodset.value) {
        return Outcome::failed(about(subject, moodset.fault));
    }
    return editMoodset(service, moodset.value, attributes);
}

} // namespace

Outcome editMoodset(
    const MoodsetService& service, const Moodset& moodset, const QVariantMap& attributes)
{
    const QString subject = calledName(*moodset);
    const QVariantMap before = MoodsetAttributes::current(*moodset, attributes);
    const QString fault = MoodsetEdit::save(service, moodset->id, attributes);
    if (!fault.isEmpty()) {
        return Outcome::failed(about(subject, fault));
    }
    const Moodset now = MoodsetLibrary().moodset(moodset->id);
    if (!now) {
        return Outcome::failed(about(subject, Text::tr("the moodset has gone")));
    }
    QString text = Text::tr("%1 is changed.").arg(printableText(calledName(*now)));
    if (isThemeBehind(*now)) {
        text +=
            QLatin1Char(' ') + Text::tr("The theme follows with: moodsetctl set %1").arg(now->id);
    }
    Outcome outcome = Outcome::done(
        text + QLatin1Char('\n'),
        {{QStringLiteral("moodset"), JsonRecord::wholeMoodset(*now, readActiveMoodset())}});
    outcome.error = UndoRecord{UndoRecord::Kind::Edit, moodset->url.toLocalFile(), before}.write();
    return outcome;
}

Command editCommand()
{
    return {
        "edit",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "change a moodset's name, colours, volume and tones"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Changes a moodset, and also the theme if the moodset is active. All "
            "values are checked before the first one is sent. The keys are:\n"
            "name=TEXT, favorite=on|off, volume=0...100;\n"
            "highlight, secondaryHighlight, primary, secondary, each with a colour "
            "as #rrggbb, #aarrggbb or an SVG name;\n"
            "ringerTone, messageTone, mailTone, internetCallTone, chatTone, "
            "calendarTone, clockAlarmTone, each with on, off, none or a sound file.\n"
            "undo restores the former values."),
        {{"MOODSET", ValueKind::MoodsetName}, {"KEY=VALUE", ValueKind::Edit, true, true}},
        {},
        {{"edit \"Coast light\" highlight=tomato volume=40",
          QT_TRANSLATE_NOOP("Text", "change a colour and the ringer volume")},
         {"edit 12 name=Sea ringerTone=~/Music/waves.ogg chatTone=off",
          QT_TRANSLATE_NOOP("Text", "change the name and two tones of the moodset with this id")}},
        run};
}
