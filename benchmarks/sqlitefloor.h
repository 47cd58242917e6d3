// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// A new database with the daemon's tables and pragmas, through SQLite's own interface. Whatever
/// fails here ends this process.
class SqliteFloor
{
public:
    explicit SqliteFloor(const QByteArray& path);
    ~SqliteFloor();
    Q_DISABLE_COPY_MOVE(SqliteFloor)

    void exec(const char* statement);
    sqlite3* handle() const { return m_handle; }

private:
    sqlite3* m_handle = nullptr;
};

/// A prepared statement that adds a row. Its columns count from 1.
class SqliteStatement
{
public:
    SqliteStatement(const SqliteFloor& database, const char* statement);
    ~SqliteStatement();
    Q_DISABLE_COPY_MOVE(SqliteStatement)

    /// Without a value the column is NULL.
    void bind(int column, std::optional<qint64> value);
    /// A null text is NULL. The bytes have to live until the row is added.
    void bind(int column, const QByteArray& text);
    /// Adds the row; its id.
    qint64 insert();

private:
    sqlite3* const m_database;
    sqlite3_stmt* m_statement = nullptr;
};
