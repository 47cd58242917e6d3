// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetitem.h"

#include "recordvalues.h"

#include <queryagent.h>

MoodsetItem::MoodsetItem(QObject* parent)
    : QObject(parent)
{
}

MoodsetItem::~MoodsetItem()
{
    if (m_reading) {
        m_reading->cancel();
    }
}

void MoodsetItem::classBegin()
{
}

void MoodsetItem::componentComplete()
{
    m_thread = LibraryThread::instance();
    m_events = LibraryEvents::instance();
    connect(m_events.get(), &LibraryEvents::contentChanged, this, [this](int type) {
        if (type == MoodsetContent::Moodset || type == MoodsetContent::File) {
            start();
        }
    });
    connect(m_events.get(), &LibraryEvents::daemonStarted, this, &MoodsetItem::start);
    look();
}

void MoodsetItem::setContentId(qlonglong contentId)
{
    if (contentId != m_contentId) {
        m_contentId = contentId;
        Q_EMIT contentIdChanged();
        look();
    }
}

void MoodsetItem::setUrl(const QUrl& url)
{
    if (url != m_url) {
        m_url = url;
        Q_EMIT urlChanged();
        if (m_contentId == 0) {
            look();
        }
    }
}

QVariant MoodsetItem::moodset() const
{
    return RecordValues::map(m_row);
}

/// Reads another moodset, because the id or the URL has changed.
void MoodsetItem::look()
{
    if (!m_thread) {
        return;
    }
    if (m_reading) {
        m_reading->cancel();
        m_reading.reset();
    }
    if (m_contentId == 0 && m_url.isEmpty()) {
        show({}, {});
        setStatus(Null, {});
        return;
    }
    setStatus(Loading, {});
    start();
}

void MoodsetItem::start()
{
    if (m_contentId == 0 && m_url.isEmpty()) {
        return;
    }
    // However many announcements come while a reading runs, they cause only one further reading.
    m_isStale = m_reading != nullptr;
    if (m_isStale) {
        return;
    }
    m_reading =
        m_thread->read([this, id = m_contentId, url = m_url](const LibraryThread::Work& work) {
            const QString fault = work.open();
            ContentRow row;
            QueryAgent* const agent =
                fault.isEmpty() ? QueryAgent::agentFor(MoodsetContent::Moodset) : nullptr;
            if (agent != nullptr) {
                row = RecordValues::row(id != 0 ? agent->queryById(id) : agent->queryByUrl(url));
            }
            work.deliver([this, row, fault] {
                m_reading.reset();
                show(row, fault);
                if (m_isStale) {
                    start();
                }
            });
        });
}

void MoodsetItem::show(const ContentRow& row, const QString& error)
{
    if (error.isEmpty()
        && (!hasSameFields(row.content, m_row.content) || row.version != m_row.version)) {
        m_row = row;
        Q_EMIT moodsetChanged();
    }
    setStatus(error.isEmpty() ? Ready : Error, error);
}

void MoodsetItem::setStatus(Status status, const QString& error)
{
    if (status != m_status || error != m_error) {
        m_status = status;
        m_error = error;
        Q_EMIT statusChanged();
    }
}
