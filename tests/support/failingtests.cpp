// SPDX-License-Identifier: BSD-3-Clause
#include "librarydatabase.h"
#include "messagelog.h"

#include <QTemporaryDir>
#include <QTest>

/// Misuses the test support. Every test function must fail, except the one whose name says
/// otherwise.
class FailingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesWarning()
    {
        const MessageLog log;
        qWarning("left over");
    }

    void leavesCritical()
    {
        const MessageLog log;
        qCritical("left over");
    }

    void leavesWarningAfterOneTaken()
    {
        MessageLog log;
        qWarning("taken");
        log.takeWarnings();
        qWarning("left over");
    }

    void passesWithDebugLeft()
    {
        const MessageLog log;
        qDebug("left over");
        qInfo("left over");
    }

    void opensMissingDatabase()
    {
        const QTemporaryDir folder;
        const LibraryDatabase database(folder.filePath(QStringLiteral("none/test.sqlite")));
    }

    void selectsUnknownColumn()
    {
        const LibraryDatabase database(QStringLiteral(":memory:"));
        database.rows(QStringLiteral("SELECT colour"));
    }

    void takesValueOfTwoRows()
    {
        const LibraryDatabase database(QStringLiteral(":memory:"));
        database.value(QStringLiteral("VALUES (1), (2)"));
    }
};

QTEST_GUILESS_MAIN(FailingTest)

#include "failingtests.moc"
