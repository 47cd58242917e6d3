// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"

#include <QSqlQuery>

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
    struct Batch;

    bool store(const Batch& batch);

    QSqlQuery m_imageUpdate;
    QSqlQuery m_modifiedQuery;
    QSqlQuery m_modifiedReset;
};
