// SPDX-License-Identifier: BSD-3-Clause
#include "activemoodset.h"
#include "bundle/bundlecheck.h"
#include "filewait.h"
#include "jsonrecord.h"
#include "librarycommands.h"
#include "libraryfault.h"
#include "moodsetlibrary.h"
#include "needs.h"
#include "printabletext.h"
#include "progressline.h"
#include "subject.h"

#include <QDir>
#include <QJsonArray>

namespace {

constexpr int StandardMs = 60000;

bool isMoodset(const QString& file)
{
    return file.endsWith(QLatin1String(".moodset"));
}

/// The reason why the daemon made no moodset from a file, as far as the file shows it.
QString refusal(const QString& path)
{
    for (const Finding& finding : checkBundleFile(path)) {
        if (finding.severity == Finding::Severity::Error) {
            return Text::tr("the daemon has not made a moodset of it: line %1, column %2: %3")
                .arg(finding.place.line)
                .arg(finding.place.column)
                .arg(finding.text);
        }
    }
    return Text::tr("the daemon has not made a moodset of it; its log tells why: journalctl --user "
                    "-u moodsetd");
}

/// Waits until a moodset file or an index file has been read, and describes the result.
Outcome awaitFile(
    const MoodsetService& service, const LibraryReader& files, const QString& path, int timeoutMs)
{
    Outcome outcome = waitForFile(service, files, path, timeoutMs);
    if (hasFailed(outcome) || !isMoodset(path)) {
        return outcome;
    }
    MoodsetLibrary library;
    const Moodset moodset = library.moodset(QUrl::fromLocalFile(path));
    if (!library.error().isEmpty()) {
        return Outcome::failed(library.error());
    }
    return moodset ? Outcome::done({}, JsonRecord::wholeMoodset(*moodset, readActiveMoodset()))
                   : Outcome::failed(refusal(path));
}

Outcome installFiles(
    const Invocation& invocation, const MoodsetService& service, const QDir& package,
    const QStringList& files)
{
    LibraryReader library;
    if (!library.open()) {
        return Outcome::failed(libraryFaultWithAdvice(library));
    }
    const QString fault = service.installPackage(package.path());
    if (!fault.isEmpty()) {
        return Outcome::failed(about(invocation.argument(), fault));
    }
    ProgressLine line(!invocation.quiet && !invocation.json);
    QJsonArray moodsets;
    for (const QString& file : files) {
        line.show(Text::tr("Reading %1").arg(printableText(file)));
        Outcome outcome =
            awaitFile(service, library, package.filePath(file), invocation.timeoutMs(StandardMs));
        if (hasFailed(outcome)) {
            outcome.error = about(invocation.argument(), about(file, outcome.error));
            return outcome;
        }
        if (isMoodset(file)) {
            moodsets.append(outcome.result);
        }
    }
    return Outcome::done(
        numbered(
            moodsets.size(), QT_TRANSLATE_NOOP("Text", "%1 moodset is installed."),
            QT_TRANSLATE_NOOP("Text", "%1 moodsets are installed."))
            + QLatin1Char('\n'),
        {{QStringLiteral("moodsets"), moodsets}});
}

Outcome run(const Invocation& invocation)
{
    const QString folder = invocation.argument();
    // A clean path, since the daemon would take one that ends with a slash for another directory.
    const QDir package(QDir(folder).absolutePath());
    if (!package.exists()) {
        return Outcome::failed(about(folder, Text::tr("no such folder")));
    }
    const QStringList files = package.entryList(
        {QStringLiteral("*.moodset"), QStringLiteral("*.index")},
        QDir::Files | QDir::CaseSensitive);
    if (files.isEmpty()) {
        return Outcome::failed(about(folder, Text::tr("no file of a moodset and no index in it")));
    }
    const MoodsetService service;
    Outcome outcome = needDaemon(service);
    return hasFailed(outcome) ? outcome : installFiles(invocation, service, package, files);
}

} // namespace

Command installCommand()
{
    return {
        "install",
        Command::Group::Bundles,
        QT_TRANSLATE_NOOP("Text", "install the bundle in a folder"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Makes the daemon read the moodset files and index files in a folder, "
            "even if it has read them before, and waits until it has. It is an error "
            "if there are none, or if one does not become a moodset."),
        {{"FOLDER", ValueKind::Folder}},
        {{"timeout", "SECONDS", ValueKind::Seconds,
          QT_TRANSLATE_NOOP("Text", "how long to wait for each file; 60 if not given")}},
        {{"install ~/bundles/coast-light", QT_TRANSLATE_NOOP("Text", "try your own bundle")}},
        run};
}
