// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/filedata.h"
#include "content/queryagent.h"

#include <QList>
#include <QStringList>
#include <QVector>

/// Keeps the records that a listing delivers.
class BatchRecorder final : public QueryAgent::Recipient
{
public:
    void receive(const QVector<Content>& batch) override
    {
        m_batchSizes.append(batch.size());
        for (const Content& content : batch) {
            m_contents.append(content);
        }
    }

    const QList<int>& batchSizes() const { return m_batchSizes; }
    const QList<Content>& contents() const { return m_contents; }

    /// The records' file names in the order of the listing.
    QStringList fileNames() const
    {
        QStringList names;
        for (const Content& content : m_contents) {
            names.append(content.data()->data(FileData::FileNameRole).toString());
        }
        return names;
    }

private:
    QList<int> m_batchSizes;
    QList<Content> m_contents;
};
