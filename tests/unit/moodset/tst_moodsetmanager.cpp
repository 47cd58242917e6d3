// SPDX-License-Identifier: BSD-3-Clause
#include "moodset/moodsetmanager.h"

#include "content/dbmanager.h"
#include "dconfcommand.h"
#include "messagelog.h"
#include "mgconfitem.h"
#include "moodsetlibrary.h"
#include "refusedcommit.h"
#include "statementprobe.h"

#include <QTest>

namespace {

const QString SaveFunction =
    QStringLiteral("virtual bool MoodsetManager::save(qint64, const QVariantMap&)");
const QString CreateFunction = QStringLiteral("bool MoodsetManager::create(const Moodset&)");
const QString UpdateFile = QStringLiteral("UPDATE file SET displayName = ? WHERE id = ?;");
const QString UpdateMoodset =
    QStringLiteral("UPDATE moodset SET favorite = ?, timestamp = ?, homeWallpaper = ?, "
                   "applicationWallpaper = ?, highlightColor = ?, secondaryHighlightColor = ?, "
                   "primaryColor = ?, secondaryColor = ?, ringerVolume = ?, enabledSounds = ?, "
                   "partnerSpace = ?, version = ? WHERE fileId = ?;");
const QString InsertMoodset = QStringLiteral(
    "INSERT INTO moodset ( fileId, homeWallpaper, applicationWallpaper, highlightColor, "
    "secondaryHighlightColor, primaryColor, secondaryColor, ringerVolume, enabledSounds, "
    "favorite, partnerSpace, version) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);");
const QString DeleteMoodset = QStringLiteral("DELETE FROM moodset WHERE fileId = ?;");
const QString DeleteResource =
    QStringLiteral("DELETE FROM resource WHERE fileId = ? and resourceType = ?;");
const QString InsertResource = QStringLiteral(
    "INSERT OR REPLACE INTO resource ( fileId, resourceType, resourceId) VALUES (?, ?, ?);");
const QString Ringer = QStringLiteral("ringerToneFile");
const QString Chat = QStringLiteral("chatToneFile");

QVariantMap edit(const char* key, const QVariant& value)
{
    return {{QString::fromLatin1(key), value}};
}

/// An edit of one tone's file.
QVariantMap toneEdit(const QString& tone, const QVariant& url)
{
    return edit("resources", QVariantMap{{tone, edit("url", url)}});
}

QStringList saveRefused(const QString& message, const QString& statement)
{
    return refusedWarnings(SaveFunction, message, statement);
}

/// A record that differs from a stored moodset in every field.
Moodset record(qint64 id)
{
    Moodset moodset(new MoodsetData(id, QUrl(QStringLiteral("file:///any.moodset"))));
    moodset->displayName = QStringLiteral("new name");
    moodset->favorite = true;
    moodset->homeWallpaper = QStringLiteral("/new-home.jpg");
    moodset->applicationWallpaper = QStringLiteral("/new-application.jpg");
    moodset->highlightColor = QColor(1, 0, 0);
    moodset->secondaryHighlightColor = QColor(2, 0, 0, 0);
    moodset->primaryColor = QColor(3, 0, 0);
    moodset->ringerVolume = 44;
    moodset->enabledSounds = 5;
    moodset->partnerSpace = QStringLiteral("new partner");
    moodset->version = 6;
    moodset->resources = edit("ringerToneFile", QStringLiteral("any"));
    return moodset;
}

} // namespace

