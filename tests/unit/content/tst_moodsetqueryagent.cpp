// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/filequeryagent.h"
#include "content/moodsetqueryagent.h"
#include "contentlibrary.h"
#include "failuremessages.h"
#include "messagelog.h"
#include "statementprobe.h"

#include <QSqlQuery>

namespace {

const QString Selection = QStringLiteral(
    "SELECT file.id, directory.path || '/' || file.fileName AS filePath, file.mimeType, "
    "file.fileName, file.permissions, file.displayName, dorselid.dorselId, moodset.favorite, "
    "moodset.homeWallpaper, moodset.applicationWallpaper, moodset.highlightColor, "
    "moodset.secondaryHighlightColor, moodset.primaryColor, moodset.secondaryColor, "
    "moodset.ringerVolume, moodset.enabledSounds, moodset.partnerSpace, moodset.version "
    "FROM file INNER JOIN directory on file.directoryId = directory.id "
    "INNER JOIN moodset ON file.id = moodset.fileId "
    "LEFT OUTER JOIN dorselid ON moodset.fileId = dorselid.fileId ");
const QString ById = Selection + QStringLiteral("WHERE file.id = ?;");
const QString Resources = QStringLiteral(
    "SELECT resource.fileId, resource.resourceType, directory.path || '/' || file.fileName, "
    "file.fileName, file.displayName FROM resource "
    "INNER JOIN file ON resource.resourceId = file.id "
    "INNER JOIN directory on file.directoryId = directory.id WHERE resource.fileId = ?");
const QString SingleFunction =
    QStringLiteral("Content MoodsetQueryAgent::querySingleMoodset(QSqlQuery&)");
const QString ListFunction =
    QStringLiteral("virtual bool MoodsetQueryAgent::query("
                   "QueryAgent::Recipient*, const QueryAgent::Parameters&)");

// Statements of a listing, with the table's name for %1.
const QString Create = QStringLiteral("CREATE TEMPORARY TABLE %1 AS SELECT * FROM moodset\n"
                                      "ORDER BY moodset.favorite DESC, moodset.timestamp ASC;");
const QString CreateFiltered =
    QStringLiteral("CREATE TEMPORARY TABLE %1 AS SELECT * FROM moodset\n"
                   "WHERE moodset.favorite = %2 ORDER BY moodset.timestamp ASC;");
const QString Listing = QStringLiteral(
    "SELECT file.id, directory.path || '/' || file.fileName AS filePath, file.mimeType, "
    "file.fileName, file.permissions, file.displayName, dorselid.dorselId, %1.favorite, "
    "%1.homeWallpaper, %1.applicationWallpaper, %1.highlightColor, %1.secondaryHighlightColor, "
    "%1.primaryColor, %1.secondaryColor, %1.ringerVolume, %1.enabledSounds, %1.partnerSpace, "
    "%1.version FROM %1 INNER JOIN file ON %1.fileId = file.id "
    "INNER JOIN directory on file.directoryId = directory.id "
    "LEFT OUTER JOIN dorselid ON %1.fileId = dorselid.fileId ORDER BY %1.rowid;");
const QString ListingResources = QStringLiteral(
    "SELECT resource.fileId, resource.resourceType, directory.path || '/' || file.fileName, "
    "file.fileName, file.displayName FROM %1 INNER JOIN resource ON %1.fileId = resource.fileId "
    "INNER JOIN file ON resource.resourceId = file.id "
    "INNER JOIN directory on file.directoryId = directory.id ORDER BY %1.rowid;");
const QString Drop = QStringLiteral("DROP TABLE %1");

QString tableName(const QueryAgentDatabase& database)
{
    return QStringLiteral("moodset_%1").arg(database.threadId);
}

const MoodsetData& moodset(const Content& content)
{
    return *static_cast<const MoodsetData*>(content.data());
}

QueryAgent::Parameters filter(int favoriteFilter)
{
    QueryAgent::Parameters parameters;
    parameters.favoriteFilter = favoriteFilter;
    return parameters;
}

QVariantMap ordered(int favorite, const QString& timestamp)
{
    return {{QStringLiteral("favorite"), favorite}, {QStringLiteral("timestamp"), timestamp}};
}

QVariantMap describedResource(const QString& path, const QString& displayName)
{
    return {
        {QStringLiteral("url"), QUrl::fromLocalFile(path)},
        {QStringLiteral("fileName"), path.mid(path.lastIndexOf(QLatin1Char('/')) + 1)},
        {QStringLiteral("displayName"), displayName}};
}

/// Lists moodsets when it receives its first batch of files, which clients must not do.
class ListingRecipient final : public QueryAgent::Recipient
{
public:
    explicit ListingRecipient(QueryAgent* moodsets)
        : m_moodsets(moodsets)
    {
    }

