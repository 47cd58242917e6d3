// SPDX-License-Identifier: BSD-3-Clause
#include "filewait.h"
#include "jsonrecord.h"
#include "librarycommands.h"
#include "libraryfault.h"
#include "lookhelper.h"
#include "needs.h"
#include "printabletext.h"
#include "progressline.h"
#include "subject.h"

#include <QFileInfo>
#include <QJsonArray>

#include <libraryreader.h>

namespace {

constexpr int StandardMs = 60000;

Found<QString> localPath(const QString& picture)
{
    const QUrl url(picture);
    const bool isUrl =
        picture.contains(QLatin1String("://")) || picture.startsWith(QLatin1String("file:"));
    if (isUrl && !url.isLocalFile()) {
        return {{}, Text::tr("not a file URL")};
    }
    const QString path = isUrl ? url.toLocalFile() : QFileInfo(picture).absoluteFilePath();
    return !path.contains(QChar::Null) && QFileInfo::exists(path)
        ? Found<QString>{path, {}}
        : Found<QString>{{}, Text::tr("no such file")};
}

QString readingFault(const LibraryFile& file)
{
    const QString reason = pictureFault(file.path);
    return reason.isEmpty()
        ? Text::tr("cannot be read as a picture of type %1").arg(file.mimeType)
        : Text::tr("cannot be read as a picture of type %1: %2").arg(file.mimeType, reason);
}

/// Waits until the picture at `path` has been read, and reports its faults.
Outcome await(
    const MoodsetService& service, const LibraryReader& library, const QString& path, int timeoutMs)
{
    std::optional<LibraryFile> file = library.findFile(path);
    if (file && !file->mimeType.startsWith(QLatin1String("image/"))) {
        return Outcome::failed(Text::tr("not a picture, but %1").arg(file->mimeType));
    }
    Outcome outcome = waitForFile(service, library, path, timeoutMs);
    if (hasFailed(outcome)) {
        return outcome;
    }
    file = library.findFile(path);
    if (!file) {
        return Outcome::failed(Text::tr("the daemon has not taken it in"));
    }
    return file->isReadable() ? Outcome::done({}, JsonRecord::picture(*file))
                              : Outcome::failed(readingFault(*file));
}

Outcome indexOne(
    const MoodsetService& service, const LibraryReader& library, const QString& picture,
    int timeoutMs)
{
    const Found<QString> path = localPath(picture);
    if (!path.fault.isEmpty()) {
        return Outcome::failed(about(picture, path.fault));
    }
    const QString fault = service.indexFile(QUrl::fromLocalFile(path.value));
    Outcome outcome =
        fault.isEmpty() ? await(service, library, path.value, timeoutMs) : Outcome::failed(fault);
    outcome.error = about(path.value, outcome.error);
    return outcome;
}

Outcome run(const Invocation& invocation)
{
    const MoodsetService service;
    Outcome needed = needDaemon(service);
    if (hasFailed(needed)) {
        return needed;
    }
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    ProgressLine line(!invocation.quiet && !invocation.json);
    QJsonArray pictures;
    for (const QString& picture : invocation.arguments) {
        line.show(Text::tr("Reading %1 of %2: %3")
                      .arg(pictures.size() + 1)
                      .arg(invocation.arguments.size())
                      .arg(printableText(picture)));
        Outcome outcome = indexOne(service, library, picture, invocation.timeoutMs(StandardMs));
        if (hasFailed(outcome)) {
            outcome.result = {{QStringLiteral("pictures"), pictures}};
            return outcome;
        }
        pictures.append(outcome.result);
    }
    return Outcome::done(
        numbered(
            pictures.size(), QT_TRANSLATE_NOOP("Text", "%1 picture is in the library."),
            QT_TRANSLATE_NOOP("Text", "%1 pictures are in the library."))
            + QLatin1Char('\n'),
        {{QStringLiteral("pictures"), pictures}});
}

} // namespace

Command indexCommand()
{
    return {
        "index",
        Command::Group::Pictures,
        QT_TRANSLATE_NOOP("Text", "add pictures to the library"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Adds pictures to the library, and waits until the daemon has read them. "
            "It is an error if a file is not a picture or cannot be read. The "
            "pictures after it are then not added."),
        {{"PICTURE", ValueKind::Picture, true, true}},
        {{"timeout", "SECONDS", ValueKind::Seconds,
          QT_TRANSLATE_NOOP("Text", "how long to wait for each picture; 60 if not given")}},
        {{"index /media/card/a.jpg",
          QT_TRANSLATE_NOOP("Text", "add a picture from another folder")}},
        run};
}
