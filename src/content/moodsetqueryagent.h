// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "moodsetdata.h"
#include "queryagent.h"

/// Reads moodsets with their resources. Listings use the parameter `favoriteFilter`. Favourites
/// come first, and each group is sorted by the time stamps. The records' own `timestamp` stays
/// null.
///
/// A listing keeps its order in a temporary table, which SQLite cannot drop while another listing
/// of the same connection is unfinished. So a connection can run only one moodset listing at a
/// time, and none inside the recipient of another listing: all later moodset listings would fail.
class MOODSET_CONTENT_EXPORT MoodsetQueryAgent : public QueryAgentSpecialization<MoodsetData>
{
public:
    explicit MoodsetQueryAgent(QueryAgentDatabase& database);

    Content queryById(qint64 id) override;
    Content queryByUrl(const QUrl& url) override;
    bool query(Recipient* recipient, const Parameters& parameters) override;

    /// Runs a bound query that returns one row of a moodset, and reads its resources.
    Content querySingleMoodset(QSqlQuery& query);

private:
    struct ResourceCursor;

    static void readResources(ResourceCursor* cursor, Content* contents, int count);
    void list(Recipient* recipient, const QString& table, bool withModificationTimes);
};
