// SPDX-License-Identifier: BSD-3-Clause
#include "contentlisting.h"

#include "recordvalues.h"

#include <utility>

namespace {

/// The first portion fills a screen.
constexpr int FirstPortion = 50;

/// Each portion has this many times as many rows as the one before. So the first rows come soon,
/// and few calls are needed for all rows.
constexpr int PortionGrowth = 4;

} // namespace

ContentListing::ContentListing(
    const LibraryThread::Work& work, ContentRows before, RowKey key, Filter filter,
    Portions portions)
    : m_work(work)
    , m_before(std::move(before))
    , m_key(key)
    , m_filter(std::move(filter))
    , m_portions(std::move(portions))
    , m_portionSize(FirstPortion)
{
}

void ContentListing::receive(const QVector<Content>& batch)
{
    for (const Content& content : batch) {
        if (!m_filter || m_filter(content)) {
            m_rows.append(takenOver(content));
        }
    }
    if (m_portions && m_before.isEmpty() && m_rows.size() >= m_portionSize) {
        m_portions(m_rows);
        m_rows = ContentRows();
        m_portionSize *= PortionGrowth;
        m_rows.reserve(m_portionSize);
    }
}

bool ContentListing::wantsMore() const
{
    return !m_work.isCancelled();
}

RowUpdate ContentListing::update() const
{
    return rowUpdate(m_before, m_rows, m_key);
}

ContentRow ContentListing::takenOver(const Content& content)
{
    ContentRow row = RecordValues::row(content);
    const ContentRow* const before = findBefore(content);
    if (before != nullptr && hasSameFields(before->content, content)) {
        row.content = before->content;
    }
    return row;
}

const ContentRow* ContentListing::findBefore(const Content& content)
{
    const qint64 id = content.data()->id;
    if (m_next < m_before.size() && m_before.at(m_next).id() == id) {
        return &m_before.at(m_next++);
    }
    if (m_positions.isEmpty()) {
        m_positions.reserve(m_before.size());
        for (int i = 0; i < m_before.size(); ++i) {
            m_positions.insert(m_before.at(i).id(), i);
        }
    }
    const auto position = m_positions.constFind(id);
    if (position == m_positions.constEnd()) {
        return nullptr;
    }
    m_next = *position + 1;
    return &m_before.at(*position);
}
