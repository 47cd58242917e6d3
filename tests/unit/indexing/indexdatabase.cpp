// SPDX-License-Identifier: BSD-3-Clause
#include "indexdatabase.h"

#include "content/databaseschema.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

#include <sqlite3.h>

namespace {

int actionOf(const QByteArray& verb)
{
    const QHash<QByteArray, int> actions{
        {"SELECT", SQLITE_SELECT},
        {"INSERT", SQLITE_INSERT},
        {"UPDATE", SQLITE_UPDATE},
        {"DELETE", SQLITE_DELETE}};
    Q_ASSERT(actions.contains(verb));
    return actions.value(verb);
}

QStringList texts(const LibraryDatabase::Rows& rows)
{
    QStringList result;
    for (const QVariantList& row : rows) {
        result.append(row.constFirst().toString());
    }
    return result;
}

} // namespace

IndexDatabase::IndexDatabase()
{
    const QString path = m_folder.filePath(QStringLiteral("index.sqlite"));
    m_connection.setDatabaseName(path);
    m_connection.open();
    exec(QStringLiteral("PRAGMA journal_mode = WAL;"));
    exec(DatabaseSchema::statements());
    m_reader.reset(new LibraryDatabase(path));
}

IndexDatabase::~IndexDatabase() = default;

QueryAgentDatabase& IndexDatabase::connection()
{
    return m_connection;
}

void IndexDatabase::exec(const QStringList& statements)
{
    for (const QString& statement : statements) {
        exec(statement);
    }
}

void IndexDatabase::exec(const QString& statement)
{
    QSqlQuery query(m_connection);
    if (!query.exec(statement)) {
        const QString reason = QStringLiteral("%1: %2").arg(statement, query.lastError().text());
        QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
    }
}

void IndexDatabase::refuseToPrepare(
    const QByteArray& verb, int nth, const QByteArray& table, const QByteArray& column)
{
    m_refusal = {actionOf(verb), table, column, nth};
    sqlite3_set_authorizer(handle(), &IndexDatabase::authorize, &m_refusal);
}

int IndexDatabase::authorize(
    void* refusal, int action, const char* table, const char* column, const char* /*database*/,
    const char* trigger)
{
    auto* const refused = static_cast<Refusal*>(refusal);
    // The work of a statement's triggers belongs to the statement.
    if (trigger != nullptr || action != refused->action || refused->table != table
        || (!refused->column.isEmpty() && refused->column != column)) {
        return SQLITE_OK;
    }
    return --refused->countdown == 0 ? SQLITE_DENY : SQLITE_OK;
}

sqlite3* IndexDatabase::handle() const
{
    return *static_cast<sqlite3* const*>(m_connection.driver()->handle().constData());
}

bool IndexDatabase::isInTransaction() const
{
    return sqlite3_get_autocommit(handle()) == 0;
}

LibraryDatabase::Rows IndexDatabase::rows(
    const QString& statement, const QVariantList& values) const
{
    return m_reader->rows(statement, values);
}

QVariant IndexDatabase::value(const QString& statement, const QVariantList& values) const
{
    return m_reader->value(statement, values);
}

QStringList IndexDatabase::fileNames(const QString& path) const
{
    return texts(rows(
        QStringLiteral("SELECT fileName FROM file WHERE directoryId = "
                       "(SELECT id FROM directory WHERE path = ?) ORDER BY fileName;"),
        {path}));
}

QStringList IndexDatabase::directoryPaths() const
{
    return texts(rows(QStringLiteral("SELECT path FROM directory ORDER BY path;")));
}

qint64 IndexDatabase::fileId(const QString& fileName) const
{
    return value(QStringLiteral("SELECT id FROM file WHERE fileName = ?;"), {fileName})
        .toLongLong();
}

QString refuse(const QString& operation, const QString& table)
{
    return QStringLiteral("CREATE TRIGGER refuse_%1_%2 BEFORE %1 ON %2 "
                          "BEGIN SELECT RAISE(ABORT, 'refused'); END;")
        .arg(operation, table);
}

QString refusedError()
{
    return QStringLiteral("QSqlError(\"19\", \"Unable to fetch row\", \"refused\")");
}

QString noSuchTable(const QString& table)
{
    return QStringLiteral("QSqlError(\"1\", \"Unable to fetch row\", \"no such table: %1\")")
        .arg(table);
}

QStringList queryWarnings(
    const QString& function, const QString& message, const QString& error, const QString& statement)
{
    // This is the form of the log for a text without characters to escape.
    return {function, message, error, QLatin1Char('"') + statement + QLatin1Char('"')};
}
