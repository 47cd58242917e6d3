// SPDX-License-Identifier: BSD-3-Clause
#include "rowupdate.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <utility>

#include <filedata.h>

namespace {

/// A row of a record. Another version means another state of the same record.
ContentRow row(qint64 id, int version = 0)
{
    auto* const file = new FileData(id, QUrl(QStringLiteral("file:///%1").arg(id)));
    return {Content(file), version};
}

ContentRows rows(const QList<int>& ids)
{
    ContentRows rows;
    for (const int id : ids) {
        rows.append(row(id));
    }
    return rows;
}

/// The rows of `ids`, with the records that `before` has.
ContentRows rowsOf(const ContentRows& before, const QList<int>& ids)
{
    ContentRows after;
    for (const int id : ids) {
        const auto known = std::find_if(
            before.begin(), before.end(), [id](const ContentRow& one) { return one.id() == id; });
        after.append(known == before.end() ? row(id) : *known);
    }
    return after;
}

QList<int> idsOf(const ContentRows& rows)
{
    QList<int> ids;
    for (const ContentRow& one : rows) {
        ids.append(int(one.id()));
    }
    return ids;
}

/// The rows of a view after the steps of an update, which are applied one after the other.
QList<int> applied(const ContentRows& before, const RowUpdate& update)
{
    QList<int> ids = idsOf(before);
    int removed = 0;
    for (const RowUpdate::Range& range : update.removals) {
        for (int i = 0; i < range.count; ++i) {
            ids.removeAt(range.first - removed);
        }
        removed += range.count;
    }
    if (removed > 0 && idsOf(update.kept) != ids) {
        return {-1};
    }
    for (const RowUpdate::Move& move : update.moves) {
        ids.move(move.from, move.to);
    }
    for (const RowUpdate::Range& range : update.insertions) {
        for (int i = 0; i < range.count; ++i) {
            ids.insert(range.first + i, int(update.rows.at(range.first + i).id()));
        }
    }
    return ids;
}

} // namespace

