// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/contentmanager.h"
#include "mimetypememory.h"

#include <QSqlQuery>
#include <QVector>

#include <optional>

class QJsonObject;

/// Keeps the rows of the directories that index files describe.
///
/// A file NAME.index describes the directory NAME next to it: which of its files are content, and
/// the name to show for each. A bad index file changes nothing, and is not read again until it
/// changes.
class IndexManager : public ContentManager
{
public:
    explicit IndexManager(QueryAgentDatabase& database);

    /// Reads one index file that is not up to date. True if there may be more.
    bool updateMetaData() override;

private:
    struct IndexEntry;
    struct IndexChanges;

    std::optional<QString> takeIndexFile();
    void returnIndexFile();
    bool updateDirectory(const QString& path, qint64 directoryId, const QJsonObject& index);
    static QVector<IndexEntry> readEntries(const QString& directory, const QJsonObject& index);
    void merge(
        const QVector<IndexEntry>& entries, const QString& directory, qint64 directoryId,
        IndexChanges* changes);
    bool apply(const IndexChanges& changes);

    QSqlQuery m_fileQuery{m_database};
    QSqlQuery m_fileInsert{m_database};
    QSqlQuery m_fileUpdate{m_database};
    QSqlQuery m_fileDelete{m_database};
    QSqlQuery m_modifiedQuery{m_database};
    QSqlQuery m_modifiedReset{m_database};
    /// The `file.id` of the index file that is being read.
    qint64 m_indexFileId = 0;
    MimeTypeMemory m_mimeTypes;
};
