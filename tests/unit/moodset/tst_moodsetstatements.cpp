// SPDX-License-Identifier: BSD-3-Clause
#include "indexdatabase.h"
#include "messagelog.h"
#include "moodset/moodsetmanager.h"

#include <QTest>

namespace {

const QString Constructor =
    QStringLiteral("MoodsetManager::MoodsetManager(QueryAgentDatabase&, QObject*)");

QStringList notPrepared(const QString& message, const QString& statement)
{
    return queryWarnings(
        Constructor, message,
        QStringLiteral("QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")"),
        statement);
}

} // namespace

/// Tests the warnings of the moodset manager about statements that the database refuses.
class MoodsetStatementsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statementThatCannotBePreparedIsReported_data();
    void statementThatCannotBePreparedIsReported();
    void viewThatCannotBeMadeIsReported();
    void managerWithoutStatementsReportsTheirExecution();

private:
    static void addReads();
    static void addWrites();
    static void addRow(
        const char* member, const QByteArray& verb, int nth, const QByteArray& table,
        const QByteArray& column, const QString& statement);
};

void MoodsetStatementsTest::addRow(
    const char* member, const QByteArray& verb, int nth, const QByteArray& table,
    const QByteArray& column, const QString& statement)
{
    QTest::newRow(member) << verb << nth << table << column << statement;
}

void MoodsetStatementsTest::addReads()
{
    const auto addQuery = [](const char* member, int nth, const QString& statement) {
        addRow(member, "SELECT", nth, {}, {}, statement);
    };
    addQuery(
        "m_queryMoodset", 1,
        QStringLiteral("SELECT file.displayName, moodset.favorite, moodset.timestamp, "
                       "moodset.homeWallpaper, moodset.applicationWallpaper, "
                       "moodset.highlightColor, moodset.secondaryHighlightColor, "
                       "moodset.primaryColor, moodset.secondaryColor, moodset.ringerVolume, "
                       "moodset.enabledSounds, moodset.partnerSpace, moodset.version "
                       "FROM file INNER JOIN moodset ON file.id = moodset.fileId "
                       "WHERE file.id = ?;"));
    addQuery(
        "m_queryMoodsetByDorselId", 2,
        QStringLiteral("SELECT file.id, directory.path || '/' || file.fileName, file.fileName, "
                       "file.mimeType, file.displayName, file.permissions, moodset.favorite, "
                       "moodset.homeWallpaper, moodset.applicationWallpaper, "
                       "moodset.highlightColor, moodset.secondaryHighlightColor, "
                       "moodset.primaryColor, moodset.secondaryColor, moodset.ringerVolume, "
                       "moodset.enabledSounds, moodset.partnerSpace, moodset.version "
                       "FROM file INNER JOIN directory on file.directoryId = directory.id "
                       "INNER JOIN moodset ON file.id = moodset.fileId AND moodset.fileId = "
                       "(SELECT fileId FROM dorselid WHERE dorselId = ?);"));
    addQuery(
        "m_queryResource", 4,
        QStringLiteral("SELECT resource.resourceType, directory.path || '/' || file.fileName, "
                       "file.fileName, file.displayName FROM resource "
                       "INNER JOIN file on resource.resourceId = file.id "
                       "INNER JOIN directory on file.directoryId = directory.id "
                       "WHERE resource.fileId = ?;"));
    addQuery(
        "m_modifiedQuery", 5, QStringLiteral("SELECT id, path, fileName FROM modified_moodset;"));
    addQuery(
        "m_modifiedMoodsetQuery", 6,
        QStringLiteral("SELECT modified_moodset.id, modified_moodset.displayName, "
                       "moodset.favorite, moodset.timestamp, moodset.ringerVolume, "
                       "moodset.enabledSounds, moodset.partnerSpace, moodset.highlightColor, "
                       "moodset.secondaryhighlightColor, moodset.primaryColor, "
                       "moodset.secondaryColor, moodset.version FROM modified_moodset "
                       "INNER JOIN moodset ON modified_moodset.id = moodset.fileId;"));
    addQuery(
        "m_modifiedResourceQuery", 7,
        QStringLiteral("SELECT resource.fileId, resource.resourceId, resource.resourceType "
                       "FROM modified_moodset INNER JOIN resource "
                       "ON modified_moodset.id = resource.fileId;"));
}

