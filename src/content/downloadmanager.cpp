// SPDX-License-Identifier: BSD-3-Clause
#include "downloadmanager.h"

#include "moodsetcontent.h"

#include <QVariant>

DownloadManager::DownloadManager(QueryAgentDatabase& database)
    : ContentManager(database)
{
    const char* const function = "DownloadManager::DownloadManager(QueryAgentDatabase&)";
    const bool isRolledBack =
        openTransaction(function)
        && !prepare(
            {{m_insertDownload,
              QStringLiteral("INSERT OR REPLACE INTO download ( fileId, source) VALUES (?, ?);"),
              "Failed to prepare m_insertDownload."},
             {m_deleteDownload, QStringLiteral("DELETE FROM download WHERE fileId = ?;"),
              "Failed to prepare m_deleteDownload."}},
            function);
    if (!isRolledBack) {
        commit(function);
    }
}

DownloadManager* DownloadManager::fromRegistry()
{
    return static_cast<DownloadManager*>(managerFromType(MoodsetContent::Download));
}

bool DownloadManager::create(qint64 fileId, QUrl source)
{
    bind(m_insertDownload, {fileId, source});
    return run(
        m_insertDownload, "bool DownloadManager::create(qint64, QUrl)",
        "Failed to execute m_insertDownload.");
}

bool DownloadManager::save(qint64 id, const QVariantMap& values)
{
    const auto source = values.constFind(QStringLiteral("source"));
    return source == values.constEnd() || create(id, source->toUrl());
}

bool DownloadManager::remove(int fileId)
{
    bind(m_deleteDownload, {fileId});
    return run(
        m_deleteDownload, "bool DownloadManager::remove(int)",
        "Failed to execute m_deleteDownload.");
}
