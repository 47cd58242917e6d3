// SPDX-License-Identifier: BSD-3-Clause
#include "queryagent.h"

#include "contentlog.h"
#include "filequeryagent.h"
#include "moodsetqueryagent.h"
#include "photoqueryagent.h"
#include "queryagentdatabase.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QThreadStorage>
#include <QUrl>
#include <QVariant>

namespace {

/// The threads' connections, which end with their threads.
QThreadStorage<QueryAgentDatabase*>& connections()
{
    static QThreadStorage<QueryAgentDatabase*> storage;
    return storage;
}

/// The calling thread's read-only connection. It is made at the first call, not yet opened.
QueryAgentDatabase& threadDatabase()
{
    if (!connections().hasLocalData()) {
        auto* const database = new QueryAgentDatabase;
        database->setDatabaseName(QueryAgentDatabase::filePath());
        database->setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        connections().setLocalData(database);
    }
    return *connections().localData();
}

QueryAgent* makeAgent(MoodsetContent::Type type, QueryAgentDatabase& database)
{
    switch (type) {
    case MoodsetContent::File:
        return new FileQueryAgent(database);
    case MoodsetContent::Moodset:
        return new MoodsetQueryAgent(database);
    case MoodsetContent::Image:
        return new PhotoQueryAgent(database);
    case MoodsetContent::Download:
    case MoodsetContent::Install:
    case MoodsetContent::Index:
        break;
    }
    return nullptr;
}

} // namespace

QueryAgent::QueryAgent(QueryAgentDatabase& database)
    : m_database(database)
{
}

QueryAgent::~QueryAgent() = default;

QueryAgent* QueryAgent::agentFor(MoodsetContent::Type type)
{
    QueryAgentDatabase& database = threadDatabase();
    QueryAgent*& agent = database.agents[type];
    if (agent) {
        return agent;
    }
    if (!database.isOpen() && !database.open()) {
        qCWarning(contentLog) << "Failed to open moodset database";
        qCWarning(contentLog) << database.lastError();
        return nullptr;
    }
    agent = makeAgent(type, database);
    return agent;
}

void QueryAgent::closeConnection()
{
    if (connections().hasLocalData()) {
        connections().setLocalData(nullptr);
    }
}

QString QueryAgent::threadId() const
{
    return QString::number(m_database.threadId);
}

QSqlQuery QueryAgent::prepareQuery(const QString& statement)
{
    if (const QSqlQuery* const cached = m_database.cache.object(statement)) {
        return *cached;
    }
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.prepare(statement)) {
        warn(
            query, "QSqlQuery QueryAgent::prepareQuery(const QString&)", "Failed to prepare query");
        return QSqlQuery(QString(), QSqlDatabase());
    }
    m_database.cache.insert(statement, new QSqlQuery(query));
    return query;
}

void QueryAgent::warn(const QSqlQuery& query, const char* function, const char* message)
{
    qCWarning(contentLog) << function;
    qCWarning(contentLog) << message;
    qCWarning(contentLog) << query.lastError();
    qCWarning(contentLog) << query.lastQuery();
}

QSqlQuery QueryAgent::prepareQueryByUrl(
    const QUrl& url, const QString& byPath, const QString& bySource)
{
    if (!url.isLocalFile()) {
        QSqlQuery query = prepareQuery(bySource);
        query.bindValue(0, url.toString());
        return query;
    }
    const QString path = url.toLocalFile();
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    QSqlQuery query = prepareQuery(byPath);
    query.bindValue(0, path.mid(0, slash));
    query.bindValue(1, path.mid(slash + 1));
    return query;
}

void QueryAgent::deliver(
    QSqlQuery& query, Recipient* recipient, RowReader readRow,
    const std::function<void(QVector<Content>*)>& complete)
{
    bool hasMore = true;
    while (hasMore) {
        QVector<Content> batch;
        batch.reserve(BatchSize);
        while (batch.size() < BatchSize && (hasMore = query.next())) {
            batch.append(readRow(query));
        }
        if (complete) {
            complete(&batch);
        }
        if (recipient) {
            recipient->receive(batch);
            if (hasMore && !recipient->wantsMore()) {
                // On its row it would hold on to the state of the database that it has begun with.
                query.finish();
                return;
            }
        }
    }
}
