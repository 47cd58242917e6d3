// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/sortedmerge.h"

#include <QTest>

namespace {

struct Entry
{
    QByteArray name;
};

/// Merges entries with rows, both given by their names; what was told of each, in order: "+" for
/// added, "=" for matched and "-" for removed.
QByteArrayList merge(const QByteArrayList& entryNames, const QByteArrayList& rows)
{
    QVector<Entry> entries;
    for (const QByteArray& name : entryNames) {
        entries.append(Entry{name});
    }
    QByteArrayList told;
    int row = -1;
    mergeSorted(
        entries, [&] { return ++row < rows.size(); }, [&] { return rows.at(row); },
        [&](const Entry& entry) { told.append("+" + entry.name); },
        [&](const Entry& entry) { told.append("=" + entry.name + rows.at(row)); },
        [&] { told.append("-" + rows.at(row)); });
    return told;
}

} // namespace

class SortedMergeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatEachNameIs_data();
    void tellsWhatEachNameIs();
};

void SortedMergeTest::tellsWhatEachNameIs_data()
{
    QTest::addColumn<QByteArrayList>("entries");
    QTest::addColumn<QByteArrayList>("rows");
    QTest::addColumn<QByteArrayList>("expected");

    using Names = QByteArrayList;
    QTest::newRow("nothing at all") << Names{} << Names{} << Names{};
    QTest::newRow("only entries") << Names{"a", "b"} << Names{} << Names{"+a", "+b"};
    QTest::newRow("only rows") << Names{} << Names{"a", "b"} << Names{"-a", "-b"};
    QTest::newRow("the same") << Names{"a", "b"} << Names{"a", "b"} << Names{"=aa", "=bb"};
    QTest::newRow("new before a match") << Names{"a", "b"} << Names{"b"} << Names{"+a", "=bb"};
    QTest::newRow("new after a match") << Names{"a", "b"} << Names{"a"} << Names{"=aa", "+b"};
    QTest::newRow("gone before a match") << Names{"b"} << Names{"a", "b"} << Names{"-a", "=bb"};
    QTest::newRow("gone after a match") << Names{"a"} << Names{"a", "z"} << Names{"=aa", "-z"};
    QTest::newRow("gone between matches")
        << Names{"a", "c"} << Names{"a", "b", "c"} << Names{"=aa", "-b", "=cc"};
    QTest::newRow("gone and new in turn")
        << Names{"b", "d", "e"} << Names{"a", "c", "e"} << Names{"-a", "+b", "-c", "+d", "=ee"};
    QTest::newRow("a row after the last entry stays if that entry is new")
        << Names{"a", "b"} << Names{"c"} << Names{"+a", "+b"};
    QTest::newRow("rows after the one that is let stand go")
        << Names{"a", "b"} << Names{"c", "d", "e"} << Names{"+a", "+b", "-d", "-e"};
    QTest::newRow("a row after the last entry goes if that entry has matched")
        << Names{"a", "b"} << Names{"b", "c"} << Names{"+a", "=bb", "-c"};
    QTest::newRow("a prefix comes first")
        << Names{"a", "ab"} << Names{"ab"} << Names{"+a", "=abab"};
    QTest::newRow("bytes above 127 come after all others")
        << Names{"z", "\xc3\xa4"} << Names{"\xc3\xa4"} << Names{"+z", "=\xc3\xa4\xc3\xa4"};
    QTest::newRow("upper case comes before lower case")
        << Names{"B", "a"} << Names{"B", "a"} << Names{"=BB", "=aa"};
}

void SortedMergeTest::tellsWhatEachNameIs()
{
    QFETCH(QByteArrayList, entries);
    QFETCH(QByteArrayList, rows);
    QFETCH(QByteArrayList, expected);

    QCOMPARE(merge(entries, rows), expected);
}

QTEST_APPLESS_MAIN(SortedMergeTest)

#include "tst_sortedmerge.moc"
