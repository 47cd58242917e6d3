// SPDX-License-Identifier: BSD-3-Clause
// Tests how InstallManager scans install directories.
#include "installfixture.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "refusedcommit.h"

#include <QTest>

namespace {

const QString ScanInstallDirectory = QStringLiteral("bool InstallManager::scanInstallDirectory()");

/// An install directory that is queued for a scan.
struct InstallDirectory : InstallLibrary
{
    InstallDirectory()
    {
        manager.runToIdle();
        turns.clear();
        manager.appendDirectory(folder.path());
    }
    void addPackageRow(const QString& name)
    {
        database.exec(QStringLiteral("INSERT INTO directory (parentId, path, scope) "
                                     "VALUES (%1, '%2', 2);")
                          .arg(directoryId(folder.path()))
                          .arg(folder.path(name)));
    }
    QStringList packages() const
    {
        QStringList names = database.directoryPaths();
        names.removeAll(folder.path());
        return names.replaceInStrings(folder.path() + QLatin1Char('/'), QString());
    }
};

} // namespace

class InstallDirectoryScanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { DbManager::instance(); }

    void installDirectoryIsARootForKnownEntries()
    {
        MessageLog log;
        const InstallDirectory install;

        QCOMPARE(install.directoryRow(install.folder.path()), QList<int>({0, 1}));
    }

    void missingInstallDirectoryIsDroppedQuietly()
    {
        MessageLog log;
        InstallLibrary library;
        library.manager.runToIdle();
        log.takeMessages();

        library.manager.appendDirectory(library.folder.path(QStringLiteral("missing")));

        QVERIFY(!library.manager.step());
        QCOMPARE(log.takeMessages(), QStringList());
        QCOMPARE(library.database.directoryPaths(), QStringList());
    }

    void packagesGetRowsForRemovalsOnly()
    {
        MessageLog log;
        InstallDirectory install;
        install.folder.makeDirectory(QStringLiteral("a"));
        install.folder.makeDirectory(QStringLiteral("b/images"));
        install.folder.makeDirectory(QStringLiteral(".hidden"));
        install.folder.write(QStringLiteral("file"));

        // Later steps list the packages.
        install.manager.step();

        QCOMPARE(install.packages(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        const int parent = install.directoryId(install.folder.path());
        QCOMPARE(
            install.directoryRow(install.folder.path(QStringLiteral("a"))),
            QList<int>({parent, 2}));
        install.manager.runToIdle();
        QCOMPARE(
            install.directoryRow(install.folder.path(QStringLiteral("a"))),
            QList<int>({parent, 2}));
    }

    void linkToADirectoryIsAPackage()
    {
        MessageLog log;
        const TestFolder elsewhere;
        InstallDirectory install;
        install.folder.makeLink(QStringLiteral("a"), elsewhere.path());

        install.manager.step();

        QCOMPARE(install.packages(), QStringList{QStringLiteral("a")});
    }

    void packageThatIsGoneLosesItsRows()
    {
        MessageLog log;
        InstallDirectory install;
        install.folder.makeDirectory(QStringLiteral("b"));
        install.addPackageRow(QStringLiteral("a"));
        install.addPackageRow(QStringLiteral("c"));
        for (const auto& name : {QStringLiteral("a"), QStringLiteral("c")}) {
            install.database.exec(
                QStringLiteral("INSERT INTO file (directoryId, fileName, permissions) "
                               "VALUES (%1, 'f', 1);")
                    .arg(install.directoryId(install.folder.path(name))));
        }
        install.addPackageRow(QStringLiteral("b"));

        install.manager.step();

        QCOMPARE(install.packages(), QStringList{QStringLiteral("b")});
        QCOMPARE(install.database.value(QStringLiteral("SELECT count(*) FROM file;")).toInt(), 0);
    }

    void rowThatStandsWhenThePackagesRunOutStaysUntilTheNextScan()
    {
        MessageLog log;
        InstallDirectory install;
        install.folder.makeDirectory(QStringLiteral("a"));
        install.addPackageRow(QStringLiteral("b"));
        install.addPackageRow(QStringLiteral("c"));

        install.manager.runToIdle();
        QCOMPARE(install.packages(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));

        install.manager.appendDirectory(install.folder.path());
        install.manager.runToIdle();
        QCOMPARE(install.packages(), QStringList{QStringLiteral("a")});
    }

    void knownPackageIsScannedAgain()
    {
        MessageLog log;
        InstallDirectory install;
        install.folder.makeDirectory(QStringLiteral("a"));
        install.manager.runToIdle();
        install.folder.write(QStringLiteral("a/new.index"));

        install.manager.appendDirectory(install.folder.path());
        install.manager.runToIdle();

        QCOMPARE(
            install.database.fileNames(install.folder.path(QStringLiteral("a"))),
            QStringList{QStringLiteral("new.index")});
    }

    void packageThatWasRegisteredByItselfIsAdopted()
    {
        MessageLog log;
        InstallDirectory install;
        const QString package = install.folder.path(QStringLiteral("a"));
        install.folder.makeDirectory(QStringLiteral("a"));
        QVERIFY(install.manager.install(package, QString(), false));
        const int id = install.directoryId(package);
        QCOMPARE(install.directoryRow(package), QList<int>({0, 2}));

        install.manager.runToIdle();

        QCOMPARE(
            install.directoryRow(package),
            QList<int>({install.directoryId(install.folder.path()), 2}));
        QCOMPARE(install.directoryId(package), id);
    }

    void directoryWithoutARowIsPassedOver()
    {
        MessageLog log;
        InstallDirectory install;
        TestFolder next;
        install.folder.makeDirectory(QStringLiteral("a"));
        next.makeDirectory(QStringLiteral("b"));
        install.manager.appendDirectory(next.path());
        install.database.exec(
            QStringLiteral("DELETE FROM directory WHERE path = '%1';").arg(install.folder.path()));

        install.manager.runToIdle();

        QCOMPARE(
            install.database.directoryPaths(),
            QStringList({next.path(), next.path(QStringLiteral("b"))}));
    }

    void failedInstallsQueryIsReported()
    {
        MessageLog log;
        InstallDirectory install;
        // This is the statement after the one for the id of the directory.
        install.database.refuseToPrepare("SELECT", 2);

        install.manager.step();

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                ScanInstallDirectory, QStringLiteral("Failed to prepare installs query"),
                QStringLiteral(
                    "QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")"),
                QStringLiteral(
                    "SELECT id, path FROM directory WHERE parentId = ? ORDER BY path ASC;")));
        QVERIFY(!install.database.isInTransaction());
    }

    // The package's turn follows in the same step, and finds the transaction open.
    void failedLookupLeavesTheTransactionToThePackagesCommit()
    {
        MessageLog log;
        InstallDirectory install;
        install.folder.makeDirectory(QStringLiteral("b"));
        install.addPackageRow(QStringLiteral("a"));
        install.database.refuseToPrepare("SELECT", 3);

        install.manager.step();

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                ScanInstallDirectory, QStringLiteral("Failed to execute m_directoryIdQuery"),
                notAuthorizedToRun(), QStringLiteral("SELECT id FROM directory WHERE path = ?;")));
        QVERIFY(!install.database.isInTransaction());
        QCOMPARE(install.packages(), QStringList{QStringLiteral("b")});
        QCOMPARE(
            install.directoryRow(install.folder.path(QStringLiteral("b"))), QList<int>({0, 2}));
    }

    void packagesThatNoRowCanHoldAreLeftOutWithAWarning()
    {
        MessageLog log;
        InstallDirectory install;
        const QString changed = QStringLiteral("a\uffff");
        install.folder.makeDirectory(QStringLiteral("a"));
        install.folder.makeDirectory(changed);
        install.folder.makeRawDirectory("latin\xe4");
        install.folder.writeRawName("latin\xe4.txt");

        install.manager.step();

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {unstorableWarning(ScanInstallDirectory, install.folder.path(changed)),
                 undecodableWarning(ScanInstallDirectory, install.folder.rawPath("latin\xe4"))}));
        QCOMPARE(install.packages(), QStringList{QStringLiteral("a")});
    }

    void failedCommitIsReportedAndLeavesTheRows()
    {
        MessageLog log;
        InstallDirectory install;
        install.addPackageRow(QStringLiteral("a"));
        install.database.exec(refuseCommit(QStringLiteral("DELETE"), QStringLiteral("directory")));

        install.manager.step();

        QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(ScanInstallDirectory)));
        QVERIFY(!install.database.isInTransaction());
        QCOMPARE(install.packages(), QStringList{QStringLiteral("a")});
    }

    void failedChangeIsReportedAndRolledBack_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("statement");
        QTest::newRow("delete") << QStringLiteral("DELETE")
                                << QStringLiteral("Failed to execute m_directoryDelete.")
                                << QStringLiteral("DELETE FROM directory WHERE id = ?;");
        QTest::newRow("insert")
            << QStringLiteral("INSERT") << QStringLiteral("Failed to execute m_directoryInsert.")
            << QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, ?);");
        QTest::newRow("update")
            << QStringLiteral("UPDATE") << QStringLiteral("Failed to execute m_directoryUpdate.")
            << QStringLiteral("UPDATE directory SET parentId = ?, scope = ? WHERE id = ?;");
    }

    void failedChangeIsReportedAndRolledBack()
    {
        QFETCH(QString, operation);
        QFETCH(QString, message);
        QFETCH(QString, statement);
        MessageLog log;
        InstallDirectory install;
        install.addPackageRow(QStringLiteral("a"));
        install.folder.makeDirectory(QStringLiteral("b"));
        install.folder.makeDirectory(QStringLiteral("c"));
        QVERIFY(
            install.manager.install(install.folder.path(QStringLiteral("c")), QString(), false));
        // The scope of packages stays, and their turn follows in the same step.
        const QString condition =
            operation == QStringLiteral("DELETE") ? QString() : QStringLiteral("WHEN NEW.parentId");
        install.database.exec(
            QStringLiteral("CREATE TRIGGER refuse_change BEFORE %1 ON directory %2 "
                           "BEGIN SELECT RAISE(ABORT, 'refused'); END;")
                .arg(operation, condition));

        install.manager.step();

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(ScanInstallDirectory, message, refusedError(), statement));
        QVERIFY(!install.database.isInTransaction());
        QCOMPARE(
            install.packages(),
            QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        for (const auto& name : {QStringLiteral("b"), QStringLiteral("c")}) {
            QCOMPARE(install.directoryRow(install.folder.path(name)), QList<int>({0, 2}));
        }
    }
};

QTEST_GUILESS_MAIN(InstallDirectoryScanTest)

#include "tst_installdirectoryscan.moc"
