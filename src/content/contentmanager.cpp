// SPDX-License-Identifier: BSD-3-Clause
#include "contentmanager.h"

#include "contentlog.h"
#include "dbmanager.h"
#include "errorwarning.h"
#include "moodsetcontent.h"
#include "queryagent.h"
#include "queryagentdatabase.h"
#include "sqlbatch.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {

ContentManager::Factory managerFactory = nullptr;
ContentManager::Announcer changeAnnouncer = nullptr;

} // namespace

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

ContentManager* ContentManager::managerFromType(int type)
{
    DbManager* const database = DbManager::instance();
    const auto key = static_cast<MoodsetContent::Type>(type);
    ContentManager* const known = database->manager(key);
    if (known || !managerFactory) {
        return known;
    }
    // The constructor of a manager may ask for other managers, so this looks the entry up again.
    ContentManager* const made = managerFactory(type, *database);
    database->manager(key) = made;
    return made;
}

QList<ContentManager*> ContentManager::scannerManagers()
{
    return {managerFromType(MoodsetContent::Image)};
}

void ContentManager::setFactory(Factory factory)
{
    managerFactory = factory;
}

void ContentManager::setAnnouncer(Announcer announcer)
{
    changeAnnouncer = announcer;
}

bool ContentManager::openTransaction(const char* function, const char* message)
{
    if (m_database.transaction()) {
        return true;
    }
    warnOfError(m_database.lastError(), function, message);
    return false;
}

void ContentManager::beginTransaction()
{
    m_database.transaction();
}

bool ContentManager::commit(const char* function)
{
    if (m_database.commit()) {
        return true;
    }
    if (m_database.isOpen()) {
        qCWarning(contentLog) << function << "Failed to commit transaction"
                              << m_database.lastError();
        // This fails if SQLite has already rolled back, as it does on a full disk.
        m_database.rollback();
    }
    return false;
}

bool ContentManager::prepare(std::initializer_list<Statement> statements, const char* function)
{
    for (const Statement& statement : statements) {
        if (!statement.query.prepare(statement.text)) {
            rollback(statement.query, function, statement.message);
            return false;
        }
    }
    return true;
}

void ContentManager::bind(QSqlQuery& query, std::initializer_list<QVariant> values)
{
    int position = 0;
    for (const QVariant& value : values) {
        query.bindValue(position++, value);
    }
}

bool ContentManager::run(QSqlQuery& query, const char* function, const char* message)
{
    if (!query.exec()) {
        warn(query, function, message);
        return false;
    }
    query.finish();
    return true;
}

bool ContentManager::runInTransaction(QSqlQuery& query, const char* function, const char* message)
{
    if (!query.exec()) {
        rollback(query, function, message);
        return false;
    }
    query.finish();
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

bool ContentManager::updateFirst(QList<ContentManager*>* managers)
{
    if (managers->isEmpty()) {
        return false;
    }
    if (managers->constFirst()->updateMetaData()) {
        return true;
    }
    managers->removeFirst();
    return !managers->isEmpty();
}

void ContentManager::notifyContentChanged(int type)
{
    if (changeAnnouncer) {
        changeAnnouncer(type);
    }
}
