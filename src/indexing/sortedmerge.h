// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QVector>

#include <algorithm>

/// Sorts entries by the bytes of their UTF-8 names, in their field `name`, as a merge takes them.
template <typename Entry>
void sortByName(QVector<Entry>* entries)
{
    std::sort(entries->begin(), entries->end(), [](const Entry& left, const Entry& right) {
        return qstrcmp(left.name, right.name) < 0;
    });
}

/// Takes every entry into a merge.
struct AcceptAll
{
    template <typename Entry>
    bool operator()(const Entry&) const
    {
        return true;
    }
};

/// Goes side by side through rows and entries that are both sorted by the bytes of their UTF-8
/// names, and tells what each is.
///
/// `nextRow` steps to the next row, and `rowName` gives the name of the one that it came to;
/// entries carry theirs in a field `name`. `added` is called for an entry without a row, `matched`
/// for an entry whose row is the current one, and `removed` for a current row without an entry.
/// `accept` is asked each time an entry is looked at, which can be several times, and false drops
/// the entry.
///
/// A row that stands when the entries run out is told of by none of them: it goes at the next merge
/// at the earliest.
template <
    typename Entry, typename NextRow, typename RowName, typename Added, typename Matched,
    typename Removed, typename Accept = AcceptAll>
void mergeSorted(
    const QVector<Entry>& entries, NextRow nextRow, RowName rowName, Added added, Matched matched,
    Removed removed, Accept accept = AcceptAll())
{
    int i = 0;
    while (i < entries.size() && nextRow()) {
        const QByteArray name = rowName();
        bool isRowSettled = false;
        while (i < entries.size() && !isRowSettled) {
            const Entry& entry = entries.at(i);
            if (!accept(entry)) {
                ++i;
                continue;
            }
            const int order = qstrcmp(entry.name, name);
            if (order < 0) {
                added(entry);
                ++i;
            } else if (order == 0) {
                matched(entry);
                ++i;
                isRowSettled = true;
            } else {
                removed();
                isRowSettled = true;
            }
        }
    }
    while (nextRow()) {
        removed();
    }
    for (; i < entries.size(); ++i) {
        if (accept(entries.at(i))) {
            added(entries.at(i));
        }
    }
}
