// SPDX-License-Identifier: BSD-3-Clause
#include "floordatabase.h"

#include "content/databaseschema.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QSqlError>

#include <iostream>
#include <string>
#include <utility>

namespace {

[[noreturn]] void fail(const QSqlError& error)
{
    std::cerr << "floor: " << qPrintable(error.text()) << '\n';
    std::exit(EXIT_FAILURE);
}

void exec(const QSqlDatabase& database, const QStringList& statements)
{
    for (const QString& statement : statements) {
        QSqlQuery query(database);
        if (!query.exec(statement)) {
            fail(query.lastError());
        }
    }
}

QSqlDatabase open(const QString& path)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), path);
    database.setDatabaseName(path);
    if (!database.open()) {
        fail(database.lastError());
    }
    return database;
}

void setPragmas(const QSqlDatabase& database)
{
    exec(
        database,
        {QStringLiteral("PRAGMA temp_store = MEMORY;"),
         QStringLiteral("PRAGMA journal_mode = WAL;")});
}

} // namespace

QString floorDatabasePath()
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::cerr << "usage: " << qPrintable(arguments.constFirst()) << " DATABASE\n";
        std::exit(EXIT_FAILURE);
    }
    return arguments.at(1);
}

QSqlDatabase makeFloorDatabase()
{
    QSqlDatabase database = open(floorDatabasePath());
    exec(database, DatabaseSchema::statements());
    setPragmas(database);
    return database;
}

QSqlDatabase openLikeDaemon(const QString& path)
{
    QSqlDatabase database = open(path);
    setPragmas(database);
    return database;
}

void copyDatabase(const QString& from, const QString& to)
{
    const DatabaseConnection connection(from);
    QSqlQuery query = prepared(open(from), QStringLiteral("VACUUM INTO ?;"));
    run(query, {to});
}

DatabaseConnection::DatabaseConnection(QString name)
    : m_name(std::move(name))
{
}

DatabaseConnection::~DatabaseConnection()
{
    QSqlDatabase::removeDatabase(m_name);
}

QSqlQuery prepared(const QSqlDatabase& database, const QString& statement)
{
    QSqlQuery query(database);
    if (!query.prepare(statement)) {
        fail(query.lastError());
    }
    return query;
}

void run(QSqlQuery& query, std::initializer_list<QVariant> values)
{
    int position = 0;
    for (const QVariant& value : values) {
        query.bindValue(position++, value);
    }
    if (!query.exec()) {
        fail(query.lastError());
    }
}

FloorRows::FloorRows(const QSqlDatabase& database)
    : m_directoryInsert(prepared(
        database,
        QStringLiteral("INSERT INTO directory (parentId, path, scope) VALUES (?, ?, ?);")))
    , m_fileInsert(prepared(
          database,
          QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, modificationTime, "
                         "permissions, metadataCurrent, displayName) "
                         "VALUES (?, ?, ?, ?, ?, ?, ?);")))
{
}

qint64 FloorRows::insertDirectory(const QVariant& parentId, const QString& path, int scope)
{
    run(m_directoryInsert, {parentId, path, scope});
    return m_directoryInsert.lastInsertId().toLongLong();
}

qint64 FloorRows::insertFile(
    qint64 directoryId, const QFileInfo& file, const QString& mimeType, int permissions,
    bool isCurrent, const QString& displayName)
{
    run(m_fileInsert,
        {directoryId, mimeType, file.fileName(), file.lastModified(), permissions, isCurrent,
         displayName});
    return m_fileInsert.lastInsertId().toLongLong();
}

QString FloorRows::mimeTypeName(const QFileInfo& file)
{
    QString& name = m_mimeTypes[file.suffix()];
    if (name.isNull()) {
        name = m_mimeDatabase.mimeTypeForFile(file).name();
    }
    return name;
}

void indexFolders(const std::function<void(const QString&)>& index)
{
    std::string folder;
    while (std::getline(std::cin, folder)) {
        QElapsedTimer timer;
        timer.start();
        index(QString::fromStdString(folder));
        std::cerr << "done in " << double(timer.nsecsElapsed()) / 1e6 << " ms\n";
    }
}
