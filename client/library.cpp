// SPDX-License-Identifier: BSD-3-Clause
#include "library.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

#include <queryagentdatabase.h>

namespace {

const auto photoSelection = QStringLiteral(
    "SELECT directory.path, file.fileName, file.mimeType, file.modificationTime,"
    " file.metadataCurrent, image.width, image.height, image.dateTaken, image.orientation"
    " FROM file JOIN directory ON file.directoryId = directory.id"
    " LEFT JOIN image ON image.fileId = file.id ");

Photo photoFromRow(const QSqlQuery& row)
{
    Photo photo;
    photo.path = row.value(0).toString() + QLatin1Char('/') + row.value(1).toString();
    photo.mimeType = row.value(2).toString();
    photo.modified = row.value(3).toDateTime();
    photo.current = row.value(4).toBool();
    if (!row.isNull(5)) {
        photo.size = QSize(row.value(5).toInt(), row.value(6).toInt());
    }
    photo.taken = row.value(7).toDateTime();
    photo.orientation = row.value(8).toInt();
    return photo;
}

} // namespace

QString Library::standardPath()
{
    return QueryAgentDatabase::filePath();
}

Library::Library(const QString& path)
    : m_path(path)
    , m_database(
          QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QUuid::createUuid().toString()))
{
    m_database.setDatabaseName(path);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
}

Library::~Library()
{
    const QString name = m_database.connectionName();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

bool Library::open()
{
    m_error.clear();
    if (!QFileInfo::exists(m_path)) {
        m_error = QStringLiteral("there is no database at %1").arg(m_path);
    } else if (!m_database.open()) {
        m_error = QStringLiteral("cannot open %1: %2").arg(m_path, m_database.lastError().text());
    }
    return m_error.isEmpty();
}

QVector<Photo> Library::photos() const
{
    QVector<Photo> photos;
    QSqlQuery query(m_database);
    const bool succeeded = query.exec(
        photoSelection
        + QStringLiteral(
            "WHERE file.mimeType GLOB 'image/*' ORDER BY directory.path, file.fileName"));
    while (query.next()) {
        photos.append(photoFromRow(query));
    }
    m_error = succeeded ? QString() : query.lastError().text();
    return photos;
}

std::optional<Photo> Library::findFile(const QString& path) const
{
    const QFileInfo info(path);
    QSqlQuery query(m_database);
    query.prepare(
        photoSelection + QStringLiteral("WHERE directory.path = ? AND file.fileName = ?"));
    query.addBindValue(info.absolutePath());
    query.addBindValue(info.fileName());
    m_error = query.exec() ? QString() : query.lastError().text();
    if (!query.next()) {
        return std::nullopt;
    }
    return photoFromRow(query);
}

Library::Counts Library::counts() const
{
    Counts counts;
    QSqlQuery query(m_database);
    const bool succeeded = query.exec(
        QStringLiteral("SELECT COUNT(*), SUM(mimeType GLOB 'image/*'),"
                       " SUM(mimeType GLOB 'image/*' AND metadataCurrent = 0),"
                       " (SELECT COUNT(*) FROM directory WHERE scope = 0"
                       " OR id IN (SELECT directoryId FROM file WHERE mimeType GLOB 'image/*'))"
                       " FROM file WHERE mimeType GLOB 'image/*'"
                       " OR directoryId IN (SELECT id FROM directory WHERE scope = 0)"));
    if (query.next()) {
        counts.files = query.value(0).toInt();
        counts.photos = query.value(1).toInt();
        counts.waitingPhotos = query.value(2).toInt();
        counts.folders = query.value(3).toInt();
    }
    m_error = succeeded ? QString() : query.lastError().text();
    return counts;
}

int Library::dataVersion() const
{
    QSqlQuery query(m_database);
    m_error =
        query.exec(QStringLiteral("PRAGMA data_version")) ? QString() : query.lastError().text();
    return query.next() ? query.value(0).toInt() : 0;
}

QString Library::error() const
{
    return m_error;
}
