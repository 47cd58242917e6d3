// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photodata.h"
#include "queryagent.h"

/// Lists pictures by the time at which they were taken, those that do not say first. The parameters
/// are not read. There is no reading of a single picture: queryById() and queryByUrl() warn and
/// give a null handle; FileQueryAgent reads the picture's file.
class MOODSET_CONTENT_EXPORT PhotoQueryAgent : public QueryAgentSpecialization<PhotoData>
{
public:
    explicit PhotoQueryAgent(QueryAgentDatabase& database);

    Content queryById(qint64 id) override;
    Content queryByUrl(const QUrl& url) override;
    bool query(Recipient* recipient, const Parameters& parameters) override;

    /// Runs a bound query for one row of a picture.
    Content querySinglePhoto(QSqlQuery& query);
};