/// tst_moodsetstatements tests statements that cannot be prepared.
class MoodsetManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
    }

    void handlesMoodsets();

    void removingDeletesTheMoodsetOnly();
    void failedRemovalIsReported();

    void emptyEditKeepsTheRow();
    void editChangesItsColumn_data();
    void editChangesItsColumn();
    void editOfAFixedColumnIsIgnored();
    void invalidValueKeepsTheColumn_data();
    void invalidValueKeepsTheColumn();
    void toneFlagChangesItsBit_data();
    void toneFlagChangesItsBit();
    void newFavouriteGetsATime();
    void formerFavouriteLosesItsTime();
    void emptyUrlRemovesTheToneOnly();
    void urlSetsTheTone_data();
    void urlSetsTheTone();
    void urlThatNamesNoFileChangesNothing_data();
    void urlThatNamesNoFileChangesNothing();
    void savingNoMoodsetIsReported();
    void failedQueryOfASaveIsReported();
    void failedSaveIsRolledBack_data();
    void failedSaveIsRolledBack();

    void saveThatCannotBeCommittedFails();
    void creatingFromANullHandleFails();
    void creatingInsertsARecord();
    void creatingOverAnExistingRowKeepsFavouriteTimeAndName();
    void failedQueryOfACreationIsReported();
    void failedUpdateOfACreationIsReported();
    void failedNameOfACreationIsReported();
    void failedInsertionLeavesTheNewName();

    void lookupsLeaveNoStatementOpen();

    void moodsetOfAUrl();
    void moodsetOfABackCover();
    void backCoverWithoutAMoodsetGivesNone();
    void emptyBackCoverIdIsReported();
    void failedBackCoverQueryIsReported();
    void failedResourceQueryLeavesARecordWithoutResources();

    void installDirectoryName_data();
    void installDirectoryName();

    void saveOfTheActiveMoodsetIsAnnounced();
    void saveOfAnotherMoodsetIsNotAnnounced();
    void failedSaveIsNotAnnounced();
    void saveAnnouncesTheMoodsetThatTheSourceHasJustNamed();
    void saveIsNotAnnouncedOnceTheSourceNamesNoMoodset();
    void activeMoodsetIsAnnouncedUnderANewId();
};

void MoodsetManagerTest::handlesMoodsets()
{
    MessageLog log;
    MoodsetLibrary library;

    QCOMPARE(library.manager().mimeType(), QStringLiteral("application/x-zavro-moodset"));
}

void MoodsetManagerTest::removingDeletesTheMoodsetOnly()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Ringer, library.addFile(QStringLiteral("r.ogg")));

    QVERIFY(library.manager().remove(id));

    QCOMPARE(library.moodset(id), QStringList());
    QCOMPARE(library.resources(id), QStringList(QStringLiteral("ringerToneFile=r.ogg")));
    QVERIFY(library.manager().remove(id));
}

void MoodsetManagerTest::failedRemovalIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    MoodsetLibrary::exec(refuse(QStringLiteral("DELETE"), QStringLiteral("moodset")));

    QVERIFY(!library.manager().remove(id));

    QCOMPARE(
        log.takeWarnings(),
        refusedWarnings(
            QStringLiteral("virtual bool MoodsetManager::remove(qint64)"),
            QStringLiteral("Failed to execute m_deleteMoodset."), DeleteMoodset));
}

void MoodsetManagerTest::emptyEditKeepsTheRow()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    const QStringList former = library.moodset(id);

    QVERIFY(library.manager().save(id, {}));

    QCOMPARE(library.moodset(id), former);
    QVERIFY(!MoodsetLibrary::isInTransaction());
}

void MoodsetManagerTest::editChangesItsColumn_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("stored");
    const auto addEdit = [](const char* key, const QVariant& value, int position) {
        QTest::newRow(key) << QString::fromLatin1(key) << value << position << value.toString();
    };
    // The values are in the order of the table's columns, and the name is last.
    addEdit("highlightColor", QStringLiteral("#123456"), 4);
    addEdit("secondaryHighlightColor", QStringLiteral("no colour"), 5);
    addEdit("primaryColor", QStringLiteral("red"), 6);
    addEdit("secondaryColor", QString(QLatin1String("")), 7);
    addEdit("ringerVolume", 1000, 9);
    addEdit("displayName", QStringLiteral("edited"), 13);
}

void MoodsetManagerTest::editChangesItsColumn()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QFETCH(int, position);
    QFETCH(QString, stored);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    QStringList expected = library.moodset(id);
    expected[position] = stored;

    QVERIFY(library.manager().save(id, {{key, value}}));

    QCOMPARE(library.moodset(id), expected);
}

