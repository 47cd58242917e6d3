// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodsetdata.h"
#include "queryagent.h"

/// Reads moodsets with their resources. Listings read the parameter `favoriteFilter`: favourites
/// come first, and each group goes by its time stamps. The records' own `timestamp` stays null.
///
/// A listing lays its order down in a temporary table, so only one can run at a time on a
/// connection, and none while any other listing of that thread is unfinished, for instance from
/// inside the recipient of a file listing: its table could then not be dropped, and all later ones
/// would fail.
class MOODSET_CONTENT_EXPORT MoodsetQueryAgent : public QueryAgentSpecialization<MoodsetData>
{
public:
    explicit MoodsetQueryAgent(QueryAgentDatabase& database);

    Content queryById(qint64 id) override;
    Content queryByUrl(const QUrl& url) override;
    bool query(Recipient* recipient, const Parameters& parameters) override;

    /// Runs a bound query for one row of a moodset, and reads its resources.
    Content querySingleMoodset(QSqlQuery& query);

private:
    struct ResourceCursor;

    static void readResources(ResourceCursor* cursor, Content* contents, int count);
    void list(Recipient* recipient, const QString& table);
};
