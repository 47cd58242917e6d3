// SPDX-License-Identifier: BSD-3-Clause
#include "content/querywarning.h"
#include "messagelog.h"
#include "scratchdatabase.h"

#include <QSqlQuery>
#include <QtTest>

class QueryWarningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failedStatementIsToldInFourLines()
    {
        MessageLog log;
        ScratchDatabase scratch;
        QSqlQuery query(scratch.database());
        QVERIFY(!query.exec(QStringLiteral("SELECT colour FROM \"file\"\nWHERE id = 1;")));

        warnOfQuery(query, "bool Class::function(qint64)", "Failed to execute m_query.");

        const QStringList expected{
            QStringLiteral("bool Class::function(qint64)"),
            QStringLiteral("Failed to execute m_query."),
            QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                           "\"no such column: colour\")"),
            QStringLiteral("\"SELECT colour FROM \\\"file\\\"\\nWHERE id = 1;\"")};
        QCOMPARE(log.takeMessages(), expected);
    }

    void statementIsToldWithItsPlaceholders()
    {
        MessageLog log;
        ScratchDatabase scratch;
        QSqlQuery query(scratch.database());
        QVERIFY(query.prepare(QStringLiteral("DELETE FROM file WHERE id = ?;")));
        query.bindValue(0, 5);
        QVERIFY(query.exec());

        warnOfQuery(query, "f", "m");

        QCOMPARE(log.takeWarnings().last(), QStringLiteral("\"DELETE FROM file WHERE id = ?;\""));
    }

    void failedConnectionIsToldInThreeLines()
    {
        MessageLog log;
        ScratchDatabase scratch;
        QVERIFY(scratch.database().transaction());
        QVERIFY(!scratch.database().transaction());

        warnOfDatabase(
            scratch.database(), "Class::Class(QueryAgentDatabase&)",
            "Failed to open transation on database");

        const QStringList expected{
            QStringLiteral("Class::Class(QueryAgentDatabase&)"),
            QStringLiteral("Failed to open transation on database"),
            QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                           "\"cannot start a transaction within a transaction\")")};
        QCOMPARE(log.takeMessages(), expected);
    }
};

QTEST_GUILESS_MAIN(QueryWarningTest)

#include "tst_querywarning.moc"
