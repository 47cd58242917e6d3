// SPDX-License-Identifier: BSD-3-Clause
#include "content/filequeryagent.h"
#include "content/queryagentdatabase.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <type_traits>

namespace {

/// An agent that records, when it is destroyed, how many statements its connection still has.
class MortalAgent : public FileQueryAgent
{
public:
    MortalAgent(QueryAgentDatabase& database, QVector<int>* statementsLeft)
        : FileQueryAgent(database)
        , m_database(database)
        , m_statementsLeft(statementsLeft)
    {
    }
    ~MortalAgent() override { m_statementsLeft->append(m_database.cache.size()); }
    Q_DISABLE_COPY_MOVE(MortalAgent)

private:
    const QueryAgentDatabase& m_database;
    QVector<int>* m_statementsLeft;
};

} // namespace

class QueryAgentDatabaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Runs first: nothing before it in this process makes a connection.
    void connectionsAreNumberedFromZero()
    {
        const QueryAgentDatabase first;
        {
            const QueryAgentDatabase second;
            QCOMPARE(second.threadId, 1);
        }
        const QueryAgentDatabase third;

        QCOMPARE(first.threadId, 0);
        QCOMPARE(third.threadId, 2);
    }

    void isAnUnnamedSqliteConnection()
    {
        const QueryAgentDatabase database;

        QVERIFY(database.isValid());
        QCOMPARE(database.driverName(), QStringLiteral("QSQLITE"));
        QCOMPARE(database.connectionName(), QString());
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
        QVERIFY(!database.isOpen());
    }

    void cannotBeCopied()
    {
        QVERIFY(!std::is_copy_constructible<QueryAgentDatabase>::value);
        QVERIFY(!std::is_copy_assignable<QueryAgentDatabase>::value);
    }

    void keepsTwentyStatements()
    {
        QueryAgentDatabase database;

        for (int i = 0; i < 21; ++i) {
            database.cache.insert(QString::number(i), new QSqlQuery(database));
        }

        QCOMPARE(database.cache.maxCost(), 20);
        QCOMPARE(database.cache.size(), 20);
        QVERIFY(!database.cache.contains(QStringLiteral("0")));
    }

    void deletesItsAgentsBeforeItsStatements()
    {
        QVector<int> statementsLeft;
        auto database = std::make_unique<QueryAgentDatabase>();
        database->cache.insert(QStringLiteral("SELECT 1"), new QSqlQuery(*database));
        database->agents.insert(MoodsetContent::File, new MortalAgent(*database, &statementsLeft));
        database->agents.insert(MoodsetContent::Moodset, nullptr);
        database->agents.insert(MoodsetContent::Image, new MortalAgent(*database, &statementsLeft));

        database.reset();

        QCOMPARE(statementsLeft, QVector<int>({1, 1}));
    }

    void copyOfTheHandleSharesTheConnection()
    {
        const QTemporaryDir folder;
        QueryAgentDatabase database;
        database.setDatabaseName(folder.filePath(QStringLiteral("a.sqlite")));
        const QSqlDatabase handle = database;

        QVERIFY(database.open());

        QVERIFY(handle.isOpen());
    }

    void fileIsInThePrivilegedFolderOfTheUsersData()
    {
        QCOMPARE(
            QueryAgentDatabase::filePath(),
            qEnvironmentVariable("XDG_DATA_HOME")
                + QStringLiteral("/system/privileged/Moodsetd/moodsetd.sqlite"));
    }
};

QTEST_GUILESS_MAIN(QueryAgentDatabaseTest)

#include "tst_queryagentdatabase.moc"
