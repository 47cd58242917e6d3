// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlDatabase>
#include <QStringList>

struct sqlite3;

/// Observes what SQLite does with the statements of an open connection.
///
/// The connection must outlive the probe, and can have only one probe at a time.
class StatementProbe
{
public:
    explicit StatementProbe(const QSqlDatabase& database);
    ~StatementProbe();
    Q_DISABLE_COPY_MOVE(StatementProbe)

    /// The number of SELECTs that SQLite has compiled since the last call. A subquery counts
    /// separately. A statement counts again when SQLite compiles it again, as it does for a new
    /// schema or a new glob.
    int takeCompiledSelects();
    /// The texts of the statements that have started since the last call, with the bound values in
    /// place of their question marks.
    QStringList takeExecuted();
    /// The texts of the statements that are prepared now, sorted. The driver has replaced the
    /// question marks by names.
    QStringList preparedStatements() const;
    /// The texts of the statements that stand on a row. While one does, the write-ahead log cannot
    /// be begun again.
    QStringList openStatements() const;

private:
    static int onCompile(
        void* probe, int action, const char* first, const char* second, const char* schema,
        const char* trigger);
    static int onTrace(unsigned type, void* probe, void* statement, void* text);

    sqlite3* m_connection;
    int m_compiledSelects = 0;
    QStringList m_executed;
};
