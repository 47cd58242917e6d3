// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "content/filequeryagent.h"
#include "content/moodsetqueryagent.h"
#include "content/photoqueryagent.h"
#include "contentlibrary.h"
#include "failuremessages.h"
#include "messagelog.h"
#include "statementprobe.h"

#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

#include <atomic>
#include <functional>
#include <thread>

namespace {

constexpr int CacheCapacity = 20;

QString statement(int number)
{
    return QStringLiteral("SELECT %1").arg(number);
}

void runInThread(const std::function<void()>& function)
{
    std::thread(function).join();
}

/// The number of open descriptors of this process for the file at a path.
int openCount(const QString& path)
{
    int count = 0;
    for (const QFileInfo& entry :
         QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files)) {
        count += entry.symLinkTarget() == path ? 1 : 0;
    }
    return count;
}

const QStringList OpenFailure{
    QStringLiteral("Failed to open moodset database"),
    QStringLiteral("QSqlError(\"14\", \"Error opening database\", "
                   "\"unable to open database file\")")};

} // namespace

/// Tests the cache of statements, and the agents of threads. Each function has a data directory of
/// its own, and calls agentFor() only on its own threads, whose connections use that directory.
class QueryAgentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        QVERIFY(m_folder->isValid());
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->path()));
        m_log.reset(new MessageLog);
    }

    void cleanup()
    {
        m_log.reset();
        m_folder.reset();
    }

    void sameTextIsPreparedOnce()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);

        const QSqlQuery first = agent.prepareQuery(statement(1));
        const QSqlQuery second = agent.prepareQuery(statement(1));

        QCOMPARE(probe.takeCompiledSelects(), 1);
        QCOMPARE(probe.preparedStatements(), QStringList{statement(1)});
        QCOMPARE(first.result(), second.result());
        QVERIFY(second.isForwardOnly());
    }

    void agentsOfAConnectionShareItsStatements()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent files(library.reader);
        PhotoQueryAgent photos(library.reader);

        files.prepareQuery(statement(1));
        photos.prepareQuery(statement(1));

        QCOMPARE(probe.takeCompiledSelects(), 1);
    }

    void copiesShareTheirPosition()
    {
        ContentLibrary library;
        FileQueryAgent agent(library.reader);
        QSqlQuery first = agent.prepareQuery(statement(1));
        QVERIFY(first.exec() && first.next());

        QSqlQuery second = agent.prepareQuery(statement(1));
        QVERIFY(second.exec());

        QCOMPARE(first.at(), int(QSql::BeforeFirstRow));
    }

    void twentyStatementsArePreparedOnce()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);

        for (int i = 0; i < 3 * CacheCapacity; ++i) {
            agent.prepareQuery(statement(i % CacheCapacity));
        }

        QCOMPARE(probe.takeCompiledSelects(), CacheCapacity);
        QCOMPARE(probe.preparedStatements().size(), CacheCapacity);
    }

    void twentyFirstStatementEvictsTheLeastRecentlyUsed()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        for (int i = 0; i < CacheCapacity; ++i) {
            agent.prepareQuery(statement(i));
        }

        agent.prepareQuery(statement(CacheCapacity));

        QCOMPARE(probe.preparedStatements().size(), CacheCapacity);
        QVERIFY(!probe.preparedStatements().contains(statement(0)));
        probe.takeCompiledSelects();
        agent.prepareQuery(statement(0));
        QCOMPARE(probe.takeCompiledSelects(), 1);
    }

    void useProtectsFromEviction()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        for (int i = 0; i < CacheCapacity; ++i) {
            agent.prepareQuery(statement(i));
        }

        agent.prepareQuery(statement(0));
        agent.prepareQuery(statement(CacheCapacity));

        QVERIFY(probe.preparedStatements().contains(statement(0)));
        QVERIFY(!probe.preparedStatements().contains(statement(1)));
    }

    void evictedStatementLivesWhileItIsHeld()
    {
        ContentLibrary library;
        FileQueryAgent agent(library.reader);
        QSqlQuery held = agent.prepareQuery(statement(0));
        for (int i = 1; i <= CacheCapacity; ++i) {
            agent.prepareQuery(statement(i));
        }

        QVERIFY(held.exec() && held.next());
        QCOMPARE(held.value(0).toInt(), 0);
    }

    void unpreparableStatementIsReportedAtEachUse()
    {
        ContentLibrary library;
        StatementProbe probe(library.reader);
        FileQueryAgent agent(library.reader);
        const QString text = QStringLiteral("SELECT id\nFROM colour");
        const QStringList group =
            prepareFailureMessages(QStringLiteral("no such table: colour"), text);
        QCOMPARE(
            group,
            QStringList(
                {QStringLiteral("QSqlQuery QueryAgent::prepareQuery(const QString&)"),
                 QStringLiteral("Failed to prepare query"),
                 QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                "\"no such table: colour\")"),
                 QStringLiteral("\"SELECT id\\nFROM colour\"")}));

        for (int use = 0; use < 2; ++use) {
            QSqlQuery query = agent.prepareQuery(text);
            QCOMPARE(m_log->takeWarnings(), group);
            query.bindValue(0, 1);
            QVERIFY(!query.exec());
            QVERIFY(!query.next());
        }

        QCOMPARE(probe.takeCompiledSelects(), 2);
        QCOMPARE(library.reader.cache.size(), 0);
    }

    void failedStatementIsReportedInFourWarnings()
    {
        ContentLibrary library;
        QSqlQuery query(library.reader);
        query.exec(QStringLiteral("SELECT \"a\" FROM\ncolour"));

        QueryAgent::warn(query, "void function(int)", "What went wrong");

        QCOMPARE(
            m_log->takeWarnings(),
            QStringList(
                {QStringLiteral("void function(int)"), QStringLiteral("What went wrong"),
                 QStringLiteral("QSqlError(\"1\", \"Unable to execute statement\", "
                                "\"no such table: colour\")"),
                 QStringLiteral("\"SELECT \\\"a\\\" FROM\\ncolour\"")}));
    }

    void statementIsReportedWithItsPlaceholders()
    {
        ContentLibrary library;
        QSqlQuery query(library.reader);
        QVERIFY(query.prepare(QStringLiteral("SELECT ?;")));
        query.bindValue(0, 5);
        QVERIFY(query.exec());

        QueryAgent::warn(query, "f", "m");

        QCOMPARE(m_log->takeWarnings().last(), QStringLiteral("\"SELECT ?;\""));
    }

    void threadIdIsItsConnectionsNumber()
    {
        ContentLibrary first;
        ContentLibrary second;

        QCOMPARE(FileQueryAgent(first.reader).threadId(), QString::number(first.reader.threadId));
        QCOMPARE(second.reader.threadId, first.reader.threadId + 1);
    }

    void roleNamesAreThoseOfTheRecords()
    {
        ContentLibrary library;

        QCOMPARE(FileQueryAgent(library.reader).roleNames(), FileData::roleNames());
        QCOMPARE(MoodsetQueryAgent(library.reader).roleNames(), MoodsetData::roleNames());
        QCOMPARE(PhotoQueryAgent(library.reader).roleNames(), PhotoData::roleNames());
    }

    void agentIsThatOfItsType()
    {
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([] {
            QVERIFY(dynamic_cast<FileQueryAgent*>(QueryAgent::agentFor(MoodsetContent::File)));
            QVERIFY(
                dynamic_cast<MoodsetQueryAgent*>(QueryAgent::agentFor(MoodsetContent::Moodset)));
            QVERIFY(dynamic_cast<PhotoQueryAgent*>(QueryAgent::agentFor(MoodsetContent::Image)));
        });
    }

    void otherTypesHaveNoAgent_data()
    {
        QTest::addColumn<int>("type");
        for (const int type : {3, 4, 5, 6, 7, 99, -1}) {
            QTest::addRow("%d", type) << type;
        }
    }

    void otherTypesHaveNoAgent()
    {
        QFETCH(int, type);
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([type] {
            QVERIFY(QueryAgent::agentFor(MoodsetContent::File));
            for (int call = 0; call < 2; ++call) {
                QVERIFY(!QueryAgent::agentFor(MoodsetContent::Type(type)));
            }
        });
        QCOMPARE(m_log->takeMessages(), QStringList());
    }

    void threadKeepsItsAgent()
    {
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent);
            QCOMPARE(QueryAgent::agentFor(MoodsetContent::File), agent);
        });
    }

    void threadsHaveTheirOwnAgents()
    {
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent);
            runInThread([agent] {
                QueryAgent* const other = QueryAgent::agentFor(MoodsetContent::File);
                QVERIFY(other);
                QVERIFY(other != agent);
                QVERIFY(other->threadId() != agent->threadId());
            });
        });
    }

    void agentsOfAThreadShareItsConnection()
    {
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([] {
            QCOMPARE(
                QueryAgent::agentFor(MoodsetContent::File)->threadId(),
                QueryAgent::agentFor(MoodsetContent::Image)->threadId());
        });
    }

    void anotherConnectionSeesADatabaseThatWasMadeAnew()
    {
        const QString path = QueryAgentDatabase::filePath();
        ContentWriter(path).addFile(QStringLiteral("/a/old.txt"));
        runInThread([path] {
            QueryAgent* agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent && agent->queryById(1).isValid());
            for (const char* const ending : {"", "-wal", "-shm"}) {
                QFile::remove(path + QLatin1String(ending));
            }
            ContentWriter(path).addFile(QStringLiteral("/a/new.txt"));
            const auto firstName = [&agent] {
                BatchRecorder recorder;
                return agent->query(&recorder, {}) ? recorder.fileNames() : QStringList();
            };
            QCOMPARE(firstName(), QStringList{QStringLiteral("old.txt")});

            QueryAgent::closeConnection();
            QueryAgent::closeConnection();

            agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent);
            QCOMPARE(firstName(), QStringList{QStringLiteral("new.txt")});
        });
    }

    void connectionClosesWithItsThread()
    {
        const QString path = QueryAgentDatabase::filePath();
        // It ends before the reader starts, because SQLite closes no file while the process has it
        // locked elsewhere.
        ContentWriter(path).addFile(QStringLiteral("/a/b.txt"));

        runInThread([path] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent && agent->query(nullptr, {}));
            QCOMPARE(openCount(path), 1);
        });

        QCOMPARE(openCount(path), 0);
    }

    void agentsCannotWrite()
    {
        const ContentWriter writer(QueryAgentDatabase::filePath());
        runInThread([] {
            QSqlQuery query = QueryAgent::agentFor(MoodsetContent::File)
                                  ->prepareQuery(QStringLiteral("DELETE FROM file"));
            QVERIFY(!query.exec());
            QCOMPARE(
                query.lastError().databaseText(),
                QStringLiteral("attempt to write a readonly database"));
        });
    }

    void agentComesOnceTheDatabaseIsThere()
    {
        runInThread([this] {
            for (int call = 0; call < 2; ++call) {
                QVERIFY(!QueryAgent::agentFor(MoodsetContent::File));
                QCOMPARE(m_log->takeWarnings(), OpenFailure);
            }
            QVERIFY(!QFile::exists(QueryAgentDatabase::filePath()));

            ContentWriter writer(QueryAgentDatabase::filePath());
            const qint64 id = writer.addFile(QStringLiteral("/a/b.txt"));

            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent);
            QVERIFY(agent->queryById(id).isValid());
        });
    }

    void typeWithoutAgentStillTriesToOpen()
    {
        runInThread([] { QVERIFY(!QueryAgent::agentFor(MoodsetContent::Download)); });
        QCOMPARE(m_log->takeWarnings(), OpenFailure);
    }

    void emptyFileGivesAgentsWhoseStatementsFail()
    {
        writeDatabase(QByteArray());
        failsToList(QStringLiteral("no such table: file"), QStringLiteral("1"));
    }

    void fileOfAnotherKindGivesAgentsWhoseStatementsFail()
    {
        writeDatabase(QByteArray(8192, 'x'));
        failsToList(QStringLiteral("file is not a database"), QStringLiteral("26"));
    }

    void threadsReadWhileAWriterWrites()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        constexpr int filesPerCommit = 60;
        constexpr int commits = 40;
        std::atomic_bool isWriting = true;
        std::atomic_int wrongListings = 0;
        std::atomic_int listings = 0;
        const auto read = [&] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            int last = 0;
            bool isFinal = false;
            while (!isFinal) {
                isFinal = !isWriting;
                BatchRecorder recorder;
                const bool ran = agent && agent->query(&recorder, {});
                const int count = recorder.contents().size();
                // The reader sees only whole commits, never fewer rows than before, and all rows in
                // the end.
                const bool isWhole = count % filesPerCommit == 0 && count >= last;
                const bool isComplete = !isFinal || count == filesPerCommit * commits;
                if (!ran || !isWhole || !isComplete) {
                    ++wrongListings;
                }
                last = count;
                ++listings;
            }
        };
        std::thread first(read);
        std::thread second(read);

        for (int commit = 0; commit < commits; ++commit) {
            writer.addMany(filesPerCommit, [&](const QString& path) {
                writer.addFile(QStringLiteral("/%1").arg(commit) + path);
            });
        }
        isWriting = false;
        first.join();
        second.join();

        QCOMPARE(wrongListings.load(), 0);
        QVERIFY(listings > 2);
    }