void MoodsetManagerTest::editOfAFixedColumnIsIgnored()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    const QStringList former = library.moodset(id);
    QVariantMap values;
    for (const char* key :
         {"homeWallpaper", "applicationWallpaper", "partnerSpace", "version", "timestamp",
          "enabledSounds", "fileId"}) {
        values.insert(QString::fromLatin1(key), 9);
    }

    QVERIFY(library.manager().save(id, values));

    QCOMPARE(library.moodset(id), former);
}

void MoodsetManagerTest::invalidValueKeepsTheColumn_data()
{
    QTest::addColumn<QString>("key");
    for (const char* key :
         {"displayName", "favorite", "highlightColor", "secondaryHighlightColor", "primaryColor",
          "secondaryColor", "ringerVolume", "resources"}) {
        QTest::newRow(key) << QString::fromLatin1(key);
    }
}

void MoodsetManagerTest::invalidValueKeepsTheColumn()
{
    QFETCH(QString, key);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    const QStringList former = library.moodset(id);

    QVERIFY(library.manager().save(id, {{key, QVariant()}}));

    QCOMPARE(library.moodset(id), former);
}

void MoodsetManagerTest::toneFlagChangesItsBit_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("bit");
    int bit = 1;
    for (const char* key :
         {"ringerToneEnabled", "messageToneEnabled", "mailToneEnabled", "internetCallToneEnabled",
          "chatToneEnabled", "calendarToneEnabled", "clockAlarmToneEnabled"}) {
        QTest::newRow(key) << QString::fromLatin1(key) << bit;
        bit <<= 1;
    }
}

void MoodsetManagerTest::toneFlagChangesItsBit()
{
    QFETCH(QString, key);
    QFETCH(int, bit);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();

    QVERIFY(library.manager().save(id, {{key, false}}));
    QCOMPARE(library.column(id, QStringLiteral("enabledSounds")).toInt(), ~bit);

    // Bits above the tones have no meaning, and stay as they are.
    MoodsetLibrary::exec(QStringLiteral("UPDATE moodset SET enabledSounds = 0x500;"));
    QVERIFY(library.manager().save(id, {{key, true}}));
    QCOMPARE(library.column(id, QStringLiteral("enabledSounds")).toInt(), 0x500 | bit);
}

void MoodsetManagerTest::newFavouriteGetsATime()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    MoodsetLibrary::exec(QStringLiteral("UPDATE moodset SET favorite = 0;"));
    const qint64 before = QDateTime::currentSecsSinceEpoch();

    QVERIFY(library.manager().save(id, edit("favorite", true)));

    const QString text = library.column(id, QStringLiteral("timestamp")).toString();
    const qint64 time = QDateTime::fromString(text, Qt::ISODate).toSecsSinceEpoch();
    QVERIFY2(text.endsWith(QLatin1Char('Z')), qPrintable(text));
    QVERIFY(before <= time && time <= QDateTime::currentSecsSinceEpoch());
    QCOMPARE(library.column(id, QStringLiteral("favorite")).toInt(), 1);
    QVERIFY(library.manager().save(id, edit("favorite", true)));
    QCOMPARE(library.column(id, QStringLiteral("timestamp")).toString(), text);
}

void MoodsetManagerTest::formerFavouriteLosesItsTime()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();

    QVERIFY(library.manager().save(id, edit("favorite", true)));
    QCOMPARE(
        library.column(id, QStringLiteral("timestamp")).toString(),
        QStringLiteral("2020-01-02T03:04:05Z"));

    QVERIFY(library.manager().save(id, edit("favorite", false)));
    QVERIFY(library.column(id, QStringLiteral("timestamp")).isNull());
    QCOMPARE(library.column(id, QStringLiteral("favorite")).toInt(), 0);
}

void MoodsetManagerTest::emptyUrlRemovesTheToneOnly()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    const qint64 sound = library.addFile(QStringLiteral("r.ogg"));
    library.addResource(id, Ringer, sound);
    library.addResource(id, Chat, sound);
    library.addResource(sound, Ringer, sound);

    QVERIFY(library.manager().save(id, toneEdit(Ringer, QString())));

    QCOMPARE(library.resources(id), QStringList(QStringLiteral("chatToneFile=r.ogg")));
    QCOMPARE(library.resources(sound), QStringList(QStringLiteral("ringerToneFile=r.ogg")));
}

