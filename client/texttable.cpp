// SPDX-License-Identifier: BSD-3-Clause
#include "texttable.h"

#include "printabletext.h"

#include <algorithm>

namespace {

// Leaves room for the other columns on a terminal of 120 columns.
constexpr int widestPath = 60;

constexpr int columnGap = 2;

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

} // namespace

QString textTable(const QVector<QStringList>& lines)
{
    QVector<int> widths;
    for (const QStringList& line : lines) {
        widths.resize(std::max(widths.size(), line.size()));
        for (int column = 0; column < line.size(); ++column) {
            widths[column] = std::max(widths.at(column), columnCount(line.at(column)));
        }
    }

    QString table;
    for (const QStringList& line : lines) {
        for (int column = 0; column + 1 < line.size(); ++column) {
            const QString& cell = line.at(column);
            const int fill = widths.at(column) - columnCount(cell) + columnGap;
            table += cell + QString(fill, QLatin1Char(' '));
        }
        table += line.constLast() + QLatin1Char('\n');
    }
    return table;
}

QString displayPath(const QString& path, const QString& folder)
{
    QString shown = path;
    if (!folder.isEmpty() && path.startsWith(folder + QLatin1Char('/'))) {
        shown.remove(0, folder.size() + 1);
    }
    return elidedAtStart(printableText(shown), widestPath);
}

QString numbered(int number, const char* singular, const char* plural)
{
    return QStringLiteral("%1 %2").arg(number).arg(QLatin1String(number == 1 ? singular : plural));
}