/// Tests the smallest number of steps from one list of rows to another.
class RowUpdateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsAreTheLeast_data()
    {
        QTest::addColumn<QList<int>>("before");
        QTest::addColumn<QList<int>>("after");
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("moved");
        QTest::addColumn<int>("inserted");
        QTest::newRow("nothing") << QList<int>{} << QList<int>{} << 0 << 0 << 0;
        QTest::newRow("same") << QList<int>{1, 2, 3} << QList<int>{1, 2, 3} << 0 << 0 << 0;
        QTest::newRow("first rows") << QList<int>{} << QList<int>{1, 2} << 0 << 0 << 1;
        QTest::newRow("all gone") << QList<int>{1, 2} << QList<int>{} << 1 << 0 << 0;
        QTest::newRow("appended") << QList<int>{1, 2} << QList<int>{1, 2, 3, 4} << 0 << 0 << 1;
        QTest::newRow("put first") << QList<int>{1, 2} << QList<int>{3, 1, 2} << 0 << 0 << 1;
        QTest::newRow("one of the middle goes")
            << QList<int>{1, 2, 3} << QList<int>{1, 3} << 1 << 0 << 0;
        QTest::newRow("two parts go") << QList<int>{1, 2, 3, 4} << QList<int>{3} << 2 << 0 << 0;
        QTest::newRow("to the front")
            << QList<int>{1, 2, 3, 4} << QList<int>{4, 1, 2, 3} << 0 << 1 << 0;
        QTest::newRow("to the end")
            << QList<int>{1, 2, 3, 4} << QList<int>{2, 3, 4, 1} << 0 << 1 << 0;
        QTest::newRow("exchanged") << QList<int>{1, 2} << QList<int>{2, 1} << 0 << 1 << 0;
        QTest::newRow("all at once")
            << QList<int>{1, 2, 3, 4, 5} << QList<int>{9, 5, 1, 3, 8} << 2 << 1 << 2;
        QTest::newRow("all others") << QList<int>{1, 2} << QList<int>{3, 4} << 1 << 0 << 1;
    }

    void stepsAreTheLeast()
    {
        QFETCH(QList<int>, before);
        QFETCH(QList<int>, after);
        QFETCH(int, removed);
        QFETCH(int, moved);
        QFETCH(int, inserted);
        const ContentRows first = rows(before);

        const RowUpdate update = rowUpdate(first, rowsOf(first, after), RowKey::Id);

        QCOMPARE(applied(first, update), after);
        QCOMPARE(int(update.removals.size()), removed);
        QCOMPARE(int(update.moves.size()), moved);
        QCOMPARE(int(update.insertions.size()), inserted);
        QVERIFY(update.changes.empty());
        QCOMPARE(update.isEmpty(), before == after);
    }

    void anyListBecomesAnyOther()
    {
        QRandomGenerator random(20261122);
        for (int round = 0; round < 2000; ++round) {
            QList<int> before;
            QList<int> after;
            for (int id = 1; id <= 20; ++id) {
                if (random.bounded(3) > 0) {
                    before.append(id);
                }
                if (random.bounded(3) > 0) {
                    after.append(id);
                }
            }
            std::shuffle(before.begin(), before.end(), random);
            std::shuffle(after.begin(), after.end(), random);
            const ContentRows first = rows(before);

            const RowUpdate update = rowUpdate(first, rowsOf(first, after), RowKey::Id);

            QCOMPARE(applied(first, update), after);
        }
    }

    void tooManyMovesBecomeRemovalsAndInsertions()
    {
        QList<int> before;
        for (int id = 1; id <= 1000; ++id) {
            before.append(id);
        }
        QList<int> after = before;
        std::reverse(after.begin(), after.end());
        const ContentRows first = rows(before);

        const RowUpdate update = rowUpdate(first, rowsOf(first, after), RowKey::Id);

        QVERIFY(update.moves.empty());
        QCOMPARE(applied(first, update), after);
    }

    void changedRowsAreAnnouncedWhereTheyStandInTheEnd()
    {
        const ContentRows first = rows({1, 2, 3, 4});
        ContentRows after = rowsOf(first, {9, 4, 2, 3});
        after[1].version = 5; // another state of its wallpapers
        after[3] = row(3); // another record

        const RowUpdate update = rowUpdate(first, after, RowKey::Id);

        QCOMPARE(int(update.changes.size()), 2);
        QCOMPARE(update.changes.at(0).first, 1);
        QCOMPARE(update.changes.at(1).first, 3);
        QCOMPARE(update.rows.at(3).content.data(), after.at(3).content.data());
    }

    void aDatabaseThatWasMadeAnewHasTheSameFilesUnderOtherIds()
    {
        const ContentRows first = rows({1, 2, 3});
        ContentRows after;
        for (const int id : {1, 2, 3}) {
            after.append(
                {Content(new FileData(100 - id, QUrl(QStringLiteral("file:///%1").arg(id)))), 0});
        }

        const RowUpdate update = rowUpdate(first, after, RowKey::Url);

        QVERIFY(update.removals.empty() && update.moves.empty() && update.insertions.empty());
        QCOMPARE(int(update.changes.size()), 1);
        QCOMPARE(update.changes.at(0).count, 3);
    }

    void aNewDatabaseMayGiveARecordTheNumberOfAnother()
    {
        const auto named = [](qint64 id, const char* name) {
            return ContentRow{
                Content(new FileData(id, QUrl(QStringLiteral("file:///") + QLatin1String(name)))),
                0};
        };
        const RowUpdate update =
            rowUpdate({named(1, "a"), named(2, "b")}, {named(1, "b"), named(2, "a")}, RowKey::Url);

        QCOMPARE(int(update.moves.size()), 1);
        QVERIFY(update.removals.empty() && update.insertions.empty());
    }
};

QTEST_GUILESS_MAIN(RowUpdateTest)

#include "tst_rowupdate.moc"
