// SPDX-License-Identifier: BSD-3-Clause
#include "statementprobe.h"

#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

#include <utility>

StatementProbe::StatementProbe(const QSqlDatabase& database)
    : m_connection(*static_cast<sqlite3* const*>(database.driver()->handle().constData()))
{
    sqlite3_set_authorizer(m_connection, onCompile, this);
    sqlite3_trace_v2(m_connection, SQLITE_TRACE_STMT, onTrace, this);
}

StatementProbe::~StatementProbe()
{
    sqlite3_trace_v2(m_connection, 0, nullptr, nullptr);
    sqlite3_set_authorizer(m_connection, nullptr, nullptr);
}

int StatementProbe::takeCompiledSelects()
{
    return std::exchange(m_compiledSelects, 0);
}

QStringList StatementProbe::takeExecuted()
{
    return std::exchange(m_executed, {});
}

QStringList StatementProbe::preparedStatements() const
{
    QStringList texts;
    for (sqlite3_stmt* statement = sqlite3_next_stmt(m_connection, nullptr); statement;
         statement = sqlite3_next_stmt(m_connection, statement)) {
        texts.append(QString::fromUtf8(sqlite3_sql(statement)));
    }
    texts.sort();
    return texts;
}

QStringList StatementProbe::openStatements() const
{
    QStringList texts;
    for (sqlite3_stmt* statement = sqlite3_next_stmt(m_connection, nullptr); statement;
         statement = sqlite3_next_stmt(m_connection, statement)) {
        if (sqlite3_stmt_busy(statement) != 0) {
            texts.append(QString::fromUtf8(sqlite3_sql(statement)));
        }
    }
    return texts;
}

int StatementProbe::onCompile(
    void* probe, int action, const char* first, const char* second, const char* schema,
    const char* trigger)
{
    Q_UNUSED(first)
    Q_UNUSED(second)
    Q_UNUSED(schema)
    Q_UNUSED(trigger)
    if (action == SQLITE_SELECT) {
        ++static_cast<StatementProbe*>(probe)->m_compiledSelects;
    }
    return SQLITE_OK;
}

int StatementProbe::onTrace(unsigned type, void* probe, void* statement, void* text)
{
    Q_UNUSED(type)
    // SQLite reports its own statements, such as those of triggers, as comments.
    if (!QByteArray(static_cast<const char*>(text)).startsWith("--")) {
        char* const expanded = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
        static_cast<StatementProbe*>(probe)->m_executed.append(QString::fromUtf8(expanded));
        sqlite3_free(expanded);
    }
    return 0;
}
