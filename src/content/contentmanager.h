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
/// There is one manager for each kind. It is made when it is first needed and lives until the
/// process ends; see managerFromType(). All managers share the daemon's one read-write connection
/// and belong to the main thread. They report failures in the log and return false, 0 or null.
class ContentManager
{
public:
    /// Shares the connection of `database`, which must outlive the manager's work.
    explicit ContentManager(QueryAgentDatabase& database);
    virtual ~ContentManager();

    ContentManager(const ContentManager&) = delete;
    ContentManager& operator=(const ContentManager&) = delete;

    /// The MIME types that the manager handles, as a glob. Empty if it handles none.
    virtual QString mimeType() const;
    /// Does one limited turn of pending work. True if there is more to do.
    virtual bool updateMetaData();
    /// Changes the given attributes of the content `id`, and no others. False if this failed or the
    /// kind allows no changes.
    virtual bool save(qint64 id, const QVariantMap& values);
    // GCC wants the exception at the hidden function, which is this one; see
    // DownloadManager::remove().
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
    /// Removes the content `id`. False if this failed or the kind allows no removal.
    virtual bool remove(qint64 id);
#pragma GCC diagnostic pop

    /// Reports a failed statement: `function` is the caller's signature, `message` names the
    /// statement.
    void warn(const QSqlQuery& query, const char* function, const char* message);
    /// Reports a failed statement as warn() does, and rolls the open transaction back. True if the
    /// rollback succeeded.
    bool rollback(const QSqlQuery& query, const char* function, const char* message);

    /// The manager of a MoodsetContent::Type, made at the first request. It is null if the number
    /// has no manager, and always null while no factory is set. The first request for any number
    /// opens the database and upgrades it. A class of managers that others need has a function
    /// fromRegistry(), which follows the same rules.
    static ContentManager* managerFromType(int type);
    /// The managers whose updateMetaData() runs after files have changed; they are not owned.
    static QList<ContentManager*> scannerManagers();

    /// Makes the manager of a MoodsetContent::Type; null for a number that has none.
    using Factory = ContentManager* (*)(int type, QueryAgentDatabase& database);
    /// Tells clients that content of a MoodsetContent::Type has changed.
    using Announcer = void (*)(int type);
    /// The service sets these two when it starts, because this library does not know the classes of
    /// most managers or the way to the clients. Without an announcer, changes are not announced.
    static void setFactory(Factory factory);
    static void setAnnouncer(Announcer announcer);

protected:
    /// The columns of the managers' queries for files that are not up to date.
    enum ModifiedColumn : int { ModifiedId, ModifiedDirectory, ModifiedName };

    /// A statement that a constructor prepares, and the warning if this fails.
    struct Statement
    {
        QSqlQuery& query;
        QString text;
        const char* message;
    };

    /// Opens a transaction. A failure is reported.
    bool openTransaction(
        const char* function, const char* message = "Failed to open transation on database");
    /// Opens the transaction of a change, which ends in one of these ways:
    /// - commit() succeeds: the whole change is stored.
    /// - commit() fails, as on a full disk: nothing is stored, and no transaction stays open.
    /// - A statement fails and is rolled back: nothing is stored, and commit() is not called.
    /// - A statement fails without a rollback, as some do: the transaction stays open. The next
    ///   change then begins inside it, and both end together.
    void beginTransaction();
    /// Commits the open transaction. A failure is reported and rolled back. If the connection is
    /// not open, nothing is reported, because every statement before has failed already.
    bool commit(const char* function);
    /// Prepares statements in order until one fails. A failure is reported and rolled back.
    bool prepare(std::initializer_list<Statement> statements, const char* function);
    /// Binds a value to each of a statement's placeholders, in their order.
    static void bind(QSqlQuery& query, std::initializer_list<QVariant> values);
    /// Runs a bound statement that returns no rows. A failure is reported.
    bool run(QSqlQuery& query, const char* function, const char* message);
    /// Does what run() does, inside the open transaction. A failure also rolls it back.
    bool runInTransaction(QSqlQuery& query, const char* function, const char* message);
    /// Runs a batch inside the open transaction. A failure is reported and rolled back. An empty
    /// batch succeeds and runs no statement.
    bool runBatch(
        const SqlBatch& batch, QSqlQuery& query, const char* function, const char* message);
    /// Does one turn of the first of `managers`, and removes it from the list if it has no more
    /// work. True if any of them has more to do.
    static bool updateFirst(QList<ContentManager*>* managers);
    /// Tells clients, after a short delay, that content of a MoodsetContent::Type has changed.
    static void notifyContentChanged(int type);

    QSqlDatabase m_database;
};