void MoodsetManagerTest::urlSetsTheTone_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::newRow("file URL") << QStringLiteral("file://");
    QTest::newRow("path") << QString();
}

void MoodsetManagerTest::urlSetsTheTone()
{
    QFETCH(QString, prefix);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Ringer, library.addFile(QStringLiteral("former.ogg")));
    const QString path = library.folder().path(QStringLiteral("sounds/s.ogg"));

    QVERIFY(library.manager().save(id, toneEdit(Ringer, prefix + path)));

    QCOMPARE(library.resources(id), QStringList(QStringLiteral("ringerToneFile=s.ogg")));
}

void MoodsetManagerTest::urlThatNamesNoFileChangesNothing_data()
{
    QTest::addColumn<QVariantMap>("values");
    QTest::newRow("not local") << toneEdit(Ringer, QStringLiteral("http://example.com/s.ogg"));
    QTest::newRow("missing") << toneEdit(Ringer, QStringLiteral("file:///none/s.ogg"));
    QTest::newRow("relative") << toneEdit(Ringer, QStringLiteral("s.ogg"));
    QTest::newRow("no URL") << edit(
        "resources", QVariantMap{{Ringer, edit("fileName", QStringLiteral("s.ogg"))}});
    QTest::newRow("no map") << edit(
        "resources", QVariantMap{{Ringer, QStringLiteral("file:///s.ogg")}});
    QTest::newRow("unknown tone") << toneEdit(QStringLiteral("otherToneFile"), QString());
}

void MoodsetManagerTest::urlThatNamesNoFileChangesNothing()
{
    QFETCH(QVariantMap, values);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Ringer, library.addFile(QStringLiteral("former.ogg")));

    QVERIFY(library.manager().save(id, values));

    QCOMPARE(library.resources(id), QStringList(QStringLiteral("ringerToneFile=former.ogg")));
}

void MoodsetManagerTest::savingNoMoodsetIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addFile(QStringLiteral("plain.txt"));

    QVERIFY(!library.manager().save(id, edit("displayName", QStringLiteral("new"))));

    QCOMPARE(
        log.takeWarnings(), QStringList(QStringLiteral("%1 is not an existing moodset").arg(id)));
    QVERIFY(library.value(QStringLiteral("SELECT displayName FROM file;")).isNull());
}

void MoodsetManagerTest::failedQueryOfASaveIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    MoodsetLibrary::exec(QStringLiteral("DROP TABLE moodset;"));

    QVERIFY(!library.manager().save(1, {}));

    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            {SaveFunction, QStringLiteral("Failed to execute m_queryMoodset"),
             noSuchTable(QStringLiteral("moodset"))}));
}

void MoodsetManagerTest::failedSaveIsRolledBack_data()
{
    QTest::addColumn<QString>("trigger");
    QTest::addColumn<QStringList>("warnings");
    QTest::newRow("name") << refuse(QStringLiteral("UPDATE"), QStringLiteral("file"))
                          << saveRefused(
                                 QStringLiteral("Failed to execute m_updateFile."), UpdateFile);
    QTest::newRow("row") << refuse(QStringLiteral("UPDATE"), QStringLiteral("moodset"))
                         << saveRefused(
                                QStringLiteral("Failed to execute m_updateMoodset."),
                                UpdateMoodset);
    QTest::newRow("removed tone") << refuse(QStringLiteral("DELETE"), QStringLiteral("resource"))
                                  << saveRefused(
                                         QStringLiteral("Failed to execute m_deleteResource."),
                                         DeleteResource);
    QTest::newRow("new tone") << refuse(QStringLiteral("INSERT"), QStringLiteral("resource"))
                              << saveRefused(
                                     QStringLiteral("Failed to execute m_insertResource."),
                                     InsertResource);
}