private:
    static void writeDatabase(const QByteArray& bytes)
    {
        const QFileInfo path(QueryAgentDatabase::filePath());
        QFile file(path.filePath());
        QVERIFY(QDir().mkpath(path.path()) && file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }

    void failsToList(const QString& reason, const QString& code)
    {
        runInThread([this, reason, code] {
            QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::File);
            QVERIFY(agent);
            BatchRecorder recorder;

            QVERIFY(!agent->query(&recorder, {}));

            QVERIFY(recorder.batchSizes().isEmpty());
            const QString statement = QStringLiteral(
                "SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, "
                "file.fileName, file.displayName, file.permissions FROM file "
                "INNER JOIN directory on file.directoryId = directory.id  ORDER BY file.fileName;");
            QStringList group = prepareFailureMessages(reason, statement);
            group[2].replace(QStringLiteral("\"1\""), QLatin1Char('"') + code + QLatin1Char('"'));
            QCOMPARE(
                m_log->takeWarnings(),
                group
                    + deadQueryMessages(
                        QStringLiteral("virtual bool FileQueryAgent::query("
                                       "QueryAgent::Recipient*, const QueryAgent::Parameters&)"),
                        QStringLiteral("Failed to execute file query")));
        });
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<MessageLog> m_log;
};

QTEST_GUILESS_MAIN(QueryAgentTest)

#include "tst_queryagent.moc"
