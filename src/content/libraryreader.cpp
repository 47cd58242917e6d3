// SPDX-License-Identifier: BSD-3-Clause
#include "libraryreader.h"

#include "moodsetqueryagent.h"
#include "moodsetrow.h"
#include "queryagentdatabase.h"
#include "storedtime.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

namespace {

const auto PhotoSelection = QStringLiteral(
    "SELECT directory.path, file.fileName, file.mimeType, file.modificationTime,"
    " file.metadataCurrent, image.width, image.height, image.dateTaken, image.orientation,"
    " file.id FROM file JOIN directory ON file.directoryId = directory.id"
    " LEFT JOIN image ON image.fileId = file.id ");

const auto MoodsetListing = QStringLiteral(
    "SELECT file.id, directory.path, file.fileName, file.mimeType, file.permissions,"
    " file.displayName, dorselId.dorselId, moodset.timestamp, moodset.favorite,"
    " moodset.homeWallpaper, moodset.applicationWallpaper, moodset.highlightColor,"
    " moodset.secondaryHighlightColor, moodset.primaryColor, moodset.secondaryColor,"
    " moodset.ringerVolume, moodset.enabledSounds, moodset.partnerSpace, moodset.version"
    " FROM moodset JOIN file ON moodset.fileId = file.id"
    " JOIN directory ON file.directoryId = directory.id"
    " LEFT JOIN dorselId ON moodset.fileId = dorselId.fileId"
    " ORDER BY moodset.favorite DESC, moodset.timestamp ASC, moodset.fileId");

QString filePath(const QSqlQuery& row, int column)
{
    return row.value(column).toString() + QLatin1Char('/') + row.value(column + 1).toString();
}

LibraryFile libraryFileFromRow(const QSqlQuery& row)
{
    LibraryFile file;
    file.path = filePath(row, 0);
    file.mimeType = row.value(2).toString();
    file.modified = storedTime(row.value(3));
    file.current = row.value(4).toBool();
    if (!row.isNull(5)) {
        file.size = QSize(row.value(5).toInt(), row.value(6).toInt());
    }
    file.taken = storedTime(row.value(7));
    file.orientation = row.value(8).toInt();
    file.id = row.value(9).toLongLong();
    return file;
}

Moodset listedMoodsetFromRow(const QSqlQuery& row)
{
    auto* const moodset =
        new MoodsetData(row.value(0).toLongLong(), QUrl::fromLocalFile(filePath(row, 1)));
    moodset->fileName = row.value(2).toString();
    moodset->mimeType = row.value(3).toString();
    moodset->permissions = row.value(4).toInt();
    moodset->displayName = row.value(5).toString();
    moodset->dorselId = row.value(6).toString();
    moodset->timestamp = QDateTime::fromString(row.value(7).toString(), Qt::ISODate);
    MoodsetRow::fillLook(moodset, row, 8);
    return Moodset(moodset);
}

} // namespace

QString LibraryReader::standardPath()
{
    return QueryAgentDatabase::filePath();
}

LibraryReader::LibraryReader(const QString& path)
    : m_path(path)
    , m_database(std::make_unique<QueryAgentDatabase>())
{
    m_database->setDatabaseName(path);
    m_database->setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
}

LibraryReader::~LibraryReader() = default;

bool LibraryReader::open()
{
    m_error.clear();
    if (!QFileInfo::exists(m_path)) {
        m_error = QStringLiteral("there is no database at %1").arg(m_path);
    } else if (!m_database->open()) {
        m_error = QStringLiteral("cannot open %1: %2").arg(m_path, m_database->lastError().text());
    }
    return m_error.isEmpty();
}

QVector<LibraryFile> LibraryReader::photos() const
{
    QVector<LibraryFile> photos;
    QSqlQuery query(*m_database);
    query.prepare(
        PhotoSelection
        + QStringLiteral(
            "WHERE file.mimeType GLOB 'image/*' ORDER BY directory.path, file.fileName"));
    run(&query);
    while (query.next()) {
        photos.append(libraryFileFromRow(query));
    }
    return photos;
}

std::optional<LibraryFile> LibraryReader::findFile(const QString& path) const
{
    const QFileInfo info(path);
    QSqlQuery query(*m_database);
    query.prepare(
        PhotoSelection + QStringLiteral("WHERE directory.path = ? AND file.fileName = ?"));
    query.addBindValue(info.absolutePath());
    query.addBindValue(info.fileName());
    run(&query);
    if (!query.next()) {
        return std::nullopt;
    }
    return libraryFileFromRow(query);
}

