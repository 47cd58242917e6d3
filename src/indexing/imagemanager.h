// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"

#include <QSqlQuery>
#include <QVector>

/// Fills in what the library knows of pictures beyond their files: size, time of taking,
/// orientation.
class ImageManager : public ContentManager
{
public:
    explicit ImageManager(QueryAgentDatabase& database);

    /// "image/*"
    QString mimeType() const override;
    /// Reads the headers of up to 100 pictures that are not up to date; true if there were that
    /// many, so that more may follow. A picture that cannot be read gets a size of -1 by -1 and
    /// counts as up to date until its file changes.
    bool updateMetaData() override;

private:
    struct Picture;
    struct Batch;

    bool prepareStatements();
    QVector<Picture> nextModified();
    static QVector<Picture> takePictures(QSqlQuery& query);
    static Batch readTags(const QVector<Picture>& pictures);
    bool store(const Batch& batch);

    QSqlQuery m_imageUpdate{m_database};
    QSqlQuery m_modifiedQuery{m_database};
    QSqlQuery m_modifiedReset{m_database};
    /// As m_modifiedQuery, but from an id on. That one passes all pictures that are up to date each
    /// time, so that its cost for a new library grows with the square of the library's size.
    QSqlQuery m_nextModifiedQuery{m_database};
    /// The id of the last picture of the batch before, if that was full, or 0.
    qint64 m_lastOfFullBatch = 0;
};
