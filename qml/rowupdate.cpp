// SPDX-License-Identifier: BSD-3-Clause
#include "rowupdate.h"

#include <QHash>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace {

/// Each move takes a search through the rows. If more rows than this have moved, the others are
/// removed and inserted instead.
constexpr int MostMoves = 200;

/// If there are many changes, two changed rows are announced together if at most this many
/// unchanged rows are between them.
constexpr int MostChanges = 1000;

constexpr int None = -1;

bool isSameRow(const ContentRow& left, const ContentRow& right, RowKey key)
{
    return key == RowKey::Id ? left.id() == right.id()
                             : left.content.data()->url == right.content.data()->url;
}

/// Appends a position: to the last range if it comes right after it, and else as a new range.
void append(std::vector<RowUpdate::Range>* ranges, int position)
{
    if (!ranges->empty() && ranges->back().first + ranges->back().count == position) {
        ++ranges->back().count;
    } else {
        ranges->push_back({position, 1});
    }
}

template <typename Key, typename KeyOf>
std::vector<int> match(
    const ContentRows& before, const ContentRows& after, int skipped, KeyOf keyOf)
{
    QHash<Key, int> positions;
    positions.reserve(before.size() - skipped);
    for (int i = skipped; i < before.size(); ++i) {
        positions.insert(keyOf(before.at(i)), i);
    }
    std::vector<int> origins(std::size_t(after.size()), None);
    for (int i = skipped; i < after.size(); ++i) {
        origins[std::size_t(i)] = positions.value(keyOf(after.at(i)), None);
    }
    return origins;
}

/// The position that each new row had among the old rows; None if it is new.
std::vector<int> originsOf(const ContentRows& before, const ContentRows& after, RowKey key)
{
    const int shorter = std::min(before.size(), after.size());
    int same = 0;
    while (same < shorter && isSameRow(before.at(same), after.at(same), key)) {
        ++same;
    }
    std::vector<int> origins;
    if (same == before.size() || same == after.size()) {
        origins.assign(std::size_t(after.size()), None);
    } else if (key == RowKey::Id) {
        origins =
            match<qint64>(before, after, same, [](const ContentRow& row) { return row.id(); });
    } else {
        origins = match<QUrl>(
            before, after, same, [](const ContentRow& row) { return row.content.data()->url; });
    }
    for (int i = 0; i < same; ++i) {
        origins[std::size_t(i)] = i;
    }
    return origins;
}

/// Marks the numbers of a longest ascending subsequence. Numbers that are None do not count.
std::vector<bool> longestAscent(const std::vector<int>& numbers)
{
    std::vector<std::size_t> ends; // the last element of the best subsequence of each length
    std::vector<std::size_t> previous(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i] == None) {
            continue;
        }
        const auto place = std::lower_bound(
            ends.begin(), ends.end(), numbers[i],
            [&numbers](std::size_t end, int number) { return numbers[end] < number; });
        previous[i] = place == ends.begin() ? i : *(place - 1);
        if (place == ends.end()) {
            ends.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> isInAscent(numbers.size(), false);
    if (!ends.empty()) {
        std::size_t i = ends.back();
        isInAscent[i] = true;
        while (previous[i] != i) {
            i = previous[i];
            isInAscent[i] = true;
        }
    }
    return isInAscent;
}

/// Finds the rows that must move. If there are too many, they become removals and insertions.
std::vector<bool> findMoved(std::vector<int>* origins)
{
    std::vector<bool> isMoved(origins->size(), false);
    std::vector<int> numbers;
    std::copy_if(origins->begin(), origins->end(), std::back_inserter(numbers), [](int origin) {
        return origin != None;
    });
    if (std::is_sorted(numbers.begin(), numbers.end())) {
        return isMoved;
    }
    const std::vector<bool> stays = longestAscent(*origins);
    std::vector<std::size_t> moved;
    for (std::size_t i = 0; i < origins->size(); ++i) {
        if (!stays[i] && (*origins)[i] != None) {
            moved.push_back(i);
        }
    }
    for (const std::size_t i : moved) {
        if (moved.size() > MostMoves) {
            (*origins)[i] = None;
        } else {
            isMoved[i] = true;
        }
    }
    return isMoved;
}

/// The moves that sort the kept old rows into the order of the new ones. Each moved row goes to the
/// position after the row that comes before it in the new order.
std::vector<RowUpdate::Move> movesOf(
    const std::vector<int>& origins, const std::vector<bool>& isMoved)
{
    std::vector<RowUpdate::Move> moves;
    std::vector<int> order;
    std::copy_if(origins.begin(), origins.end(), std::back_inserter(order), [](int origin) {
        return origin != None;
    });
    std::sort(order.begin(), order.end());
    int previous = None;
    for (std::size_t i = 0; i < origins.size(); ++i) {
        if (origins[i] == None) {
            continue;
        }
        if (isMoved[i]) {
            const auto from = std::find(order.begin(), order.end(), origins[i]);
            const int fromPosition = int(from - order.begin());
            order.erase(from);
            const auto to = previous == None ? order.begin()
                                             : std::find(order.begin(), order.end(), previous) + 1;
            const int toPosition = int(to - order.begin());
            order.insert(to, origins[i]);
            if (fromPosition != toPosition) {
                moves.push_back({fromPosition, toPosition});
            }
        }
        previous = origins[i];
    }
    return moves;
}

void findRemovals(const ContentRows& before, const std::vector<int>& origins, RowUpdate* update)
{
    std::vector<bool> isKept(std::size_t(before.size()), false);
    for (const int origin : origins) {
        if (origin != None) {
            isKept[std::size_t(origin)] = true;
        }
    }
    for (int i = 0; i < before.size(); ++i) {
        if (!isKept[std::size_t(i)]) {
            append(&update->removals, i);
        }
    }
    if (update->removals.empty()) {
        return;
    }
    // Whole ranges are copied, because single rows take several times as long.
    int begin = 0;
    for (const RowUpdate::Range& range : update->removals) {
        update->kept += before.mid(begin, range.first - begin);
        begin = range.first + range.count;
    }
    update->kept += before.mid(begin);
}

/// If there are too many changes, joins those that are close together.
std::vector<RowUpdate::Range> merged(const std::vector<RowUpdate::Range>& changes)
{
    if (changes.size() <= std::size_t(MostChanges)) {
        return changes;
    }
    const RowUpdate::Range& last = changes.back();
    return {{changes.front().first, last.first + last.count - changes.front().first}};
}

} // namespace

RowUpdate rowUpdate(const ContentRows& before, const ContentRows& after, RowKey key)
{
    RowUpdate update;
    std::vector<int> origins = originsOf(before, after, key);
    const std::vector<bool> isMoved = findMoved(&origins);
    findRemovals(before, origins, &update);
    update.moves = movesOf(origins, isMoved);
    for (int i = 0; i < after.size(); ++i) {
        const int origin = origins[std::size_t(i)];
        if (origin == None) {
            append(&update.insertions, i);
        } else if (
            before.at(origin).content.data() != after.at(i).content.data()
            || before.at(origin).version != after.at(i).version) {
            append(&update.changes, i);
        }
    }
    update.changes = merged(update.changes);
    update.rows = after;
    return update;
}
