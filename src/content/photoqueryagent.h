// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "photodata.h"
#include "queryagent.h"

/// Lists pictures by the time at which they were taken; pictures without a time come first. The
/// parameters have no effect. queryById() and queryByUrl() always warn and give a null handle.
/// queryPhoto() and queryPage() are the calls for clients that show pictures; they also tell when
/// the pictures' files were last changed.
class MOODSET_CONTENT_EXPORT PhotoQueryAgent : public QueryAgentSpecialization<PhotoData>
{
public:
    /// Which pictures queryPage() lists. Those that do not say when they were taken come last in
    /// either order.
    struct Page
    {
        enum Order : int { NewestFirst = 0, OldestFirst = 1 };

        Order order = NewestFirst;
        /// The number of pictures; negative for all.
        int limit = -1;
        /// How many pictures to pass over before the first.
        int offset = 0;
    };

    explicit PhotoQueryAgent(QueryAgentDatabase& database);

    Content queryById(qint64 id) override;
    Content queryByUrl(const QUrl& url) override;
    bool query(Recipient* recipient, const Parameters& parameters) override;

    /// The picture with a `file.id`, or a null handle if there is none whose data have been read.
    Content queryPhoto(qint64 id);

    /// Lists a page of the pictures to `recipient`, as query() does. True if the listing ran.
    bool queryPage(Recipient* recipient, const Page& page);

    /// Runs a bound query that returns one row of a picture.
    Content querySinglePhoto(QSqlQuery& query);
};