void MoodsetManagerTest::failedSaveIsRolledBack()
{
    QFETCH(QString, trigger);
    QFETCH(QStringList, warnings);
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Ringer, library.addFile(QStringLiteral("former.ogg")));
    const QStringList former = library.moodset(id);
    QVariantMap values = edit("displayName", QStringLiteral("new"));
    values.insert(QStringLiteral("ringerVolume"), 1);
    const QString sound = library.folder().path(QStringLiteral("sounds/s.ogg"));
    values.insert(
        QStringLiteral("resources"),
        QVariantMap{{Ringer, edit("url", QString())}, {Chat, edit("url", sound)}});
    MoodsetLibrary::exec(trigger);

    QVERIFY(!library.manager().save(id, values));

    QCOMPARE(log.takeWarnings(), warnings);
    QCOMPARE(library.moodset(id), former);
    QCOMPARE(library.resources(id), QStringList(QStringLiteral("ringerToneFile=former.ogg")));
    QVERIFY(!MoodsetLibrary::isInTransaction());
}

void MoodsetManagerTest::saveThatCannotBeCommittedFails()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    const QStringList former = library.moodset(id);
    const ActiveMoodsetRecord announced(library.manager());
    const QStringList statements =
        refuseCommit(QStringLiteral("UPDATE"), QStringLiteral("moodset"));
    for (const QString& statement : statements) {
        MoodsetLibrary::exec(statement);
    }

    QVERIFY(!library.manager().save(id, edit("ringerVolume", 1)));

    QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(SaveFunction)));
    QCOMPARE(library.moodset(id), former);
    QCOMPARE(announced.moodsets.size(), 0);
    QVERIFY(!MoodsetLibrary::isInTransaction());
}

void MoodsetManagerTest::creatingFromANullHandleFails()
{
    MessageLog log;
    MoodsetLibrary library;

    QVERIFY(!library.manager().create(Moodset()));
}

void MoodsetManagerTest::creatingInsertsARecord()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addFile(QStringLiteral("picture.jpg"));
    const ActiveMoodsetRecord announced(library.manager());

    QVERIFY(library.manager().create(record(id)));

    // An invalid colour is stored as black.
    QCOMPARE(
        library.moodset(id),
        QStringList(
            {QString::number(id), QStringLiteral("1"), QStringLiteral("/new-home.jpg"),
             QStringLiteral("/new-application.jpg"), QStringLiteral("#ff010000"),
             QStringLiteral("#00020000"), QStringLiteral("#ff030000"), QStringLiteral("#ff000000"),
             QStringLiteral("NULL"), QStringLiteral("44"), QStringLiteral("5"),
             QStringLiteral("new partner"), QStringLiteral("6"), QStringLiteral("new name")}));
    QCOMPARE(library.resources(id), QStringList());
    QCOMPARE(announced.moodsets.size(), 0);
}

void MoodsetManagerTest::creatingOverAnExistingRowKeepsFavouriteTimeAndName()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Chat, library.addFile(QStringLiteral("c.ogg")));
    Moodset moodset = record(id);
    moodset->favorite = false;

    QVERIFY(library.manager().create(moodset));

    QCOMPARE(
        library.moodset(id),
        QStringList(
            {QString::number(id), QStringLiteral("1"), QStringLiteral("/new-home.jpg"),
             QStringLiteral("/new-application.jpg"), QStringLiteral("#ff010000"),
             QStringLiteral("#00020000"), QStringLiteral("#ff030000"), QStringLiteral("#ff000000"),
             QStringLiteral("2020-01-02T03:04:05Z"), QStringLiteral("44"), QStringLiteral("5"),
             QStringLiteral("new partner"), QStringLiteral("6"), QStringLiteral("stored name")}));
    QCOMPARE(library.resources(id), QStringList(QStringLiteral("chatToneFile=c.ogg")));
}

void MoodsetManagerTest::failedQueryOfACreationIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    MoodsetLibrary::exec(QStringLiteral("DROP TABLE moodset;"));

    QVERIFY(!library.manager().create(record(1)));

    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            {CreateFunction, QStringLiteral("Failed to execute m_queryMoodset"),
             noSuchTable(QStringLiteral("moodset"))}));
}

