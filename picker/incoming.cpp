// SPDX-License-Identifier: BSD-3-Clause
#include "incoming.h"

#include "bundle/bundlecheck.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QStandardPaths>

namespace {

/// Longer texts are not addresses.
constexpr int LongestAddress = 8192;

QVariantMap useless(const QString& error)
{
    return {
        {QStringLiteral("kind"), QStringLiteral("none")},
        {QStringLiteral("url"), QUrl()},
        {QStringLiteral("error"), error}};
}

QVariantMap useful(const char* kind, const QUrl& url)
{
    return {
        {QStringLiteral("kind"), QLatin1String(kind)},
        {QStringLiteral("url"), url},
        {QStringLiteral("error"), QString()}};
}

QVariantMap classifyFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return useless(Incoming::tr("There is no such file or folder."));
    }
    const QUrl url = QUrl::fromLocalFile(QDir::cleanPath(path));
    if (info.isDir()) {
        return useful("bundle", url);
    }
    if (!info.isFile()) {
        return useless(Incoming::tr("This is neither a file nor a folder."));
    }
    if (!info.isReadable()) {
        return useless(Incoming::tr("You have no right to read this file."));
    }
    return useful("picture", url);
}

} // namespace

QVariantMap Incoming::classify(const QString& text)
{
    const QString line = text.trimmed();
    if (line.isEmpty()) {
        return useless(tr("There is nothing to paste. Copy an address or a picture's file first."));
    }
    if (line.startsWith(QLatin1Char('/'))) {
        return classifyFile(line);
    }
    const QUrl url(line, QUrl::StrictMode);
    if (url.isLocalFile()) {
        return classifyFile(url.toLocalFile());
    }
    const QString scheme = url.scheme();
    const bool isOnline = scheme == QLatin1String("http") || scheme == QLatin1String("https");
    if (line.size() > LongestAddress || !url.isValid() || !isOnline || url.host().isEmpty()) {
        return useless(tr("This is no address of a picture. It should begin with https://."));
    }
    return useful("picture", url);
}

QString Incoming::clipboardText()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) {
        return {};
    }
    if (data->hasUrls() && !data->urls().isEmpty()) {
        return data->urls().constFirst().toString();
    }
    return data->text().trimmed().section(QLatin1Char('\n'), 0, 0);
}

QString Incoming::fileName(const QUrl& url)
{
    return url.isLocalFile() ? QFileInfo(url.toLocalFile()).fileName() : url.toDisplayString();
}

QUrl Incoming::picturesFolder()
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QUrl::fromLocalFile(QFileInfo(pictures).isDir() ? pictures : QDir::homePath());
}

QStringList Incoming::bundleFaults(const QUrl& folder, const QStringList& files)
{
    constexpr int most = 20;
    QStringList lines;
    const QStringList checked = files.isEmpty() ? bundleFiles(folder.toLocalFile()) : files;
    for (const QString& file : checked) {
        const QVector<Finding> findings = checkBundleFile(file);
        for (const Finding& finding : findings) {
            if (finding.severity == Finding::Severity::Error && lines.size() < most) {
                lines.append(tr("%1: %2").arg(QFileInfo(finding.file).fileName(), finding.text));
            }
        }
    }
    if (lines.isEmpty() && checked.isEmpty()) {
        lines.append(tr("There is no moodset file in this folder."));
    }
    return lines;
}
