// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <queryagent.h>

#include <QVector>

/// Counts the records of a listing and keeps none of them.
class RecordCounter final : public QueryAgent::Recipient
{
public:
    void receive(const QVector<Content>& batch) override { m_count += batch.size(); }
    int count() const { return m_count; }

private:
    int m_count = 0;
};
