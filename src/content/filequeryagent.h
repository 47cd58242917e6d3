// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "filedata.h"
#include "queryagent.h"

/// Reads files. Listings are sorted by file name and use the parameters `mimeType` and
/// `directories`.
class MOODSET_CONTENT_EXPORT FileQueryAgent : public QueryAgentSpecialization<FileData>
{
public:
    explicit FileQueryAgent(QueryAgentDatabase& database);

    Content queryById(qint64 id) override;
    Content queryByUrl(const QUrl& url) override;
    bool query(Recipient* recipient, const Parameters& parameters) override;

    /// Runs a bound query that returns one row of a file.
    Content querySingleFile(QSqlQuery& query);
};