    void receive(const QVector<Content>& batch) override
    {
        Q_UNUSED(batch)
        if (!m_hasListed) {
            m_hasListed = true;
            m_result = m_moodsets->query(&m_recorder, {});
        }
    }

    bool result() const { return m_result; }
    const BatchRecorder& recorder() const { return m_recorder; }

private:
    QueryAgent* m_moodsets;
    BatchRecorder m_recorder;
    bool m_hasListed = false;
    bool m_result = false;
};

} // namespace

class MoodsetQueryAgentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowBecomesARecord()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(
            QStringLiteral("/m/sea.moodset"),
            {{QStringLiteral("favorite"), 1},
             {QStringLiteral("homeWallpaper"), QStringLiteral("/m/home.jpg")},
             {QStringLiteral("applicationWallpaper"), QStringLiteral("/m/application.jpg")},
             {QStringLiteral("highlightColor"), QStringLiteral("#ff000001")},
             {QStringLiteral("secondaryHighlightColor"), QStringLiteral("#80000002")},
             {QStringLiteral("primaryColor"), QStringLiteral("red")},
             {QStringLiteral("secondaryColor"), QStringLiteral("no colour")},
             {QStringLiteral("timestamp"), QStringLiteral("2020-01-01T00:00:00Z")},
             {QStringLiteral("ringerVolume"), 40},
             {QStringLiteral("enabledSounds"), 5},
             {QStringLiteral("partnerSpace"), QStringLiteral("space")},
             {QStringLiteral("version"), 3}});
        library.writer.exec(QStringLiteral("UPDATE file SET displayName = 'Sea', permissions = 1"));
        library.writer.exec(QStringLiteral("INSERT INTO dorselId VALUES (?, 'cover')"), {id});
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        QCOMPARE(content.type(), 1);
        const MoodsetData& record = moodset(content);
        QCOMPARE(record.id, id);
        QCOMPARE(record.url, QUrl(QStringLiteral("file:///m/sea.moodset")));
        QCOMPARE(record.mimeType, QStringLiteral("application/x-zavro-moodset"));
        QCOMPARE(record.fileName, QStringLiteral("sea.moodset"));
        QCOMPARE(record.permissions, 1);
        QCOMPARE(record.displayName, QStringLiteral("Sea"));
        QCOMPARE(record.FileData::displayName, QString());
        QCOMPARE(record.dorselId, QStringLiteral("cover"));
        QCOMPARE(record.favorite, true);
        QCOMPARE(record.homeWallpaper, QStringLiteral("/m/home.jpg"));
        QCOMPARE(record.applicationWallpaper, QStringLiteral("/m/application.jpg"));
        QCOMPARE(record.highlightColor, QColor(0, 0, 1));
        QCOMPARE(record.secondaryHighlightColor, QColor(0, 0, 2, 0x80));
        QCOMPARE(record.primaryColor, QColor(Qt::red));
        QVERIFY(!record.secondaryColor.isValid());
        QVERIFY(record.timestamp.isNull());
        QCOMPARE(record.ringerVolume, 40);
        QCOMPARE(record.enabledSounds, 5);
        QCOMPARE(record.partnerSpace, QStringLiteral("space"));
        QCOMPARE(record.version, 3);
    }

    void nullColumnsOverwriteTheDefaults()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        const MoodsetData& record = moodset(content);
        QCOMPARE(record.ringerVolume, 0);
        QCOMPARE(record.enabledSounds, 0);
        QCOMPARE(record.version, 0);
        QVERIFY(!record.highlightColor.isValid());
        QCOMPARE(record.homeWallpaper, QString());
    }

    void moodsetWithoutCoverHasNoCoverId()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        QVERIFY(content.isValid());
        QCOMPARE(moodset(content).dorselId, QString());
    }

    void moodsetWithoutResourcesHasNone()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        const qint64 other = library.writer.addMoodset(QStringLiteral("/m/b.moodset"));
        library.writer.addResource(other, QStringLiteral("ringerToneFile"), QStringLiteral("/m/r"));
        MoodsetQueryAgent agent(library.reader);

        QCOMPARE(moodset(agent.queryById(other)).resources.size(), 1);
        QCOMPARE(moodset(agent.queryById(id)).resources, QVariantMap());
    }

    void moodsetHasItsResources()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        library.writer.addResource(
            id, QStringLiteral("ringerToneFile"), QStringLiteral("/m/sounds/r.ogg"));
        library.writer.addResource(
            id, QStringLiteral("mailToneFile"), QStringLiteral("/other/m.ogg"));
        library.writer.exec(
            QStringLiteral("UPDATE file SET displayName = 'Ring' WHERE fileName = 'r.ogg'"));
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        QCOMPARE(
            moodset(content).resources,
            QVariantMap(
                {{QStringLiteral("ringerToneFile"),
                  describedResource(QStringLiteral("/m/sounds/r.ogg"), QStringLiteral("Ring"))},
                 {QStringLiteral("mailToneFile"),
                  describedResource(QStringLiteral("/other/m.ogg"), QString())}}));
    }

    void unknownIdGivesNull_data()
    {
        QTest::addColumn<bool>("isFile");
        QTest::newRow("no such file") << false;
        QTest::newRow("file that is no moodset") << true;
    }

    void unknownIdGivesNull()
    {
        QFETCH(bool, isFile);
        MessageLog log;
        ContentLibrary library;
        const qint64 id = library.writer.addFile(
            QStringLiteral("/m/a.moodset"), QStringLiteral("application/x-zavro-moodset"));
        MoodsetQueryAgent agent(library.reader);

        QVERIFY(!agent.queryById(isFile ? id : id + 1).isValid());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void urlFindsItsMoodset_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<bool>("isFound");
        const auto row = [](const char* name, const char* url, bool isFound) {
            QTest::newRow(name) << QUrl(QLatin1String(url)) << isFound;
        };
        row("local", "file:///m/a.moodset", true);
        row("downloaded", "http://host/a", true);
        row("unknown directory", "file:///z/a.moodset", false);
        row("unknown file", "file:///m/z.moodset", false);
        row("not downloaded", "http://host/b", false);
        row("path without scheme", "/m/a.moodset", false);
        row("empty", "", false);
    }

    void urlFindsItsMoodset()
    {
        QFETCH(QUrl, url);
        QFETCH(bool, isFound);
        MessageLog log;
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        library.writer.setSource(id, QStringLiteral("http://host/a"));
        library.writer.addResource(id, QStringLiteral("ringerToneFile"), QStringLiteral("/m/r"));
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryByUrl(url);

        QCOMPARE(content.isValid(), isFound);
        QVERIFY(!isFound || moodset(content).resources.size() == 1);
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void singleStatementsAreTheseTexts()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        MoodsetQueryAgent agent(library.reader);

        agent.queryById(id);
        agent.queryByUrl(QUrl(QStringLiteral("file:///m/b")));
        agent.queryByUrl(QUrl(QStringLiteral("http://host/a")));

        QStringList texts = library.reader.cache.keys();
        texts.sort();
        QCOMPARE(
            texts,
            QStringList(
                {Selection + QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;"),
                 ById,
                 Selection
                     + QStringLiteral("WHERE file.id IN "
                                      "(SELECT fileId FROM download WHERE source = ?);"),
                 Resources}));
    }

    void failedReadingIsReported()
    {
        MessageLog log;
        ContentLibrary library;
        MoodsetQueryAgent agent(library.reader);
        agent.queryById(1);
        library.writer.exec(QStringLiteral("DROP TABLE moodset"));

        QVERIFY(!agent.queryById(1).isValid());

        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                SingleFunction, QStringLiteral("Failed to query moodset"),
                QStringLiteral(
                    "QSqlError(\"1\", \"Unable to fetch row\", \"no such table: moodset\")"),
                ById));
    }

    void failedReadingOfResourcesReportsTheMoodsetsStatement()
    {
        MessageLog log;
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(
            QStringLiteral("/m/a.moodset"), {{QStringLiteral("ringerVolume"), 40}});
        library.writer.exec(QStringLiteral("DROP TABLE resource"));
        MoodsetQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        QCOMPARE(moodset(content).ringerVolume, 40);
        QCOMPARE(moodset(content).resources, QVariantMap());
        QCOMPARE(
            log.takeWarnings(),
            prepareFailureMessages(QStringLiteral("no such table: resource"), Resources)
                + failureMessages(
                    SingleFunction, QStringLiteral("Failed to execute resource query"),
                    QStringLiteral("QSqlError(\"\", \"\", \"\")"), ById));
    }

    void listingGoesByFavouriteAndTime_data()
    {
        QTest::addColumn<int>("favoriteFilter");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("all") << 0 << QString(QStringLiteral("f1 f2 n1 n2")).split(QLatin1Char(' '));
        QTest::newRow("favourites")
            << 1 << QString(QStringLiteral("f1 f2")).split(QLatin1Char(' '));
        QTest::newRow("others") << 2 << QString(QStringLiteral("n1 n2")).split(QLatin1Char(' '));
        QTest::newRow("any other value")
            << -7 << QString(QStringLiteral("n1 n2")).split(QLatin1Char(' '));
    }

    void listingGoesByFavouriteAndTime()
    {
        QFETCH(int, favoriteFilter);
        QFETCH(QStringList, names);
        ContentLibrary library;
        const auto add = [&library](const char* name, int favorite, const char* timestamp) {
            library.writer.addMoodset(
                QLatin1String("/m/") + QLatin1String(name),
                ordered(favorite, QLatin1String(timestamp)));
        };
        add("n2", 0, "2020-03-01T00:00:00Z");
        add("f2", 1, "2020-04-01T00:00:00Z");
        add("n1", 0, "2020-01-01T00:00:00Z");
        add("f1", 1, "2020-02-01T00:00:00Z");
        MoodsetQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, filter(favoriteFilter)));

        QCOMPARE(recorder.fileNames(), names);
    }

    void listingRunsTheseStatements_data()
    {
        QTest::addColumn<int>("favoriteFilter");
        QTest::addColumn<QString>("create");
        QTest::newRow("all") << 0 << Create;
        QTest::newRow("favourites")
            << 1 << QString(CreateFiltered).replace(QStringLiteral("%2"), QStringLiteral("1"));
        QTest::newRow("others")
            << 2 << QString(CreateFiltered).replace(QStringLiteral("%2"), QStringLiteral("0"));
    }

    void listingRunsTheseStatements()
    {
        QFETCH(int, favoriteFilter);
        QFETCH(QString, create);
        ContentLibrary library;
        StatementProbe probe(library.reader);
        MoodsetQueryAgent agent(library.reader);

        QVERIFY(agent.query(nullptr, filter(favoriteFilter)));

        const QString table = tableName(library.reader);
        QCOMPARE(
            probe.takeExecuted(),
            QStringList(
                {create.arg(table), Listing.arg(table), ListingResources.arg(table),
                 Drop.arg(table)}));
    }

    void listedMoodsetsHaveTheirResources()
    {
        ContentLibrary library;
        int number = 0;
        constexpr int count = 101;
        const QString type = QStringLiteral("ringerToneFile");
        // Every third moodset has none, so the resources wait for the next moodset that has some.
        library.writer.addMany(count, [&](const QString& path) {
            const qint64 id = library.writer.addMoodset(path);
            if (number++ % 3 != 0) {
                library.writer.addResource(id, type, QStringLiteral("/tones/%1").arg(id));
                library.writer.addResource(
                    id, QStringLiteral("mailToneFile"), QStringLiteral("/tones/m%1").arg(id));
            }
        });
        MoodsetQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(recorder.contents().size(), count);
        for (int i = 0; i < count; ++i) {
            const MoodsetData& record = moodset(recorder.contents().at(i));
            QCOMPARE(record.resources.size(), i % 3 == 0 ? 0 : 2);
            if (i % 3 != 0) {
                QCOMPARE(
                    record.resources.value(type).toMap(),
                    describedResource(QStringLiteral("/tones/%1").arg(record.id), QString()));
            }
        }
    }

    void listingLeavesNoTable()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        MoodsetQueryAgent agent(library.reader);

        for (int listing = 0; listing < 3; ++listing) {
            BatchRecorder recorder;
            QVERIFY(agent.query(&recorder, filter(listing % 2)));
            QCOMPARE(recorder.batchSizes().size(), 1);
        }

        QSqlQuery tables(library.reader);
        QVERIFY(tables.exec(QStringLiteral("SELECT name FROM temp.sqlite_master")));
        QVERIFY(!tables.next());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void repeatedListingSeesWhatIsNew()
    {
        ContentLibrary library;
        MoodsetQueryAgent agent(library.reader);
        QVERIFY(agent.query(nullptr, {}));
        library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(recorder.fileNames(), QStringList{QStringLiteral("a.moodset")});
    }

    void listingAndReadingKeepTheirStatements()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        MoodsetQueryAgent agent(library.reader);

        for (int round = 0; round < 3; ++round) {
            QVERIFY(agent.query(nullptr, {}));
            QVERIFY(agent.queryById(id).isValid());
        }

        // Create, two of the listing, drop, one moodset, its resources.
        QCOMPARE(library.reader.cache.size(), 6);
    }

    void moodsetWithoutDirectoryEndsTheResourcesButNoLaterListing()
    {
        MessageLog log;
        ContentLibrary library;
        const auto add = [&library](const char* path, const char* timestamp) {
            const qint64 id = library.writer.addMoodset(
                QLatin1String(path), ordered(0, QLatin1String(timestamp)));
            library.writer.addResource(
                id, QStringLiteral("ringerToneFile"), QStringLiteral("/tones/%1").arg(id));
        };
        add("/m/first", "2020-01-01T00:00:00Z");
        add("/gone/orphan", "2020-02-01T00:00:00Z");
        add("/m/last", "2020-03-01T00:00:00Z");
        // The file's row stays when a directory above its own is removed.
        library.writer.exec(QStringLiteral("DROP TRIGGER delete_directory_trigger"));
        library.writer.exec(QStringLiteral("DELETE FROM directory WHERE path = '/gone'"));
        MoodsetQueryAgent agent(library.reader);

        for (int listing = 0; listing < 2; ++listing) {
            BatchRecorder recorder;
            QVERIFY(agent.query(&recorder, {}));
            QCOMPARE(
                recorder.fileNames(),
                QStringList({QStringLiteral("first"), QStringLiteral("last")}));
            QCOMPARE(moodset(recorder.contents().first()).resources.size(), 1);
            QCOMPARE(moodset(recorder.contents().last()).resources.size(), 0);
        }
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void failureToMakeTheTableIsReported()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.exec(QStringLiteral("DROP TABLE moodset"));
        MoodsetQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(!agent.query(&recorder, {}));

        QVERIFY(recorder.batchSizes().isEmpty());
        QCOMPARE(
            log.takeWarnings(),
            prepareFailureMessages(
                QStringLiteral("no such table: moodset"), Create.arg(tableName(library.reader)))
                + deadQueryMessages(
                    ListFunction, QStringLiteral("Failed to create moodset table")));
    }

    void failureToListIsReportedAndLeavesNoTable()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.exec(QStringLiteral("DROP TABLE dorselId"));
        MoodsetQueryAgent agent(library.reader);
        BatchRecorder recorder;
        const QStringList expected =
            prepareFailureMessages(
                QStringLiteral("no such table: dorselid"), Listing.arg(tableName(library.reader)))
            + deadQueryMessages(ListFunction, QStringLiteral("Failed to execute moodset query"));

        for (int listing = 0; listing < 2; ++listing) {
            QVERIFY(agent.query(&recorder, {}));
            QCOMPARE(log.takeWarnings(), expected);
        }

        QVERIFY(recorder.batchSizes().isEmpty());
    }

    void failureToListResourcesReportsTheListingsStatement()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.addMoodset(QStringLiteral("/m/a.moodset"));
        library.writer.exec(QStringLiteral("DROP TABLE resource"));
        MoodsetQueryAgent agent(library.reader);
        BatchRecorder recorder;
        const QString table = tableName(library.reader);
        const QStringList expected = prepareFailureMessages(
                                         QStringLiteral("no such table: resource"),
                                         ListingResources.arg(table))
            + failureMessages(ListFunction, QStringLiteral("Failed to execute resource query"),
                              QStringLiteral("QSqlError(\"\", \"\", \"\")"), Listing.arg(table));

        for (int listing = 0; listing < 2; ++listing) {
            QVERIFY(agent.query(&recorder, {}));
            QCOMPARE(log.takeWarnings(), expected);
        }

        QVERIFY(recorder.batchSizes().isEmpty());
    }

    void listingInsideAnotherCannotDropItsTable()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.addMany(
            60, [&library](const QString& path) { library.writer.addMoodset(path); });
        FileQueryAgent files(library.reader);
        MoodsetQueryAgent moodsets(library.reader);
        ListingRecipient recipient(&moodsets);
        const QString table = tableName(library.reader);

        QVERIFY(files.query(&recipient, {}));

        // This listing has delivered its records, but its table stays, so later listings cannot
        // make theirs.
        QVERIFY(recipient.result());
        QCOMPARE(recipient.recorder().batchSizes(), QList<int>({50, 10}));
        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                ListFunction, QStringLiteral("Failed to drop temporary moodset table"),
                QStringLiteral(
                    "QSqlError(\"6\", \"Unable to fetch row\", \"database table is locked\")"),
                Drop.arg(table)));
        QVERIFY(!moodsets.query(nullptr, {}));
        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                ListFunction, QStringLiteral("Failed to create moodset table"),
                QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", "
                               "\"table %1 already exists\")")
                    .arg(table),
                Create.arg(table)));
    }

    void listingTellsModificationTimesIfItIsTo()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addMoodset(QStringLiteral("/a/b.moodset"));
        library.writer.addResource(
            id, QStringLiteral("ringerToneFile"), QStringLiteral("/a/tone.ogg"));
        library.writer.exec(
            QStringLiteral("UPDATE file SET modificationTime = '2021-03-04T05:06:07.089'"));
        MoodsetQueryAgent agent(library.reader);
        QueryAgent::Parameters parameters;
        parameters.modificationTimes = true;
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, parameters));

        QCOMPARE(recorder.contents().size(), 1);
        const Moodset moodset(recorder.contents().constFirst());
        QCOMPARE(moodset->modificationTime(), QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7, 89)));
        QCOMPARE(moodset->resources.size(), 1);
    }
};

QTEST_GUILESS_MAIN(MoodsetQueryAgentTest)

#include "tst_moodsetqueryagent.moc"
