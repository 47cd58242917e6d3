// SPDX-License-Identifier: BSD-3-Clause
#include "sqlbatch.h"

#include <QSqlQuery>

void SqlBatch::append(std::initializer_list<QVariant> row)
{
    if (m_columns.isEmpty()) {
        m_columns.resize(static_cast<int>(row.size()));
    }
    Q_ASSERT(m_columns.size() == static_cast<int>(row.size()));
    auto column = m_columns.begin();
    for (const QVariant& value : row) {
        (column++)->append(value);
    }
}

bool SqlBatch::isEmpty() const
{
    return m_columns.isEmpty();
}

int SqlBatch::rowCount() const
{
    return isEmpty() ? 0 : m_columns.constFirst().size();
}

bool SqlBatch::exec(QSqlQuery& query) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        query.bindValue(i, QVariant(m_columns.at(i)));
    }
    if (!query.execBatch()) {
        return false;
    }
    query.finish();
    return true;
}
