// SPDX-License-Identifier: BSD-3-Clause
#include "content/databaseschema.h"
#include "scratchdatabase.h"

#include <QTest>

class DatabaseSchemaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statementsRunInOrder()
    {
        const QStringList beginnings{
            QStringLiteral("PRAGMA user_version = 10;"),
            QStringLiteral("CREATE TABLE directory "),
            QStringLiteral("CREATE TABLE file "),
            QStringLiteral("CREATE TABLE image "),
            QStringLiteral("CREATE TABLE moodset "),
            QStringLiteral("CREATE TABLE dorselId "),
            QStringLiteral("CREATE TABLE download "),
            QStringLiteral("CREATE TABLE resource "),
            QStringLiteral("CREATE UNIQUE INDEX file_directory "),
            QStringLiteral("CREATE UNIQUE INDEX resource_fileId_resourceType "),
            QStringLiteral("CREATE INDEX resource_file_id "),
            QStringLiteral("CREATE INDEX resource_resource_id "),
            QStringLiteral("CREATE TRIGGER delete_file_trigger "),
            QStringLiteral("CREATE TRIGGER delete_directory_trigger ")};

        const QStringList statements = DatabaseSchema::statements();

        QCOMPARE(statements.size(), beginnings.size());
        for (int i = 0; i < statements.size(); ++i) {
            QVERIFY2(statements.at(i).startsWith(beginnings.at(i)), qPrintable(statements.at(i)));
        }
    }

    void wholeSchemaNeedsNoCompletion()
    {
        QCOMPARE(DatabaseSchema::completion(names(ScratchDatabase())), QStringList());
    }

    void caseOfANameMakesNoDifference()
    {
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("DROP TABLE dorselId"));
        scratch.exec(QStringLiteral("CREATE TABLE DORSELID (fileId INTEGER, dorselId TEXT)"));

        QCOMPARE(DatabaseSchema::completion(names(scratch)), QStringList());
    }

    void completionMakesWhatIsMissingInOrder()
    {
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("DROP TRIGGER delete_file_trigger"));
        scratch.exec(QStringLiteral("DROP INDEX resource_file_id"));
        scratch.exec(QStringLiteral("DROP TABLE image"));

        const QStringList all = DatabaseSchema::statements();
        QCOMPARE(
            DatabaseSchema::completion(names(scratch)),
            QStringList({all.at(3), all.at(10), all.at(12)}));
    }

    void tableHasItsColumns_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("directory")
            << QStringLiteral("directory")
            << QStringList{
                   QStringLiteral("id INTEGER key"), QStringLiteral("parentId INTEGER"),
                   QStringLiteral("path TEXT"), QStringLiteral("scope INTEGER not null")};
        QTest::newRow("file") << QStringLiteral("file")
                              << QStringList{
                                     QStringLiteral("id INTEGER key"),
                                     QStringLiteral("directoryId INTEGER not null"),
                                     QStringLiteral("mimeType TEXT"),
                                     QStringLiteral("fileName TEXT"),
                                     QStringLiteral("displayName TEXT"),
                                     QStringLiteral("modificationTime DATETIME"),
                                     QStringLiteral("permissions INTEGER not null"),
                                     QStringLiteral("metadataCurrent BOOL")};
        QTest::newRow("image") << QStringLiteral("image")
                               << QStringList{
                                      QStringLiteral("fileId INTEGER key"),
                                      QStringLiteral("dateTaken DATETIME"),
                                      QStringLiteral("width INTEGER"),
                                      QStringLiteral("height INTEGER"),
                                      QStringLiteral("orientation INTEGER")};
        QTest::newRow("moodset") << QStringLiteral("moodset")
                                 << QStringList{QStringLiteral("fileId INTEGER key"),
                                                QStringLiteral("favorite INTEGER default 0"),
                                                QStringLiteral("homeWallpaper TEXT"),
                                                QStringLiteral("applicationWallpaper TEXT"),
                                                QStringLiteral("highlightColor TEXT"),
                                                QStringLiteral("secondaryHighlightColor TEXT"),
                                                QStringLiteral("primaryColor TEXT"),
                                                QStringLiteral("secondaryColor TEXT"),
                                                QStringLiteral("timestamp TEXT"),
                                                QStringLiteral("ringerVolume INTEGER"),
                                                QStringLiteral("enabledSounds INTEGER"),
                                                QStringLiteral("partnerSpace TEXT"),
                                                QStringLiteral("version INTEGER")};
        QTest::newRow("dorselId") << QStringLiteral("dorselId")
                                  << QStringList{
                                         QStringLiteral("fileId INTEGER key"),
                                         QStringLiteral("dorselId TEXT")};
        QTest::newRow("download") << QStringLiteral("download")
                                  << QStringList{
                                         QStringLiteral("fileId INTEGER key"),
                                         QStringLiteral("source TEXT")};
        QTest::newRow("resource") << QStringLiteral("resource")
                                  << QStringList{
                                         QStringLiteral("fileId INTEGER"),
                                         QStringLiteral("resourceType TEXT"),
                                         QStringLiteral("resourceId INTEGER")};
    }

    void tableHasItsColumns()
    {
        QFETCH(QString, table);
        QFETCH(QStringList, columns);
        const ScratchDatabase scratch;

        const QVariantList read = scratch.column(
            QStringLiteral("SELECT name || ' ' || type || iif(\"notnull\", ' not null', '') "
                           "|| ifnull(' default ' || dflt_value, '') || iif(pk, ' key', '') "
                           "FROM pragma_table_info('%1') ORDER BY cid")
                .arg(table));

        QCOMPARE(QVariant(read).toStringList(), columns);
    }

    void numbersOfDeletedRowsAreNotUsedAgain()
    {
        ScratchDatabase scratch;
        const QString insertion =
            QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/%1', 0)");
        scratch.exec(insertion.arg(1));
        insertFile(scratch, 1, 1);
        scratch.exec(QStringLiteral("DELETE FROM directory"));

        scratch.exec(insertion.arg(2));
        scratch.exec(QStringLiteral("INSERT INTO file (directoryId, permissions) VALUES (2, 3)"));

        QCOMPARE(scratch.column(QStringLiteral("SELECT id FROM directory")), QVariantList({2}));
        QCOMPARE(scratch.column(QStringLiteral("SELECT id FROM file")), QVariantList({2}));
    }

    void pathIsUnique()
    {
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/a', 0)"));

        QSqlQuery query(scratch.database());

        QVERIFY(
            !query.exec(QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/a', 1)")));
    }

    void indexesAndTriggersAreTheseAlone()
    {
        const ScratchDatabase scratch;

        const QVariantList statements = scratch.column(QStringLiteral(
            "SELECT sql || ';' FROM sqlite_master WHERE type NOT IN ('table') AND sql IS NOT NULL "
            "ORDER BY rowid"));

        const QStringList expected{
            QStringLiteral("CREATE UNIQUE INDEX file_directory ON file (directoryId, fileName);"),
            QStringLiteral("CREATE UNIQUE INDEX resource_fileId_resourceType ON resource "
                           "(fileId, resourceType);"),
            QStringLiteral("CREATE INDEX resource_file_id ON resource (fileId);"),
            QStringLiteral("CREATE INDEX resource_resource_id ON resource (resourceId);"),
            QStringLiteral("CREATE TRIGGER delete_file_trigger BEFORE DELETE ON file FOR EACH ROW "
                           "BEGIN DELETE FROM moodset WHERE fileId = OLD.id; DELETE FROM image "
                           "WHERE fileId = OLD.id; DELETE FROM download WHERE fileId = OLD.id; "
                           "DELETE FROM resource WHERE fileId = OLD.id OR resourceId = OLD.id; "
                           "DELETE FROM dorselId WHERE fileId = OLD.id; END;"),
            QStringLiteral("CREATE TRIGGER delete_directory_trigger BEFORE DELETE ON directory "
                           "FOR EACH ROW BEGIN DELETE FROM file WHERE directoryId = OLD.id; "
                           "DELETE FROM directory WHERE parentId = OLD.id; END;")};
        QCOMPARE(QVariant(statements).toStringList(), expected);
    }

    void derivedRowsGoWithTheirFile()
    {
        ScratchDatabase scratch;
        scratch.exec(QStringLiteral("INSERT INTO directory (path, scope) VALUES ('/a', 0)"));
        const QStringList tables{
            QStringLiteral("moodset"), QStringLiteral("image"), QStringLiteral("download"),
            QStringLiteral("dorselId")};
        for (const int file : {1, 2}) {
            insertFile(scratch, file, 1);
            for (const QString& table : tables) {
                scratch.exec(
                    QStringLiteral("INSERT INTO %1 (fileId) VALUES (%2)").arg(table).arg(file));
            }
        }

        scratch.exec(QStringLiteral("DELETE FROM file WHERE id = 1"));

        for (const QString& table : tables) {
            QCOMPARE(
                scratch.column(QStringLiteral("SELECT fileId FROM %1").arg(table)),
                QVariantList({2}));
        }
    }

    void resourcesGoWithTheMoodsetAndWithTheirOwnFile()
    {
        ScratchDatabase scratch;
        for (const int file : {1, 2, 3, 4}) {
            insertFile(scratch, file, 1);
        }
        scratch.exec(QStringLiteral(
            "INSERT INTO resource VALUES (1, 'a', 3), (1, 'b', 4), (2, 'a', 3), (2, 'b', 4)"));

        scratch.exec(QStringLiteral("DELETE FROM file WHERE id = 1"));
        scratch.exec(QStringLiteral("DELETE FROM file WHERE id = 3"));

        const ScratchDatabase::Rows expected{{2, QStringLiteral("b"), 4}};
        QCOMPARE(scratch.rows(QStringLiteral("SELECT * FROM resource")), expected);
    }

    void directoryTakesItsFilesAndChildrenAlongAndNothingBelow()
    {
        ScratchDatabase scratch;
        scratch.exec(
            QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (NULL, '/a', 0), "
                           "(1, '/a/b', 0), (2, '/a/b/c', 0), (NULL, '/d', 0)"));
        for (const int directory : {1, 2, 3, 4}) {
            insertFile(scratch, directory, directory);
            scratch.exec(QStringLiteral("INSERT INTO image (fileId) VALUES (%1)").arg(directory));
        }

        scratch.exec(QStringLiteral("DELETE FROM directory WHERE path = '/a'"));

        QCOMPARE(
            scratch.column(QStringLiteral("SELECT path FROM directory ORDER BY id")),
            QVariantList({QStringLiteral("/a/b/c"), QStringLiteral("/d")}));
        QCOMPARE(
            scratch.column(QStringLiteral("SELECT id FROM file ORDER BY id")),
            QVariantList({2, 3, 4}));
        QCOMPARE(
            scratch.column(QStringLiteral("SELECT fileId FROM image ORDER BY fileId")),
            QVariantList({2, 3, 4}));
    }

private:
    /// The names of all tables, indexes and triggers.
    static QStringList names(const ScratchDatabase& scratch)
    {
        return QVariant(scratch.column(QStringLiteral("SELECT name FROM sqlite_master")))
            .toStringList();
    }

    static void insertFile(ScratchDatabase& scratch, int id, int directory)
    {
        scratch.exec(QStringLiteral("INSERT INTO file (id, directoryId, fileName, permissions) "
                                    "VALUES (%1, %2, '%1', 3)")
                         .arg(id)
                         .arg(directory));
    }
};

QTEST_GUILESS_MAIN(DatabaseSchemaTest)

#include "tst_databaseschema.moc"
