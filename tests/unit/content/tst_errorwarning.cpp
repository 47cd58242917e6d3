// SPDX-License-Identifier: BSD-3-Clause
#include "content/errorwarning.h"
#include "messagelog.h"
#include "scratchdatabase.h"

#include <QSqlError>
#include <QTest>

class ErrorWarningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorIsToldInThreeLines()
    {
        MessageLog log;
        ScratchDatabase scratch;
        QVERIFY(scratch.database().transaction());
        QVERIFY(!scratch.database().transaction());

        warnOfError(
            scratch.database().lastError(), "Class::Class(QueryAgentDatabase&)",
            "Failed to open transation on database");

        const QStringList expected{
            QStringLiteral("Class::Class(QueryAgentDatabase&)"),
            QStringLiteral("Failed to open transation on database"),
            QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                           "\"cannot start a transaction within a transaction\")")};
        QCOMPARE(log.takeMessages(), expected);
    }
};

QTEST_GUILESS_MAIN(ErrorWarningTest)

#include "tst_errorwarning.moc"