void MoodsetManagerTest::failedUpdateOfACreationIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    const QStringList former = library.moodset(id);
    MoodsetLibrary::exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("moodset")));

    QVERIFY(!library.manager().create(record(id)));

    QCOMPARE(
        log.takeWarnings(),
        refusedWarnings(
            CreateFunction, QStringLiteral("Failed to execute m_updateMoodset."), UpdateMoodset));
    QCOMPARE(library.moodset(id), former);
}

void MoodsetManagerTest::failedNameOfACreationIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addFile(QStringLiteral("picture.jpg"));
    MoodsetLibrary::exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("file")));

    QVERIFY(!library.manager().create(record(id)));

    QCOMPARE(
        log.takeWarnings(),
        refusedWarnings(
            CreateFunction, QStringLiteral("Failed to execute m_updateFile."), UpdateFile));
    QCOMPARE(library.moodset(id), QStringList());
}

void MoodsetManagerTest::failedInsertionLeavesTheNewName()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addFile(QStringLiteral("picture.jpg"));
    MoodsetLibrary::exec(refuse(QStringLiteral("INSERT"), QStringLiteral("moodset")));

    QVERIFY(!library.manager().create(record(id)));

    QCOMPARE(
        log.takeWarnings(),
        refusedWarnings(
            CreateFunction, QStringLiteral("Failed to execute m_insertMoodset."), InsertMoodset));
    QCOMPARE(
        library.value(QStringLiteral("SELECT displayName FROM file WHERE id = ?;"), {id}),
        QVariant(QStringLiteral("new name")));
}

void MoodsetManagerTest::moodsetOfAUrl()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.addFile(QStringLiteral("plain.txt"));
    MoodsetManager& manager = library.manager();
    const auto url = [&](const QString& name) {
        return QUrl::fromLocalFile(library.folder().path(name));
    };

    const Moodset found = manager.moodsetFromUrl(url(MoodsetLibrary::fileName()));

    QVERIFY(found);
    QCOMPARE(found->id, id);
    QCOMPARE(found->displayName, QStringLiteral("stored name"));
    QVERIFY(!manager.moodsetFromUrl(url(QStringLiteral("plain.txt"))));
    QVERIFY(!manager.moodsetFromUrl(url(QStringLiteral("none"))));
    QVERIFY(!manager.moodsetFromUrl(QUrl()));
}

void MoodsetManagerTest::lookupsLeaveNoStatementOpen()
{
    MessageLog log;
    MoodsetLibrary library;
    const StatementProbe probe(*DbManager::instance());
    const qint64 id = library.addStoredMoodset();
    library.addResource(id, Chat, library.addFile(QStringLiteral("c.ogg")));
    MoodsetLibrary::exec(QStringLiteral("INSERT INTO dorselId VALUES (?, 'cover');"), {id});

    QVERIFY(library.manager().save(id, edit("ringerVolume", 7)));
    QCOMPARE(probe.openStatements(), QStringList());
    QVERIFY(library.manager().create(record(id)));
    QCOMPARE(probe.openStatements(), QStringList());
    QVERIFY(library.manager().moodsetFromDorselId(QStringLiteral("cover")));
    QCOMPARE(probe.openStatements(), QStringList());
}

