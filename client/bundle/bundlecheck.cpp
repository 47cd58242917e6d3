// SPDX-License-Identifier: BSD-3-Clause
#include "bundlecheck.h"

#include "filecheck.h"
#include "text.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

QString severityName(Finding::Severity severity)
{
    return severity == Finding::Severity::Error ? QStringLiteral("error")
                                                : QStringLiteral("warning");
}

bool isBundleFile(const QString& name)
{
    return name.endsWith(QLatin1String(".moodset"), Qt::CaseInsensitive)
        || name.endsWith(QLatin1String(".index"), Qt::CaseInsensitive);
}

} // namespace

QVector<Finding> checkBundleFile(const QString& path)
{
    FileCheck check(path);
    const QString name = QFileInfo(path).fileName();
    if (name.endsWith(QLatin1String(".moodset"))) {
        check.checkMoodset();
    } else if (name.endsWith(QLatin1String(".index"))) {
        check.checkIndex();
    } else {
        check.add(
            Finding::Severity::Error, QString(),
            Text::tr("the name has to end in .moodset or .index, in small letters"));
    }
    return check.findings();
}

QStringList bundleFiles(const QString& path)
{
    if (!QFileInfo(path).isDir()) {
        return {path};
    }
    QStringList files;
    QDirIterator entries(
        path, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString file = entries.next();
        if (isBundleFile(entries.fileName())) {
            files.append(QDir::cleanPath(file));
        }
    }
    files.sort();
    return files;
}

QString findingLine(const Finding& finding)
{
    const QString severity =
        finding.severity == Finding::Severity::Error ? Text::tr("error") : Text::tr("warning");
    return QStringLiteral("%1:%2:%3: %4: %5\n")
        .arg(finding.file)
        .arg(finding.place.line)
        .arg(finding.place.column)
        .arg(severity, finding.text);
}

QJsonObject findingRecord(const Finding& finding)
{
    return {
        {QStringLiteral("severity"), severityName(finding.severity)},
        {QStringLiteral("file"), finding.file},
        {QStringLiteral("line"), finding.place.line},
        {QStringLiteral("column"), finding.place.column},
        {QStringLiteral("text"), finding.text}};
}
