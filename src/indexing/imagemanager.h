// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "readingmark.h"

#include <QSqlQuery>
#include <QVector>

#include <optional>

/// Reads the data of pictures: the size, the time when they were taken, and the orientation.
class ImageManager : public ContentManager
{
public:
    explicit ImageManager(QueryAgentDatabase& database);

    /// "image/*"
    QString mimeType() const override;
    /// Reads the headers of up to 100 pictures that are not up to date. True if there were 100,
    /// because more may follow. A picture that cannot be read, or that has ended the last two
    /// processes, gets a size of -1 by -1, and counts as up to date until its file changes.
    bool updateMetaData() override;

private:
    struct Picture;
    struct Batch;

    bool prepareStatements();
    QVector<Picture> nextModified();
    static QVector<Picture> takePictures(QSqlQuery& query);
    Batch read(QVector<Picture> pictures);
    void leaveOutDeadly(QVector<Picture>* pictures, Batch* batch);
    void readTags(const QVector<Picture>& pictures, Batch* batch);
    bool store(const Batch& batch);

    QSqlQuery m_imageUpdate{m_database};
    QSqlQuery m_modifiedQuery{m_database};
    QSqlQuery m_modifiedReset{m_database};
    /// The same as m_modifiedQuery, but only for ids above a limit. m_modifiedQuery passes all
    /// pictures that are up to date each time, so for a new library its cost would grow with the
    /// square of the library's size.
    QSqlQuery m_nextModifiedQuery{m_database};
    /// The id of the last picture of the batch before, if that batch was full, and otherwise 0.
    qint64 m_lastOfFullBatch = 0;
    /// Made for the first picture to read.
    std::optional<ReadingMark> m_mark;
};
