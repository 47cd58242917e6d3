// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/queryagentdatabase.h"

#include <QList>
#include <QTemporaryDir>
#include <QVariantList>

/// An open database file with the current schema, without rows, in a directory of its own. A
/// statement that fails makes the current test fail.
class ScratchDatabase
{
public:
    using Rows = QList<QVariantList>;

    ScratchDatabase();
    Q_DISABLE_COPY_MOVE(ScratchDatabase)

    QueryAgentDatabase& database() { return m_database; }

    void exec(const QString& statement);
    Rows rows(const QString& statement) const;
    /// The first column of all rows.
    QVariantList column(const QString& statement) const;

private:
    QTemporaryDir m_folder;
    QueryAgentDatabase m_database;
};

/// The rows that a statement selects on a connection; a failure fails the current test.
ScratchDatabase::Rows rowsOf(const QSqlDatabase& database, const QString& statement);
