// SPDX-License-Identifier: BSD-3-Clause
#include "phototable.h"

#include "printabletext.h"
#include "text.h"
#include "texttable.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

QString displaySize(const LibraryFile& photo)
{
    if (!photo.current) {
        return Text::tr("waiting");
    }
    if (!photo.isReadable()) {
        return Text::tr("unreadable");
    }
    if (!photo.size.isValid()) {
        return Text::tr("unknown");
    }
    return QStringLiteral("%1x%2").arg(photo.size.width()).arg(photo.size.height());
}

QString displayTaken(const LibraryFile& photo)
{
    if (!photo.taken.isValid()) {
        return QStringLiteral("-");
    }
    return QLocale().language() == QLocale::C
        ? photo.taken.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))
        : QLocale().toString(photo.taken, QLocale::ShortFormat);
}

QString displayOrientation(const LibraryFile& photo)
{
    return photo.orientation == 0 ? QStringLiteral("-") : QString::number(photo.orientation);
}

QString photoTable(const QVector<LibraryFile>& photos, const QString& folder, int terminalColumns)
{
    if (photos.isEmpty()) {
        return {};
    }
    QVector<QStringList> lines{
        {Text::tr("File"), Text::tr("Size"), Text::tr("Taken"), Text::tr("Orientation"),
         Text::tr("Type")}};
    for (const LibraryFile& photo : photos) {
        lines.append(
            {displayPath(photo.path, folder), displaySize(photo), displayTaken(photo),
             displayOrientation(photo), printableText(photo.mimeType)});
    }
    return textTable(lines, {Fit::KeepEnd}, terminalColumns);
}

QString summaryLine(const LibraryReader::Counts& counts, const QVector<LibraryFile>& photos)
{
    const auto unreadable =
        std::count_if(photos.cbegin(), photos.cend(), [](const LibraryFile& photo) {
            return photo.current && !photo.isReadable();
        });
    QStringList parts{
        numbered(
            counts.files, QT_TRANSLATE_NOOP("Text", "%1 file"),
            QT_TRANSLATE_NOOP("Text", "%1 files")),
        numbered(
            counts.photos, QT_TRANSLATE_NOOP("Text", "%1 picture"),
            QT_TRANSLATE_NOOP("Text", "%1 pictures")),
        numbered(
            counts.folders, QT_TRANSLATE_NOOP("Text", "%1 folder"),
            QT_TRANSLATE_NOOP("Text", "%1 folders"))};
    if (unreadable > 0) {
        parts.append(Text::tr("%1 unreadable").arg(int(unreadable)));
    }
    return parts.join(QStringLiteral(", "));
}
