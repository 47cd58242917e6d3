// SPDX-License-Identifier: BSD-3-Clause
#include "content/databaseschema.h"
#include "content/queryagentdatabase.h"
#include "databasehome.h"
#include "startlog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTest>

namespace {

QStringList fileNames(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString unopenedError()
{
    return StartLog::error(QString(), QString(), QString());
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The lines for one attempt to open a file that cannot be opened.
QStringList failedAttempt(bool makesSchema, const QString& folder)
{
    QStringList log;
    if (makesSchema) {
        const QStringList statements = DatabaseSchema::statements();
        for (const QString& statement : statements) {
            log += StartLog::notOpen()
                + StartLog::initializationFailed(
                       QStringLiteral("bool DbManager::createDatabaseSchema(const QSqlDatabase&)"),
                       statement, unopenedError());
        }
        log += QStringLiteral("critical: DbManager::DbManager: Failed to create DB schema. Can't "
                              "continue!");
    }
    // Two pragmas fail without a warning, and then the query of the version fails.
    return log + StartLog::notOpen() + StartLog::notOpen() + StartLog::notOpen()
        + StartLog::versionUnknown(unopenedError()) + StartLog::deletion(folder);
}

} // namespace

/// Tests how a start handles the files that it finds.
class DatabaseStartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingFileIsMade()
    {
        const DatabaseHome home;

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(fileNames(home.databaseFolder()), QStringList(QStringLiteral("moodsetd.sqlite")));
        QCOMPARE(home.version(), 10);
        QCOMPARE(schema(home), DatabaseSchema::statements().mid(1));
    }

    void schemaThatWasMadeInPartIsCompleted_data()
    {
        QTest::addColumn<int>("statementCount");
        for (int count = 1; count <= DatabaseSchema::statements().size(); ++count) {
            QTest::addRow("%d statements", count) << count;
        }
    }

    void schemaThatWasMadeInPartIsCompleted()
    {
        QFETCH(int, statementCount);
        const DatabaseHome home;
        home.makeFolder();
        const QStringList statements = DatabaseSchema::statements().mid(0, statementCount);
        for (const QString& statement : statements) {
            home.exec(statement);
        }

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(schema(home), DatabaseSchema::statements().mid(1));
        QCOMPARE(home.version(), 10);
    }

    void completionKeepsAllRows()
    {
        const DatabaseHome home;
        home.start();
        home.exec(QStringLiteral("INSERT INTO download VALUES (1, 'http://h/a')"));
        home.exec(QStringLiteral("DROP TABLE resource"));
        home.exec(QStringLiteral("DROP TRIGGER delete_file_trigger"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(home.column(QStringLiteral("SELECT count(*) FROM resource")), QVariantList({0}));
        QCOMPARE(
            home.rows(QStringLiteral("SELECT * FROM download")),
            DatabaseHome::Rows({{1, QStringLiteral("http://h/a")}}));
    }

    void rowsThatAMissingIndexLetInTwiceAreRemoved()
    {
        const DatabaseHome home;
        home.start();
        home.exec(QStringLiteral("DROP INDEX file_directory"));
        home.exec(QStringLiteral("DROP INDEX resource_fileId_resourceType"));
        home.exec(QStringLiteral(
            "INSERT INTO file (id, directoryId, fileName, permissions) "
            "VALUES (1, 1, 'a', 3), (2, 1, 'b', 3), (3, 2, 'a', 3), (4, 1, 'a', 3)"));
        home.exec(
            QStringLiteral("INSERT INTO resource VALUES (2, 'x', 1), (2, 'y', 1), (2, 'x', 3)"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(
            home.column(QStringLiteral("SELECT id FROM file ORDER BY id")),
            QVariantList({1, 2, 3}));
        QCOMPARE(
            home.rows(QStringLiteral("SELECT * FROM resource ORDER BY resourceType")),
            DatabaseHome::Rows({{2, QStringLiteral("x"), 3}, {2, QStringLiteral("y"), 1}}));
        QCOMPARE(home.column(indexCount()), QVariantList({4}));
    }

    void schemaThatCannotBeCompletedIsReportedAndKept()
    {
        const DatabaseHome home;
        home.start();
        home.exec(QStringLiteral("DROP INDEX resource_file_id"));
        QVERIFY(QFile::setPermissions(home.databasePath(), QFile::ReadOwner));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::initializationFailed(
                QStringLiteral("void DbManager::completeDatabaseSchema()"),
                DatabaseSchema::statements().at(10),
                StartLog::error(
                    QStringLiteral("8"), QStringLiteral("Unable to fetch row"),
                    QStringLiteral("attempt to write a readonly database")))
                + QStringList(
                    {QStringLiteral("critical: DbManager::DbManager: Failed to create DB schema. "
                                    "Can't continue!")})
                + StartLog::fine());
        QVERIFY(QFile::setPermissions(home.databasePath(), QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(home.column(indexCount()), QVariantList({3}));
    }

    void writeAheadLogThatWasCutOffLosesNoTable_data()
    {
        QTest::addColumn<int>("tenths");
        for (int tenths = 0; tenths <= 10; ++tenths) {
            QTest::addRow("%d tenths", tenths) << tenths;
        }
    }

    void writeAheadLogThatWasCutOffLosesNoTable()
    {
        QFETCH(int, tenths);
        const DatabaseHome home;
        home.makeFolder();
        home.exec(QStringLiteral("PRAGMA user_version = 10"));
        home.exec(QStringLiteral("PRAGMA journal_mode = WAL"));
        const QString logPath = home.databasePath() + QStringLiteral("-wal");
        QByteArray emptyFile;
        QByteArray writeAheadLog;
        {
            QueryAgentDatabase writer;
            writer.setDatabaseName(home.databasePath());
            QVERIFY(writer.open());
            QSqlQuery query(writer);
            const QStringList statements = DatabaseSchema::statements();
            for (const QString& statement : statements) {
                QVERIFY(query.exec(statement));
            }
            // Closing moves the schema from the log into the file.
            emptyFile = readFile(home.databasePath());
            writeAheadLog = readFile(logPath);
        }
        QVERIFY(!writeAheadLog.isEmpty());
        home.writeFile(emptyFile);
        QFile log(logPath);
        QVERIFY(log.open(QIODevice::WriteOnly));
        QVERIFY(log.write(writeAheadLog.left(writeAheadLog.size() * tenths / 10)) >= 0);
        log.close();

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(schema(home), DatabaseSchema::statements().mid(1));
    }

    void fileOfThisVersionIsKept()
    {
        const DatabaseHome home;
        home.start();
        home.exec(QStringLiteral("INSERT INTO download VALUES (1, 'http://h/a')"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(
            home.rows(QStringLiteral("SELECT * FROM download")),
            DatabaseHome::Rows({{1, QStringLiteral("http://h/a")}}));
    }

    void readersCanReadWhileItIsWritten()
    {
        const DatabaseHome home;

        home.start();

        QCOMPARE(
            home.column(QStringLiteral("PRAGMA journal_mode")),
            QVariantList({QStringLiteral("wal")}));
    }

    void emptyFileIsRebuilt()
    {
        const DatabaseHome home;
        home.writeFile(QByteArray());

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::versionOutdated() + StartLog::deletion(home.databaseFolder())
                + StartLog::fine());
        QCOMPARE(home.version(), 10);
    }

    void otherVersionIsRebuilt_data()
    {
        QTest::addColumn<int>("version");
        QTest::newRow("none") << 0;
        QTest::newRow("older than the oldest migration") << 6;
        QTest::newRow("newer") << 11;
        QTest::newRow("negative") << -1;
    }

    void otherVersionIsRebuilt()
    {
        QFETCH(int, version);
        const DatabaseHome home;
        home.start();
        home.exec(QStringLiteral("INSERT INTO download VALUES (1, 'http://h/a')"));
        home.exec(QStringLiteral("PRAGMA user_version = %1").arg(version));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::versionOutdated() + StartLog::deletion(home.databaseFolder())
                + StartLog::fine());
        QCOMPARE(home.version(), 10);
        QCOMPARE(home.rows(QStringLiteral("SELECT * FROM download")), DatabaseHome::Rows());
    }

    void garbageIsRebuilt()
    {
        const DatabaseHome home;
        home.writeFile(QByteArray(10000, 'x'));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::versionUnknown(StartLog::error(
                QStringLiteral("26"), QStringLiteral("Unable to fetch row"),
                QStringLiteral("file is not a database")))
                + StartLog::deletion(home.databaseFolder()) + StartLog::fine());
        QCOMPARE(home.version(), 10);
    }

    void corruptPagesBehindAGoodHeaderAreKept()
    {
        const DatabaseHome home;
        home.start();
        QFile file(home.databasePath());
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr int pageSize = 4096;
        QByteArray bytes = file.readAll();
        QVERIFY(bytes.size() > pageSize);
        bytes.replace(pageSize, bytes.size() - pageSize, QByteArray(bytes.size() - pageSize, 'x'));
        QVERIFY(file.seek(0) && file.write(bytes) == bytes.size());
        file.close();

        QCOMPARE(home.start(), StartLog::fine());
        QCOMPARE(home.start(), StartLog::fine());

        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes);
    }

    void unopenableFileIsTriedTwice_data()
    {
        QTest::addColumn<bool>("directory");
        QTest::newRow("a directory in its place") << true;
        QTest::newRow("no file in a folder that cannot be written") << false;
    }

    void unopenableFileIsTriedTwice()
    {
        QFETCH(bool, directory);
        const DatabaseHome home;
        home.makeFolder();
        if (directory) {
            QVERIFY(QDir().mkdir(home.databasePath()));
        } else {
            setReadOnly(home.databaseFolder());
        }

        const QStringList log = home.start();

        QCOMPARE(
            log,
            failedAttempt(!directory, home.databaseFolder())
                + failedAttempt(true, home.databaseFolder()) + StartLog::fine());
        setWritable(home.databaseFolder());
    }

    void filesBesideAnUnopenableOneAreDeleted()
    {
        const DatabaseHome home;
        home.makeFolder();
        QVERIFY(QDir().mkdir(home.databasePath()));
        for (const char* const suffix : {"-shm", "-wal", "-other"}) {
            QFile file(home.databasePath() + QLatin1String(suffix));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }

        home.start();

        QCOMPARE(
            fileNames(home.databaseFolder()),
            QStringList(
                {QStringLiteral("moodsetd.sqlite"), QStringLiteral("moodsetd.sqlite-other")}));
    }

    void withoutItsFolderNothingIsTried_data()
    {
        QTest::addColumn<bool>("file");
        QTest::newRow("home that cannot be written") << false;
        QTest::newRow("a file in the folder's place") << true;
    }

    void withoutItsFolderNothingIsTried()
    {
        QFETCH(bool, file);
        DatabaseHome home;
        home.forgetLocale();
        if (file) {
            QFile obstacle(home.dataFolder());
            QVERIFY(obstacle.open(QIODevice::WriteOnly));
        } else {
            QVERIFY(QDir().mkdir(home.dataFolder()));
            setReadOnly(home.dataFolder());
        }

        const QStringList log = home.start();

        QCOMPARE(
            log,
            QStringList({QStringLiteral(
                "warning: DbManager::DbManager: failed to create directory for db!")}));
        QCOMPARE(home.storedLocale(), QString());
        setWritable(home.dataFolder());
    }

    void connectionIsClosedBeforeTheManagersGo()
    {
        const DatabaseHome home;

        const QStringList log = home.start({QStringLiteral("--with-manager")});

        QCOMPARE(
            log,
            StartLog::fine()
                + QStringList(
                    {QStringLiteral("debug: connection open true"),
                     QStringLiteral("debug: manager deleted, connection open false")}));
    }

private:
    /// The statements that made all tables, indexes and triggers, in the order in which they ran.
    static QStringList schema(const DatabaseHome& home)
    {
        return QVariant(home.column(QStringLiteral(
                            "SELECT sql || ';' FROM sqlite_master "
                            "WHERE sql IS NOT NULL AND name <> 'sqlite_sequence' ORDER BY rowid")))
            .toStringList();
    }

    static QString indexCount()
    {
        return QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'index' "
                              "AND sql IS NOT NULL");
    }

    static void setReadOnly(const QString& folder)
    {
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY2(!QFileInfo(folder).isWritable(), "root obeys modes only in a private machine");
    }

    /// This makes it possible to remove the directory.
    static void setWritable(const QString& folder)
    {
        QVERIFY(
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

QTEST_GUILESS_MAIN(DatabaseStartTest)

#include "tst_databasestart.moc"
