// SPDX-License-Identifier: BSD-3-Clause
#include "imagemanager.h"

#include "content/moodsetcontent.h"
#include "content/sqlbatch.h"
#include "indexinglog.h"

#include <QSize>
#include <QVariant>

#include <freedescriptors.h>
#include <picturesize.h>
#include <picturetags.h>
#include <windowedfile.h>

#include <algorithm>
#include <deque>
#include <utility>

namespace {

const char* const ImageManagerConstructor = "ImageManager::ImageManager(QueryAgentDatabase&)";
const char* const UpdateFunction = "virtual bool ImageManager::updateMetaData()";

/// The maximum number of pictures that m_modifiedQuery gives.
constexpr int BatchSize = 100;

/// The number of pictures that are open at the same time. While one is read, the disk fetches the
/// headers of the others.
constexpr int PicturesAhead = 16;

/// The number of descriptors that stay free for everything else in this process.
constexpr int DescriptorReserve = 16;

/// A picture whose header was requested from the disk.
struct OpenPicture
{
    explicit OpenPicture(const QString& path)
        : file(path)
    {
        file.fetchHeader();
    }

    WindowedFile file;
    QSize size;
};

/// PicturesAhead, or fewer if few descriptors are left, but at least one.
int picturesOpenAtOnce()
{
    int count = PicturesAhead;
    while (count > 1 && !areDescriptorsFree(count + DescriptorReserve)) {
        count /= 2;
    }
    return count;
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
{
    if (openTransaction(ImageManagerConstructor) && prepareStatements()) {
        commit(ImageManagerConstructor);
    }
}

/// False after a failure, which is rolled back.
bool ImageManager::prepareStatements()
{
    const char* const modifiedQueryFailed = "Failed to prepare m_modifiedQuery.";
    const bool isPrepared = prepare(
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
          modifiedQueryFailed}},
        ImageManagerConstructor);
    if (!isPrepared) {
        return false;
    }
    if (!m_modifiedReset.prepare(
            QStringLiteral("UPDATE file SET metadataCurrent = 1 WHERE id = ?;"))) {
        // The warning is the same as for the statement before.
        rollback(m_modifiedQuery, ImageManagerConstructor, modifiedQueryFailed);
        return false;
    }
    // If this fails, m_modifiedQuery finds all pictures.
    m_nextModifiedQuery.prepare(
        QStringLiteral("SELECT file.id, directory.path, file.fileName FROM file "
                       "LEFT JOIN directory ON file.directoryId = directory.id "
                       "WHERE file.id > ? AND file.metadataCurrent = 0 "
                       "AND file.mimeType GLOB 'image/*' LIMIT 100;"));
    return true;
}

QString ImageManager::mimeType() const
{
    return QStringLiteral("image/*");
}

bool ImageManager::updateMetaData()
{
    QVector<Picture> pictures = nextModified();
    if (pictures.size() < BatchSize) {
        // This batch has the last pictures, and all pictures with smaller ids that have changed.
        if (!m_modifiedQuery.exec()) {
            warn(m_modifiedQuery, UpdateFunction, "Failed to execute m_modifiedQuery");
            return false;
        }
        pictures = takePictures(m_modifiedQuery);
    }
    if (pictures.isEmpty() || !store(read(pictures))) {
        return false;
    }
    const bool isFull = pictures.size() == BatchSize;
    m_lastOfFullBatch = isFull ? pictures.constLast().id : 0;
    notifyContentChanged(MoodsetContent::Image);
    return isFull;
}

/// The pictures after the last full batch. None if there was no full batch, or if the statement
/// fails.
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
            {query.value(ModifiedId).toLongLong(),
             query.value(ModifiedDirectory).toString() + QLatin1Char('/')
                 + query.value(ModifiedName).toString()});
    }
    query.finish();
    return pictures;
}

ImageManager::Batch ImageManager::read(QVector<Picture> pictures)
{
    if (!m_mark) {
        m_mark.emplace(ReadingMark::userFile());
    }
    Batch batch;
    leaveOutDeadly(&pictures, &batch);
    readTags(pictures, &batch);
    m_mark->clear();
    return batch;
}

/// Takes out of `pictures` what must not be read.
void ImageManager::leaveOutDeadly(QVector<Picture>* pictures, Batch* batch)
{
    const auto deadly =
        std::find_if(pictures->begin(), pictures->end(), [this](const Picture& picture) {
            return m_mark->isDeadly(picture.path);
        });
    if (deadly == pictures->end()) {
        return;
    }
    qCWarning(indexingLog) << UpdateFunction;
    qCWarning(indexingLog) << "Left out a picture on which the last two processes have ended";
    qCDebug(indexingLog) << UpdateFunction << deadly->path;
    batch->ids.append({deadly->id});
    batch->images.append({deadly->id, QVariant(), -1, -1, QVariant()});
    pictures->erase(deadly);
    m_mark->forget();
}

void ImageManager::readTags(const QVector<Picture>& pictures, Batch* batch)
{
    const auto atOnce = size_t(picturesOpenAtOnce());
    std::deque<OpenPicture> open;
    size_t measured = 0;
    auto next = pictures.cbegin();
    auto nextToMeasure = pictures.cbegin();
    for (const Picture& picture : pictures) {
        for (; open.size() < atOnce && next != pictures.cend(); ++next) {
            open.emplace_back(next->path);
        }
        // The sizes are read for half of the open pictures in advance, because reading a size shows
        // where the tags may be, and requests that part from the disk.
        for (; measured < open.size() && measured <= atOnce / 2; ++measured) {
            m_mark->set(nextToMeasure++->path);
            open[measured].size = pictureSize(open[measured].file);
        }
        OpenPicture& first = open.front();
        m_mark->set(picture.path);
        const QuillMetadata metadata = pictureTags(first.file, picture.path);
        batch->ids.append({picture.id});
        batch->images.append(
            {picture.id, metadata.entry(QuillMetadata::TimestampTag), first.size.width(),
             first.size.height(), metadata.entry(QuillMetadata::OrientationTag)});
        open.pop_front();
        --measured;
    }
}

bool ImageManager::store(const Batch& batch)
{
    beginTransaction();
    if (!runBatch(batch.ids, m_modifiedReset, UpdateFunction, "Failed to execute m_modifiedReset.")
        || !runBatch(
            batch.images, m_imageUpdate, UpdateFunction, "Failed to execute m_imageUpdate.")) {
        return false;
    }
    return commit(UpdateFunction);
}
