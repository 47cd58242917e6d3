// SPDX-License-Identifier: BSD-3-Clause
#include "content/databasewarning.h"
#include "messagelog.h"
#include "scratchdatabase.h"

#include <QtTest>

class DatabaseWarningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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

QTEST_GUILESS_MAIN(DatabaseWarningTest)

#include "tst_databasewarning.moc"