LibraryReader::Counts LibraryReader::counts() const
{
    Counts counts;
    QSqlQuery query(*m_database);
    query.prepare(
        QStringLiteral("SELECT COUNT(*), SUM(mimeType GLOB 'image/*'),"
                       " SUM(mimeType GLOB 'image/*' AND metadataCurrent = 0),"
                       " (SELECT COUNT(*) FROM directory WHERE scope = 0"
                       " OR id IN (SELECT directoryId FROM file WHERE mimeType GLOB 'image/*')),"
                       " (SELECT COUNT(*) FROM moodset),"
                       " (SELECT COUNT(*) FROM moodset WHERE favorite),"
                       " (SELECT COUNT(*) FROM file WHERE metadataCurrent = 0 AND mimeType IN"
                       " ('application/x-zavro-moodset', 'application/x-zavro-index'))"
                       " FROM file WHERE mimeType GLOB 'image/*'"
                       " OR directoryId IN (SELECT id FROM directory WHERE scope = 0)"));
    run(&query);
    if (query.next()) {
        counts.files = query.value(0).toInt();
        counts.photos = query.value(1).toInt();
        counts.waitingPhotos = query.value(2).toInt();
        counts.folders = query.value(3).toInt();
        counts.moodsets = query.value(4).toInt();
        counts.favorites = query.value(5).toInt();
        counts.waitingMoodsets = query.value(6).toInt();
    }
    return counts;
}

QVector<Moodset> LibraryReader::moodsets() const
{
    QVector<Moodset> moodsets;
    QSqlQuery query(*m_database);
    query.prepare(MoodsetListing);
    run(&query);
    while (query.next()) {
        moodsets.append(listedMoodsetFromRow(query));
    }
    return moodsets;
}

Moodset LibraryReader::moodset(qint64 id) const
{
    return Moodset(MoodsetQueryAgent(*m_database).queryById(id));
}

Moodset LibraryReader::moodset(const QUrl& url) const
{
    return Moodset(MoodsetQueryAgent(*m_database).queryByUrl(url));
}

QVector<LibraryReader::Directory> LibraryReader::directories() const
{
    QVector<Directory> directories;
    QSqlQuery query(*m_database);
    query.prepare(QStringLiteral("SELECT id, parentId, path, scope FROM directory ORDER BY path"));
    run(&query);
    while (query.next()) {
        directories.append(
            {query.value(0).toLongLong(), query.value(1).toLongLong(), query.value(2).toString(),
             query.value(3).toInt()});
    }
    return directories;
}

QHash<QString, QString> LibraryReader::downloads() const
{
    QHash<QString, QString> downloads;
    QSqlQuery query(*m_database);
    query.prepare(QStringLiteral("SELECT directory.path, file.fileName, download.source"
                                 " FROM download JOIN file ON download.fileId = file.id"
                                 " JOIN directory ON file.directoryId = directory.id"));
    run(&query);
    while (query.next()) {
        downloads.insert(filePath(query, 0), query.value(2).toString());
    }
    return downloads;
}

int LibraryReader::dataVersion() const
{
    return number(QStringLiteral("PRAGMA data_version"));
}

int LibraryReader::schemaVersion() const
{
    return number(QStringLiteral("PRAGMA user_version"));
}

QStringList LibraryReader::damages() const
{
    QStringList damages;
    QSqlQuery query(*m_database);
    query.prepare(QStringLiteral("PRAGMA quick_check"));
    run(&query);
    while (query.next()) {
        damages.append(query.value(0).toString());
    }
    damages.removeAll(QStringLiteral("ok"));
    return damages;
}

QString LibraryReader::error() const
{
    return m_error;
}

/// Runs a prepared query, whose rows are read only once. On failure, keeps the reason.
bool LibraryReader::run(QSqlQuery* query) const
{
    query->setForwardOnly(true);
    // If the statement could not be prepared, the query has the reason already.
    const bool succeeded = !query->lastError().isValid() && query->exec();
    m_error = succeeded ? QString() : query->lastError().text();
    return succeeded;
}

/// The first column of the first row; 0 if there is none.
int LibraryReader::number(const QString& statement) const
{
    QSqlQuery query(*m_database);
    query.prepare(statement);
    return run(&query) && query.next() ? query.value(0).toInt() : 0;
}
