// SPDX-License-Identifier: BSD-3-Clause
#include "downloadmanager.h"

#include <QVariant>

DownloadManager::DownloadManager(QueryAgentDatabase& database)
    : ContentManager(database)
    , m_insertDownload(m_database)
    , m_deleteDownload(m_database)
{
    const char* const function = "DownloadManager::DownloadManager(QueryAgentDatabase&)";
    if (openTransaction(function)) {
        prepare(
            {{m_insertDownload,
              QStringLiteral("INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);"),
              "Failed to prepare m_insertDownload."},
             {m_deleteDownload, QStringLiteral("DELETE FROM download WHERE fileId = ?;"),
              "Failed to prepare m_deleteDownload."}},
            function);
    }
    // Also after a failure, when there may be nothing to commit.
    m_database.commit();
}

bool DownloadManager::create(qint64 fileId, QUrl source)
{
    m_insertDownload.bindValue(0, fileId);
    m_insertDownload.bindValue(1, source);
    if (!m_insertDownload.exec()) {
        warn(
            m_insertDownload, "bool DownloadManager::create(qint64, QUrl)",
            "Failed to execute m_insertDownload.");
        return false;
    }
    m_insertDownload.finish();
    return true;
}

bool DownloadManager::save(qint64 id, const QVariantMap& values)
{
    const auto source = values.constFind(QStringLiteral("source"));
    return source == values.constEnd() || create(id, source->toUrl());
}

bool DownloadManager::remove(int fileId)
{
    m_deleteDownload.bindValue(0, fileId);
    if (!m_deleteDownload.exec()) {
        warn(
            m_deleteDownload, "bool DownloadManager::remove(int)",
            "Failed to execute m_deleteDownload.");
        return false;
    }
    m_deleteDownload.finish();
    return true;
}
