// SPDX-License-Identifier: BSD-3-Clause
#include "colortext.h"
#include "invocation.h"
#include "lookhelper.h"
#include "moodsetcommands.h"
#include "subject.h"
#include "text.h"
#include "texttable.h"

#include <QLocale>

#include <colorstring.h>

namespace {

/// The colours in the order in which they are shown.
QVector<QPair<QString, QString>> colorTitles()
{
    return {
        {QStringLiteral("primary"), Text::tr("Primary colour")},
        {QStringLiteral("secondary"), Text::tr("Secondary colour")},
        {QStringLiteral("highlight"), Text::tr("Highlight colour")},
        {QStringLiteral("secondaryHighlight"), Text::tr("2nd highlight colour")}};
}

QString table(const QJsonObject& colors, const QJsonObject& contrasts)
{
    const ColorStyle style = standardOutputColorStyle();
    QVector<QStringList> lines{
        {Text::tr("Colour"), Text::tr("Value"), Text::tr("Contrast at home"),
         Text::tr("in applications")}};
    for (const auto& [key, title] : colorTitles()) {
        const QColor color = colorFromString(colors.value(key).toString());
        const QJsonObject contrast = contrasts.value(key).toObject();
        const auto number = [&contrast](const char* place) {
            return QLocale().toString(contrast.value(QLatin1String(place)).toDouble(), 'f', 1);
        };
        lines.append(
            {title, displayColorWithText(colorToString(color), style), number("home"),
             number("application")});
    }
    return textTable(lines);
}

Outcome run(const Invocation& invocation)
{
    const QString subject = invocation.argument();
    const Found<QUrl> picture = namedPicture(subject);
    if (!picture.fault.isEmpty()) {
        return Outcome::failed(about(subject, picture.fault));
    }
    if (!picture.value.isLocalFile()) {
        return Outcome::failed(about(subject, Text::tr("download the picture first")));
    }
    const QString path = picture.value.toLocalFile();
    const QJsonObject reply = LookHelper::ask(
        {{QStringLiteral("do"), QStringLiteral("colors")}, {QStringLiteral("path"), path}});
    if (!reply.value(QLatin1String("fault")).toString().isEmpty()) {
        const QString reason = pictureFault(path);
        return Outcome::failed(
            about(subject, reason.isEmpty() ? Text::tr("cannot be read") : reason));
    }
    const QJsonObject colors = reply.value(QLatin1String("colors")).toObject();
    const QJsonObject contrasts = reply.value(QLatin1String("contrasts")).toObject();
    return Outcome::done(
        table(colors, contrasts),
        {{QStringLiteral("file"), path},
         {QStringLiteral("colors"), colors},
         {QStringLiteral("contrasts"), contrasts}});
}

} // namespace

Command colorsCommand()
{
    return {
        "colors",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "show the colours that a moodset of a picture would have"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints the colours that a moodset of a local picture would have, and the contrast of "
            "each: against the average of the home wallpaper, and against that of the application "
            "wallpaper as toolkits dim it, under 60 % of black. Text needs 4.5, large text 3. "
            "Nothing is stored, and the daemon need not run."),
        {{"PICTURE", ValueKind::Picture}},
        {},
        {{"colors ~/Pictures/sea.jpg",
          QT_TRANSLATE_NOOP("Text", "check a picture before you apply it")}},
        run};
}
