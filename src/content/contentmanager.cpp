// SPDX-License-Identifier: BSD-3-Clause
#include "contentmanager.h"

#include "databasewarning.h"
#include "queryagent.h"
#include "queryagentdatabase.h"
#include "service/albumgallery.h"
#include "sqlbatch.h"

#include <QSqlQuery>

ContentManager::ContentManager(QueryAgentDatabase& database)
    : m_database(database)
{
}

ContentManager::~ContentManager() = default;

QString ContentManager::mimeType() const
{
    return QString();
}

bool ContentManager::updateMetaData()
{
    return false;
}

bool ContentManager::save(qint64 id, const QVariantMap& values)
{
    Q_UNUSED(id)
    Q_UNUSED(values)
    return false;
}

bool ContentManager::remove(qint64 id)
{
    Q_UNUSED(id)
    return false;
}

void ContentManager::warn(const QSqlQuery& query, const char* function, const char* message)
{
    QueryAgent::warn(query, function, message);
}

bool ContentManager::rollback(const QSqlQuery& query, const char* function, const char* message)
{
    warn(query, function, message);
    return m_database.rollback();
}

bool ContentManager::openTransaction(const char* function)
{
    if (m_database.transaction()) {
        return true;
    }
    warnOfDatabase(m_database, function, "Failed to open transation on database");
    return false;
}

bool ContentManager::prepare(std::initializer_list<Statement> statements, const char* function)
{
    for (const Statement& statement : statements) {
        if (statement.query.prepare(statement.text)) {
            continue;
        }
        if (statement.message) {
            rollback(
                statement.reported ? *statement.reported : statement.query, function,
                statement.message);
        }
        return false;
    }
    return true;
}

bool ContentManager::runBatch(
    const SqlBatch& batch, QSqlQuery& query, const char* function, const char* message)
{
    if (batch.isEmpty() || batch.exec(query)) {
        return true;
    }
    rollback(query, function, message);
    return false;
}

void ContentManager::notifyContentChanged(int type)
{
    AlbumGallery::notifyContentChanged(type);
}
