// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/queryagentdatabase.h"
#include "librarydatabase.h"

#include <QByteArray>
#include <QScopedPointer>
#include <QStringList>
#include <QTemporaryDir>

struct sqlite3;

/// A content database for one test, in a real file: empty, with the current schema, and in the
/// journal mode of the daemon.
///
/// rows() and value() use another connection, so they see only what is committed.
class IndexDatabase
{
public:
    IndexDatabase();
    ~IndexDatabase();
    Q_DISABLE_COPY_MOVE(IndexDatabase)

    /// The connection that the managers under test share.
    QueryAgentDatabase& connection();
    /// Runs statements on that connection. A statement that fails makes the current test fail.
    void exec(const QStringList& statements);
    void exec(const QString& statement);
    /// Makes the connection refuse to prepare one statement. It is the `nth` one, from 1, of a
    /// kind. `verb` is "SELECT", "INSERT", "UPDATE" or "DELETE", `table` is the table that it
    /// changes, or empty for a SELECT, and `column` is a column that it updates. The error text of
    /// the database is "not authorized".
    void refuseToPrepare(
        const QByteArray& verb, int nth, const QByteArray& table = {},
        const QByteArray& column = {});
    /// Whether a transaction is open on the connection.
    bool isInTransaction() const;

    LibraryDatabase::Rows rows(const QString& statement, const QVariantList& values = {}) const;
    QVariant value(const QString& statement, const QVariantList& values = {}) const;
    /// The names of the files of the directory at `path` that have a row, sorted.
    QStringList fileNames(const QString& path) const;
    /// The paths of all directories that have a row, sorted.
    QStringList directoryPaths() const;
    /// The `file.id` of the only file with this name.
    qint64 fileId(const QString& fileName) const;

private:
    /// A kind of statement to refuse, and the number of statements of this kind that still pass.
    struct Refusal
    {
        int action = 0;
        QByteArray table;
        QByteArray column;
        int countdown = 0;
    };
    static int authorize(
        void* refusal, int action, const char* table, const char* column, const char* database,
        const char* trigger);
    sqlite3* handle() const;

    QTemporaryDir m_folder;
    QueryAgentDatabase m_connection;
    QScopedPointer<LibraryDatabase> m_reader;
    Refusal m_refusal;
};

/// A trigger that makes a kind of change fail in the database: `operation` is "INSERT", "UPDATE" or
/// "DELETE". The error text of the database is "refused".
QString refuse(const QString& operation, const QString& table);
/// The error of a change that such a trigger has refused, as the log shows it.
QString refusedError();
/// The error of a statement whose table has been dropped, as the log shows it.
QString noSuchTable(const QString& table);

/// The four warnings of a statement that could not be run, in their order.
QStringList queryWarnings(
    const QString& function, const QString& message, const QString& error,
    const QString& statement);
