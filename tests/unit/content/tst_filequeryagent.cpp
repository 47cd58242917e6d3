// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/filequeryagent.h"
#include "contentlibrary.h"
#include "failuremessages.h"
#include "messagelog.h"
#include "statementprobe.h"

#include <QSqlQuery>

namespace {

const QString Selection = QStringLiteral(
    "SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, file.fileName, "
    "file.displayName, file.permissions FROM file "
    "INNER JOIN directory on file.directoryId = directory.id ");
const QString SingleFunction =
    QStringLiteral("Content FileQueryAgent::querySingleFile(QSqlQuery&)");
const QString ListFunction =
    QStringLiteral("virtual bool FileQueryAgent::query("
                   "QueryAgent::Recipient*, const QueryAgent::Parameters&)");

QueryAgent::Parameters parameters(const QString& mimeType, const QStringList& directories)
{
    QueryAgent::Parameters result;
    result.mimeType = mimeType;
    result.directories = directories;
    return result;
}

/// Reads one more record for each record that it receives.
class ReadingRecipient final : public QueryAgent::Recipient
{
public:
    explicit ReadingRecipient(QueryAgent* agent)
        : m_agent(agent)
    {
    }

    void receive(const QVector<Content>& batch) override
    {
        for (const Content& content : batch) {
            m_read += m_agent->queryById(content.data()->id) == content ? 1 : 0;
        }
    }

    int read() const { return m_read; }

private:
    QueryAgent* m_agent;
    int m_read = 0;
};

/// Starts the same listing again inside the first batch.
class ListingRecipient final : public QueryAgent::Recipient
{
public:
    explicit ListingRecipient(QueryAgent* agent)
        : m_agent(agent)
    {
    }

    void receive(const QVector<Content>& batch) override
    {
        m_sizes.append(batch.size());
        if (m_sizes.size() == 1) {
            m_agent->query(&m_inner, {});
        }
    }

    const QList<int>& batchSizes() const { return m_sizes; }
    const QList<int>& innerBatchSizes() const { return m_inner.batchSizes(); }

private:
    QueryAgent* m_agent;
    QList<int> m_sizes;
    BatchRecorder m_inner;
};

} // namespace

class FileQueryAgentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowBecomesARecord()
    {
        ContentLibrary library;
        const qint64 id =
            library.writer.addFile(QStringLiteral("/a/b #1.txt"), QStringLiteral("text/plain"));
        library.writer.exec(
            QStringLiteral("UPDATE file SET displayName = 'B', permissions = 1 WHERE id = ?"),
            {id});
        FileQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        QCOMPARE(content.type(), 0);
        const auto* const file = static_cast<const FileData*>(content.data());
        QCOMPARE(file->id, id);
        QCOMPARE(file->url, QUrl::fromLocalFile(QStringLiteral("/a/b #1.txt")));
        QCOMPARE(file->mimeType, QStringLiteral("text/plain"));
        QCOMPARE(file->fileName, QStringLiteral("b #1.txt"));
        QCOMPARE(file->displayName, QStringLiteral("B"));
        QCOMPARE(file->permissions, 1);
    }

    void nullColumnsGiveEmptyFields()
    {
        ContentLibrary library;
        const qint64 id = library.writer.addFile(QStringLiteral("/a/b"));
        library.writer.exec(QStringLiteral("UPDATE file SET mimeType = NULL"));
        FileQueryAgent agent(library.reader);

        const Content content = agent.queryById(id);

        const auto* const file = static_cast<const FileData*>(content.data());
        QCOMPARE(file->mimeType, QString());
        QCOMPARE(file->displayName, QString());
    }

    void unknownIdGivesNull_data()
    {
        QTest::addColumn<qint64>("id");
        QTest::newRow("never given") << qint64(99);
        QTest::newRow("none") << qint64(0);
        QTest::newRow("negative") << qint64(-1);
        QTest::newRow("largest") << std::numeric_limits<qint64>::max();
    }

    void unknownIdGivesNull()
    {
        QFETCH(qint64, id);
        MessageLog log;
        ContentLibrary library;
        library.writer.addFile(QStringLiteral("/a/b"));
        FileQueryAgent agent(library.reader);

        QVERIFY(!agent.queryById(id).isValid());
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void urlFindsItsFile_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<QString>("fileName");
        const auto row = [](const char* name, const char* url, const char* fileName) {
            QTest::newRow(name) << QUrl(QLatin1String(url)) << QString::fromLatin1(fileName);
        };
        row("local", "file:///a/b.jpg", "b.jpg");
        row("local, encoded", "file:///a/c%231.jpg", "c#1.jpg");
        row("downloaded", "http://host/picture?size=1", "b.jpg");
        row("local in an unknown directory", "file:///z/b.jpg", "");
        row("local unknown file in a known directory", "file:///a/z.jpg", "");
        row("local directory", "file:///a", "");
        row("root", "file:///", "");
        row("downloaded from elsewhere", "http://host/picture?size=2", "");
        row("path without scheme", "/a/b.jpg", "");
        row("name without slash", "b.jpg", "");
        row("empty", "", "");
    }

    void urlFindsItsFile()
    {
        QFETCH(QUrl, url);
        QFETCH(QString, fileName);
        MessageLog log;
        ContentLibrary library;
        const qint64 id = library.writer.addFile(QStringLiteral("/a/b.jpg"));
        library.writer.addFile(QStringLiteral("/a/c#1.jpg"));
        library.writer.setSource(id, QStringLiteral("http://host/picture?size=1"));
        FileQueryAgent agent(library.reader);

        const Content content = agent.queryByUrl(url);

        QCOMPARE(content.isValid(), !fileName.isEmpty());
        if (content.isValid()) {
            QCOMPARE(static_cast<const FileData*>(content.data())->fileName, fileName);
        }
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void singleStatementsAreTheseTexts()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);

        agent.queryById(7);
        agent.queryByUrl(QUrl(QStringLiteral("file:///a/b/c")));
        agent.queryByUrl(QUrl(QStringLiteral("http://u:p@host/a b")));

        QStringList texts = library.reader.cache.keys();
        texts.sort();
        QCOMPARE(
            texts,
            QStringList(
                {Selection + QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;"),
                 Selection + QStringLiteral("WHERE file.id = ?;"),
                 Selection
                     + QStringLiteral("WHERE file.id IN "
                                      "(SELECT fileId FROM download WHERE source = ?);")}));
        QCOMPARE(
            probe.takeExecuted(),
            QStringList(
                {Selection + QStringLiteral("WHERE file.id = 7;"),
                 Selection
                     + QStringLiteral("WHERE directory.path = '/a/b' AND file.fileName = 'c';"),
                 Selection
                     + QStringLiteral("WHERE file.id IN (SELECT fileId FROM download "
                                      "WHERE source = 'http://u:p@host/a b');")}));
    }

    void listingStatementSaysWhatIsAskedFor_data()
    {
        QTest::addColumn<QString>("mimeType");
        QTest::addColumn<QStringList>("directories");
        QTest::addColumn<QString>("clause");
        const QString none;
        const QString a = QStringLiteral("/a");
        const QString b = QStringLiteral("/b");
        QTest::newRow("all") << none << QStringList() << none;
        QTest::newRow("one type") << QStringLiteral("image/jpeg") << QStringList()
                                  << QStringLiteral("WHERE file.mimeType = 'image/jpeg'");
        QTest::newRow("types") << QStringLiteral("image/*") << QStringList()
                               << QStringLiteral("WHERE file.mimeType GLOB 'image/*'");
        QTest::newRow("other glob characters") << QStringLiteral("image/[a-z]?") << QStringList()
                                               << QStringLiteral("WHERE file.mimeType = "
                                                                 "'image/[a-z]?'");
        QTest::newRow("one directory")
            << none << QStringList{a} << QStringLiteral("WHERE (directory.path GLOB '/a/*')");
        QTest::newRow("two directories")
            << none << QStringList{a, b}
            << QStringLiteral("WHERE (directory.path GLOB '/a/*'\n"
                              "         OR directory.path GLOB '/b/*')");
        QTest::newRow("types and two directories")
            << QStringLiteral("image/*") << QStringList{a, b}
            << QStringLiteral("WHERE file.mimeType GLOB 'image/*'\n"
                              "     AND (directory.path GLOB '/a/*'\n"
                              "         OR directory.path GLOB '/b/*')");
    }

    void lookupsAndListingsLeaveNoStatementOpen()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        const qint64 id = library.writer.addFile(QStringLiteral("/a/1"));

        QVERIFY(agent.queryById(id).isValid());
        QCOMPARE(probe.openStatements(), QStringList());
        QVERIFY(agent.queryByUrl(QUrl(QStringLiteral("file:///a/1"))).isValid());
        QCOMPARE(probe.openStatements(), QStringList());
        QVERIFY(agent.query(nullptr, {}));
        QCOMPARE(probe.openStatements(), QStringList());
    }

    void listingStatementSaysWhatIsAskedFor()
    {
        QFETCH(QString, mimeType);
        QFETCH(QStringList, directories);
        QFETCH(QString, clause);
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, parameters(mimeType, directories)));

        QCOMPARE(
            probe.takeExecuted(),
            QStringList{Selection + clause + QStringLiteral(" ORDER BY file.fileName;")});
    }

    void exactAndGlobTypesAreTwoStatements()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);

        for (const char* type : {"image/jpeg", "image/*", "image/png", "video/*"}) {
            QVERIFY(agent.query(nullptr, parameters(QLatin1String(type), {})));
        }

        QCOMPARE(probe.preparedStatements().size(), 2);
        QCOMPARE(library.reader.cache.size(), 2);
    }

    void listingHoldsWhatIsAskedFor_data()
    {
        QTest::addColumn<QString>("mimeType");
        QTest::addColumn<QStringList>("directories");
        QTest::addColumn<QStringList>("names");
        const auto row = [](const char* name, const char* type, const QStringList& directories,
                            const char* names) {
            QTest::newRow(name) << QString::fromLatin1(type) << directories
                                << QString::fromLatin1(names).split(
                                       QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        const QString a = QStringLiteral("/a");
        const QString c = QStringLiteral("/c");
        row("all, by name", "", {}, "1.jpg 2.png 3.txt 4.jpg 5.jpg");
        row("one type", "image/jpeg", {}, "1.jpg 4.jpg 5.jpg");
        row("types", "image/*", {}, "1.jpg 2.png 4.jpg 5.jpg");
        row("a type that no file has", "image/gif", {}, "");
        row("below a directory, at any depth", "", {a}, "2.png 3.txt");
        row("below either directory", "", {a, c}, "2.png 3.txt 4.jpg");
        row("type below a directory", "image/*", {a}, "2.png");
        row("a path's glob characters act", "", {QStringLiteral("/[ac]")}, "2.png 3.txt 4.jpg");
        row("a directory that is not known", "", {QStringLiteral("/z")}, "");
    }

    void listingHoldsWhatIsAskedFor()
    {
        QFETCH(QString, mimeType);
        QFETCH(QStringList, directories);
        QFETCH(QStringList, names);
        ContentLibrary library;
        const QString jpeg = QStringLiteral("image/jpeg");
        library.writer.addFile(QStringLiteral("/ab/c/5.jpg"), jpeg);
        library.writer.addFile(QStringLiteral("/c/d/4.jpg"), jpeg);
        library.writer.addFile(QStringLiteral("/a/b/c/3.txt"));
        library.writer.addFile(QStringLiteral("/a/b/2.png"), QStringLiteral("image/png"));
        library.writer.addFile(QStringLiteral("/a/1.jpg"), jpeg);
        FileQueryAgent agent(library.reader);
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, parameters(mimeType, directories)));

        QCOMPARE(recorder.fileNames(), names);
    }

    void recipientMayReadSingleRecords()
    {
        ContentLibrary library;
        constexpr int count = 120;
        library.writer.addMany(
            count, [&library](const QString& path) { library.writer.addFile(path); });
        FileQueryAgent agent(library.reader);
        ReadingRecipient recipient(&agent);

        QVERIFY(agent.query(&recipient, {}));

        QCOMPARE(recipient.read(), count);
    }

    void sameListingInsideAnotherEndsThatWithoutAWord()
    {
        MessageLog log;
        ContentLibrary library;
        constexpr int count = 120;
        library.writer.addMany(
            count, [&library](const QString& path) { library.writer.addFile(path); });
        FileQueryAgent agent(library.reader);
        ListingRecipient recipient(&agent);

        QVERIFY(agent.query(&recipient, {}));

        QCOMPARE(recipient.innerBatchSizes(), QList<int>({50, 50, 20}));
        QCOMPARE(recipient.batchSizes(), QList<int>({50, 0}));
        QCOMPARE(log.takeMessages(), QStringList());
    }

    void repeatedListingSeesWhatIsNew()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        library.writer.addFile(QStringLiteral("/a/1"));
        QVERIFY(agent.query(nullptr, {}));
        library.writer.addFile(QStringLiteral("/a/2"));
        BatchRecorder recorder;

        QVERIFY(agent.query(&recorder, {}));

        QCOMPARE(recorder.fileNames(), QStringList({QStringLiteral("1"), QStringLiteral("2")}));
        QCOMPARE(probe.takeCompiledSelects(), 1);
    }

    void failedListingIsReported()
    {
        MessageLog log;
        ContentLibrary library;
        FileQueryAgent agent(library.reader);
        QVERIFY(agent.query(nullptr, {}));
        library.writer.exec(QStringLiteral("DROP TABLE file"));
        BatchRecorder recorder;

        QVERIFY(!agent.query(&recorder, {}));

        QVERIFY(recorder.batchSizes().isEmpty());
        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                ListFunction, QStringLiteral("Failed to execute file query"),
                QStringLiteral(
                    "QSqlError(\"1\", \"Unable to fetch row\", \"no such table: file\")"),
                Selection + QStringLiteral(" ORDER BY file.fileName;")));
    }

    void failedReadingOfOneIsReported()
    {
        MessageLog log;
        ContentLibrary library;
        FileQueryAgent agent(library.reader);
        agent.queryById(1);
        library.writer.exec(QStringLiteral("DROP TABLE file"));

        QVERIFY(!agent.queryById(1).isValid());

        QCOMPARE(
            log.takeWarnings(),
            failureMessages(
                SingleFunction, QStringLiteral("Failed to query file"),
                QStringLiteral(
                    "QSqlError(\"1\", \"Unable to fetch row\", \"no such table: file\")"),
                Selection + QStringLiteral("WHERE file.id = ?;")));
    }

    void listingTellsModificationTimesIfItIsTo()
    {
        ContentLibrary library;
        library.writer.addFile(QStringLiteral("/a/b.txt"));
        library.writer.exec(
            QStringLiteral("UPDATE file SET modificationTime = '2021-03-04T05:06:07.089'"));
        FileQueryAgent agent(library.reader);
        const auto time = [&agent](bool isWanted) {
            QueryAgent::Parameters parameters;
            parameters.modificationTimes = isWanted;
            BatchRecorder recorder;
            return agent.query(&recorder, parameters) && !recorder.contents().isEmpty()
                ? recorder.contents().constFirst().data()->data(FileData::ModificationTimeRole)
                : QVariant();
        };

        QCOMPARE(time(true), QVariant(QDateTime(QDate(2021, 3, 4), QTime(5, 6, 7, 89))));
        QCOMPARE(time(false), QVariant(QDateTime()));
    }

    void unpreparableStatementIsReportedAndThenItsFailure()
    {
        MessageLog log;
        ContentLibrary library;
        library.writer.exec(QStringLiteral("DROP TABLE file"));
        FileQueryAgent agent(library.reader);

        QVERIFY(!agent.queryByUrl(QUrl(QStringLiteral("file:///a/b"))).isValid());

        QCOMPARE(
            log.takeWarnings(),
            prepareFailureMessages(
                QStringLiteral("no such table: file"),
                Selection + QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;"))
                + deadQueryMessages(SingleFunction, QStringLiteral("Failed to query file")));
    }
};

QTEST_GUILESS_MAIN(FileQueryAgentTest)

#include "tst_filequeryagent.moc"
