// SPDX-License-Identifier: BSD-3-Clause
#include "librarydatabase.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QTest>
#include <QUuid>

namespace {

void failTest(const QString& reason)
{
    QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
}

} // namespace

QString LibraryDatabase::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/system/privileged/Moodsetd/moodsetd.sqlite");
}

LibraryDatabase::LibraryDatabase(const QString& path)
    : m_connectionName(QUuid::createUuid().toString())
    , m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName))
{
    m_database.setDatabaseName(path);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!m_database.open()) {
        failTest(QStringLiteral("%1: %2").arg(path, m_database.lastError().text()));
    }
}

LibraryDatabase::~LibraryDatabase()
{
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connectionName);
}

bool LibraryDatabase::isOpen() const
{
    return m_database.isOpen();
}

LibraryDatabase::Rows LibraryDatabase::rows(
    const QString& statement, const QVariantList& values) const
{
    QSqlQuery query(m_database);
    bool succeeded = query.prepare(statement);
    for (const QVariant& value : values) {
        query.addBindValue(value);
    }
    succeeded = succeeded && query.exec();
    if (!succeeded) {
        failTest(QStringLiteral("%1: %2").arg(statement, query.lastError().text()));
        return {};
    }
    Rows result;
    while (query.next()) {
        QVariantList row;
        for (int column = 0; column < query.record().count(); ++column) {
            row.append(query.value(column));
        }
        result.append(row);
    }
    return result;
}

QStringList LibraryDatabase::texts(const QString& statement) const
{
    QStringList texts;
    const Rows selected = rows(statement);
    for (const QVariantList& row : selected) {
        texts.append(row.constFirst().toString());
    }
    texts.sort();
    return texts;
}

QVariant LibraryDatabase::value(const QString& statement, const QVariantList& values) const
{
    const Rows result = rows(statement, values);
    if (result.count() != 1) {
        failTest(QStringLiteral("%1: %2 rows").arg(statement).arg(result.count()));
        return {};
    }
    return result.first().first();
}

qint64 LibraryDatabase::fileId(const QString& path) const
{
    const Rows files = rows(
        QStringLiteral("SELECT file.id FROM file JOIN directory ON directory.id = directoryId "
                       "WHERE directory.path || '/' || fileName = ?"),
        {path});
    return files.isEmpty() ? 0 : files.constFirst().constFirst().toLongLong();
}

QStringList LibraryDatabase::moodset(const QString& path, const QString& columns) const
{
    QStringList texts;
    const Rows moodsets = rows(
        QStringLiteral("SELECT %1 FROM moodset WHERE fileId = ?").arg(columns), {fileId(path)});
    for (const QVariantList& row : moodsets) {
        for (const QVariant& value : row) {
            texts.append(value.toString());
        }
    }
    return texts;
}
