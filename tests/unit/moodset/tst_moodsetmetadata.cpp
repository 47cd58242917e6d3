// SPDX-License-Identifier: BSD-3-Clause
#include "announcements.h"
#include "content/moodsetcontent.h"
#include "dconfcommand.h"
#include "messagelog.h"
#include "mgconfitem.h"
#include "moodset/moodsetmanager.h"
#include "moodsetlibrary.h"
#include "refusedcommit.h"
#include "toolargewarning.h"
#include "translationcatalog.h"

#include <QFile>
#include <QTest>

namespace {

const QString UpdateFunction = QStringLiteral("virtual bool MoodsetManager::updateMetaData()");
const QString ModifiedQuery = QStringLiteral("SELECT id, path, fileName FROM modified_moodset;");
const QString ModifiedMoodsetQuery = QStringLiteral(
    "SELECT modified_moodset.id, modified_moodset.displayName, moodset.favorite, "
    "moodset.timestamp, moodset.ringerVolume, moodset.enabledSounds, moodset.partnerSpace, "
    "moodset.highlightColor, moodset.secondaryhighlightColor, moodset.primaryColor, "
    "moodset.secondaryColor, moodset.version FROM modified_moodset INNER JOIN moodset "
    "ON modified_moodset.id = moodset.fileId;");
const QString InsertMoodset = QStringLiteral(
    "INSERT INTO moodset ( fileId, homeWallpaper, applicationWallpaper, highlightColor, "
    "secondaryHighlightColor, primaryColor, secondaryColor, ringerVolume, enabledSounds, "
    "favorite, partnerSpace, version) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);");

/// A valid moodset file with `members` besides its wallpaper. Write single quotes instead of double
/// ones.
QByteArray with(const QByteArray& members)
{
    return QByteArray("{'wallpaper': 'w.jpg', " + members + "}").replace('\'', '"');
}

QByteArray plain()
{
    return with("'displayName': 'Sea'");
}

QString name(int number)
{
    return QStringLiteral("%1.moodset").arg(number, 3, 10, QLatin1Char('0'));
}

} // namespace

