// SPDX-License-Identifier: BSD-3-Clause
#include "content/contentmanager.h"
#include "messagelog.h"
#include "refusedcommit.h"
#include "scratchdatabase.h"

#include <QSqlQuery>
#include <QTest>

namespace {

const char* const Function = "bool Class::function(qint64)";

/// A manager whose protected part can be called.
class OpenManager : public ContentManager
{
public:
    using ContentManager::beginTransaction;
    using ContentManager::commit;
    using ContentManager::ContentManager;
};

} // namespace

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

    void commitStoresTheChange()
    {
        MessageLog log;
        ScratchDatabase scratch;
        OpenManager manager(scratch.database());
        manager.beginTransaction();
        insertDownload(scratch);

        QVERIFY(manager.commit(Function));

        QVERIFY(scratch.database().transaction());
        QCOMPARE(downloadCount(scratch), 1);
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void commitThatFailsIsReportedAndLeavesNoTransactionOpen()
    {
        MessageLog log;
        ScratchDatabase scratch;
        const QStringList statements =
            refuseCommit(QStringLiteral("INSERT"), QStringLiteral("download"));
        for (const QString& statement : statements) {
            scratch.exec(statement);
        }
        OpenManager manager(scratch.database());
        manager.beginTransaction();
        insertDownload(scratch);

        QVERIFY(!manager.commit(Function));

        QCOMPARE(
            log.takeMessages(), QStringList(refusedCommitWarning(QString::fromLatin1(Function))));
        QCOMPARE(downloadCount(scratch), 0);
        QVERIFY(scratch.database().transaction());
    }

    void commitThatTheDatabaseHasRolledBackItselfIsReported()
    {
        MessageLog log;
        ScratchDatabase scratch;
        OpenManager manager(scratch.database());
        manager.beginTransaction();
        scratch.exec(QStringLiteral("ROLLBACK"));

        QVERIFY(!manager.commit(Function));

        QCOMPARE(
            log.takeMessages(),
            QStringList(QStringLiteral("bool Class::function(qint64) Failed to commit transaction "
                                       "QSqlError(\"\", \"Unable to commit transaction\", "
                                       "\"cannot commit - no transaction is active\")")));
    }

    void transactionThatIsOpenAlreadyIsJoined()
    {
        MessageLog log;
        ScratchDatabase scratch;
        OpenManager manager(scratch.database());
        manager.beginTransaction();
        insertDownload(scratch);
        manager.beginTransaction();

        QVERIFY(manager.commit(Function));

        QCOMPARE(downloadCount(scratch), 1);
        QVERIFY(scratch.database().transaction());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void commitSaysNothingOnAConnectionThatIsNotOpen()
    {
        MessageLog log;
        QueryAgentDatabase closed;
        OpenManager manager(closed);
        manager.beginTransaction();

        QVERIFY(!manager.commit(Function));

        QCOMPARE(log.takeMessages(), QStringList());
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
