// SPDX-License-Identifier: BSD-3-Clause
#include "content/sqlbatch.h"
#include "scratchdatabase.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QTest>

class SqlBatchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyUntilARowIsAdded()
    {
        SqlBatch batch;
        QVERIFY(batch.isEmpty());
        QCOMPARE(batch.rowCount(), 0);

        batch.append({1, QStringLiteral("a")});
        batch.append({2, QStringLiteral("b")});

        QVERIFY(!batch.isEmpty());
        QCOMPARE(batch.rowCount(), 2);
    }

    void runsItsStatementForEachRowInOrder()
    {
        ScratchDatabase scratch;
        QSqlQuery query = insertion(scratch);
        SqlBatch batch;
        batch.append({2, QStringLiteral("b")});
        batch.append({1, QVariant()});
        batch.append({2, QStringLiteral("c")});

        QVERIFY(batch.exec(query));

        const ScratchDatabase::Rows expected{
            {1, QVariant(QVariant::String)}, {2, QStringLiteral("c")}};
        QCOMPARE(scratch.rows(QStringLiteral("SELECT * FROM download ORDER BY fileId")), expected);
    }

    void listIsOneValue()
    {
        ScratchDatabase scratch;
        QSqlQuery query = insertion(scratch);
        SqlBatch batch;
        batch.append({1, QVariantList{QStringLiteral("x"), QStringLiteral("y")}});
        batch.append({2, QStringLiteral("b")});

        QCOMPARE(batch.rowCount(), 2);
        QVERIFY(batch.exec(query));

        const ScratchDatabase::Rows expected{{1, QString()}, {2, QStringLiteral("b")}};
        QCOMPARE(
            scratch.rows(
                QStringLiteral("SELECT fileId, COALESCE(source, '') FROM download ORDER BY 1")),
            expected);
    }

    void timesAreStoredAsTheDriverStoresThem()
    {
        const QDate day(2021, 3, 4);
        const QTime hour(5, 6, 7, 89);
        const QVector<QDateTime> times{
            QDateTime(day, hour),
            QDateTime(day, QTime(0, 0)),
            QDateTime(day, hour, Qt::UTC),
            QDateTime(day, hour, Qt::OffsetFromUTC, 5400),
            QDateTime(QDate(1, 1, 1), hour),
            QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 999)),
            QDateTime(QDate(12345, 1, 2), hour),
            QDateTime(QDate(-5, 1, 2), hour),
            QDateTime()};
        ScratchDatabase scratch;
        QSqlQuery query = insertion(scratch);
        SqlBatch batch;
        for (int i = 0; i < times.size(); ++i) {
            batch.append({i, times.at(i)});
            query.bindValue(0, times.size() + i);
            query.bindValue(1, times.at(i));
            QVERIFY(query.exec());
        }

        QVERIFY(batch.exec(query));

        const QVariantList stored =
            scratch.column(QStringLiteral("SELECT source FROM download ORDER BY fileId"));
        QCOMPARE(stored.size(), 2 * times.size());
        QCOMPARE(stored.mid(0, times.size()), stored.mid(times.size()));
        QCOMPARE(stored.constFirst(), QVariant(QStringLiteral("2021-03-04T05:06:07.089")));
    }

    void finishesTheStatementAfterASuccess()
    {
        ScratchDatabase scratch;
        QSqlQuery query = insertion(scratch);
        SqlBatch batch;
        batch.append({1, QStringLiteral("a")});

        QVERIFY(batch.exec(query));

        QVERIFY(!query.isActive());
    }

    void stopsAtARowThatFailsAndKeepsTheStatementUsable()
    {
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("CREATE UNIQUE INDEX once ON download (source)"));
        QSqlQuery query(scratch.database());
        QVERIFY(query.prepare(QStringLiteral("INSERT INTO download VALUES (?, ?);")));
        SqlBatch failing;
        failing.append({1, QStringLiteral("a")});
        failing.append({2, QStringLiteral("a")});
        failing.append({3, QStringLiteral("b")});
        SqlBatch working;
        working.append({4, QStringLiteral("c")});

        QVERIFY(scratch.database().transaction());
        QVERIFY(!failing.exec(query));
        QCOMPARE(ids(scratch), QVariantList({1}));
        QVERIFY(scratch.database().rollback());
        QVERIFY(working.exec(query));

        QCOMPARE(ids(scratch), QVariantList({4}));
    }

    void opensNoTransaction()
    {
        ScratchDatabase scratch;
        QSqlQuery query = insertion(scratch);
        SqlBatch batch;
        batch.append({1, QStringLiteral("a")});

        QVERIFY(batch.exec(query));

        QVERIFY(!scratch.database().rollback());
        QCOMPARE(ids(scratch), QVariantList({1}));
    }

private:
    static QSqlQuery insertion(ScratchDatabase& scratch)
    {
        QSqlQuery query(scratch.database());
        query.prepare(QStringLiteral("INSERT OR REPLACE INTO download VALUES (?, ?);"));
        return query;
    }

    static QVariantList ids(const ScratchDatabase& scratch)
    {
        return scratch.column(QStringLiteral("SELECT fileId FROM download ORDER BY fileId"));
    }
};

QTEST_GUILESS_MAIN(SqlBatchTest)

#include "tst_sqlbatch.moc"