void MoodsetManagerTest::moodsetOfABackCover()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    MoodsetLibrary::exec(QStringLiteral("INSERT INTO dorselId VALUES (?, 'cover');"), {id});
    const qint64 sound = library.addFile(QStringLiteral("c.ogg"));
    MoodsetLibrary::exec(
        QStringLiteral("UPDATE file SET displayName = 'Chime' WHERE id = ?;"), {sound});
    library.addResource(id, Chat, sound);

    const Moodset found = library.manager().moodsetFromDorselId(QStringLiteral("cover"));

    QVERIFY(found);
    QCOMPARE(found->id, id);
    QCOMPARE(found->url, QUrl::fromLocalFile(library.folder().path(MoodsetLibrary::fileName())));
    QCOMPARE(found->fileName, MoodsetLibrary::fileName());
    QCOMPARE(found->mimeType, QStringLiteral("application/x-zavro-moodset"));
    QCOMPARE(found->displayName, QStringLiteral("stored name"));
    QCOMPARE(found->permissions, 3);
    QVERIFY(found->favorite);
    QCOMPARE(found->homeWallpaper, QStringLiteral("/home.jpg"));
    QCOMPARE(found->applicationWallpaper, QStringLiteral("/application.jpg"));
    QCOMPARE(found->highlightColor, QColor(0, 0, 1));
    QCOMPARE(found->secondaryHighlightColor, QColor(0, 0, 2));
    QCOMPARE(found->primaryColor, QColor(0, 0, 3));
    QCOMPARE(found->secondaryColor, QColor(0, 0, 4));
    QCOMPARE(found->ringerVolume, 33);
    QCOMPARE(found->enabledSounds, -1);
    QCOMPARE(found->partnerSpace, QStringLiteral("partner"));
    QCOMPARE(found->version, 5);
    const QVariantMap tone{
        {QStringLiteral("url"),
         QUrl::fromLocalFile(library.folder().path(QStringLiteral("c.ogg")))},
        {QStringLiteral("fileName"), QStringLiteral("c.ogg")},
        {QStringLiteral("displayName"), QStringLiteral("Chime")}};
    QCOMPARE(found->resources, QVariantMap({{Chat, tone}}));
}

void MoodsetManagerTest::backCoverWithoutAMoodsetGivesNone()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 file = library.addFile(QStringLiteral("plain.txt"));
    MoodsetLibrary::exec(QStringLiteral("INSERT INTO dorselId VALUES (?, 'cover');"), {file});

    QVERIFY(!library.manager().moodsetFromDorselId(QStringLiteral("cover")));
    QVERIFY(!library.manager().moodsetFromDorselId(QStringLiteral("unknown")));
}

void MoodsetManagerTest::emptyBackCoverIdIsReported()
{
    MessageLog log;
    MoodsetLibrary library;

    QVERIFY(!library.manager().moodsetFromDorselId(QString()));

    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            {QStringLiteral("Moodset MoodsetManager::moodsetFromDorselId(const QString&)"),
             QStringLiteral("Empty DORSEL ID!")}));
}

void MoodsetManagerTest::failedBackCoverQueryIsReported()
{
    MessageLog log;
    MoodsetLibrary library;
    MoodsetLibrary::exec(QStringLiteral("DROP TABLE dorselId;"));

    QVERIFY(!library.manager().moodsetFromDorselId(QStringLiteral("cover")));

    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            {QStringLiteral("Moodset MoodsetManager::moodsetFromDorselId(const QString&)"),
             QStringLiteral("Failed to execute m_queryMoodsetByDorselId"),
             noSuchTable(QStringLiteral("dorselid"))}));
}

void MoodsetManagerTest::failedResourceQueryLeavesARecordWithoutResources()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    MoodsetLibrary::exec(QStringLiteral("INSERT INTO dorselId VALUES (?, 'cover');"), {id});
    MoodsetLibrary::exec(QStringLiteral("DROP TABLE resource;"));

    const Moodset found = library.manager().moodsetFromDorselId(QStringLiteral("cover"));

    QVERIFY(found);
    QCOMPARE(found->resources, QVariantMap());
    QCOMPARE(
        log.takeWarnings(),
        QStringList(
            {QStringLiteral("Moodset MoodsetManager::parseMoodset(QSqlQuery*)"),
             QStringLiteral("Failed to execute m_queryResource"),
             noSuchTable(QStringLiteral("resource")),
             QStringLiteral(
                 "\"SELECT resource.resourceType, directory.path || '/' || file.fileName, "
                 "file.fileName, file.displayName FROM resource INNER JOIN file on "
                 "resource.resourceId = file.id INNER JOIN directory on file.directoryId = "
                 "directory.id WHERE resource.fileId = ?;\"")}));
}

