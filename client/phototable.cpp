// SPDX-License-Identifier: BSD-3-Clause
#include "phototable.h"

#include "printabletext.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {

// Leaves room for the other columns on a terminal of 120 columns.
constexpr int widestPath = 60;

using Line = std::array<QString, 5>;

QString elidedAtStart(const QString& text, int columns)
{
    if (columnCount(text) <= columns) {
        return text;
    }
    const auto mark = QStringLiteral("...");
    QString end = text;
    while (columnCount(end) > columns - mark.size()) {
        end.remove(0, end.at(0).isHighSurrogate() ? 2 : 1);
    }
    return mark + end;
}

QString numbered(int number, const char* singular, const char* plural)
{
    return QStringLiteral("%1 %2").arg(number).arg(QLatin1String(number == 1 ? singular : plural));
}

} // namespace

QString displayPath(const Photo& photo, const QString& folder)
{
    QString path = photo.path;
    if (!folder.isEmpty() && path.startsWith(folder + QLatin1Char('/'))) {
        path.remove(0, folder.size() + 1);
    }
    return elidedAtStart(printableText(path), widestPath);
}

QString displaySize(const Photo& photo)
{
    if (!photo.current) {
        return QStringLiteral("waiting");
    }
    if (!photo.isReadable()) {
        return QStringLiteral("unreadable");
    }
    if (!photo.size.isValid()) {
        return QStringLiteral("unknown");
    }
    return QStringLiteral("%1x%2").arg(photo.size.width()).arg(photo.size.height());
}

QString displayTaken(const Photo& photo)
{
    return photo.taken.isValid() ? photo.taken.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))
                                 : QStringLiteral("-");
}

QString displayOrientation(const Photo& photo)
{
    return photo.orientation == 0 ? QStringLiteral("-") : QString::number(photo.orientation);
}

QString photoTable(const QVector<Photo>& photos, const QString& folder)
{
    if (photos.isEmpty()) {
        return {};
    }
    QVector<Line> lines{
        {QStringLiteral("File"), QStringLiteral("Size"), QStringLiteral("Taken"),
         QStringLiteral("Orientation"), QStringLiteral("Type")}};
    for (const Photo& photo : photos) {
        lines.append(
            {displayPath(photo, folder), displaySize(photo), displayTaken(photo),
             displayOrientation(photo), printableText(photo.mimeType)});
    }

    std::array<int, 5> widths{};
    for (const Line& line : lines) {
        for (size_t column = 0; column < line.size(); ++column) {
            widths.at(column) = std::max(widths.at(column), columnCount(line.at(column)));
        }
    }

    QString table;
    for (const Line& line : lines) {
        for (size_t column = 0; column + 1 < line.size(); ++column) {
            const QString& cell = line.at(column);
            table += cell + QString(widths.at(column) - columnCount(cell) + 2, QLatin1Char(' '));
        }
        table += line.back() + QLatin1Char('\n');
    }
    return table;
}

QString summaryLine(const Library::Counts& counts, const QVector<Photo>& photos)
{
    const auto unreadable = std::count_if(photos.cbegin(), photos.cend(), [](const Photo& photo) {
        return photo.current && !photo.isReadable();
    });
    QStringList parts{
        numbered(counts.files, "file", "files"), numbered(counts.photos, "picture", "pictures"),
        numbered(counts.folders, "folder", "folders")};
    if (unreadable > 0) {
        parts.append(QStringLiteral("%1 unreadable").arg(unreadable));
    }
    return parts.join(QStringLiteral(", "));
}
