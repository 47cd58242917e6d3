// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"
#include "librarythread.h"
#include "rowupdate.h"

#include <QHash>

#include <functional>

#include <queryagent.h>

/// Takes the records of a listing on the library's thread, and makes of them what a model needs:
/// for an empty model the rows as they come, in ever larger portions, and for any other the update
/// of its rows. Records that have not changed keep the handles that the model has, so that a
/// refresh takes no second copy of the library.
class ContentListing final : public QueryAgent::Recipient
{
public:
    using Filter = std::function<bool(const Content&)>;
    using Portions = std::function<void(const ContentRows&)>;

    /// `before` are the rows that the model has. A model without rows gets portions, if `portions`
    /// is given.
    ContentListing(
        const LibraryThread::Work& work, ContentRows before, RowKey key, Filter filter,
        Portions portions);

    void receive(const QVector<Content>& batch) override;
    bool wantsMore() const override;

    /// What turns the rows that the model has into those of the listing; for a listing that gives
    /// no portions.
    RowUpdate update() const;
    /// The rows that were in no portion.
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
    /// The row that the next record probably is.
    int m_next = 0;
    QHash<qint64, int> m_positions;
};
