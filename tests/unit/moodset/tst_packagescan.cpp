// SPDX-License-Identifier: BSD-3-Clause
// Tests how InstallManager scans packages.
#include "installfixture.h"
#include "leftoutnames.h"
#include "messagelog.h"
#include "refusedcommit.h"

#include <QFileInfo>
#include <QTest>

namespace {

const QString ScanPackage =
    QStringLiteral("bool InstallManager::scanPackage(const QString&, const QString&, bool)");
const QString DorselIdQuery =
    QStringLiteral("SELECT file.id, dorselid.dorselId FROM file LEFT JOIN dorselid ON file.id = "
                   "dorselid.fileId WHERE directoryId = ? AND fileName = ?;");

/// A package whose parsers have no work.
struct Package : InstallLibrary
{
    Package()
    {
        manager.runToIdle();
        turns.clear();
    }
    bool install(const QString& dorselId = QString(), bool force = false)
    {
        return manager.install(folder.path(), dorselId, force);
    }
    QStringList fileNames() const { return database.fileNames(folder.path()); }
    /// File names and cover ids, in the order of the names.
    QStringList dorselIds() const
    {
        QStringList ids;
        const LibraryDatabase::Rows rows =
            database.rows(QStringLiteral("SELECT fileName, dorselId FROM dorselId JOIN file ON "
                                         "id = fileId ORDER BY fileName;"));
        for (const QVariantList& row : rows) {
            ids.append(row.at(0).toString() + QLatin1Char(' ') + row.at(1).toString());
        }
        return ids;
    }
};

QString name(const char* text)
{
    return QString::fromUtf8(text);
}

} // namespace

class PackageScanTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { DbManager::instance(); }

    void filesGetRowsByTheirEndings()
    {
        MessageLog log;
        Package package;
        for (const char* file :
             {"b.index", "a.moodset", "c.Moodset", "d.txt", ".moodset", ".index", ".e.index"}) {
            package.folder.write(name(file));
        }
        package.folder.makeDirectory(name("f.moodset"));
        package.folder.makeLink(name("g.moodset"), name("f.moodset"));

        QVERIFY(package.install());

        const LibraryDatabase::Rows expected{
            {name("a.moodset"), name("application/x-zavro-moodset"), 1, 0},
            {name("b.index"), name("application/x-zavro-index"), 1, 0}};
        QCOMPARE(
            package.database.rows(QStringLiteral("SELECT fileName, mimeType, permissions, "
                                                 "metadataCurrent FROM file ORDER BY fileName;")),
            expected);
        QCOMPARE(
            package.database
                .value(QStringLiteral(
                    "SELECT modificationTime FROM file WHERE fileName = 'a.moodset';"))
                .toDateTime(),
            QFileInfo(package.folder.path(name("a.moodset"))).lastModified());
        QCOMPARE(package.manager.runToIdle(), 2);
    }

    void packageByItselfIsARootForRemovalsOnly()
    {
        MessageLog log;
        Package package;

        QVERIFY(package.install());

        QCOMPARE(package.directoryRow(package.folder.path()), QList<int>({0, 2}));
    }

    void missingPackageChangesNothing()
    {
        MessageLog log;
        Package package;

        QVERIFY(!package.manager.install(package.folder.path(name("missing")), QString(), true));

        QCOMPARE(package.database.directoryPaths(), QStringList());
        QVERIFY(!package.manager.step());
    }

    void packageWithoutFilesOfItsOwnKeepsItsDirectoryRow()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("readme.txt"));

        QVERIFY(package.install());

        QCOMPARE(package.fileNames(), QStringList());
        QCOMPARE(package.database.directoryPaths(), QStringList{package.folder.path()});
        QVERIFY(!package.manager.step());
    }

    void unchangedPackageIsLeftAlone()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install();
        package.manager.runToIdle();
        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1;"));

        QVERIFY(package.install());

        QCOMPARE(package.metadataCurrent(name("a.moodset")), 1);
        QVERIFY(!package.manager.step());
    }

    void forceHasUnchangedFilesParsed()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.index"));
        package.install();
        package.manager.runToIdle();
        package.turns.clear();
        package.database.exec(
            QStringLiteral("UPDATE file SET metadataCurrent = 1, permissions = 3;"));

        QVERIFY(package.install(QString(), true));

        QCOMPARE(package.metadataCurrent(name("a.moodset")), 0);
        QCOMPARE(package.metadataCurrent(name("b.index")), 0);
        QCOMPARE(
            package.database.value(QStringLiteral("SELECT sum(permissions) FROM file;")).toInt(),
            2);
        package.manager.runToIdle();
        QCOMPARE(package.turns, QStringList({name("moodsets"), name("indexes")}));
    }

    void changedFileAloneIsParsed()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.index"));
        package.install();
        package.manager.runToIdle();
        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1;"));
        package.age(name("b.index"));

        QVERIFY(package.install());

        QCOMPARE(package.metadataCurrent(name("a.moodset")), 1);
        QCOMPARE(package.metadataCurrent(name("b.index")), 0);
        QVERIFY(package.manager.step());
    }

    void removedFileLosesItsRowAtTheNextScan()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.moodset"));
        package.install();
        package.folder.remove(name("a.moodset"));

        QVERIFY(package.install());

        QCOMPARE(package.fileNames(), QStringList{name("b.moodset")});
    }

    void removedFileLosesItsRowAtOnceThroughTheWatch()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.moodset"));
        package.install();
        QCOMPARE(package.fileNames(), QStringList({name("a.moodset"), name("b.moodset")}));
        package.folder.remove(name("a.moodset"));

        package.files.readEvents();

        QCOMPARE(package.fileNames(), QStringList{name("b.moodset")});
    }

    void rowThatStandsWhenTheFilesRunOutIsLeft()
    {
        MessageLog log;
        Package package;
        for (const char* file : {"b.moodset", "c.moodset"}) {
            package.folder.write(name(file));
        }
        package.install();
        package.folder.remove(name("b.moodset"));
        package.folder.remove(name("c.moodset"));
        package.folder.write(name("a.moodset"));

        QVERIFY(package.install());

        QCOMPARE(package.fileNames(), QStringList({name("a.moodset"), name("b.moodset")}));
    }

    void coverIdIsAttachedToEveryMoodsetFile()
    {
        MessageLog log;
        Package package;
        for (const char* file : {"a.moodset", "b.moodset", "c.index"}) {
            package.folder.write(name(file));
        }

        QVERIFY(package.install(name("7")));

        QCOMPARE(package.dorselIds(), QStringList({name("a.moodset 7"), name("b.moodset 7")}));
    }

    void newCoverIdReplacesTheOld()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install(name("7"));

        QVERIFY(package.install(name("8")));

        QCOMPARE(package.dorselIds(), QStringList{name("a.moodset 8")});
    }

    void sameCoverIdIsNotWritten()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install(name("7"));
        package.database.exec(refuse(name("UPDATE"), name("dorselId")));
        package.database.exec(refuse(name("INSERT"), name("dorselId")));

        QVERIFY(package.install(name("7")));

        QCOMPARE(package.dorselIds(), QStringList{name("a.moodset 7")});
    }

    void scanWithoutACoverIdKeepsTheOld()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install(name("7"));

        QVERIFY(package.install(QString(), true));

        QCOMPARE(package.dorselIds(), QStringList{name("a.moodset 7")});
    }

    void moodsetFileThatLostItsRowIsReportedAndPassedOver()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.moodset"));
        package.database.exec(
            QStringLiteral("CREATE TRIGGER lose AFTER INSERT ON file WHEN NEW.fileName = "
                           "'a.moodset' BEGIN DELETE FROM file WHERE id = NEW.id; END;"));

        QVERIFY(package.install(name("7")));

        QCOMPARE(
            log.takeWarnings(),
            QStringList({ScanPackage, name("Failed to query latest moodset file data!")}));
        QCOMPARE(package.dorselIds(), QStringList{name("b.moodset 7")});
    }

    void failedFileQueryIsReported()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        // This is the statement after the one for the id of the directory.
        package.database.refuseToPrepare("SELECT", 2);

        QVERIFY(!package.install());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                ScanPackage, name("Failed to execute m_fileQuery"), notAuthorizedToRun(),
                name("SELECT id, fileName, modificationTime FROM file WHERE directoryId = ? "
                     "ORDER BY fileName ASC;")));
        QVERIFY(!package.database.isInTransaction());
    }

    void failedCoverIdQueryLeavesTheTransactionToTheNextCommit()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.database.refuseToPrepare("SELECT", 3);

        QVERIFY(!package.install(name("7")));

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                ScanPackage, name("Failed to prepare execute m_dorselIdQuery"),
                notAuthorizedToRun(), DorselIdQuery));
        QVERIFY(package.database.isInTransaction());
        QCOMPARE(package.fileNames(), QStringList());
        QVERIFY(!package.manager.step());

        QVERIFY(package.database.connection().commit());
        QCOMPARE(package.fileNames(), QStringList{name("a.moodset")});
    }

    void failedChangeIsReportedAndRolledBack_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("statement");
        QTest::newRow("delete") << name("DELETE") << name("Failed to execute m_fileSyncDelete.")
                                << name("DELETE FROM file WHERE id = ?;");
        QTest::newRow("update") << name("UPDATE") << name("Failed to execute m_fileSyncUpdate.")
                                << name("UPDATE file SET modificationTime = ?, permissions = 1, "
                                        "metadataCurrent = 0 WHERE id = ?;");
        QTest::newRow("insert") << name("INSERT") << name("Failed to execute m_fileInsert.")
                                << name("INSERT INTO file (directoryId, mimeType, fileName, "
                                        "modificationTime, permissions, metadataCurrent) "
                                        "VALUES(?, ?, ?, ?, 1, 0)");
    }

    void failedChangeIsReportedAndRolledBack()
    {
        QFETCH(QString, operation);
        QFETCH(QString, message);
        QFETCH(QString, statement);
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.folder.write(name("b.moodset"));
        package.install();
        package.folder.remove(name("a.moodset"));
        package.folder.write(name("c.moodset"));
        package.database.exec(refuse(operation, name("file")));

        QVERIFY(!package.install(QString(), true));

        QCOMPARE(
            log.takeWarnings(), queryWarnings(ScanPackage, message, refusedError(), statement));
        QVERIFY(!package.database.isInTransaction());
        QCOMPARE(package.fileNames(), QStringList({name("a.moodset"), name("b.moodset")}));
    }

    void namesThatNoRowCanHoldAreLeftOutWithAWarning()
    {
        MessageLog log;
        Package package;
        const QString marked = QChar(QChar::ByteOrderMark) + name("a.moodset");
        package.folder.write(name("a.moodset"));
        package.folder.write(marked);
        package.folder.write(QChar(QChar::ByteOrderMark) + name("notes.txt"));
        package.folder.writeRawName("latin\xe4.index");
        package.folder.writeRawName("latin\xe4.txt");
        package.folder.makeRawDirectory("latin\xe4.moodset");

        // The id of a cover must not be stored for the file with the shortened name.
        QVERIFY(package.install(name("7")));

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {unstorableWarning(ScanPackage, package.folder.path(marked)),
                 undecodableWarning(ScanPackage, package.folder.rawPath("latin\xe4.index"))}));
        QCOMPARE(package.fileNames(), QStringList{name("a.moodset")});
        QCOMPARE(package.dorselIds(), QStringList{name("a.moodset 7")});
    }

    void packageThatTheDatabaseWouldChangeIsNotInstalled()
    {
        MessageLog log;
        Package package;
        const QString path = package.folder.path(name("package\xef\xbf\xbf"));
        package.folder.makeDirectory(name("package\xef\xbf\xbf"));

        QVERIFY(!package.manager.install(path, QString(), true));

        QCOMPARE(
            log.takeWarnings(),
            QStringList(unstorableWarning(
                name("qint64 FileManager::appendDirectory(const QString&, "
                     "FileManager::DirectoryScope, bool)"),
                path)));
    }

    void failedCommitIsReportedAndLeavesTheRows()
    {
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install();
        package.folder.write(name("b.moodset"));
        package.database.exec(refuseCommit(name("INSERT"), name("file")));

        QVERIFY(!package.install(name("8")));

        QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(ScanPackage)));
        QVERIFY(!package.database.isInTransaction());
        QCOMPARE(package.fileNames(), QStringList{name("a.moodset")});
        QCOMPARE(package.dorselIds(), QStringList());
    }

    void failedWriteOfACoverIdIsReportedAndRolledBack_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("statement");
        QTest::newRow("insert") << name("INSERT") << name("Failed to execute m_dorselIdInsert.")
                                << name("INSERT INTO dorselid (fileId, dorselId) VALUES(?, ?)");
        QTest::newRow("update") << name("UPDATE") << name("Failed to execute m_dorselIdUpdate.")
                                << name("UPDATE dorselid SET dorselId = ? WHERE fileId = ?;");
    }

    void failedWriteOfACoverIdIsReportedAndRolledBack()
    {
        QFETCH(QString, operation);
        QFETCH(QString, message);
        QFETCH(QString, statement);
        MessageLog log;
        Package package;
        package.folder.write(name("a.moodset"));
        package.install(operation == name("UPDATE") ? name("7") : QString());
        const QStringList before = package.dorselIds();
        package.folder.write(name("c.index"));
        package.database.exec(refuse(operation, name("dorselId")));

        QVERIFY(!package.install(name("8")));

        QCOMPARE(
            log.takeWarnings(), queryWarnings(ScanPackage, message, refusedError(), statement));
        QVERIFY(!package.database.isInTransaction());
        QCOMPARE(package.fileNames(), QStringList{name("a.moodset")});
        QCOMPARE(package.dorselIds(), before);
    }
};

QTEST_GUILESS_MAIN(PackageScanTest)

#include "tst_packagescan.moc"
