// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSqlDatabase>
#include <QStringList>

struct sqlite3;

/// Watches what SQLite itself does with the statements of an open connection.
///
/// The connection must outlive the probe, and can have one at a time.
class StatementProbe
{
public:
    explicit StatementProbe(const QSqlDatabase& database);
    ~StatementProbe();
    Q_DISABLE_COPY_MOVE(StatementProbe)

    /// How many SELECTs SQLite has compiled since the last call. A subquery counts for itself, and
    /// a statement once more whenever SQLite renews it, as it does for a new schema or glob.
    int takeCompiledSelects();
    /// The texts of the statements that have begun to run since the last call, with the values that
    /// were bound in place of their question marks.
    QStringList takeExecuted();
    /// The texts of the statements that exist now, prepared and not freed, sorted; the driver has
    /// put names in place of the question marks.
    QStringList preparedStatements() const;

private:
    static int onCompile(
        void* probe, int action, const char* first, const char* second, const char* schema,
        const char* trigger);
    static int onTrace(unsigned type, void* probe, void* statement, void* text);

    sqlite3* m_connection;
    int m_compiledSelects = 0;
    QStringList m_executed;
};
