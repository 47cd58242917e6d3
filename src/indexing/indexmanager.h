// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "mimetypememory.h"

#include <QSqlQuery>
#include <QVector>

class QJsonObject;

/// Keeps the rows of the directories that index files describe.
///
/// A file NAME.index describes the directory NAME beside it: which of its files are content, and
/// under which name each is shown. A bad index file changes nothing and is not read again until it
/// changes.
class IndexManager : public ContentManager
{
public:
    explicit IndexManager(QueryAgentDatabase& database);

    /// Reads one index file that is not up to date; true if there may be more.
    bool updateMetaData() override;

private:
    struct IndexEntry;
    struct IndexChanges;

    bool takeIndexFile(QString* path);
    bool updateDirectory(const QString& path, qint64 directoryId, const QJsonObject& index);
    static QVector<IndexEntry> readEntries(const QString& directory, const QJsonObject& index);
    void merge(const QVector<IndexEntry>& entries, qint64 directoryId, IndexChanges* changes);
    bool apply(const IndexChanges& changes);

    QSqlQuery m_fileQuery;
    QSqlQuery m_fileInsert;
    QSqlQuery m_fileUpdate;
    QSqlQuery m_fileDelete;
    QSqlQuery m_modifiedQuery;
    QSqlQuery m_modifiedReset;
    MimeTypeMemory m_mimeTypes;
};
