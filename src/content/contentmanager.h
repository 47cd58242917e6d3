// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariantMap>

#include <initializer_list>

class QSqlQuery;
class QueryAgentDatabase;
class SqlBatch;

/// Writes one kind of content to the database.
///
/// There is one manager for each kind, made on first demand and alive until the process ends; see
/// managerFromType(). All of them share the daemon's one read-write connection and belong to the
/// main thread. Failures come back as false, 0 or null and are reported in the log.
class ContentManager
{
public:
    /// Shares the connection of `database`, which must outlive the manager's work.
    explicit ContentManager(QueryAgentDatabase& database);
    virtual ~ContentManager();

    ContentManager(const ContentManager&) = delete;
    ContentManager& operator=(const ContentManager&) = delete;

    /// The kind of file that the manager handles, as a glob on MIME types; empty for none.
    virtual QString mimeType() const;
    /// Does one bounded turn of pending work; true if there is more to do.
    virtual bool updateMetaData();
    /// Applies a partial change to the content `id`; false if it failed or the kind knows no
    /// changes.
    virtual bool save(qint64 id, const QVariantMap& values);
    /// Removes the content `id`; false if it failed or the kind knows no removal.
    virtual bool remove(qint64 id);

    /// Reports a failed statement: `function` is the caller's signature, `message` names the
    /// statement.
    void warn(const QSqlQuery& query, const char* function, const char* message);
    /// Reports a failed statement as warn() does and rolls the open transaction back; the result of
    /// the rollback.
    bool rollback(const QSqlQuery& query, const char* function, const char* message);

    /// The manager of a MoodsetContent::Type, made on the first request, or null for a number that
    /// has none. The first request for any number brings the database up.
    static ContentManager* managerFromType(int type);
    /// The managers whose updateMetaData() runs after files have changed; they are not owned.
    static QList<ContentManager*> scannerManagers();

protected:
    /// A statement that a constructor prepares.
    struct Statement
    {
        QSqlQuery& query;
        QString text;
        /// What to say when it cannot be prepared; null says nothing and rolls nothing back.
        const char* message;
        /// The query whose error is reported, where that is not `query`.
        const QSqlQuery* reported = nullptr;
    };

    /// Opens the transaction in which a constructor prepares its statements; reports a failure.
    bool openTransaction(const char* function);
    /// Prepares statements in order up to the first that fails, which is reported and rolled back.
    bool prepare(std::initializer_list<Statement> statements, const char* function);
    /// Runs a batch inside the open transaction; a failure is reported and rolled back. An empty
    /// batch is a success without a statement.
    bool runBatch(
        const SqlBatch& batch, QSqlQuery& query, const char* function, const char* message);
    /// Tells clients, in a while, that content of a MoodsetContent::Type has changed.
    static void notifyContentChanged(int type);

    QSqlDatabase m_database;
};
