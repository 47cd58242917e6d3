// SPDX-License-Identifier: BSD-3-Clause
#include "sqlitefloor.h"

#include "content/databaseschema.h"

#include <QString>

#include <cstdlib>
#include <iostream>

#include <sqlite3.h>

namespace {

void require(sqlite3* database, bool holds)
{
    if (!holds) {
        std::cerr << "floor: " << sqlite3_errmsg(database) << '\n';
        std::exit(EXIT_FAILURE);
    }
}

} // namespace

SqliteFloor::SqliteFloor(const QByteArray& path)
{
    require(m_handle, sqlite3_open(path.constData(), &m_handle) == SQLITE_OK);
    for (const QString& statement : DatabaseSchema::statements()) {
        exec(statement.toUtf8().constData());
    }
    exec("PRAGMA temp_store = MEMORY;");
    exec("PRAGMA journal_mode = WAL;");
}

SqliteFloor::~SqliteFloor()
{
    static_cast<void>(sqlite3_close(m_handle)); // All has been committed.
}

void SqliteFloor::exec(const char* statement)
{
    require(m_handle, sqlite3_exec(m_handle, statement, nullptr, nullptr, nullptr) == SQLITE_OK);
}

SqliteStatement::SqliteStatement(const SqliteFloor& database, const char* statement)
    : m_database(database.handle())
{
    require(
        m_database,
        sqlite3_prepare_v2(m_database, statement, -1, &m_statement, nullptr) == SQLITE_OK);
}

SqliteStatement::~SqliteStatement()
{
    static_cast<void>(sqlite3_finalize(m_statement)); // Tells how its last use ended.
}

void SqliteStatement::bind(int column, std::optional<qint64> value)
{
    require(
        m_database,
        (value ? sqlite3_bind_int64(m_statement, column, *value)
               : sqlite3_bind_null(m_statement, column))
            == SQLITE_OK);
}

void SqliteStatement::bind(int column, const QByteArray& text)
{
    require(
        m_database,
        (text.isNull()
             ? sqlite3_bind_null(m_statement, column)
             : sqlite3_bind_text(m_statement, column, text.constData(), text.size(), SQLITE_STATIC))
            == SQLITE_OK);
}

qint64 SqliteStatement::insert()
{
    require(m_database, sqlite3_step(m_statement) == SQLITE_DONE);
    require(m_database, sqlite3_reset(m_statement) == SQLITE_OK);
    return sqlite3_last_insert_rowid(m_database);
}
