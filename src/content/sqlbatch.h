// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVariantList>
#include <QVector>

#include <initializer_list>

class QSqlQuery;

/// Rows collected for one prepared statement, which runs once for each of them.
class SqlBatch
{
public:
    /// Adds a row: a value for each of the statement's placeholders, in their order. All rows of a
    /// batch have the same number of values.
    void append(std::initializer_list<QVariant> row);

    bool isEmpty() const;
    int rowCount() const;

    /// Binds all rows and runs the statement on them. Returns the result of QSqlQuery::execBatch().
    /// Opens no transaction. The statement is finished after a success.
    bool exec(QSqlQuery& query) const;

private:
    QVector<QVariantList> m_columns;
};
