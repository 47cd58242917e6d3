// SPDX-License-Identifier: BSD-3-Clause
#include "contentwriter.h"

#include "content/databaseschema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>
#include <QUuid>

ContentWriter::ContentWriter(const QString& path)
    : m_connectionName(QUuid::createUuid().toString())
    , m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName))
{
    const bool isNew = !QFileInfo::exists(path);
    m_database.setDatabaseName(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !m_database.open()) {
        QTest::qFail(qPrintable(m_database.lastError().text()), __FILE__, __LINE__);
    }
    if (isNew) {
        exec(QStringLiteral("PRAGMA journal_mode = WAL"));
        for (const QString& statement : DatabaseSchema::statements()) {
            exec(statement);
        }
    }
}

ContentWriter::~ContentWriter()
{
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connectionName);
}

qint64 ContentWriter::addFile(const QString& path, const QString& mimeType)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return exec(
        QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, permissions) "
                       "VALUES (?, ?, ?, 3)"),
        {directoryId(path.left(slash)), mimeType, path.mid(slash + 1)});
}

qint64 ContentWriter::addPhoto(const QString& path, const QDateTime& dateTaken)
{
    const qint64 id = addFile(path, QStringLiteral("image/jpeg"));
    exec(
        QStringLiteral("INSERT INTO image (fileId, dateTaken, width, height, orientation) "
                       "VALUES (?, ?, 4, 3, 1)"),
        {id, dateTaken});
    return id;
}

qint64 ContentWriter::addMoodset(const QString& path, const QVariantMap& columns)
{
    const qint64 id = addFile(path, QStringLiteral("application/x-zavro-moodset"));
    QStringList names{QStringLiteral("fileId")};
    QStringList marks{QStringLiteral("?")};
    QVariantList values{id};
    for (auto column = columns.cbegin(); column != columns.cend(); ++column) {
        names.append(column.key());
        marks.append(QStringLiteral("?"));
        values.append(column.value());
    }
    const QString comma = QStringLiteral(", ");
    exec(
        QStringLiteral("INSERT INTO moodset (%1) VALUES (%2)")
            .arg(names.join(comma), marks.join(comma)),
        values);
    return id;
}

qint64 ContentWriter::addResource(qint64 moodset, const QString& type, const QString& path)
{
    const qint64 id = addFile(path, QStringLiteral("audio/ogg"));
    exec(
        QStringLiteral("INSERT INTO resource (fileId, resourceType, resourceId) VALUES (?, ?, ?)"),
        {moodset, type, id});
    return id;
}

void ContentWriter::setSource(qint64 file, const QString& source)
{
    exec(QStringLiteral("INSERT INTO download (fileId, source) VALUES (?, ?)"), {file, source});
}

void ContentWriter::transaction()
{
    exec(QStringLiteral("BEGIN"));
}

void ContentWriter::commit()
{
    exec(QStringLiteral("COMMIT"));
}

qint64 ContentWriter::exec(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(m_database);
    bool succeeded = query.prepare(statement);
    for (const QVariant& value : values) {
        query.addBindValue(value);
    }
    succeeded = succeeded && query.exec();
    if (!succeeded) {
        const QString report = QStringLiteral("%1: %2").arg(statement, query.lastError().text());
        QTest::qFail(qPrintable(report), __FILE__, __LINE__);
    }
    return query.lastInsertId().toLongLong();
}

qint64 ContentWriter::directoryId(const QString& path)
{
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("SELECT id FROM directory WHERE path = ?"));
    query.addBindValue(path);
    if (query.exec() && query.next()) {
        return query.value(0).toLongLong();
    }
    return exec(QStringLiteral("INSERT INTO directory (path, scope) VALUES (?, 0)"), {path});
}
