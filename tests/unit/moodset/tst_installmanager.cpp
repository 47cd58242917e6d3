// SPDX-License-Identifier: BSD-3-Clause
// Tests the statements of InstallManager and its loop.
#include "installfixture.h"
#include "messagelog.h"

#include <QTest>

class InstallManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { DbManager::instance(); }

    void packagesAreInstalledInTwoPlaces()
    {
        QCOMPARE(
            InstallManager::installPaths(),
            QStringList(
                {QStringLiteral("/usr/share/moodset"), QStringLiteral("/usr/share/sounds")}));
    }

    void statementThatCannotBePreparedIsReported_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QByteArray>("table");
        QTest::addColumn<int>("nth");
        QTest::addColumn<QString>("statement");
        QTest::newRow("m_fileQuery")
            << QByteArray("SELECT") << QByteArray() << 1
            << QStringLiteral("SELECT id, fileName, modificationTime FROM file "
                              "WHERE directoryId = ? ORDER BY fileName ASC;");
        QTest::newRow("m_fileInsert")
            << QByteArray("INSERT") << QByteArray("file") << 1
            << QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                              "modificationTime, permissions, metadataCurrent) "
                              "VALUES(?, ?, ?, ?, 1, 0)");
        QTest::newRow("m_fileSyncUpdate")
            << QByteArray("UPDATE") << QByteArray("file") << 1
            << QStringLiteral("UPDATE file SET modificationTime = ?, permissions = 1, "
                              "metadataCurrent = 0 WHERE id = ?;");
        QTest::newRow("m_fileSyncDelete") << QByteArray("DELETE") << QByteArray("file") << 1
                                          << QStringLiteral("DELETE FROM file WHERE id = ?;");
        QTest::newRow("m_directoryIdQuery")
            << QByteArray("SELECT") << QByteArray() << 2
            << QStringLiteral("SELECT id FROM directory WHERE path = ?;");
        QTest::newRow("m_directoryInsert")
            << QByteArray("INSERT") << QByteArray("directory") << 1
            << QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, ?);");
        QTest::newRow("m_directoryUpdate")
            << QByteArray("UPDATE") << QByteArray("directory") << 1
            << QStringLiteral("UPDATE directory SET parentId = ?, scope = ? WHERE id = ?;");
        QTest::newRow("m_directoryDelete") << QByteArray("DELETE") << QByteArray("directory") << 1
                                           << QStringLiteral("DELETE FROM directory WHERE id = ?;");
        QTest::newRow("m_dorselIdQuery")
            << QByteArray("SELECT") << QByteArray() << 3
            << QStringLiteral("SELECT file.id, dorselid.dorselId FROM file LEFT JOIN dorselid ON "
                              "file.id = dorselid.fileId WHERE directoryId = ? AND fileName = ?;");
        QTest::newRow("m_dorselIdInsert")
            << QByteArray("INSERT") << QByteArray("dorselId") << 1
            << QStringLiteral("INSERT INTO dorselid (fileId, dorselId) VALUES(?, ?)");
        QTest::newRow("m_dorselIdUpdate")
            << QByteArray("UPDATE") << QByteArray("dorselId") << 1
            << QStringLiteral("UPDATE dorselid SET dorselId = ? WHERE fileId = ?;");
    }

    void statementThatCannotBePreparedIsReported()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QByteArray, table);
        QFETCH(int, nth);
        QFETCH(QString, statement);
        InstallLibrary library;
        MessageLog log;
        library.database.refuseToPrepare(verb, nth, table);

        DrivenInstallManager manager(library.database.connection());

        const QString message =
            QStringLiteral("Failed to prepare %1.").arg(QLatin1String(QTest::currentDataTag()));
        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                QStringLiteral("InstallManager::InstallManager(QueryAgentDatabase&, QObject*)"),
                message,
                QStringLiteral(
                    "QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")"),
                statement));
        QVERIFY(!library.database.isInTransaction());
        QVERIFY(manager.step());
    }

    void newManagerHasEverythingParsed()
    {
        MessageLog log;
        InstallLibrary library;

        QCOMPARE(library.manager.runToIdle(), 2);

        QCOMPARE(
            library.turns, QStringList({QStringLiteral("moodsets"), QStringLiteral("indexes")}));
    }

    void moodsetsAreFinishedBeforeIndexes()
    {
        MessageLog log;
        InstallLibrary library;
        library.moodsets.remaining = 1;
        library.indexes.remaining = 1;

        library.manager.runToIdle();

        QCOMPARE(
            library.turns,
            QStringList(
                {QStringLiteral("moodsets"), QStringLiteral("moodsets"), QStringLiteral("indexes"),
                 QStringLiteral("indexes")}));
    }

    void refreshStartsTheParsersOver()
    {
        MessageLog log;
        InstallLibrary library;
        library.manager.step();

        library.manager.refreshInstalls();
        library.manager.runToIdle();

        QCOMPARE(
            library.turns,
            QStringList(
                {QStringLiteral("moodsets"), QStringLiteral("moodsets"),
                 QStringLiteral("indexes")}));
    }

    void nothingToParseIsNothingToDo()
    {
        MessageLog log;
        InstallLibrary library;
        library.manager.runToIdle();

        QVERIFY(!library.manager.updateMetaData());
    }

    void idleIsLogged()
    {
        MessageLog log;
        InstallLibrary library;
        library.manager.step();
        log.takeMessages();

        library.manager.step();

        const QStringList messages = log.takeMessages();
        QCOMPARE(messages.size(), 1);
        const QRegularExpression idle(QStringLiteral("^InstallManager idle in \\d+$"));
        QVERIFY2(idle.match(messages.constFirst()).hasMatch(), qPrintable(messages.constFirst()));
    }

    void otherEventsAreLeftToTheBase()
    {
        MessageLog log;
        InstallLibrary library;
        QEvent other(QEvent::Polish);

        QVERIFY(!library.manager.event(&other));

        QCOMPARE(library.turns, QStringList());
    }

    void vanishedPackageHoldsUpNeitherTheNextNorTheParsers()
    {
        MessageLog log;
        InstallLibrary library;
        library.folder.makeDirectory(QStringLiteral("one/a"));
        library.folder.makeDirectory(QStringLiteral("one/b"));
        library.folder.write(QStringLiteral("one/b/b.index"));
        library.manager.appendDirectory(library.folder.path(QStringLiteral("one")));
        library.manager.step();
        QVERIFY(!library.directoryRow(library.folder.path(QStringLiteral("one/b"))).isEmpty());

        library.folder.removeTree(QStringLiteral("one/a"));
        library.manager.runToIdle();

        QCOMPARE(
            library.database.fileNames(library.folder.path(QStringLiteral("one/b"))),
            QStringList{QStringLiteral("b.index")});
        QCOMPARE(
            library.turns, QStringList({QStringLiteral("moodsets"), QStringLiteral("indexes")}));
    }

    void filesThatAreAsTheyWereAreNotReadAgain()
    {
        MessageLog log;
        InstallLibrary library;
        library.folder.makeDirectory(QStringLiteral("one/a"));
        library.folder.write(QStringLiteral("one/a/a.index"));
        const QString directory = library.folder.path(QStringLiteral("one"));
        library.manager.appendDirectory(directory);
        library.manager.runToIdle();
        QCOMPARE(library.metadataCurrent(QStringLiteral("a.index")), 0);
        library.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1;"));

        library.manager.appendDirectory(directory);
        library.manager.runToIdle();

        QCOMPARE(library.metadataCurrent(QStringLiteral("a.index")), 1);
    }

    void directoriesComeBeforePackagesBeforeParsers()
    {
        MessageLog log;
        InstallLibrary library;
        library.folder.makeDirectory(QStringLiteral("one/a"));
        library.folder.makeDirectory(QStringLiteral("two/b"));
        library.manager.appendDirectory(library.folder.path(QStringLiteral("one")));
        library.manager.appendDirectory(library.folder.path(QStringLiteral("two")));
        library.folder.write(QStringLiteral("one/a/a.index"));
        library.folder.write(QStringLiteral("two/b/b.index"));
        const auto packages = [&] {
            return QStringList(
                library.database.fileNames(library.folder.path(QStringLiteral("one/a")))
                + library.database.fileNames(library.folder.path(QStringLiteral("two/b"))));
        };

        library.manager.step();
        library.manager.step();
        QVERIFY(!library.directoryRow(library.folder.path(QStringLiteral("two/b"))).isEmpty());
        QCOMPARE(packages(), QStringList());

        library.manager.step();
        QCOMPARE(packages(), QStringList{QStringLiteral("a.index")});
        library.manager.step();
        QCOMPARE(packages(), QStringList({QStringLiteral("a.index"), QStringLiteral("b.index")}));
        QCOMPARE(library.turns, QStringList());

        library.manager.step();
        QCOMPARE(library.turns, QStringList{QStringLiteral("moodsets")});
    }
};

QTEST_GUILESS_MAIN(InstallManagerTest)

#include "tst_installmanager.moc"
