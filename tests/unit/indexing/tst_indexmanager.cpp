// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/indexmanager.h"

#include "announcements.h"
#include "content/dbmanager.h"
#include "content/moodsetcontent.h"
#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "messagelog.h"
#include "refusedcommit.h"
#include "registryentry.h"
#include "testfolder.h"
#include "toolargewarning.h"
#include "translationcatalog.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

const QString Constructor = QStringLiteral("IndexManager::IndexManager(QueryAgentDatabase&)");
const QString UpdateMetaData = QStringLiteral("virtual bool IndexManager::updateMetaData()");
const QString FileQuery =
    QStringLiteral("SELECT id, fileName, displayName, modificationTime FROM file WHERE "
                   "directoryId = ? ORDER BY fileName ASC;");
const QString FileInsert =
    QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, displayName, "
                   "modificationTime, permissions, metadataCurrent) VALUES(?, ?, ?, ?, ?, 1, 0)");
const QString FileUpdate =
    QStringLiteral("UPDATE file SET displayName = ?, modificationTime = ?, metadataCurrent = 0 "
                   "WHERE id = ?;");
const QString FileDelete = QStringLiteral("DELETE FROM file WHERE id = ?;");
const QString ModifiedQuery =
    QStringLiteral("SELECT file.id, directory.path, file.fileName FROM file LEFT JOIN directory "
                   "ON file.directoryId = directory.id WHERE file.metadataCurrent = 0 AND "
                   "file.mimeType = 'application/x-zavro-index' LIMIT 1;");
const QString ModifiedReset = QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;");

QString notAuthorizedToRun()
{
    return QStringLiteral("QSqlError(\"23\", \"Unable to fetch row\", \"not authorized\")");
}

QStringList duplicate(const QString& name)
{
    return {UpdateMetaData, QStringLiteral("Duplicate fileName in .index file \"%1\"").arg(name)};
}

/// An element of an index.
QByteArray element(const QByteArray& fileName, const QByteArray& displayName = "Name")
{
    return R"({"fileName": ")" + fileName + R"(", "displayName": ")" + displayName + R"("})";
}

QByteArray index(const QByteArrayList& elements)
{
    return R"({"files": [)" + elements.join(", ") + "]}";
}

/// The same, with names from the catalogue "seasons".
QByteArray translatedIndex(const QByteArrayList& elements)
{
    return R"({"translationCatalog": "seasons", "files": [)" + elements.join(", ") + "]}";
}

/// A package with the file tones.index, whose row is 1, and the directory tones, whose row has the
/// id 2 from the start.
struct Package
{
    Package()
    {
        database.exec(
            {QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, '%1', 2);")
                 .arg(folder.path()),
             QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (2, '%1', 1);")
                 .arg(folder.path(QStringLiteral("tones")))});
        addIndexRow(1, QStringLiteral("tones.index"));
        folder.makeDirectory(QStringLiteral("tones"));
    }
    void addIndexRow(int id, const QString& name)
    {
        database.exec(
            QStringLiteral("INSERT INTO file (id, directoryId, mimeType, fileName, permissions, "
                           "metadataCurrent) VALUES (%1, 1, 'application/x-zavro-index', '%2', 1, "
                           "0);")
                .arg(id)
                .arg(name));
    }
    void writeIndex(const QByteArray& content)
    {
        folder.write(QStringLiteral("tones.index"), content);
    }
    void writeTones(const QStringList& names)
    {
        for (const QString& name : names) {
            folder.write(QStringLiteral("tones/") + name);
        }
    }
    /// A row of the tones, as an index has made it.
    void addTone(
        const QString& name, const QString& displayName = QStringLiteral("Name"),
        const QString& time = QStringLiteral("1970-01-01T12:00:00.000"))
    {
        database.exec(QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, "
                                     "displayName, modificationTime, permissions, "
                                     "metadataCurrent) VALUES (2, 'a/b', '%1', '%2', '%3', 1, 1);")
                          .arg(name, displayName, time));
    }
    QStringList tones() const { return database.fileNames(folder.path(QStringLiteral("tones"))); }
    QString displayName(const QString& name) const
    {
        return database
            .value(QStringLiteral("SELECT displayName FROM file WHERE fileName = ?;"), {name})
            .toString();
    }
    int metadataCurrent(int id) const
    {
        return database
            .value(QStringLiteral("SELECT metadataCurrent FROM file WHERE id = ?;"), {id})
            .toInt();
    }

    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager files{database.connection()};
    const RegistryEntry filesEntry{MoodsetContent::File, &files};
};

} // namespace

class IndexManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { DbManager::instance(); }

    void statementThatCannotBePreparedIsReported_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<int>("nth");
        QTest::addColumn<QStringList>("expected");
        const QString refused = QStringLiteral(
            "QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")");
        const auto row =
            [&](const char* name, const QByteArray& verb, int nth, const QString& statement) {
                QTest::newRow(name)
                    << verb << nth
                    << queryWarnings(
                           Constructor,
                           QStringLiteral("Failed to prepare %1.").arg(QLatin1String(name)),
                           refused, statement);
            };
        row("m_fileQuery", "SELECT", 1, FileQuery);
        row("m_fileInsert", "INSERT", 1, FileInsert);
        row("m_fileDelete", "DELETE", 1, FileDelete);
        row("m_modifiedQuery", "SELECT", 2, ModifiedQuery);
    }

    void statementThatCannotBePreparedIsReported()
    {
        QFETCH(QByteArray, verb);
        QFETCH(int, nth);
        QFETCH(QStringList, expected);
        MessageLog log;
        IndexDatabase database;
        const QByteArray table = verb == "SELECT" ? QByteArray() : QByteArray("file");
        database.refuseToPrepare(verb, nth, table);

        const IndexManager manager(database.connection());

        QCOMPARE(log.takeWarnings(), expected);
        QVERIFY(!database.isInTransaction());
    }

    void updateThatCannotBePreparedIsReported()
    {
        MessageLog log;
        IndexDatabase database;
        database.refuseToPrepare("UPDATE", 1, "file", "displayName");

        const IndexManager manager(database.connection());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                Constructor, QStringLiteral("Failed to prepare m_fileUpdate."),
                QStringLiteral(
                    "QSqlError(\"23\", \"Unable to execute statement\", \"not authorized\")"),
                FileUpdate));
    }

    void resetThatCannotBePreparedIsReportedAsTheStatementBeforeIt()
    {
        MessageLog log;
        IndexDatabase database;
        // m_fileUpdate is the first statement that updates this column.
        database.refuseToPrepare("UPDATE", 2, "file", "metadataCurrent");

        const IndexManager manager(database.connection());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                Constructor, QStringLiteral("Failed to prepare m_modifiedQuery."),
                QStringLiteral("QSqlError(\"\", \"\", \"\")"), ModifiedQuery));
    }

    void nothingPendingIsNothingToDo()
    {
        MessageLog log;
        IndexDatabase database;
        IndexManager manager(database.connection());

        QVERIFY(!manager.updateMetaData());
    }

    void listedFileGetsARow()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a.txt")});
        package.writeIndex(index({element("a.txt", "Alpha")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        const LibraryDatabase::Rows expected{
            {2, QStringLiteral("text/plain"), QStringLiteral("Alpha"), 1, 0}};
        QCOMPARE(
            package.database.rows(
                QStringLiteral("SELECT directoryId, mimeType, displayName, permissions, "
                               "metadataCurrent FROM file WHERE fileName = 'a.txt';")),
            expected);
        QCOMPARE(
            package.database
                .value(QStringLiteral("SELECT modificationTime FROM file WHERE fileName = "
                                      "'a.txt';"))
                .toDateTime(),
            QFileInfo(package.folder.path(QStringLiteral("tones/a.txt"))).lastModified());
        QCOMPARE(package.metadataCurrent(1), 1);
        QVERIFY(!manager.updateMetaData());
    }

    void unknownDirectoryIsRegisteredForKnownEntries()
    {
        MessageLog log;
        Package package;
        package.database.exec(QStringLiteral("DELETE FROM directory WHERE id = 2;"));
        package.writeTones({QStringLiteral("a.txt")});
        package.writeIndex(index({element("a.txt")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        const LibraryDatabase::Rows rows = package.database.rows(
            QStringLiteral("SELECT scope, parentId IS NULL FROM directory WHERE path = ?;"),
            {package.folder.path(QStringLiteral("tones"))});
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows.constFirst().at(0).toInt(), 1);
        QCOMPARE(rows.constFirst().at(1).toInt(), 1);
        QCOMPARE(package.tones(), QStringList{QStringLiteral("a.txt")});
    }

    void oneFileAtATime()
    {
        MessageLog log;
        Package package;
        package.addIndexRow(2, QStringLiteral("more.index"));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());
        QCOMPARE(package.metadataCurrent(1) + package.metadataCurrent(2), 1);

        QVERIFY(manager.updateMetaData());
        QCOMPARE(package.metadataCurrent(1) + package.metadataCurrent(2), 2);
        QVERIFY(!manager.updateMetaData());
    }

    void unusableIndexCountsAsDoneAndChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("malformed") << QByteArray("{\"files\": [");
        QTest::newRow("an array") << QByteArray("[]");
    }

    void unusableIndexCountsAsDoneAndChangesNothing()
    {
        QFETCH(QByteArray, content);
        MessageLog log;
        Package package;
        package.addTone(QStringLiteral("a"));
        package.writeIndex(content);
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
        QCOMPARE(package.metadataCurrent(1), 1);
        QVERIFY(!manager.updateMetaData());
    }

    void missingIndexCountsAsDone()
    {
        MessageLog log;
        Package package;
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void indexThatIsNoRegularFileCountsAsDone_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("FIFO") << QStringLiteral("fifo");
        QTest::newRow("device") << QStringLiteral("/dev/zero");
    }

    void indexThatIsNoRegularFileCountsAsDone()
    {
        QFETCH(QString, target);
        MessageLog log;
        Package package;
        package.addTone(QStringLiteral("a"));
        package.folder.makeFifo(QStringLiteral("fifo"));
        package.folder.makeLink(QStringLiteral("tones.index"), target);
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void indexBehindALinkIsRead()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.folder.write(QStringLiteral("list"), index({element("a")}));
        package.folder.makeLink(QStringLiteral("tones.index"), QStringLiteral("list"));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
    }

    void indexThatIsTooLargeIsWarnedOfAndChangesNothing()
    {
        MessageLog log;
        Package package;
        package.addTone(QStringLiteral("a"));
        package.writeIndex(index({}));
        const QString path = package.folder.path(QStringLiteral("tones.index"));
        QVERIFY(QFile::resize(path, 16 * 1024 * 1024 + 1));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(log.takeWarnings(), QStringList(tooLargeWarning(path)));
        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void nameThatTheDatabaseWouldChangeIsWarnedOfAndSkipped_data()
    {
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("printed");
        const QString mark = QString(QChar(0xfeff)) + QLatin1Char('a');
        const QString none = QLatin1Char('a') + QString(QChar(0xffff));
        const QString printedMark = QStringLiteral("\\uFEFFa");
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                       "a")
                                         << mark << printedMark;
        QTest::newRow("byte order mark escaped") << QByteArray("\\ufeffa") << mark << printedMark;
        QTest::newRow("no character")
            << QByteArray("a\xef\xbf\xbf") << none << QStringLiteral("a\\uFFFF");
    }

    void nameThatTheDatabaseWouldChangeIsWarnedOfAndSkipped()
    {
        QFETCH(QByteArray, written);
        QFETCH(QString, name);
        QFETCH(QString, printed);
        MessageLog log;
        Package package;
        // The rest of the name would be the name of a file.
        package.writeTones({name, QStringLiteral("a"), QStringLiteral("b")});
        package.writeIndex(index({element(written), element("b")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                UpdateMetaData + QStringLiteral(" Name cannot be stored \"%1\"").arg(printed)));
        QCOMPARE(package.tones(), QStringList{QStringLiteral("b")});
    }

    void byteOrderMarkInsideANameStays()
    {
        MessageLog log;
        Package package;
        const QString name = QLatin1Char('a') + QString(QChar(0xfeff));
        package.writeTones({name});
        package.writeIndex(index({element(name.toUtf8())}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{name});
    }

    void missingDirectoryChangesNothing()
    {
        MessageLog log;
        Package package;
        package.addTone(QStringLiteral("a"));
        package.folder.removeTree(QStringLiteral("tones"));
        package.writeIndex(index({element("a")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void unusableElementIsSkipped_data()
    {
        QTest::addColumn<QByteArray>("bad");
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("no object") << QByteArray("\"a\"");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("no name") << QByteArray(R"({"displayName": "Name"})");
        QTest::newRow("empty name") << element("");
        QTest::newRow("number for a name") << QByteArray(R"({"fileName": 1})");
        QTest::newRow("missing file") << element("missing");
        QTest::newRow("path out") << element("../tones.index");
        QTest::newRow("path down") << element("sub/c");
        QTest::newRow("NUL") << element("b\\u0000");
        // The disk has neither half of the pair, and would find the file "b?".
        QTest::newRow("half a surrogate pair") << element("b\\ud800");
    }

    void unusableElementIsSkipped()
    {
        QFETCH(QByteArray, bad);
        MessageLog log;
        Package package;
        package.folder.makeDirectory(QStringLiteral("tones/sub"));
        package.writeTones(
            {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("b?"),
             QStringLiteral("sub/c")});
        package.writeIndex(index({bad, element("a")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
    }

    void rowOfAFileThatIsGoneIsDeleted()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.addTone(QStringLiteral("a"));
        package.addTone(QStringLiteral("b"));
        package.writeIndex(index({element("a"), element("b")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
    }

    void emptyIndexDeletesAllRows_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty list") << index({});
        QTest::newRow("no list") << QByteArray("{}");
        QTest::newRow("a text for a list") << QByteArray(R"({"files": "a"})");
    }

    void emptyIndexDeletesAllRows()
    {
        QFETCH(QByteArray, content);
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a"), QStringLiteral("b")});
        package.addTone(QStringLiteral("a"));
        package.addTone(QStringLiteral("b"));
        package.writeIndex(content);
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList());
    }

    void twoElementsOfOneNameGiveOneRowAndAWarning()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(index({element("a", "One"), element("a", "Two")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(log.takeWarnings(), duplicate(QStringLiteral("a")));
        QCOMPARE(package.tones(), QStringList{QStringLiteral("a")});
        const QStringList names{QStringLiteral("One"), QStringLiteral("Two")};
        QVERIFY(names.contains(package.displayName(QStringLiteral("a"))));
    }

    void duplicateOfAKnownFileIsDroppedBeforeTheNextRow()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a"), QStringLiteral("b")});
        package.addTone(QStringLiteral("a"));
        package.addTone(QStringLiteral("b"));
        package.writeIndex(index({element("a"), element("a"), element("b")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(log.takeWarnings(), duplicate(QStringLiteral("a")));
        QCOMPARE(package.tones(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    }

    // An entry that is compared again after a row was deleted counts as a duplicate of itself.
    void entryBehindADeletedRowIsLostUntilTheNextParse()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("b"), QStringLiteral("c")});
        for (const auto& name : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}) {
            package.addTone(name);
        }
        package.writeIndex(index({element("b"), element("c")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(), duplicate(QStringLiteral("b")) + duplicate(QStringLiteral("c")));
        QCOMPARE(package.tones(), QStringList{QStringLiteral("c")});

        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = 1;"));
        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList({QStringLiteral("b"), QStringLiteral("c")}));
    }

    void rowThatStandsWhenTheEntriesRunOutIsLeft()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.addTone(QStringLiteral("b"));
        package.addTone(QStringLiteral("c"));
        package.writeIndex(index({element("a")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.tones(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    }

    void unchangedRowIsLeftAlone()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(index({element("a")}));
        IndexManager manager(package.database.connection());
        QVERIFY(manager.updateMetaData());
        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = id != 1;"));

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.metadataCurrent(int(package.database.fileId(QStringLiteral("a")))), 1);
    }

    void newNameOrTimeUpdatesTheRow_data()
    {
        QTest::addColumn<QByteArray>("displayName");
        QTest::addColumn<bool>("newTime");
        QTest::newRow("name") << QByteArray("New") << false;
        QTest::newRow("time") << QByteArray("Name") << true;
    }

    void newNameOrTimeUpdatesTheRow()
    {
        QFETCH(QByteArray, displayName);
        QFETCH(bool, newTime);
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(index({element("a")}));
        IndexManager manager(package.database.connection());
        QVERIFY(manager.updateMetaData());
        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = id != 1;"));
        const QDateTime time(QDate(2020, 1, 2), QTime(3, 4, 5));
        if (newTime) {
            package.folder.setModified(QStringLiteral("tones/a"), time);
        }
        package.writeIndex(index({element("a", displayName)}));

        QVERIFY(manager.updateMetaData());

        const auto id = int(package.database.fileId(QStringLiteral("a")));
        QCOMPARE(package.metadataCurrent(id), 0);
        QCOMPARE(package.displayName(QStringLiteral("a")), QString::fromUtf8(displayName));
        const QDateTime stored =
            package.database
                .value(QStringLiteral("SELECT modificationTime FROM file WHERE id = ?;"), {id})
                .toDateTime();
        QCOMPARE(stored == time, newTime);
    }

    void missingCatalogueShowsNamesAsTheyStand()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(R"({"translationCatalog": "none", "files": [)" + element("a") + "]}");
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Name"));
    }

    void namesAreTranslatedForTheLocale()
    {
        MessageLog log;
        const GermanLocale german;
        const TranslationCatalog seasons(QStringLiteral("seasons-de"));
        const TranslationCatalog engineering(QStringLiteral("seasons_eng_en"));
        Package package;
        package.writeTones(
            {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
             QStringLiteral("e")});
        package.writeIndex(translatedIndex(
            {element("a", "Autumn"), element("b", "Winter"), element("c", "Spring"),
             element("d", "Summer"), element("e", "Gr\xc3\xbcn")}));
        IndexManager manager(package.database.connection());

        QVERIFY(manager.updateMetaData());

        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Herbst"));
        QCOMPARE(package.displayName(QStringLiteral("b")), QStringLiteral("Winter (engineering)"));
        QCOMPARE(package.displayName(QStringLiteral("c")), QStringLiteral("Spring"));
        QCOMPARE(package.displayName(QStringLiteral("d")), QStringLiteral("Summer"));
        QCOMPARE(package.displayName(QStringLiteral("e")), QString::fromUtf8("Gr\xc3\xbcnland"));
    }

    void nameFollowsTheLocaleWhenTheIndexIsParsedAgain()
    {
        MessageLog log;
        const TranslationCatalog seasons(QStringLiteral("seasons-de"));
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(translatedIndex({element("a", "Autumn")}));
        IndexManager manager(package.database.connection());
        QVERIFY(manager.updateMetaData());
        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Autumn"));
        const GermanLocale german;

        QVERIFY(!manager.updateMetaData());
        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Autumn"));

        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = id != 1;"));
        QVERIFY(manager.updateMetaData());
        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Herbst"));
    }

    void failedModifiedQueryIsReported()
    {
        MessageLog log;
        Package package;
        IndexManager manager(package.database.connection());
        package.database.refuseToPrepare("SELECT", 1);

        QVERIFY(!manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                UpdateMetaData, QStringLiteral("Failed to execute m_modifiedQuery."),
                notAuthorizedToRun(), ModifiedQuery));
    }

    void failedResetIsReportedAndTriedAgain()
    {
        MessageLog log;
        Package package;
        package.database.exec(refuse(QStringLiteral("UPDATE"), QStringLiteral("file")));
        IndexManager manager(package.database.connection());

        QVERIFY(!manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                UpdateMetaData, QStringLiteral("Failed to execute m_modifiedReset."),
                refusedError(), ModifiedReset));
        QCOMPARE(package.metadataCurrent(1), 0);
    }

    void failedFileQueryIsReportedAndNotTriedAgain()
    {
        MessageLog log;
        Package package;
        package.writeIndex(index({}));
        IndexManager manager(package.database.connection());
        // This is the statement after the search for index files and for the directory.
        package.database.refuseToPrepare("SELECT", 3);

        QVERIFY(!manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(),
            queryWarnings(
                UpdateMetaData, QStringLiteral("Failed to execute m_fileQuery"),
                notAuthorizedToRun(), FileQuery));
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void failedChangeIsReportedAndRolledBack_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("statement");
        QTest::newRow("delete") << QStringLiteral("DELETE")
                                << QStringLiteral("Failed to execute m_fileDelete.") << FileDelete;
        QTest::newRow("update") << QStringLiteral("UPDATE OF displayName")
                                << QStringLiteral("Failed to execute m_fileUpdate.") << FileUpdate;
        QTest::newRow("insert") << QStringLiteral("INSERT")
                                << QStringLiteral("Failed to execute m_fileInsert.") << FileInsert;
    }

    void failedChangeIsReportedAndRolledBack()
    {
        QFETCH(QString, operation);
        QFETCH(QString, message);
        QFETCH(QString, statement);
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a"), QStringLiteral("b")});
        package.addTone(QStringLiteral("a"));
        package.addTone(QStringLiteral("c"));
        package.addTone(QStringLiteral("d"));
        package.writeIndex(index({element("a", "New"), element("b")}));
        package.database.exec(QStringLiteral("CREATE TRIGGER refuse_change BEFORE %1 ON file "
                                             "BEGIN SELECT RAISE(ABORT, 'refused'); END;")
                                  .arg(operation));
        IndexManager manager(package.database.connection());

        QVERIFY(!manager.updateMetaData());

        QCOMPARE(
            log.takeWarnings(), queryWarnings(UpdateMetaData, message, refusedError(), statement));
        QVERIFY(!package.database.isInTransaction());
        QCOMPARE(
            package.tones(),
            QStringList({QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("d")}));
        QCOMPARE(package.displayName(QStringLiteral("a")), QStringLiteral("Name"));
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void failedCommitIsReportedAndTheIndexReadAgain()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(index({element("a")}));
        package.database.exec(refuseCommit(QStringLiteral("INSERT"), QStringLiteral("file")));
        IndexManager manager(package.database.connection());

        QVERIFY(!manager.updateMetaData());
        QCOMPARE(log.takeWarnings(), QStringList(refusedCommitWarning(UpdateMetaData)));
        QVERIFY(!package.database.isInTransaction());
        QCOMPARE(package.tones(), QStringList());
        QCOMPARE(package.metadataCurrent(1), 0);

        package.database.exec(allowCommit());
        QVERIFY(manager.updateMetaData());
        QCOMPARE(package.tones(), QStringList(QStringLiteral("a")));
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void changesAreAnnouncedAsFiles()
    {
        MessageLog log;
        Package package;
        package.writeTones({QStringLiteral("a")});
        package.writeIndex(index({element("a")}));
        IndexManager manager(package.database.connection());

        const Announcements announcements;

        manager.updateMetaData();

        QCOMPARE(Announcements::take(), QVector<int>{MoodsetContent::File});

        package.database.exec(QStringLiteral("UPDATE file SET metadataCurrent = 0 WHERE id = 1;"));
        QVERIFY(manager.updateMetaData());

        QCOMPARE(Announcements::take(), QVector<int>());
        QCOMPARE(package.metadataCurrent(1), 1);
    }

    void fileManagerTakesItsTurnEvenWithoutChanges()
    {
        MessageLog log;
        Package package;
        package.writeIndex(index({}));
        IndexManager manager(package.database.connection());
        package.files.runToIdle();

        manager.updateMetaData();

        QVERIFY(package.files.step());
    }
};

QTEST_GUILESS_MAIN(IndexManagerTest)

#include "tst_indexmanager.moc"
