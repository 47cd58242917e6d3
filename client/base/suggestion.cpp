// SPDX-License-Identifier: BSD-3-Clause
#include "suggestion.h"

#include "printabletext.h"
#include "text.h"

#include <QVector>

#include <algorithm>
#include <numeric>

namespace {

/// The number of characters that must be added, removed, replaced or swapped with a neighbour to
/// turn one word into the other.
int distance(const QString& a, const QString& b)
{
    QVector<int> beforeLast(b.size() + 1);
    QVector<int> last(b.size() + 1);
    QVector<int> row(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (int i = 0; i < a.size(); ++i) {
        row[0] = i + 1;
        for (int j = 0; j < b.size(); ++j) {
            const int replaced = last.at(j) + (a.at(i) == b.at(j) ? 0 : 1);
            row[j + 1] = std::min({replaced, last.at(j + 1) + 1, row.at(j) + 1});
            if (i > 0 && j > 0 && a.at(i) == b.at(j - 1) && a.at(i - 1) == b.at(j)) {
                row[j + 1] = std::min(row.at(j + 1), beforeLast.at(j - 1) + 1);
            }
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last.at(b.size());
}

} // namespace

QString nearest(const QString& word, const QStringList& candidates)
{
    constexpr int lettersPerSlip = 3;
    const QString wanted = word.toCaseFolded();
    int best = std::max(1, int(wanted.size()) / lettersPerSlip) + 1;
    QString found;
    for (const QString& candidate : candidates) {
        const QString folded = candidate.toCaseFolded();
        const bool isStart = wanted.size() >= lettersPerSlip && folded.startsWith(wanted);
        const int slips = isStart ? 1 : distance(wanted, folded);
        if (slips < best) {
            best = slips;
            found = candidate;
        }
    }
    return found;
}

QString didYouMean(const QString& word, const QStringList& candidates)
{
    const QString found = nearest(word, candidates);
    return found.isEmpty() ? QString()
                           : Text::tr("; did you mean \"%1\"?").arg(printableText(found));
}

QString didYouMean(const QString& word, const QStringList& candidates, const QString& command)
{
    const QString suggestion = didYouMean(word, candidates);
    return suggestion.isEmpty() ? Text::tr("; see %1").arg(command) : suggestion;
}
