// SPDX-License-Identifier: BSD-3-Clause
#include "databasehome.h"
#include "startlog.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTest>

namespace {

const char* const Signature7to8 = "bool DbManager::updateSchema_v7to8()";
const char* const Signature8to10 = "bool DbManager::updateSchema_v8to10()";

QString alteration7to8()
{
    return QStringLiteral("ALTER TABLE moodset ADD COLUMN partnerSpace TEXT;");
}

QString alteration8to10()
{
    return QStringLiteral("ALTER TABLE moodset ADD COLUMN version INTEGER;");
}

QStringList begin7to8()
{
    return {QStringLiteral("debug: bool DbManager::updateSchema_v7to8() "
                           "Updating database schema from version 7 to 8!")};
}

QStringList begin8to10()
{
    return {QStringLiteral("debug: bool DbManager::updateSchema_v8to10() "
                           "Updating database schema from version 8 to 10!")};
}

QStringList writtenVersion(int version)
{
    return {QStringLiteral("debug: bool DbManager::updateSchemaVersion(const QString&) "
                           "Updated moodset database to version:  \"%1\"")
                .arg(version)};
}

QStringList log7to10()
{
    return begin7to8() + writtenVersion(8) + begin8to10() + writtenVersion(10) + StartLog::fine();
}

QStringList log8to10()
{
    return begin8to10() + writtenVersion(10) + StartLog::fine();
}

/// The tables, without SQLite's own.
QStringList tables(const DatabaseHome& home)
{
    const QVariantList names =
        home.column(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' "
                                   "AND name NOT LIKE 'sqlite%' ORDER BY name"));
    return QVariant(names).toStringList();
}

/// Each column of a table with its whole declaration.
DatabaseHome::Rows columns(const DatabaseHome& home, const QString& table)
{
    return home.rows(QStringLiteral("SELECT * FROM pragma_table_info('%1')").arg(table));
}

/// The kind, name, table and text of all indexes and triggers, without their layout.
DatabaseHome::Rows attachments(const DatabaseHome& home)
{
    const DatabaseHome::Rows rows =
        home.rows(QStringLiteral("SELECT type, name, tbl_name, sql FROM sqlite_master "
                                 "WHERE type <> 'table' ORDER BY type, name"));
    DatabaseHome::Rows simplified;
    for (const QVariantList& row : rows) {
        simplified.append(row.mid(0, 3) + QVariantList({row.at(3).toString().simplified()}));
    }
    return simplified;
}

/// All rows of a table, without the columns that an upgrade writes: the first `moodsetColumns`
/// columns of `moodset`, and all columns of `file` except the last one, metadataCurrent.
DatabaseHome::Rows tableContent(const DatabaseHome& home, const QString& table, int moodsetColumns)
{
    const QMap<QString, int> widths{
        {QStringLiteral("moodset"), moodsetColumns}, {QStringLiteral("file"), 7}};
    const DatabaseHome::Rows rows =
        home.rows(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table));
    DatabaseHome::Rows content;
    for (const QVariantList& row : rows) {
        content.append(QVariantList({table}) + row.mid(0, widths.value(table, row.size())));
    }
    return content;
}

/// All rows of all tables, each after its table's name.
DatabaseHome::Rows content(const DatabaseHome& home, int moodsetColumns)
{
    DatabaseHome::Rows content;
    const QStringList names = tables(home);
    for (const QString& table : names) {
        const DatabaseHome::Rows rows = tableContent(home, table, moodsetColumns);
        if (rows.isEmpty()) {
            QTest::qFail(qPrintable(table + QStringLiteral(" has no rows")), __FILE__, __LINE__);
        }
        content += rows;
    }
    return content;
}

/// The ids of the files that must be read again.
QVariantList staleFiles(const DatabaseHome& home)
{
    return home.column(QStringLiteral("SELECT id FROM file WHERE metadataCurrent = 0 ORDER BY id"));
}

} // namespace

