// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QVector>

/// Goes side by side through rows and entries that are both sorted by the bytes of their UTF-8
/// names, and tells what each is.
///
/// `nextRow` steps to the next row, and `rowName` gives the name of the one that it came to;
/// entries carry theirs in a field `name`. `added` is called for an entry without a row, `matched`
/// for an entry whose row is the current one, and `removed` for a current row without an entry.
///
/// A row that stands when the last entry turns out to be added is told of by none of the three: it
/// goes at the next merge at the earliest.
template <
    typename Entry, typename NextRow, typename RowName, typename Added, typename Matched,
    typename Removed>
void mergeSorted(
    const QVector<Entry>& entries, NextRow nextRow, RowName rowName, Added added, Matched matched,
    Removed removed)
{
    int i = 0;
    while (i < entries.size() && nextRow()) {
        const QByteArray name = rowName();
        while (i < entries.size() && qstrcmp(entries.at(i).name, name) < 0) {
            added(entries.at(i++));
        }
        if (i == entries.size()) {
            break;
        }
        if (entries.at(i).name == name) {
            matched(entries.at(i++));
        } else {
            removed();
        }
    }
    while (nextRow()) {
        removed();
    }
    while (i < entries.size()) {
        added(entries.at(i++));
    }
}
