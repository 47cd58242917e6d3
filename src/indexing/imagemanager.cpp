// SPDX-License-Identifier: BSD-3-Clause
#include "imagemanager.h"

#include "content/moodsetcontent.h"
#include "content/sqlbatch.h"

#include <QFileInfo>
#include <QImageReader>
#include <QVariant>

#include <quillmetadata.h>

namespace {

const char* const UpdateFunction = "virtual bool ImageManager::updateMetaData()";

/// As many pictures as m_modifiedQuery gives at most.
constexpr int BatchSize = 100;

/// The size that a picture's header tells; -1 by -1 if it cannot be read.
QSize pictureSize(const QString& path)
{
    // What stands there now need not be what the row was made for. To open a FIFO would be to wait
    // for a writer, for ever.
    return QFileInfo(path).isFile() ? QImageReader(path).size() : QSize();
}

} // namespace

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
          modifiedQueryFailed, &m_modifiedQuery}},
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
    if (!m_modifiedQuery.exec()) {
        warn(m_modifiedQuery, UpdateFunction, "Failed to execute m_modifiedQuery");
        return false;
    }
    Batch batch;
    while (m_modifiedQuery.next()) {
        const QVariant id = m_modifiedQuery.value(0);
        const QString path = m_modifiedQuery.value(1).toString() + QLatin1Char('/')
            + m_modifiedQuery.value(2).toString();
        const QSize size = pictureSize(path);
        const QuillMetadata metadata(path, QuillMetadata::AllFormats);
        batch.ids.append({id});
        batch.images.append(
            {id, metadata.entry(QuillMetadata::TimestampTag), size.width(), size.height(),
             metadata.entry(QuillMetadata::OrientationTag)});
    }
    m_modifiedQuery.finish();
    if (batch.ids.isEmpty() || !store(batch)) {
        return false;
    }
    notifyContentChanged(MoodsetContent::Image);
    return batch.ids.rowCount() == BatchSize;
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