/// Tests upgrades of databases of older versions, and changes of the locale.
class DatabaseMigrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oldVersion_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("moodsetColumns");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("7") << QStringLiteral("database-version-7.sql") << 11 << log7to10();
        QTest::newRow("8") << QStringLiteral("database-version-8.sql") << 12 << log8to10();
        QTest::newRow("9") << QStringLiteral("database-version-9.sql") << 12 << log8to10();
    }

    void upgradeIsLogged_data() { oldVersion_data(); }
    void upgradeIsLogged()
    {
        QFETCH(QString, file);
        QFETCH(QStringList, log);
        const DatabaseHome home;
        home.build(file);

        QCOMPARE(home.start(), log);
        QCOMPARE(home.start(), StartLog::fine());
    }

    void upgradeEndsInTheSchemaOfAFreshFile_data() { oldVersion_data(); }
    void upgradeEndsInTheSchemaOfAFreshFile()
    {
        QFETCH(QString, file);
        const DatabaseHome fresh;
        fresh.start();
        const DatabaseHome upgraded;
        upgraded.build(file);

        upgraded.start();

        QCOMPARE(upgraded.version(), 10);
        QCOMPARE(tables(fresh).size(), 7);
        QCOMPARE(tables(upgraded), tables(fresh));
        const QStringList names = tables(fresh);
        for (const QString& table : names) {
            QCOMPARE(columns(upgraded, table), columns(fresh, table));
        }
        QCOMPARE(attachments(upgraded), attachments(fresh));
    }

    void upgradeKeepsAllRows_data() { oldVersion_data(); }
    void upgradeKeepsAllRows()
    {
        QFETCH(QString, file);
        QFETCH(int, moodsetColumns);
        const DatabaseHome home;
        home.build(file);
        const auto before = content(home, moodsetColumns);

        home.start();

        QCOMPARE(content(home, moodsetColumns), before);
        QCOMPARE(
            home.column(QStringLiteral("SELECT DISTINCT version FROM moodset")),
            QVariantList({QVariant(QVariant::String)}));
    }

    void upgradeHasEveryMoodsetReadAgain_data() { oldVersion_data(); }
    void upgradeHasEveryMoodsetReadAgain()
    {
        QFETCH(QString, file);
        const DatabaseHome home;
        home.build(file);
        QCOMPARE(staleFiles(home), QVariantList());

        home.start();

        QCOMPARE(staleFiles(home), QVariantList({2, 3}));
    }

    void columnThatIsThereAlreadyFailsTheUpgradeAtEveryStart_data()
    {
        QTest::addColumn<int>("version");
        QTest::newRow("9") << 9;
        QTest::newRow("8, as a kill in the middle of the upgrade leaves it") << 8;
    }

    void columnThatIsThereAlreadyFailsTheUpgradeAtEveryStart()
    {
        QFETCH(int, version);
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-9-with-version-column.sql"));
        home.exec(QStringLiteral("PRAGMA user_version = %1").arg(version));
        const auto before = content(home, 13);
        const QStringList log =
            begin8to10()
            + StartLog::initializationFailed(
                QLatin1String(Signature8to10), alteration8to10(),
                StartLog::error(
                    QStringLiteral("1"), QStringLiteral("Unable to execute statement"),
                    QStringLiteral("duplicate column name: version")))
            + StartLog::fine();

        QCOMPARE(home.start(), log);
        QCOMPARE(home.start(), log);

        QCOMPARE(home.version(), version);
        QCOMPARE(content(home, 13), before);
        QCOMPARE(staleFiles(home), QVariantList());
    }

    void upgradeThatWasKilledInItsFirstStepIsCompleted_data()
    {
        QTest::addColumn<int>("statementCount");
        for (int count = 1; count <= 3; ++count) {
            QTest::addRow("%d statements", count) << count;
        }
    }

    void upgradeThatWasKilledInItsFirstStepIsCompleted()
    {
        QFETCH(int, statementCount);
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-7.sql"));
        const auto before = content(home, 11);
        const QStringList statements{
            alteration7to8(),
            QStringLiteral("UPDATE file SET metadataCurrent = 0 "
                           "WHERE mimeType = 'application/x-zavro-moodset'"),
            QStringLiteral("PRAGMA user_version = 8")};
        for (int i = 0; i < statementCount; ++i) {
            home.exec(statements.at(i));
        }

        home.start();

        QCOMPARE(home.version(), 10);
        QCOMPARE(columns(home, QStringLiteral("moodset")).size(), 13);
        QCOMPARE(content(home, 11), before);
        QCOMPARE(home.start(), StartLog::fine());
    }

    void secondStepIsTriedAfterTheFirstHasFailed()
    {
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-8.sql"));
        home.exec(QStringLiteral("PRAGMA user_version = 7"));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            begin7to8()
                + StartLog::initializationFailed(
                    QLatin1String(Signature7to8), alteration7to8(),
                    StartLog::error(
                        QStringLiteral("1"), QStringLiteral("Unable to execute statement"),
                        QStringLiteral("duplicate column name: partnerSpace")))
                + log8to10());
        QCOMPARE(home.version(), 10);
    }

    void versionStaysIfMoodsetsCannotBeReset()
    {
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-8.sql"));
        home.exec(QStringLiteral("DROP TABLE file"));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            begin8to10()
                + QStringList(
                    {QStringLiteral("warning: bool DbManager::resetMoodsetsForReparsing()"),
                     QStringLiteral("warning: Failed to reset moodsets for reparsing!"),
                     QStringLiteral("warning: \"UPDATE file SET metadataCurrent = 0 "
                                    "WHERE mimeType=\\\"application/x-zavro-moodset\\\";\""),
                     QStringLiteral("warning: QSqlError(\"1\", \"Unable to execute statement\", "
                                    "\"no such table: file\")")})
                + StartLog::fine());
        QCOMPARE(home.version(), 8);
    }

    void readOnlyFileIsKeptAsItIs()
    {
        const DatabaseHome home;
        home.build(QStringLiteral("database-version-7.sql"));
        QVERIFY(QFile::setPermissions(home.databasePath(), QFile::ReadOwner));

        const QStringList log = home.start();

        const QString error = StartLog::error(
            QStringLiteral("8"), QStringLiteral("Unable to fetch row"),
            QStringLiteral("attempt to write a readonly database"));
        QCOMPARE(
            log,
            begin7to8()
                + StartLog::initializationFailed(
                    QLatin1String(Signature7to8), alteration7to8(), error)
                + begin8to10()
                + StartLog::initializationFailed(
                    QLatin1String(Signature8to10), alteration8to10(), error)
                + StartLog::fine());
        QCOMPARE(home.version(), 7);
    }

    void firstStartRemembersTheLocale()
    {
        DatabaseHome home;
        home.forgetLocale();
        home.setLocale(QStringLiteral("en_US.UTF-8"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(home.storedLocale(), QStringLiteral("en_US"));
    }

    void changeOfLocaleHasPackagedContentReadAgain()
    {
        DatabaseHome home;
        buildCurrent(home);
        home.setLocale(QStringLiteral("de_DE"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(home.storedLocale(), QStringLiteral("de_DE"));
        QCOMPARE(staleFiles(home), QVariantList({3, 4}));
    }

    void sameLocaleChangesNothing()
    {
        DatabaseHome home;
        home.setLocale(QStringLiteral("de_DE"));
        buildCurrent(home);

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(staleFiles(home), QVariantList());
    }

    void anotherEncodingIsTheSameLocale()
    {
        DatabaseHome home;
        home.setLocale(QStringLiteral("de_DE"));
        buildCurrent(home);
        home.setLocale(QStringLiteral("de_DE.UTF-8"));

        QCOMPARE(home.start(), StartLog::fine());

        QCOMPARE(staleFiles(home), QVariantList());
    }

    void failedTranslationUpdateIsNotTriedAgain()
    {
        DatabaseHome home;
        buildCurrent(home);
        home.exec(QStringLiteral("PRAGMA journal_mode = DELETE"));
        QVERIFY(QFile::setPermissions(home.databasePath(), QFile::ReadOwner));
        home.setLocale(QStringLiteral("de_DE"));

        const QStringList log = home.start();

        QCOMPARE(
            log,
            StartLog::fine()
                + StartLog::translationUpdateFailed(StartLog::error(
                    QStringLiteral("8"), QStringLiteral("Unable to fetch row"),
                    QStringLiteral("attempt to write a readonly database"))));
        QCOMPARE(home.storedLocale(), QStringLiteral("de_DE"));
        QCOMPARE(home.start(), StartLog::fine());
        QCOMPARE(staleFiles(home), QVariantList());
    }

    void translationUpdateOfADatabaseThatCannotBeMadeFails()
    {
        DatabaseHome home;
        home.makeFolder();
        QVERIFY(QDir().mkdir(home.databasePath()));
        home.setLocale(QStringLiteral("de_DE"));

        const QStringList log = home.start();

        const QStringList end = StartLog::fine() + StartLog::notOpen()
            + StartLog::translationUpdateFailed(StartLog::error(QString(), QString(), QString()));
        QCOMPARE(log.mid(log.size() - end.size()), end);
        QCOMPARE(home.storedLocale(), QStringLiteral("de_DE"));
    }

private:
    /// A database of the current version, with rows that are all up to date, and with the present
    /// locale.
    static void buildCurrent(const DatabaseHome& home)
    {
        home.build(QStringLiteral("database-version-9.sql"));
        home.start();
        home.exec(QStringLiteral("UPDATE file SET metadataCurrent = 1"));
    }
};

QTEST_GUILESS_MAIN(DatabaseMigrationTest)

#include "tst_databasemigration.moc"
