// SPDX-License-Identifier: BSD-3-Clause
#include "imagemanager.h"

#include "content/moodsetcontent.h"
#include "content/sqlbatch.h"

#include <QFileInfo>
#include <QImageReader>
#include <QSize>
#include <QVariant>

#include <quillmetadata.h>

#include <new>
#include <utility>

namespace {

const char* const UpdateFunction = "virtual bool ImageManager::updateMetaData()";

/// As many pictures as m_modifiedQuery gives at most.
constexpr int BatchSize = 100;

/// The size of the picture at a path, invalid if there is none that can be read.
QSize pictureSize(const QString& path)
{
    // The reader would wait for ever on a FIFO, and would look for a missing file's namesakes with
    // the suffixes of pictures.
    if (!QFileInfo(path).isFile()) {
        return QSize();
    }
    try {
        return QImageReader(path).size();
    } catch (const std::bad_alloc&) {
        // Some of the reader's plugins hold a whole file in memory.
        return QSize();
    }
}

} // namespace

/// A picture that is not up to date.
struct ImageManager::Picture
{
    qint64 id;
    QString path;
};

struct ImageManager::Batch
{
    SqlBatch ids;
    SqlBatch images;
};

ImageManager::ImageManager(QueryAgentDatabase& database)
    : ContentManager(database)
    , m_imageUpdate(m_database)
    , m_modifiedQuery(m_database)
    , m_modifiedReset(m_database)
    , m_nextModifiedQuery(m_database)
{
    const char* const function = "ImageManager::ImageManager(QueryAgentDatabase&)";
    if (!openTransaction(function)) {
        return;
    }
    const char* const modifiedQueryFailed = "Failed to prepare m_modifiedQuery.";
    prepare(
        {{m_imageUpdate,
          QStringLiteral("INSERT OR REPLACE INTO image "
                         "(fileId, dateTaken, width, height, orientation) "
                         "VALUES (?, ?, ?, ?, ?);"),
          "Failed to prepare m_imageUpdate."},
         {m_modifiedQuery,
          QStringLiteral("SELECT file.id, directory.path, file.fileName FROM file "
                         "LEFT JOIN directory ON file.directoryId = directory.id "
                         "WHERE file.metadataCurrent = 0 AND file.mimeType GLOB 'image/*' "
                         "LIMIT 100;"),
          modifiedQueryFailed},
         // Reported as the statement before it.
         {m_modifiedReset, QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"),
          modifiedQueryFailed, &m_modifiedQuery},
         // Without it m_modifiedQuery does all of the work.
         {m_nextModifiedQuery,
          QStringLiteral("SELECT file.id, directory.path, file.fileName FROM file "
                         "LEFT JOIN directory ON file.directoryId = directory.id "
                         "WHERE file.id > ? AND file.metadataCurrent = 0 "
                         "AND file.mimeType GLOB 'image/*' LIMIT 100;"),
          nullptr}},
        function);
    // Also after a failure, when there may be nothing to commit.
    m_database.commit();
}

QString ImageManager::mimeType() const
{
    return QStringLiteral("image/*");
}

bool ImageManager::updateMetaData()
{
    QVector<Picture> pictures = nextModified();
    if (pictures.size() < BatchSize) {
        // The last pictures, and any that have changed behind the others, are in this one.
        if (!m_modifiedQuery.exec()) {
            warn(m_modifiedQuery, UpdateFunction, "Failed to execute m_modifiedQuery");
            return false;
        }
        pictures = takePictures(m_modifiedQuery);
    }
    if (pictures.isEmpty() || !store(readTags(pictures))) {
        return false;
    }
    const bool isFull = pictures.size() == BatchSize;
    m_lastOfFullBatch = isFull ? pictures.constLast().id : 0;
    notifyContentChanged(MoodsetContent::Image);
    return isFull;
}

/// The pictures that follow the last full batch; none if that had no successor yet, or if they
/// cannot be told.
QVector<ImageManager::Picture> ImageManager::nextModified()
{
    const qint64 last = std::exchange(m_lastOfFullBatch, 0);
    if (last == 0) {
        return {};
    }
    bind(m_nextModifiedQuery, {last});
    return m_nextModifiedQuery.exec() ? takePictures(m_nextModifiedQuery) : QVector<Picture>();
}

QVector<ImageManager::Picture> ImageManager::takePictures(QSqlQuery& query)
{
    QVector<Picture> pictures;
    while (query.next()) {
        pictures.append(
            {query.value(0).toLongLong(),
             query.value(1).toString() + QLatin1Char('/') + query.value(2).toString()});
    }
    query.finish();
    return pictures;
}

ImageManager::Batch ImageManager::readTags(const QVector<Picture>& pictures)
{
    Batch batch;
    for (const Picture& picture : pictures) {
        const QSize size = pictureSize(picture.path);
        const QuillMetadata metadata(picture.path, QuillMetadata::AllFormats);
        batch.ids.append({picture.id});
        batch.images.append(
            {picture.id, metadata.entry(QuillMetadata::TimestampTag), size.width(), size.height(),
             metadata.entry(QuillMetadata::OrientationTag)});
    }
    return batch;
}

bool ImageManager::store(const Batch& batch)
{
    // Without a transaction the statements commit one by one.
    m_database.transaction();
    if (!runBatch(batch.ids, m_modifiedReset, UpdateFunction, "Failed to execute m_modifiedReset.")
        || !runBatch(
            batch.images, m_imageUpdate, UpdateFunction, "Failed to execute m_imageUpdate.")) {
        return false;
    }
    // A commit that fails shows at the next transaction.
    m_database.commit();
    return true;
}
