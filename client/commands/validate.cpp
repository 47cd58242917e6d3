// SPDX-License-Identifier: BSD-3-Clause
#include "bundle/bundlecheck.h"
#include "invocation.h"
#include "librarycommands.h"
#include "printabletext.h"
#include "subject.h"
#include "text.h"

#include <QFileInfo>
#include <QJsonArray>

namespace {

Outcome run(const Invocation& invocation)
{
    QStringList files;
    for (const QString& path : invocation.arguments) {
        if (!QFileInfo::exists(path)) {
            return Outcome::failed(about(path, Text::tr("no such file")));
        }
        const QStringList found = bundleFiles(path);
        if (found.isEmpty()) {
            return Outcome::failed(
                about(path, Text::tr("no file of a moodset and no index in it")));
        }
        files += found;
    }
    Outcome outcome;
    QJsonArray records;
    for (const QString& file : qAsConst(files)) {
        for (const Finding& finding : checkBundleFile(file)) {
            outcome.text += printableText(findingLine(finding).trimmed()) + QLatin1Char('\n');
            records.append(findingRecord(finding));
        }
    }
    outcome.result = {
        {QStringLiteral("files"), QJsonArray::fromStringList(files)},
        {QStringLiteral("findings"), records}};
    if (!records.isEmpty()) {
        outcome.status = ExitStatus::Failed;
        outcome.error = numbered(
            records.size(), QT_TRANSLATE_NOOP("Text", "%1 fault"),
            QT_TRANSLATE_NOOP("Text", "%1 faults"));
        return outcome;
    }
    outcome.text = numbered(
                       files.size(), QT_TRANSLATE_NOOP("Text", "%1 file without faults."),
                       QT_TRANSLATE_NOOP("Text", "%1 files without faults."))
        + QLatin1Char('\n');
    return outcome;
}

} // namespace

Command validateCommand()
{
    return {
        "validate",
        Command::Group::Bundles,
        QT_TRANSLATE_NOOP("Text", "check bundles before they are installed"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Reports, with line and column, why the daemon would reject a moodset "
            "file or an index file, or why the moodset would differ from what the "
            "file seems to say. In a folder, it checks all such files. The exit "
            "status is 1 if there is a fault. The daemon need not run."),
        {{"PATH", ValueKind::File, true, true}},
        {},
        {{"validate coast-light/", QT_TRANSLATE_NOOP("Text", "check all files of a bundle")}},
        run};
}
