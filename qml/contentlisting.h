// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"
#include "librarythread.h"
#include "rowupdate.h"

#include <QHash>

#include <functional>

#include <queryagent.h>

/// Receives the records of a listing on the library's thread. For an empty model, it delivers the
/// rows as they come, in ever larger portions. For any other model, it makes an update of the rows.
/// If a record has not changed, the update uses the handle that the model has, so a refresh keeps
/// no second copy of the library.
class ContentListing final : public QueryAgent::Recipient
{
public:
    using Filter = std::function<bool(const Content&)>;
    using Portions = std::function<void(const ContentRows&)>;

    /// `before` are the rows that the model has. If the model has no rows and `portions` is given,
    /// the rows are delivered in portions.
    ContentListing(
        const LibraryThread::Work& work, ContentRows before, RowKey key, Filter filter,
        Portions portions);

    void receive(const QVector<Content>& batch) override;
    bool wantsMore() const override;

    /// The update from the rows of the model to the rows of the listing. For a listing without
    /// portions.
    RowUpdate update() const;
    /// The rows that have not been delivered in a portion.
    const ContentRows& rest() const { return m_rows; }

private:
    ContentRow takenOver(const Content& content);
    const ContentRow* findBefore(const Content& content);

    const LibraryThread::Work& m_work;
    const ContentRows m_before;
    const RowKey m_key;
    const Filter m_filter;
    const Portions m_portions;
    ContentRows m_rows;
    int m_portionSize;
    /// The row that probably has the next record.
    int m_next = 0;
    QHash<qint64, int> m_positions;
};
