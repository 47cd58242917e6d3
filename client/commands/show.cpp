// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "colortext.h"
#include "invocation.h"
#include "jsonrecord.h"
#include "moodsetcommands.h"
#include "printabletext.h"
#include "subject.h"
#include "text.h"
#include "texttable.h"

#include <QUrl>

#include <moodsetnames.h>

namespace {

QString orMinus(const QString& text)
{
    return text.isEmpty() ? QStringLiteral("-") : printableText(text);
}

QString toneText(const MoodsetData& moodset, std::size_t bit)
{
    const QVariantMap resource = moodset.resources.value(MoodsetNames::Tones.at(bit).file).toMap();
    const QString file = resource.value(QStringLiteral("url")).toUrl().toLocalFile();
    const bool isEnabled = (moodset.enabledSounds & (1 << bit)) != 0;
    if (file.isEmpty()) {
        return isEnabled ? Text::tr("stays as it is") : Text::tr("off");
    }
    return printableText(file);
}

QString details(const MoodsetData& moodset, const QString& active)
{
    const ColorStyle style = standardOutputColorStyle();
    QVector<QStringList> lines;
    const auto add = [&lines](const QString& name, const QString& value) {
        lines.append({name, value});
    };
    const auto addColor = [&](const QString& name, const QColor& color) {
        add(name, displayColorWithText(JsonRecord::colorText(color), style));
    };
    const auto answer = [](bool yes) { return yes ? Text::tr("yes") : QStringLiteral("-"); };
    add(Text::tr("Id"), QString::number(moodset.id));
    add(Text::tr("Name"), orMinus(moodset.displayName));
    add(Text::tr("File"), orMinus(moodset.url.toLocalFile()));
    add(Text::tr("Active"), answer(moodset.url.toLocalFile() == active));
    add(Text::tr("Favourite"), answer(moodset.favorite));
    addColor(Text::tr("Primary colour"), moodset.primaryColor);
    addColor(Text::tr("Secondary colour"), moodset.secondaryColor);
    addColor(Text::tr("Highlight colour"), moodset.highlightColor);
    addColor(Text::tr("2nd highlight colour"), moodset.secondaryHighlightColor);
    add(Text::tr("Home wallpaper"), orMinus(moodset.homeWallpaper));
    add(Text::tr("Application wallpaper"), orMinus(moodset.applicationWallpaper));
    add(Text::tr("Ringer volume"), QString::number(moodset.ringerVolume));
    for (std::size_t bit = 0; bit < MoodsetNames::Tones.size(); ++bit) {
        add(MoodsetNames::Tones.at(bit).name, toneText(moodset, bit));
    }
    add(Text::tr("Partner space"), orMinus(moodset.partnerSpace));
    add(Text::tr("Back cover"), orMinus(moodset.dorselId));
    add(Text::tr("Version"), QString::number(moodset.version));
    return textTable(lines);
}

Outcome run(const Invocation& invocation)
{
    const Found<Moodset> moodset = namedMoodset(invocation.argument());
    if (!moodset.value) {
        return Outcome::failed(about(invocation.argument(), moodset.fault));
    }
    const QString active = readActiveMoodset();
    return Outcome::done(
        details(*moodset.value, active),
        {{QStringLiteral("moodset"), JsonRecord::wholeMoodset(*moodset.value, active)}});
}

} // namespace

Command showCommand()
{
    return {
        "show",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "show all data of a moodset"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints all data of a moodset, with its tones and files. The daemon need "
            "not run."),
        {{"MOODSET", ValueKind::MoodsetName}},
        {},
        {{"show \"Coast light\"",
          QT_TRANSLATE_NOOP("Text", "see its colours, wallpapers and tones")}},
        run};
}
