// SPDX-License-Identifier: BSD-3-Clause
#include "content/contentmanager.h"
#include "messagelog.h"
#include "scratchdatabase.h"

#include <QSqlQuery>
#include <QTest>

class ContentManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doesNothingByItself()
    {
        MessageLog log;
        ScratchDatabase scratch;
        ContentManager manager(scratch.database());

        QCOMPARE(manager.mimeType(), QString());
        QVERIFY(!manager.updateMetaData());
        QVERIFY(!manager.save(5, {{QStringLiteral("source"), QStringLiteral("http://h/a")}}));
        QVERIFY(!manager.remove(5));
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void warningTellsOfTheStatementAndChangesNothing()
    {
        MessageLog log;
        ScratchDatabase scratch;
        ContentManager manager(scratch.database());
        QVERIFY(scratch.database().transaction());
        insertDownload(scratch);
        const QSqlQuery query = failedQuery(scratch);

        manager.warn(query, "bool Class::function(qint64)", "Failed to execute m_query.");

        QCOMPARE(log.takeMessages(), reportOfFailedQuery());
        QVERIFY(scratch.database().commit());
        QCOMPARE(downloadCount(scratch), 1);
    }

    void rollbackWarnsAndUndoesTheTransaction()
    {
        MessageLog log;
        ScratchDatabase scratch;
        ContentManager manager(scratch.database());
        QVERIFY(scratch.database().transaction());
        insertDownload(scratch);
        const QSqlQuery query = failedQuery(scratch);

        const bool done =
            manager.rollback(query, "bool Class::function(qint64)", "Failed to execute m_query.");

        QVERIFY(done);
        QCOMPARE(log.takeMessages(), reportOfFailedQuery());
        QCOMPARE(downloadCount(scratch), 0);
    }

    void rollbackWithoutATransactionOnlyWarns()
    {
        MessageLog log;
        ScratchDatabase scratch;
        ContentManager manager(scratch.database());
        insertDownload(scratch);
        const QSqlQuery query = failedQuery(scratch);

        const bool done =
            manager.rollback(query, "bool Class::function(qint64)", "Failed to execute m_query.");

        QVERIFY(!done);
        QCOMPARE(log.takeMessages(), reportOfFailedQuery());
        QCOMPARE(downloadCount(scratch), 1);
    }

private:
    static QSqlQuery failedQuery(ScratchDatabase& scratch)
    {
        QSqlQuery query(scratch.database());
        query.exec(QStringLiteral("SELECT colour FROM file;"));
        return query;
    }

    static QStringList reportOfFailedQuery()
    {
        return {
            QStringLiteral("bool Class::function(qint64)"),
            QStringLiteral("Failed to execute m_query."),
            QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                           "\"no such column: colour\")"),
            QStringLiteral("\"SELECT colour FROM file;\"")};
    }

    static void insertDownload(ScratchDatabase& scratch)
    {
        scratch.exec(QStringLiteral("INSERT INTO download VALUES (5, 'http://h/a')"));
    }

    static int downloadCount(const ScratchDatabase& scratch)
    {
        return scratch.rows(QStringLiteral("SELECT * FROM download")).size();
    }
};

QTEST_GUILESS_MAIN(ContentManagerTest)

#include "tst_contentmanager.moc"
