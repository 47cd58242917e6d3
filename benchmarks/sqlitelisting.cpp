// SPDX-License-Identifier: BSD-3-Clause
#include "sqlitelisting.h"

#include "measuredprocess.h"

#include <sqlite3.h>

#include <algorithm>

namespace {

/// The order in which an agent runs its statements: the table, the two listings, the removal.
int rank(const QString& statement)
{
    const bool isOfResources = statement.startsWith(QLatin1String("SELECT resource."));
    return statement.startsWith(QLatin1String("CREATE")) ? 0
        : statement.startsWith(QLatin1String("DROP"))    ? 3
        : isOfResources                                  ? 2
                                                         : 1;
}

} // namespace

SqliteListing::SqliteListing(const QString& path, QStringList statements)
    : m_statements(std::move(statements))
    , m_prepared(size_t(m_statements.size()))
{
    std::sort(m_statements.begin(), m_statements.end(), [](const QString& a, const QString& b) {
        return rank(a) < rank(b);
    });
    if (sqlite3_open_v2(path.toUtf8().constData(), &m_connection, SQLITE_OPEN_READONLY, nullptr)
        != SQLITE_OK) {
        giveUp(sqlite3_errmsg(m_connection));
    }
}

SqliteListing::~SqliteListing()
{
    for (sqlite3_stmt* const statement : m_prepared) {
        sqlite3_finalize(statement);
    }
    sqlite3_close(m_connection);
}

int SqliteListing::list()
{
    int rows = 0;
    for (size_t i = 0; i < m_prepared.size(); ++i) {
        const QString& text = m_statements.at(int(i));
        // The statement stays prepared, as in the agent. The table must exist when it is prepared
        // first.
        if (!m_prepared[i]
            && sqlite3_prepare_v2(
                   m_connection, text.toUtf8().constData(), -1, &m_prepared[i], nullptr)
                != SQLITE_OK) {
            giveUp(sqlite3_errmsg(m_connection));
        }
        const int stepped = step(m_prepared[i]);
        rows += rank(text) == 1 ? stepped : 0;
    }
    return rows;
}

/// Steps through all rows, reads all columns, and resets.
int SqliteListing::step(sqlite3_stmt* statement)
{
    int rows = 0;
    int result = SQLITE_OK;
    while ((result = sqlite3_step(statement)) == SQLITE_ROW) {
        ++rows;
        const int columns = sqlite3_column_count(statement);
        for (int column = 0; column < columns; ++column) {
            // Because of the sum, the compiler cannot leave the reading out.
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_INTEGER:
                m_sum += sqlite3_column_int64(statement, column);
                break;
            case SQLITE_TEXT:
                m_sum += *sqlite3_column_text(statement, column);
                m_sum += sqlite3_column_bytes(statement, column);
                break;
            default:
                break;
            }
        }
    }
    if (result != SQLITE_DONE) {
        giveUp(sqlite3_errmsg(m_connection));
    }
    sqlite3_reset(statement);
    return rows;
}
