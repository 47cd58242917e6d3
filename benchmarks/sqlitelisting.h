// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The least that a listing takes: an agent's statements stepped through SQLite's own interface on
/// a connection of its own, with every column read and nothing made of it. Ends this process if a
/// statement fails.
class SqliteListing
{
public:
    /// `statements` are those of an agent that has listed, in any order.
    SqliteListing(const QString& path, QStringList statements);
    ~SqliteListing();

    SqliteListing(const SqliteListing&) = delete;
    SqliteListing& operator=(const SqliteListing&) = delete;

    /// Runs all of it; gives the number of rows, without those of resources.
    int list();

private:
    int step(sqlite3_stmt* statement);

    sqlite3* m_connection = nullptr;
    QStringList m_statements;
    std::vector<sqlite3_stmt*> m_prepared;
    long long m_sum = 0;
};
