// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QVector>

#include <algorithm>

/// Sorts entries by the bytes of their UTF-8 names, in their member `name`, as mergeSorted() needs
/// them.
template <typename Entry>
void sortByName(QVector<Entry>* entries)
{
    std::sort(entries->begin(), entries->end(), [](const Entry& left, const Entry& right) {
        return qstrcmp(left.name, right.name) < 0;
    });
}

/// Accepts every entry of a merge.
struct AcceptAll
{
    template <typename Entry>
    bool operator()(const Entry&) const
    {
        return true;
    }
};

/// Compares rows with entries. Both must be sorted by the bytes of their UTF-8 names.
///
/// - `nextRow` goes to the next row, and `rowName` gives its name. Entries have a member `name`.
/// - `added` is called for an entry without a row, `matched` for an entry whose row is the current
///   one, and `removed` for a current row without an entry.
/// - An entry is left out if `accept` returns false for it. An entry is passed to `accept` again
///   each time that it is compared with another row.
///
/// If the last entry comes before the current row, none of the functions is called for this row. A
/// later merge can remove it.
template <
    typename Entry, typename NextRow, typename RowName, typename Added, typename Matched,
    typename Removed, typename Accept = AcceptAll>
void mergeSorted(
    const QVector<Entry>& entries, NextRow nextRow, RowName rowName, Added added, Matched matched,
    Removed removed, Accept accept = AcceptAll())
{
    auto entry = entries.begin();
    const auto end = entries.end();
    const auto skipRejected = [&] {
        while (entry != end && !accept(*entry)) {
            ++entry;
        }
    };
    const auto addEntriesBefore = [&](const QByteArray& name) {
        skipRejected();
        while (entry != end && qstrcmp(entry->name, name) < 0) {
            added(*entry++);
            skipRejected();
        }
    };

    while (entry != end && nextRow()) {
        const QByteArray name = rowName();
        addEntriesBefore(name);
        if (entry == end) {
            break;
        }
        if (entry->name == name) {
            matched(*entry++);
        } else {
            removed();
        }
    }
    while (nextRow()) {
        removed();
    }
    for (skipRejected(); entry != end; skipRejected()) {
        added(*entry++);
    }
}
