// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentmanager.h"

#include <QSqlQuery>
#include <QUrl>

/// Remembers for a file that came from the network the URL it came from, so that content can be
/// found by its source.
class DownloadManager : public ContentManager
{
public:
    explicit DownloadManager(QueryAgentDatabase& database);

    /// Records `source` as the origin of the file `fileId`, in place of any other; there need be no
    /// such file. Joins the caller's transaction.
    bool create(qint64 fileId, QUrl source);
    /// Records the value of "source", a URL, as create() does; all other keys are ignored.
    bool save(qint64 id, const QVariantMap& values) override;
    /// Forgets the origin of the file `fileId`. No override of remove(qint64), which stays without
    /// effect here: rows otherwise go with their files.
    bool remove(int fileId);

private:
    QSqlQuery m_insertDownload;
    QSqlQuery m_deleteDownload;
};