void MoodsetManagerTest::installDirectoryName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    const auto addPath = [](const char* path, const QString& name) {
        QTest::newRow(path) << QString::fromLatin1(path) << name;
    };
    addPath("/usr/share/moodset/sea/a.moodset", QStringLiteral("sea"));
    addPath("/usr/share/moodset/sea/images/w.jpg", QStringLiteral("sea"));
    addPath("/usr/share/moodset/sea/", QStringLiteral("sea"));
    addPath("/usr/share/moodset/a.moodset", QString());
    addPath("/usr/share/moodset/", QString());
    addPath("/usr/share/moodset", QString());
    addPath("/usr/share", QString());
    addPath("/home/u/usr/share/moodset/sea/a.moodset", QString());
    addPath("", QString());
}

void MoodsetManagerTest::installDirectoryName()
{
    QFETCH(QString, path);
    QFETCH(QString, name);

    const QString found = MoodsetManager::moodsetInstallDirName(path);

    QCOMPARE(found, name);
    QCOMPARE(found.isNull(), name.isNull());
}

void MoodsetManagerTest::saveOfTheActiveMoodsetIsAnnounced()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    const ActiveMoodsetRecord announced(library.manager());

    QVERIFY(library.manager().save(id, edit("primaryColor", QStringLiteral("#123456"))));

    QCOMPARE(announced.moodsets.size(), 1);
    const Moodset moodset = announced.moodsets.constFirst();
    QVERIFY(moodset);
    QCOMPARE(moodset->id, id);
    QCOMPARE(moodset->primaryColor, QColor(0x12, 0x34, 0x56));
}

void MoodsetManagerTest::saveOfAnotherMoodsetIsNotAnnounced()
{
    MessageLog log;
    MoodsetLibrary library;
    library.addStoredMoodset();
    const qint64 other = library.addStoredMoodset(QStringLiteral("other.moodset"));
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    const ActiveMoodsetRecord announced(library.manager());

    QVERIFY(library.manager().save(other, edit("ringerVolume", 1)));

    QCOMPARE(announced.moodsets.size(), 0);
}

void MoodsetManagerTest::failedSaveIsNotAnnounced()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    MoodsetLibrary::exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("moodset")));
    const ActiveMoodsetRecord announced(library.manager());

    QVERIFY(!library.manager().save(id, edit("ringerVolume", 1)));

    QCOMPARE(log.takeWarnings().size(), 4);
    QCOMPARE(announced.moodsets.size(), 0);
}

/// The event loop has not reported the change yet.
void MoodsetManagerTest::saveAnnouncesTheMoodsetThatTheSourceHasJustNamed()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    library.makeManager();
    const ActiveMoodsetRecord announced(library.manager());

    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    QVERIFY(library.manager().save(id, edit("ringerVolume", 2)));

    QCOMPARE(announced.moodsets.size(), 1);
    QCOMPARE(announced.moodsets.constFirst()->ringerVolume, 2);
}

/// The event loop has not reported the change yet.
void MoodsetManagerTest::saveIsNotAnnouncedOnceTheSourceNamesNoMoodset()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 id = library.addStoredMoodset();
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    const ActiveMoodsetRecord announced(library.manager());

    writeSource(QString());
    QVERIFY(library.manager().save(id, edit("ringerVolume", 2)));

    QCOMPARE(announced.moodsets.size(), 0);
}

/// This also happens when the database is rebuilt.
void MoodsetManagerTest::activeMoodsetIsAnnouncedUnderANewId()
{
    MessageLog log;
    MoodsetLibrary library;
    const qint64 former = library.addStoredMoodset();
    writeSource(library.folder().path(MoodsetLibrary::fileName()));
    library.makeManager();
    const ActiveMoodsetRecord announced(library.manager());

    MoodsetLibrary::exec(QStringLiteral("DELETE FROM file WHERE id = ?;"), {former});
    library.addStoredMoodset(QStringLiteral("other.moodset"));
    const qint64 id = library.addStoredMoodset();
    QVERIFY(id != former);
    QVERIFY(library.manager().save(id, edit("ringerVolume", 2)));

    QCOMPARE(announced.moodsets.size(), 1);
    QCOMPARE(announced.moodsets.constFirst()->id, id);
}

QTEST_GUILESS_MAIN(MoodsetManagerTest)
#include "tst_moodsetmanager.moc"
