// SPDX-License-Identifier: BSD-3-Clause
#include "scratchdatabase.h"

#include "content/databaseschema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

namespace {

void failTest(const QString& statement, const QSqlError& error)
{
    const QString report = QStringLiteral("%1: %2").arg(statement, error.text());
    QTest::qFail(qPrintable(report), __FILE__, __LINE__);
}

} // namespace

ScratchDatabase::ScratchDatabase()
{
    m_database.setDatabaseName(m_folder.filePath(QStringLiteral("scratch.sqlite")));
    if (!m_database.open()) {
        failTest(m_database.databaseName(), m_database.lastError());
    }
    const QStringList statements = DatabaseSchema::statements();
    for (const QString& statement : statements) {
        exec(statement);
    }
}

void ScratchDatabase::exec(const QString& statement)
{
    QSqlQuery query(m_database);
    if (!query.exec(statement)) {
        failTest(statement, query.lastError());
    }
}

ScratchDatabase::Rows ScratchDatabase::rows(const QString& statement) const
{
    return rowsOf(m_database, statement);
}

QVariantList ScratchDatabase::column(const QString& statement) const
{
    QVariantList values;
    const Rows all = rows(statement);
    for (const QVariantList& row : all) {
        values.append(row.first());
    }
    return values;
}

ScratchDatabase::Rows rowsOf(const QSqlDatabase& database, const QString& statement)
{
    ScratchDatabase::Rows rows;
    QSqlQuery query(database);
    if (!query.exec(statement)) {
        failTest(statement, query.lastError());
        return rows;
    }
    while (query.next()) {
        QVariantList row;
        for (int column = 0; column < query.record().count(); ++column) {
            row.append(query.value(column));
        }
        rows.append(row);
    }
    return rows;
}
