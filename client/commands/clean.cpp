// SPDX-License-Identifier: BSD-3-Clause
#include "invocation.h"
#include "librarycommands.h"
#include "printabletext.h"
#include "subject.h"
#include "text.h"
#include "wallpaperfiles.h"

#include <QFile>
#include <QJsonArray>
#include <QLocale>

namespace {

Outcome run(const Invocation& invocation)
{
    const WallpaperFiles files = WallpaperFiles::read();
    if (!files.fault.isEmpty()) {
        return Outcome::failed(files.fault);
    }
    const bool isTrial = invocation.has("dry-run");
    QString text;
    for (const QString& path : files.unused) {
        if (isTrial) {
            text += printableText(path) + QLatin1Char('\n');
            continue;
        }
        QFile file(path);
        if (!file.remove()) {
            return Outcome::failed(about(path, file.errorString()));
        }
    }
    const QString count = isTrial
        ? numbered(
            files.unused.size(), QT_TRANSLATE_NOOP("Text", "%1 wallpaper, %2, would be deleted."),
            QT_TRANSLATE_NOOP("Text", "%1 wallpapers, %2, would be deleted."))
        : numbered(
            files.unused.size(), QT_TRANSLATE_NOOP("Text", "%1 wallpaper, %2, is deleted."),
            QT_TRANSLATE_NOOP("Text", "%1 wallpapers, %2, are deleted."));
    return Outcome::done(
        text + count.arg(QLocale().formattedDataSize(files.unusedSize, 1)) + QLatin1Char('\n'),
        {{QStringLiteral("files"), QJsonArray::fromStringList(files.unused)},
         {QStringLiteral("size"), files.unusedSize},
         {QStringLiteral("deleted"), !isTrial}});
}

} // namespace

Command cleanCommand()
{
    return {
        "clean",
        Command::Group::Library,
        QT_TRANSLATE_NOOP("Text", "delete the wallpapers that nothing uses"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Deletes the wallpapers that the daemon has made and that no moodset and "
            "no key of the theme uses. The daemon itself never deletes a wallpaper. "
            "The daemon need not run."),
        {},
        {{"dry-run", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "only print what would be deleted"), 'n'}},
        {{"clean --dry-run", QT_TRANSLATE_NOOP("Text", "see how much space this would free")}},
        run};
}
