// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentmanager.h"

#include <QSqlQuery>
#include <QUrl>

/// Stores the URL that a downloaded file came from, so that content can be found by its source.
class DownloadManager : public ContentManager
{
public:
    explicit DownloadManager(QueryAgentDatabase& database);

    /// The registry's download manager.
    static DownloadManager* fromRegistry();

    /// Stores `source` as the origin of the file `fileId` and replaces any other. The file need not
    /// exist. This is part of the caller's transaction.
    bool create(qint64 fileId, QUrl source);
    /// Stores the value of "source", a URL, as create() does. All other keys are ignored.
    bool save(qint64 id, const QVariantMap& values) override;
    // This hides remove(qint64) on purpose: a DownloadManager removes origins, never content.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
    /// Forgets the origin of the file `fileId`. This does not override remove(qint64), which does
    /// nothing here, because rows normally disappear with their files.
    bool remove(int fileId);
#pragma GCC diagnostic pop

private:
    QSqlQuery m_insertDownload{m_database};
    QSqlQuery m_deleteDownload{m_database};
};
