// SPDX-License-Identifier: BSD-3-Clause
#include "subject.h"

#include "moodsetlibrary.h"
#include "suggestion.h"
#include "text.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool isUrl(const QString& text)
{
    return text.startsWith(QLatin1String("file:")) || text.contains(QLatin1String("://"));
}

Found<QUrl> fileUrl(const QString& path)
{
    const QFileInfo info(path);
    if (path.contains(QChar::Null) || !info.exists()) {
        return {{}, Text::tr("no such file")};
    }
    if (!info.isFile()) {
        return {{}, Text::tr("not a file")};
    }
    if (!info.isReadable()) {
        return {{}, Text::tr("no right to read it")};
    }
    return {QUrl::fromLocalFile(QDir::cleanPath(info.absoluteFilePath())), {}};
}

QStringList names(const QVector<Moodset>& moodsets)
{
    QStringList names;
    for (const Moodset& moodset : moodsets) {
        names.append(calledName(*moodset));
    }
    return names;
}

} // namespace

Found<Moodset> namedMoodset(const QString& text)
{
    MoodsetLibrary library;
    const QVector<Moodset> moodsets = library.find(text);
    if (!library.error().isEmpty()) {
        return {{}, library.error()};
    }
    if (moodsets.size() > 1) {
        return {{}, Text::tr("%1 moodsets have this name; give an id").arg(int(moodsets.size()))};
    }
    if (moodsets.isEmpty()) {
        return {
            {},
            Text::tr("no moodset has this id or name")
                + didYouMean(text, names(library.moodsets()))};
    }
    const Moodset whole = library.moodset(moodsets.constFirst()->id);
    return {whole, whole ? QString() : Text::tr("no moodset has this id or name")};
}

Found<QUrl> namedPicture(const QString& text)
{
    if (!isUrl(text)) {
        return fileUrl(text);
    }
    const QUrl url(text);
    if (!url.isValid()) {
        return {{}, Text::tr("not a URL")};
    }
    if (url.isLocalFile()) {
        return fileUrl(url.toLocalFile());
    }
    const bool isFetched =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return isFetched ? Found<QUrl>{url, {}}
                     : Found<QUrl>{{}, Text::tr("not a file URL, nor one of the network")};
}

Found<QUrl> namedSource(const QString& text)
{
    Found<QUrl> url = namedPicture(text);
    if (!url.fault.isEmpty() && !isUrl(text) && !QFileInfo::exists(text)) {
        const Found<Moodset> moodset = namedMoodset(text);
        if (moodset.value) {
            return {moodset.value->url, {}};
        }
        url.fault = Text::tr("%1, and %2").arg(url.fault, moodset.fault);
    }
    return url;
}

QString calledName(const MoodsetData& moodset)
{
    return moodset.displayName.isEmpty() ? QFileInfo(moodset.url.toLocalFile()).completeBaseName()
                                         : moodset.displayName;
}

QString shownUrl(const QUrl& url)
{
    return url.isLocalFile() ? url.toLocalFile() : url.toDisplayString();
}

QString about(const QString& subject, const QString& fault)
{
    return fault.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(subject, fault);
}
