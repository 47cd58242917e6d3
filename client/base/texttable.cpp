// SPDX-License-Identifier: BSD-3-Clause
#include "texttable.h"

#include "printabletext.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr int ColumnGap = 2;

/// A narrower column would show too little.
constexpr int Narrowest = 16;

const auto Mark = QStringLiteral("\u2026");

QString cut(const QString& text, int columns, Fit fit)
{
    QString kept = text;
    while (columnCount(kept) > columns - 1) {
        if (fit == Fit::KeepEnd) {
            kept.remove(0, kept.at(0).isHighSurrogate() ? 2 : 1);
        } else {
            kept.chop(kept.at(kept.size() - 1).isLowSurrogate() ? 2 : 1);
        }
    }
    return fit == Fit::KeepEnd ? Mark + kept : kept + Mark;
}

/// How many columns of the terminal each cell takes, line after line.
QVector<int> cellWidths(const QVector<QStringList>& lines)
{
    QVector<int> cells;
    cells.reserve(lines.isEmpty() ? 0 : lines.size() * lines.constFirst().size());
    for (const QStringList& line : lines) {
        for (const QString& cell : line) {
            cells.append(columnCount(cell));
        }
    }
    return cells;
}

QVector<int> columnWidths(const QVector<QStringList>& lines, const QVector<int>& cells)
{
    QVector<int> widths;
    const int* cell = cells.constData();
    for (const QStringList& line : lines) {
        widths.resize(std::max(widths.size(), line.size()));
        for (int column = 0; column < line.size(); ++column, ++cell) {
            widths[column] = std::max(widths.at(column), *cell);
        }
    }
    return widths;
}

void appendBlanks(QString* text, int count)
{
    text->resize(text->size() + count);
    std::fill(text->end() - count, text->end(), QLatin1Char(' '));
}

/// Makes columns that may be cut narrower, the widest first.
void fitWidths(QVector<int>* widths, const QVector<Fit>& fits, int terminalColumns)
{
    const int gaps = ColumnGap * (widths->size() - 1);
    int excess = std::accumulate(widths->cbegin(), widths->cend(), gaps) - terminalColumns;
    while (excess > 0) {
        int widest = -1;
        for (int column = 0; column < std::min(fits.size(), widths->size()); ++column) {
            if (fits.at(column) != Fit::Whole && widths->at(column) > Narrowest
                && (widest < 0 || widths->at(column) > widths->at(widest))) {
                widest = column;
            }
        }
        if (widest < 0) {
            return;
        }
        --(*widths)[widest];
        --excess;
    }
}

} // namespace

QString textTable(const QVector<QStringList>& lines, const QVector<Fit>& fits, int terminalColumns)
{
    const QVector<int> cells = cellWidths(lines);
    QVector<int> widths = columnWidths(lines, cells);
    if (terminalColumns > 0) {
        fitWidths(&widths, fits, terminalColumns);
    }
    QString table;
    table.reserve(
        lines.size()
        * (std::accumulate(widths.cbegin(), widths.cend(), 0) + ColumnGap * widths.size()));
    const int* cell = cells.constData();
    for (const QStringList& line : lines) {
        int gap = 0;
        for (int column = 0; column < line.size(); ++column, ++cell) {
            const int width = widths.at(column);
            const bool isCut =
                terminalColumns > 0 && *cell > width && fits.value(column) != Fit::Whole;
            const QString text =
                isCut ? cut(line.at(column), width, fits.at(column)) : line.at(column);
            appendBlanks(&table, gap);
            table += text;
            gap = width + ColumnGap - (isCut ? columnCount(text) : *cell);
        }
        table += QLatin1Char('\n');
    }
    return table;
}

QString displayPath(const QString& path, const QString& folder)
{
    QString shown = path;
    if (!folder.isEmpty() && path.startsWith(folder + QLatin1Char('/'))) {
        shown.remove(0, folder.size() + 1);
    }
    return printableText(shown);
}