/// Tests how rows change. tst_moodsetreaders tests how the keys of a file are read.
class MoodsetMetadataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
    }

    void nothingPendingIsNoWork()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addStoredMoodset();
        // Every write would fail.
        MoodsetLibrary::exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("file")));
        const ActiveMoodsetRecord announced(library.manager());

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(announced.moodsets.size(), 0);
        QVERIFY(!MoodsetLibrary::isInTransaction());
    }

    void parsedMoodsetsAreAnnouncedOnce()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addMoodsetFile(plain());
        library.addMoodsetFile(plain(), name(1));
        const Announcements announcements;

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::Moodset});
    }

    void rejectedMoodsetsAreAnnounced()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addMoodsetFile("{}");
        const Announcements announcements;

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::Moodset});
    }

    void nothingParsedIsNotAnnounced()
    {
        MessageLog log;
        MoodsetLibrary library;
        const Announcements announcements;

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(Announcements::take(), QVector<int>());
    }

    void fullBatchAsksForMore_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<QVector<bool>>("results");
        QTest::newRow("99") << 99 << QVector<bool>{false};
        QTest::newRow("100") << 100 << QVector<bool>{true, false};
        QTest::newRow("101") << 101 << QVector<bool>{true, false};
        QTest::newRow("200") << 200 << QVector<bool>{true, true, false};
    }

    void fullBatchAsksForMore()
    {
        QFETCH(int, files);
        QFETCH(QVector<bool>, results);
        MessageLog log;
        MoodsetLibrary library;
        for (int i = 0; i < files; ++i) {
            library.addMoodsetFile(plain(), name(i));
        }

        for (const bool expected : results) {
            QCOMPARE(library.manager().updateMetaData(), expected);
        }

        QCOMPARE(library.pendingFiles(), 0);
        QCOMPARE(library.value(QStringLiteral("SELECT count(*) FROM moodset;")).toInt(), files);
    }

    void newFileGetsARowAndATime()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addMoodsetFile(plain());
        const qint64 dated = library.addMoodsetFile(
            with("'timestamp': '2019-08-07T06:05:04Z'"), QStringLiteral("dated.moodset"));
        const qint64 before = QDateTime::currentSecsSinceEpoch();

        QVERIFY(!library.manager().updateMetaData());

        const QString text = library.column(id, QStringLiteral("timestamp")).toString();
        const qint64 time = QDateTime::fromString(text, Qt::ISODate).toSecsSinceEpoch();
        QVERIFY2(text.endsWith(QLatin1Char('Z')), qPrintable(text));
        QVERIFY(before <= time && time <= QDateTime::currentSecsSinceEpoch());
        QCOMPARE(
            library.column(dated, QStringLiteral("timestamp")).toString(),
            QStringLiteral("2019-08-07T06:05:04Z"));
        QVERIFY(!MoodsetLibrary::isInTransaction());
    }

    void whatUsersEditIsKept()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        QStringList expected = library.moodset(id);
        // The home wallpaper, the application wallpaper, the version and the name follow the file.
        expected[2] = library.folder().path(QStringLiteral("images/w.jpg"));
        expected[3] = QStringLiteral("NULL");
        expected[12] = QStringLiteral("7");
        expected[13] = QStringLiteral("Sea");

        library.rewrite(
            id,
            with("'displayName': 'Sea', 'favorite': false, 'highlightColor': 'red',"
                 "'secondaryHighlightColor': 'red', 'primaryColor': 'red',"
                 "'secondaryColors': 'red', 'ringerVolume': 1, 'version': 7,"
                 "'partnerSpace': 'x', 'timestamp': '2019-08-07T06:05:04Z',"
                 "'ringerToneFile': {'enabled': 0}"));
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.moodset(id), expected);
    }

    void formerFavouriteStaysNone()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addMoodsetFile(with("'favorite': true"));
        QVERIFY(!library.manager().updateMetaData());
        QVERIFY(library.manager().save(id, {{QStringLiteral("favorite"), false}}));

        library.rewrite(id, with("'favorite': true"));
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.column(id, QStringLiteral("favorite")).toInt(), 0);
        QVERIFY(library.column(id, QStringLiteral("timestamp")).isNull());
    }

    void emptyNameKeepsTheStoredOne()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();

        library.rewrite(id, with("'displayName': ''"));
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.moodset(id).constLast(), QStringLiteral("stored name"));
    }

    void tonesFollowTheFile()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        library.addResource(
            id, QStringLiteral("mailToneFile"), library.addFile(QStringLiteral("m.ogg")));

        library.rewrite(id, with("'chatToneFile': {'file': 's.ogg'}"));
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.resources(id), QStringList(QStringLiteral("chatToneFile=s.ogg")));
    }

    void rejectedFileLosesItsRow_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("warnings");
        QTest::newRow("not JSON") << QByteArray()
                                  << QStringList(QStringLiteral("Failed to parse moodset 5 0"));
        QTest::newRow("no wallpaper") << QByteArray("{\"displayName\": \"Sea\"}") << QStringList();
        QTest::newRow("wallpaper missing")
            << QByteArray("{\"wallpaper\": \"none.jpg\"}") << QStringList();
    }

    void rejectedFileLosesItsRow()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, warnings);
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        library.addResource(
            id, QStringLiteral("chatToneFile"), library.addFile(QStringLiteral("c.ogg")));

        library.rewrite(id, content);
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(log.takeWarnings(), warnings);
        QCOMPARE(library.moodset(id), QStringList());
        QCOMPARE(library.resources(id), QStringList(QStringLiteral("chatToneFile=c.ogg")));
        QCOMPARE(library.pendingFiles(), 0);

        // A good file starts anew.
        library.rewrite(id, with("'favorite': false, 'ringerVolume': 5"));
        QVERIFY(!library.manager().updateMetaData());
        QCOMPARE(library.column(id, QStringLiteral("favorite")).toInt(), 0);
        QCOMPARE(library.column(id, QStringLiteral("ringerVolume")).toInt(), 5);
    }

    void fileThatIsTooLargeLosesItsRowWithOneWarning()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        library.rewrite(id, with("'displayName': 'Sea'"));
        const QString path = library.folder().path(MoodsetLibrary::fileName());
        QVERIFY(QFile::resize(path, 16 * 1024 * 1024 + 1));

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(log.takeWarnings(), QStringList(tooLargeWarning(path)));
        QCOMPARE(library.moodset(id), QStringList());
        QCOMPARE(library.pendingFiles(), 0);
    }

    // Their content is in memory until it is written.
    void batchEndsWithTheBytesOfOneLargestFile()
    {
        MessageLog log;
        MoodsetLibrary library;
        const QByteArray third(6 * 1024 * 1024, 'a');
        QList<qint64> ids;
        for (const auto& name :
             {QStringLiteral("a.moodset"), QStringLiteral("b.moodset"), QStringLiteral("c.moodset"),
              QStringLiteral("d.moodset")}) {
            ids.append(library.addStoredMoodset(name));
            library.rewrite(ids.constLast(), with("'displayName': '" + third + "'"), name);
        }

        QVERIFY(library.manager().updateMetaData());
        QCOMPARE(library.pendingFiles(), 1);
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.pendingFiles(), 0);
        for (const qint64 id : qAsConst(ids)) {
            QCOMPARE(library.moodset(id).constLast().size(), third.size());
            QCOMPARE(library.column(id, QStringLiteral("ringerVolume")).toInt(), 33);
        }
    }

    void fileThatCannotBeOpenedChangesNothing_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("missing") << QString();
        QTest::newRow("link to a FIFO") << QStringLiteral("fifo");
        QTest::newRow("link to a device") << QStringLiteral("/dev/zero");
        QTest::newRow("link to a directory") << QStringLiteral("images");
    }

    void fileThatCannotBeOpenedChangesNothing()
    {
        QFETCH(QString, target);
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        const QStringList former = library.moodset(id);
        library.folder().makeFifo(QStringLiteral("fifo"));
        if (!target.isEmpty()) {
            library.folder().makeLink(MoodsetLibrary::fileName(), target);
        }
        MoodsetLibrary::exec(QStringLiteral("UPDATE file SET metadataCurrent = 0;"));

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.moodset(id), former);
        QCOMPARE(library.pendingFiles(), 0);
    }

    // The row of a file that cannot be opened makes all later files count as new.
    void batchFailsWhenAStoredMoodsetFollowsAFileThatCannotBeOpened()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 missing = library.addStoredMoodset(name(1));
        const qint64 stored = library.addStoredMoodset(name(2));
        const qint64 fresh = library.addMoodsetFile(plain(), name(3));
        MoodsetLibrary::exec(
            QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = ?;"), {missing});
        library.rewrite(stored, plain(), name(2));
        const QStringList former = library.moodset(stored);

        for (int turn = 0; turn < 2; ++turn) {
            QVERIFY(!library.manager().updateMetaData());

            QCOMPARE(
                log.takeWarnings(),
                QStringList(
                    {UpdateFunction, QStringLiteral("Failed to execute m_insertMoodset."),
                     QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", "
                                    "\"UNIQUE constraint failed: moodset.fileId\")"),
                     QLatin1Char('"') + InsertMoodset + QLatin1Char('"')}));
            QCOMPARE(library.pendingFiles(), 3);
            QCOMPARE(library.moodset(stored), former);
            QCOMPARE(library.moodset(fresh), QStringList());
            QVERIFY(!MoodsetLibrary::isInTransaction());
        }
    }

    void newFilesAroundAFileThatCannotBeOpenedGetRows()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 first = library.addMoodsetFile(plain(), name(1));
        const qint64 missing = library.addStoredMoodset(name(2));
        MoodsetLibrary::exec(
            QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = ?;"), {missing});
        const qint64 last = library.addMoodsetFile(plain(), name(3));

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(library.moodset(first).constLast(), QStringLiteral("Sea"));
        QCOMPARE(library.moodset(last).constLast(), QStringLiteral("Sea"));
        QCOMPARE(library.pendingFiles(), 0);
    }

    void storedNewAndRejectedFilesAreToldApart()
    {
        MessageLog log;
        MoodsetLibrary library;
        QVector<qint64> ids;
        for (int i = 0; i < 9; ++i) {
            ids.append(
                i % 3 == 0 ? library.addMoodsetFile(plain(), name(i))
                           : library.addStoredMoodset(name(i)));
        }
        for (int i = 0; i < 9; ++i) {
            library.rewrite(ids.at(i), i % 3 == 2 ? QByteArray("{}") : plain(), name(i));
        }

        QVERIFY(!library.manager().updateMetaData());

        for (int i = 0; i < 9; ++i) {
            const QStringList row = library.moodset(ids.at(i));
            QCOMPARE(row.isEmpty(), i % 3 == 2);
            // Only a stored row has a volume of its own.
            if (!row.isEmpty()) {
                QCOMPARE(row.at(9), i % 3 == 0 ? QStringLiteral("80") : QStringLiteral("33"));
            }
        }
    }

    void namesAreTranslatedWithTheCatalogOfTheirFile()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog seasons(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        const TranslationCatalog weather(QStringLiteral("weather-de"));
        MoodsetLibrary library;
        const auto add = [&](int number, const QByteArray& catalog, const QByteArray& source) {
            return library.addMoodsetFile(
                with("'translationCatalog': '" + catalog + "', 'displayName': '" + source + "'"),
                name(number));
        };
        const QVector<qint64> ids{add(1, "seasons", "Autumn"), add(2, "seasons", "Winter"),
                                  add(3, "weather", "Autumn"), add(4, "", "Autumn"),
                                  add(5, "seasons", "Summer"), add(6, "seasons", ""),
                                  add(7, "seasons", "Spring")};

        QVERIFY(!library.manager().updateMetaData());

        QStringList names;
        for (const qint64 id : ids) {
            names.append(library.moodset(id).constLast());
        }
        QCOMPARE(
            names,
            QStringList(
                {QStringLiteral("Herbst"), QStringLiteral("Winter (engineering)"),
                 QStringLiteral("Herbstwetter"), QStringLiteral("Autumn"), QStringLiteral("Summer"),
                 QStringLiteral("Namenlos"), QStringLiteral("Spring")}));
    }

    void failedQueryIsReported()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addMoodsetFile(plain());
        MoodsetLibrary::exec(QStringLiteral("DROP VIEW temp.modified_moodset;"));

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {UpdateFunction, QStringLiteral("Failed to execute m_modifiedQuery"),
                 noSuchTable(QStringLiteral("modified_moodset")),
                 QLatin1Char('"') + ModifiedQuery + QLatin1Char('"')}));
        QCOMPARE(library.pendingFiles(), 1);
    }

    void failedQueryOfRowsIsReported()
    {
        MessageLog log;
        MoodsetLibrary library;
        library.addMoodsetFile(plain());
        MoodsetLibrary::exec(QStringLiteral("DROP TABLE moodset;"));

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                {UpdateFunction, QStringLiteral("Failed to execute m_modifiedMoodsetQuery"),
                 noSuchTable(QStringLiteral("moodset")),
                 QLatin1Char('"') + ModifiedMoodsetQuery + QLatin1Char('"')}));
        QCOMPARE(library.pendingFiles(), 1);
    }

    void failedStatementRollsTheBatchBack_data()
    {
        QTest::addColumn<QString>("trigger");
        QTest::addColumn<QString>("statement");
        const auto addRow = [](const char* query, const QString& trigger,
                               const QString& statement) {
            QTest::newRow(query) << trigger << statement;
        };
        const auto refuseUpdateOf = [](const char* column) {
            return QStringLiteral("CREATE TRIGGER refuse_column BEFORE UPDATE OF %1 ON file "
                                  "BEGIN SELECT RAISE(ABORT, 'refused'); END;")
                .arg(QString::fromLatin1(column));
        };
        addRow(
            "m_modifiedReset", refuseUpdateOf("metadataCurrent"),
            QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"));
        addRow(
            "m_deleteMoodset", refuse(QStringLiteral("DELETE"), QStringLiteral("moodset")),
            QStringLiteral("DELETE FROM moodset WHERE fileId = ?;"));
        addRow(
            "m_insertMoodset", refuse(QStringLiteral("INSERT"), QStringLiteral("moodset")),
            InsertMoodset);
        addRow(
            "m_updateFile", refuseUpdateOf("displayName"),
            QStringLiteral("UPDATE file SET displayName = ? WHERE id = ?;"));
        addRow(
            "m_updateMoodset", refuse(QStringLiteral("UPDATE"), QStringLiteral("moodset")),
            QStringLiteral("UPDATE moodset SET favorite = ?, timestamp = ?, homeWallpaper = ?, "
                           "applicationWallpaper = ?, highlightColor = ?, "
                           "secondaryHighlightColor = ?, primaryColor = ?, secondaryColor = ?, "
                           "ringerVolume = ?, enabledSounds = ?, partnerSpace = ?, version = ? "
                           "WHERE fileId = ?;"));
        addRow(
            "m_clearResources", refuse(QStringLiteral("DELETE"), QStringLiteral("resource")),
            QStringLiteral("DELETE FROM resource WHERE fileId = ?;"));
        addRow(
            "m_insertResource", refuse(QStringLiteral("INSERT"), QStringLiteral("resource")),
            QStringLiteral("INSERT OR REPLACE INTO resource ( fileId, resourceType, resourceId) "
                           "VALUES (?, ?, ?);"));
    }

    void failedStatementRollsTheBatchBack()
    {
        QFETCH(QString, trigger);
        QFETCH(QString, statement);
        const QString query = QString::fromLatin1(QTest::currentDataTag());
        MessageLog log;
        MoodsetLibrary library;
        const qint64 stored = library.addStoredMoodset(name(1));
        library.addResource(
            stored, QStringLiteral("mailToneFile"), library.addFile(QStringLiteral("m.ogg")));
        const qint64 bad = library.addStoredMoodset(name(2));
        const qint64 fresh =
            library.addMoodsetFile(with("'chatToneFile': {'file': 's.ogg'}"), name(3));
        library.rewrite(stored, plain(), name(1));
        library.rewrite(bad, "{}", name(2));
        const QStringList formerStored = library.moodset(stored);
        const QStringList formerBad = library.moodset(bad);
        MoodsetLibrary::exec(trigger);

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            refusedWarnings(
                UpdateFunction, QStringLiteral("Failed to execute %1.").arg(query), statement));
        QCOMPARE(library.pendingFiles(), 3);
        QCOMPARE(library.moodset(stored), formerStored);
        QCOMPARE(library.moodset(bad), formerBad);
        QCOMPARE(library.moodset(fresh), QStringList());
        QCOMPARE(library.resources(stored), QStringList(QStringLiteral("mailToneFile=m.ogg")));
        QVERIFY(!MoodsetLibrary::isInTransaction());
        // The file of the tone is known before the batch is written.
        QCOMPARE(
            library.value(QStringLiteral("SELECT count(*) FROM file WHERE fileName = 's.ogg';"))
                .toInt(),
            1);
    }

    void batchThatCannotBeCommittedIsTriedAgain()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addMoodsetFile(plain());
        const QStringList statements =
            refuseCommit(QStringLiteral("INSERT"), QStringLiteral("moodset"));
        for (const QString& statement : statements) {
            MoodsetLibrary::exec(statement);
        }

        QVERIFY(!library.manager().updateMetaData());
        QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(UpdateFunction)));
        QVERIFY(!MoodsetLibrary::isInTransaction());
        QCOMPARE(library.pendingFiles(), 1);
        QCOMPARE(library.moodset(id), QStringList());

        MoodsetLibrary::exec(allowCommit());
        QVERIFY(!library.manager().updateMetaData());
        QCOMPARE(library.pendingFiles(), 0);
        QVERIFY(!library.moodset(id).isEmpty());
    }

    void activeMoodsetIsAnnouncedOnceItIsWritten()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        writeSource(library.folder().path(MoodsetLibrary::fileName()));
        library.makeManager();
        library.rewrite(id, plain());
        library.addMoodsetFile(plain(), QStringLiteral("other.moodset"));
        int pendingThen = -1;
        const ActiveMoodsetRecord announced(library.manager());
        connect(&library.manager(), &MoodsetManager::activeMoodsetUpdated, this, [&] {
            pendingThen = library.pendingFiles();
        });

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(announced.moodsets.size(), 1);
        QCOMPARE(announced.moodsets.constFirst()->id, id);
        QCOMPARE(announced.moodsets.constFirst()->displayName, QStringLiteral("Sea"));
        QCOMPARE(pendingThen, 0);
    }

    /// The event loop has not reported the change yet.
    void moodsetThatTheSourceHasJustNamedIsAnnounced()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addMoodsetFile(plain());
        library.makeManager();
        const ActiveMoodsetRecord announced(library.manager());

        writeSource(library.folder().path(MoodsetLibrary::fileName()));
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(announced.moodsets.size(), 1);
        QCOMPARE(announced.moodsets.constFirst()->id, id);
    }

    /// The event loop has not reported the change yet.
    void nothingIsAnnouncedOnceTheSourceNamesNoMoodset()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        writeSource(library.folder().path(MoodsetLibrary::fileName()));
        library.makeManager();
        library.rewrite(id, plain());
        const ActiveMoodsetRecord announced(library.manager());

        writeSource(QString());
        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(announced.moodsets.size(), 0);
    }

    void rejectedActiveMoodsetIsNotAnnounced()
    {
        MessageLog log;
        MoodsetLibrary library;
        const qint64 id = library.addStoredMoodset();
        writeSource(library.folder().path(MoodsetLibrary::fileName()));
        library.makeManager();
        library.rewrite(id, "{}");
        const ActiveMoodsetRecord announced(library.manager());

        QVERIFY(!library.manager().updateMetaData());

        QCOMPARE(announced.moodsets.size(), 0);
    }
};

QTEST_GUILESS_MAIN(MoodsetMetadataTest)
#include "tst_moodsetmetadata.moc"
