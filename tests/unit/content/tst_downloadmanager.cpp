// SPDX-License-Identifier: BSD-3-Clause
#include "content/downloadmanager.h"
#include "messagelog.h"
#include "refusedcommit.h"
#include "scratchdatabase.h"

#include <QTest>

namespace {

QVariantMap source(const QString& url)
{
    return {{QStringLiteral("source"), url}};
}

ScratchDatabase::Rows downloads(const ScratchDatabase& scratch)
{
    return scratch.rows(QStringLiteral("SELECT fileId, source FROM download ORDER BY fileId"));
}

} // namespace

class DownloadManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void preparingItsStatementsLeavesNoTransactionOpen()
    {
        MessageLog log;
        ScratchDatabase scratch;

        const DownloadManager manager(scratch.database());

        QVERIFY(scratch.database().transaction());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void savingWithoutASourceWritesNothing_data()
    {
        QTest::addColumn<QVariantMap>("values");
        QTest::newRow("nothing") << QVariantMap();
        QTest::newRow("other keys") << QVariantMap{
            {QStringLiteral("Source"), QStringLiteral("http://h/a")},
            {QStringLiteral("fileId"), 6}};
    }

    void savingWithoutASourceWritesNothing()
    {
        QFETCH(QVariantMap, values);
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());

        QVERIFY(manager.save(5, values));

        QCOMPARE(downloads(scratch), ScratchDatabase::Rows());
    }

    void savingAgainReplacesTheSource()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());

        QVERIFY(manager.save(5, source(QStringLiteral("http://h/a"))));
        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{5, QStringLiteral("http://h/a")}}));
        QVERIFY(manager.save(5, source(QStringLiteral("http://h/b"))));

        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{5, QStringLiteral("http://h/b")}}));
    }

    void sourceIsKeptAsTheTextOfTheUrl_data()
    {
        QTest::addColumn<QVariant>("source");
        QTest::addColumn<QString>("text");
        QTest::newRow("URL") << QVariant(QUrl(QStringLiteral("https://h/a?b=c#d")))
                             << QStringLiteral("https://h/a?b=c#d");
        QTest::newRow("text") << QVariant(QStringLiteral("https://h/a"))
                              << QStringLiteral("https://h/a");
        QTest::newRow("escaped blank")
            << QVariant(QStringLiteral("https://h/a%20b")) << QStringLiteral("https://h/a b");
        QTest::newRow("no URL") << QVariant(QVariantMap()) << QString();
    }

    void sourceIsKeptAsTheTextOfTheUrl()
    {
        QFETCH(QVariant, source);
        QFETCH(QString, text);
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());

        QVERIFY(manager.save(5, {{QStringLiteral("source"), source}}));

        QCOMPARE(
            scratch.column(QStringLiteral("SELECT COALESCE(source, '') FROM download")),
            QVariantList({text}));
    }

    void fileNeedNotBeKnown()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());
        constexpr auto largeId = Q_INT64_C(0x100000000);

        QVERIFY(manager.create(largeId, QUrl(QStringLiteral("http://h/a"))));

        QCOMPARE(
            downloads(scratch), ScratchDatabase::Rows({{largeId, QStringLiteral("http://h/a")}}));
    }

    void onlyItsOwnRemovalRemoves()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());
        ContentManager* const base = &manager;
        QVERIFY(manager.create(5, QUrl(QStringLiteral("http://h/a"))));
        QVERIFY(manager.create(6, QUrl(QStringLiteral("http://h/b"))));

        QVERIFY(!base->remove(5));
        QCOMPARE(downloads(scratch).size(), 2);
        QVERIFY(manager.remove(5));

        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{6, QStringLiteral("http://h/b")}}));
    }

    void sourceGoesWithItsFile()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());
        scratch.exec(QStringLiteral(
            "INSERT INTO file (id, directoryId, permissions) VALUES (5, 1, 3), (6, 1, 3)"));
        QVERIFY(manager.create(5, QUrl(QStringLiteral("http://h/a"))));
        QVERIFY(manager.create(6, QUrl(QStringLiteral("http://h/b"))));

        scratch.exec(QStringLiteral("DELETE FROM file WHERE id = 5"));

        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{6, QStringLiteral("http://h/b")}}));
    }

    void writesJoinTheCallersTransaction()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());
        QVERIFY(manager.create(5, QUrl(QStringLiteral("http://h/a"))));

        QVERIFY(scratch.database().transaction());
        QVERIFY(manager.create(6, QUrl(QStringLiteral("http://h/b"))));
        QVERIFY(manager.remove(5));
        QVERIFY(scratch.database().rollback());

        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{5, QStringLiteral("http://h/a")}}));
    }

    void handlesNoKindOfFileAndHasNoPendingWork()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());

        QCOMPARE(manager.mimeType(), QString());
        QVERIFY(!manager.updateMetaData());
    }

    void failureIsReported()
    {
        MessageLog log;
        ScratchDatabase scratch;
        DownloadManager manager(scratch.database());
        scratch.exec(QStringLiteral("DROP TABLE download"));

        QVERIFY(!manager.create(5, QUrl(QStringLiteral("http://h/a"))));
        const QStringList insertionFailed{
            QStringLiteral("bool DownloadManager::create(qint64, QUrl)"),
            QStringLiteral("Failed to execute m_insertDownload."),
            QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", "
                           "\"no such table: download\")"),
            QStringLiteral("\"INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);\"")};
        QCOMPARE(log.takeMessages(), insertionFailed);
        QVERIFY(!manager.save(5, source(QStringLiteral("http://h/a"))));
        QCOMPARE(log.takeMessages(), insertionFailed);

        QVERIFY(!manager.remove(5));
        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("bool DownloadManager::remove(int)"),
                 QStringLiteral("Failed to execute m_deleteDownload."),
                 QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", "
                                "\"no such table: download\")"),
                 QStringLiteral("\"DELETE FROM download WHERE fileId = ?;\"")}));
    }

    void staysHalfPreparedWithoutItsTable()
    {
        MessageLog log;
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("DROP TABLE download"));

        const DownloadManager manager(scratch.database());

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("DownloadManager::DownloadManager(QueryAgentDatabase&)"),
                 QStringLiteral("Failed to prepare m_insertDownload."),
                 QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                "\"no such table: download\")"),
                 QStringLiteral(
                     "\"INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);\"")}));
        QVERIFY(scratch.database().transaction());
    }

    void secondStatementIsReportedUnderItsOwnName()
    {
        MessageLog log;
        ScratchDatabase scratch;
        // Rows are inserted through the trigger of the view, and none can be deleted.
        scratch.exec(QStringLiteral("DROP TABLE download"));
        scratch.exec(QStringLiteral("CREATE VIEW download AS SELECT 1 AS fileId, 2 AS source"));
        scratch.exec(
            QStringLiteral("CREATE TRIGGER t INSTEAD OF INSERT ON download BEGIN SELECT 1; END"));

        const DownloadManager manager(scratch.database());

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("DownloadManager::DownloadManager(QueryAgentDatabase&)"),
                 QStringLiteral("Failed to prepare m_deleteDownload."),
                 QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                "\"cannot modify download because it is a view\")"),
                 QStringLiteral("\"DELETE FROM download WHERE fileId = ?;\"")}));
    }

    void openTransactionKeepsItFromPreparingAndIsCommitted()
    {
        MessageLog log;
        ScratchDatabase scratch;
        QVERIFY(scratch.database().transaction());
        scratch.exec(QStringLiteral("INSERT INTO download VALUES (5, 'http://h/a')"));

        DownloadManager manager(scratch.database());

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("DownloadManager::DownloadManager(QueryAgentDatabase&)"),
                 QStringLiteral("Failed to open transation on database"),
                 QStringLiteral("QSqlError(\"\", \"Unable to begin transaction\", "
                                "\"cannot start a transaction within a transaction\")")}));
        QVERIFY(!scratch.database().rollback());
        QCOMPARE(downloads(scratch), ScratchDatabase::Rows({{5, QStringLiteral("http://h/a")}}));
        QVERIFY(!manager.create(6, QUrl(QStringLiteral("http://h/b"))));
        QCOMPARE(
            log.takeWarnings().value(1), QStringLiteral("Failed to execute m_insertDownload."));
    }

    void openTransactionThatCannotBeCommittedIsReported()
    {
        MessageLog log;
        ScratchDatabase scratch;
        const QStringList statements =
            refuseCommit(QStringLiteral("INSERT"), QStringLiteral("download"));
        for (const QString& statement : statements) {
            scratch.exec(statement);
        }
        QVERIFY(scratch.database().transaction());
        scratch.exec(QStringLiteral("INSERT INTO download VALUES (5, 'http://h/a')"));

        const DownloadManager manager(scratch.database());

        QCOMPARE(
            log.takeMessages().mid(3),
            QStringList(refusedCommitWarning(
                QStringLiteral("DownloadManager::DownloadManager(QueryAgentDatabase&)"))));
        QVERIFY(scratch.database().transaction());
    }
};

QTEST_GUILESS_MAIN(DownloadManagerTest)

#include "tst_downloadmanager.moc"
