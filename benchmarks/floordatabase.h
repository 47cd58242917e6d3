// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFileInfo>
#include <QHash>
#include <QMimeDatabase>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <functional>
#include <initializer_list>

/// The path of the database that a floor's only argument names. Ends this process if there is none.
QString floorDatabasePath();

/// Makes the database that a floor's only argument names, with the daemon's tables and pragmas.
/// Ends this process if that fails, as all of the functions below do.
QSqlDatabase makeFloorDatabase();

/// Opens an existing database with the daemon's pragmas. The name of the connection is `path`.
QSqlDatabase openLikeDaemon(const QString& path);

/// Copies a database that others may use to a file that does not exist.
void copyDatabase(const QString& from, const QString& to);

/// Removes a connection when the object is destroyed. Nothing may use the connection then.
class DatabaseConnection
{
public:
    explicit DatabaseConnection(QString name);
    ~DatabaseConnection();
    Q_DISABLE_COPY_MOVE(DatabaseConnection)

private:
    const QString m_name;
};

QSqlQuery prepared(const QSqlDatabase& database, const QString& statement);

void run(QSqlQuery& query, std::initializer_list<QVariant> values);

/// Writes the rows of directories and files, and does nothing else.
class FloorRows
{
public:
    explicit FloorRows(const QSqlDatabase& database);

    /// The id of the new row.
    qint64 insertDirectory(const QVariant& parentId, const QString& path, int scope);
    qint64 insertFile(
        qint64 directoryId, const QFileInfo& file, const QString& mimeType, int permissions,
        bool isCurrent, const QString& displayName = {});

    /// The MIME type of a file. The floor remembers it for the suffix alone.
    QString mimeTypeName(const QFileInfo& file);

private:
    QSqlQuery m_directoryInsert;
    QSqlQuery m_fileInsert;
    QMimeDatabase m_mimeDatabase;
    QHash<QString, QString> m_mimeTypes;
};

/// Calls a function with each path that the standard input holds, one in a line, and says "done in
/// N ms" after each.
void indexFolders(const std::function<void(const QString&)>& index);
