// SPDX-License-Identifier: BSD-3-Clause
#include "invocation.h"
#include "jsonrecord.h"
#include "lookhelper.h"
#include "moodsetcommands.h"
#include "moodsetlibrary.h"
#include "subject.h"
#include "text.h"
#include "theme.h"

#include <QDir>
#include <QFileInfo>

#include <array>

namespace {

constexpr int CurrentVersion = 2;

constexpr std::array<const char*, 4> ColorNames{
    "primary", "secondary", "highlight", "secondaryHighlight"};

/// The moodset's wallpapers and colours, for LookHelper.
QJsonObject requestFor(const MoodsetData& moodset)
{
    const QString file = moodset.url.toLocalFile();
    const bool isBundle = file.endsWith(QLatin1String(".moodset"));
    QString kind = QStringLiteral("picture");
    if (isBundle) {
        kind =
            moodset.version < CurrentVersion ? QStringLiteral("legacy") : QStringLiteral("bundle");
    }
    return {
        {QStringLiteral("path"), isBundle ? moodset.homeWallpaper : file},
        {QStringLiteral("kind"), kind},
        {QStringLiteral("name"), calledName(moodset)},
        {QStringLiteral("homeWallpaper"), moodset.homeWallpaper},
        {QStringLiteral("applicationWallpaper"), moodset.applicationWallpaper},
        {QStringLiteral("colors"), JsonRecord::colors(moodset)}};
}

/// The request for the moodset or picture that the user has named, or the reason why there is none.
Found<QJsonObject> requestFor(const QString& subject)
{
    const Found<QUrl> source = namedSource(subject);
    if (!source.fault.isEmpty()) {
        return {{}, about(subject, source.fault)};
    }
    const Moodset moodset = MoodsetLibrary().moodset(source.value);
    if (moodset) {
        return {requestFor(*moodset), {}};
    }
    if (!source.value.isLocalFile()) {
        return {
            {}, about(subject, Text::tr("download the picture first, or create a moodset of it"))};
    }
    const QString path = source.value.toLocalFile();
    if (path.endsWith(QLatin1String(".moodset"))) {
        return {{}, about(subject, Text::tr("the daemon does not know this moodset; see install"))};
    }
    return {
        {{QStringLiteral("path"), path},
         {QStringLiteral("kind"), QStringLiteral("picture")},
         {QStringLiteral("name"), QFileInfo(path).completeBaseName()}},
        {}};
}

/// The request for the theme as shells see it.
Found<QJsonObject> requestForTheme()
{
    const Theme theme = Theme::read();
    if (theme.activeMoodset.isEmpty()) {
        return {{}, Text::tr("no moodset is active")};
    }
    const QUrl file = QUrl::fromLocalFile(theme.activeMoodset);
    const Moodset moodset = MoodsetLibrary().moodset(file);
    return {
        {{QStringLiteral("name"),
          moodset ? calledName(*moodset) : QFileInfo(theme.activeMoodset).completeBaseName()},
         {QStringLiteral("homeWallpaper"), theme.homeWallpaper},
         {QStringLiteral("applicationWallpaper"), theme.applicationWallpaper},
         {QStringLiteral("colors"),
          JsonRecord::colors(
              theme.primary, theme.secondary, theme.highlight, theme.secondaryHighlight)}},
        {}};
}

void considerColors(const Invocation& invocation, QJsonObject* request)
{
    QJsonObject colors = request->value(QLatin1String("colors")).toObject();
    for (const char* const name : ColorNames) {
        if (invocation.has(name)) {
            colors.insert(QLatin1String(name), invocation.value(name));
            if (QLatin1String(name) == QLatin1String("highlight")) {
                // It is made from the highlight colour unless the user gives it, too.
                colors.remove(QLatin1String("secondaryHighlight"));
            }
        }
    }
    request->insert(QStringLiteral("colors"), colors);
}

Outcome run(const Invocation& invocation)
{
    Found<QJsonObject> request =
        invocation.arguments.isEmpty() ? requestForTheme() : requestFor(invocation.argument());
    if (!request.fault.isEmpty()) {
        return Outcome::failed(request.fault);
    }
    const QString output =
        QFileInfo(
            invocation.has("output") ? invocation.value("output") : QStringLiteral("preview.png"))
            .absoluteFilePath();
    considerColors(invocation, &request.value);
    request.value.insert(QStringLiteral("do"), QStringLiteral("preview"));
    request.value.insert(QStringLiteral("output"), output);
    const QJsonObject reply = LookHelper::ask(request.value);
    const QString fault = reply.value(QLatin1String("fault")).toString();
    const QString detail = reply.value(QLatin1String("detail")).toString();
    if (fault == QLatin1String("unwritable")) {
        return Outcome::failed(about(detail, Text::tr("cannot be written")));
    }
    if (!fault.isEmpty()) {
        const QString file =
            detail.isEmpty() ? request.value.value(QLatin1String("path")).toString() : detail;
        const QString reason = pictureFault(file);
        return Outcome::failed(about(file, reason.isEmpty() ? Text::tr("cannot be read") : reason));
    }
    return Outcome::done(
        Text::tr("The preview is in %1.").arg(output) + QLatin1Char('\n'),
        {{QStringLiteral("output"), output},
         {QStringLiteral("colors"), reply.value(QLatin1String("colors"))}});
}

} // namespace

Command previewCommand()
{
    const char* const help = QT_TRANSLATE_NOOP("Text", "show this colour instead");
    return {
        "preview",
        Command::Group::Moodsets,
        QT_TRANSLATE_NOOP("Text", "paint what a moodset or a picture would look like"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Writes a PNG picture of two phones with a moodset, or with the moodset "
            "that a picture would give. The colours can be replaced by others. "
            "Nothing is stored. Without a SOURCE, the phones show the present theme. "
            "The daemon need not run."),
        {{"SOURCE", ValueKind::Source, false}},
        {{"output", "FILE", ValueKind::File,
          QT_TRANSLATE_NOOP("Text", "the file to write; preview.png if not given"), 'o'},
         {"primary", "COLOUR", ValueKind::Color, help},
         {"secondary", "COLOUR", ValueKind::Color, help},
         {"highlight", "COLOUR", ValueKind::Color, help},
         {"secondaryHighlight", "COLOUR", ValueKind::Color, help}},
        {{"preview \"Coast light\" -o coast.png",
          QT_TRANSLATE_NOOP("Text", "see a moodset before you apply it")},
         {"preview sea.jpg --highlight tomato -o sea.png",
          QT_TRANSLATE_NOOP("Text", "see the moodset of a picture with another colour")}},
        run};
}
