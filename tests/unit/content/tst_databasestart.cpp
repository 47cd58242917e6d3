// SPDX-License-Identifier: BSD-3-Clause
#include "content/databaseschema.h"
#include "databasehome.h"
#include "startlog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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

/// One attempt on a file that cannot be opened.
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
    // Two pragmas fail without a word of ours, then that of the version.
    return log + StartLog::notOpen() + StartLog::notOpen() + StartLog::notOpen()
        + StartLog::versionUnknown(unopenedError()) + StartLog::deletion(folder);
}

} // namespace

/// What becomes of the files that a start finds.
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
        QCOMPARE(
            home.column(QStringLiteral("SELECT sql || ';' FROM sqlite_master "
                                       "WHERE sql IS NOT NULL AND name <> 'sqlite_sequence'")),
            QVariantList(QVariant(DatabaseSchema::statements().mid(1)).toList()));
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
    static void setReadOnly(const QString& folder)
    {
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY2(!QFileInfo(folder).isWritable(), "root obeys modes only in a private machine");
    }

    /// So that the folder can be removed.
    static void setWritable(const QString& folder)
    {
        QVERIFY(
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

QTEST_GUILESS_MAIN(DatabaseStartTest)

#include "tst_databasestart.moc"