void MoodsetStatementsTest::addWrites()
{
    addRow(
        "m_insertMoodset", "INSERT", 1, "moodset", {},
        QStringLiteral("INSERT INTO moodset ( fileId, homeWallpaper, applicationWallpaper, "
                       "highlightColor, secondaryHighlightColor, primaryColor, secondaryColor, "
                       "ringerVolume, enabledSounds, favorite, partnerSpace, version) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);"));
    addRow(
        "m_updateFile", "UPDATE", 1, "file", "displayName",
        QStringLiteral("UPDATE file SET displayName = ? WHERE id = ?;"));
    addRow(
        "m_updateMoodset", "UPDATE", 1, "moodset", "favorite",
        QStringLiteral("UPDATE moodset SET favorite = ?, timestamp = ?, homeWallpaper = ?, "
                       "applicationWallpaper = ?, highlightColor = ?, "
                       "secondaryHighlightColor = ?, primaryColor = ?, secondaryColor = ?, "
                       "ringerVolume = ?, enabledSounds = ?, partnerSpace = ?, version = ? "
                       "WHERE fileId = ?;"));
    addRow(
        "m_deleteMoodset", "DELETE", 1, "moodset", {},
        QStringLiteral("DELETE FROM moodset WHERE fileId = ?;"));
    addRow(
        "m_insertResource", "INSERT", 1, "resource", {},
        QStringLiteral("INSERT OR REPLACE INTO resource ( fileId, resourceType, resourceId) "
                       "VALUES (?, ?, ?);"));
    addRow(
        "m_deleteResource", "DELETE", 1, "resource", {},
        QStringLiteral("DELETE FROM resource WHERE fileId = ? and resourceType = ?;"));
    addRow(
        "m_clearResources", "DELETE", 2, "resource", {},
        QStringLiteral("DELETE FROM resource WHERE fileId = ?;"));
    addRow(
        "m_modifiedReset", "UPDATE", 1, "file", "metadataCurrent",
        QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"));
}

void MoodsetStatementsTest::statementThatCannotBePreparedIsReported_data()
{
    QTest::addColumn<QByteArray>("verb");
    QTest::addColumn<int>("nth");
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QByteArray>("column");
    QTest::addColumn<QString>("statement");
    addReads();
    addWrites();
}

void MoodsetStatementsTest::statementThatCannotBePreparedIsReported()
{
    QFETCH(QByteArray, verb);
    QFETCH(int, nth);
    QFETCH(QByteArray, table);
    QFETCH(QByteArray, column);
    QFETCH(QString, statement);
    const QString member = QString::fromLatin1(QTest::currentDataTag());
    MessageLog log;
    IndexDatabase database;
    database.refuseToPrepare(verb, nth, table, column);

    const MoodsetManager manager(database.connection(), nullptr);

    QCOMPARE(
        log.takeWarnings(),
        notPrepared(QStringLiteral("Failed to prepare %1.").arg(member), statement));
    QVERIFY(!database.isInTransaction());
}

void MoodsetStatementsTest::viewThatCannotBeMadeIsReported()
{
    MessageLog log;
    IndexDatabase database;
    const MoodsetManager first(database.connection(), nullptr);

    const MoodsetManager second(database.connection(), nullptr);

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            Constructor, QStringLiteral("Failed to execute query."),
            QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                           "\"view modified_moodset already exists\")"),
            QStringLiteral("CREATE TEMPORARY VIEW modified_moodset AS SELECT file.id AS id, "
                           "directory.path AS path, file.fileName AS fileName, file.displayName "
                           "as displayName FROM file LEFT JOIN directory ON file.directoryId = "
                           "directory.id WHERE file.metadataCurrent = 0 AND file.mimeType = "
                           "'application/x-zavro-moodset'ORDER BY file.directoryId LIMIT 100;")));
}

// No statement is prepared after the first that fails.
void MoodsetStatementsTest::managerWithoutStatementsReportsTheirExecution()
{
    MessageLog log;
    IndexDatabase database;
    database.refuseToPrepare("SELECT", 1);
    MoodsetManager manager(database.connection(), nullptr);
    QCOMPARE(log.takeWarnings().size(), 4);

    QVERIFY(!manager.remove(1));

    QCOMPARE(
        log.takeWarnings(),
        queryWarnings(
            QStringLiteral("virtual bool MoodsetManager::remove(qint64)"),
            QStringLiteral("Failed to execute m_deleteMoodset."),
            QStringLiteral("QSqlError(\"\", \"Parameter count mismatch\", \"\")"), QString()));
}

QTEST_GUILESS_MAIN(MoodsetStatementsTest)
#include "tst_moodsetstatements.moc"
