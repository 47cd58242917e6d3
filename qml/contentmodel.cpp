// SPDX-License-Identifier: BSD-3-Clause
#include "contentmodel.h"

#include "recordvalues.h"

#include <QScopedValueRollback>
#include <QUrl>

#include <algorithm>

#include <libraryreader.h>

namespace {

/// The shortest pause after each reading, so that several announcements cause only one reading. If
/// the reading took longer, the pause is as long as the reading, so that the other models can use
/// the thread, too.
constexpr int ShortestPauseMs = 50;
constexpr int LongestPauseMs = 5000;

/// The number of rows that a large screen shows.
constexpr int FastStartRows = 200;

/// Whether an announcement of a type concerns a model of another type. The removal of a picture or
/// of a moodset file is announced as a change of files.
bool concerns(int announced, MoodsetContent::Type type)
{
    return announced == type || announced == MoodsetContent::File;
}

} // namespace

ContentModel::ContentModel(MoodsetContent::Type type, QObject* parent)
    : QAbstractListModel(parent)
    , m_type(type)
    , m_roleNames(RecordValues::roleNames(type))
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isStale) {
            start();
        }
    });
    connect(this, &QAbstractItemModel::rowsInserted, this, &ContentModel::countChanged);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &ContentModel::countChanged);
}

ContentModel::~ContentModel()
{
    if (m_reading) {
        m_reading->cancel();
    }
}

void ContentModel::classBegin()
{
}

void ContentModel::componentComplete()
{
    m_thread = LibraryThread::instance();
    // The announcements come first, so that no change between them and the reading is missed.
    m_events = LibraryEvents::instance();
    connect(m_events.get(), &LibraryEvents::contentChanged, this, &ContentModel::handleChange);
    connect(m_events.get(), &LibraryEvents::daemonStarted, this, &ContentModel::refresh);
    setStatus(Loading, {});
    start();
}

QVariant ContentModel::get(int row) const
{
    return row >= 0 && row < rowCount() ? RecordValues::map(this->row(row))
                                        : QVariant::fromValue(nullptr);
}

int ContentModel::indexOf(qlonglong contentId) const
{
    for (int i = 0; i < rowCount(); ++i) {
        if (row(i).id() == contentId) {
            return i;
        }
    }
    return -1;
}

int ContentModel::indexOfUrl(const QUrl& url) const
{
    for (int i = 0; i < rowCount(); ++i) {
        if (row(i).content.data()->url == url) {
            return i;
        }
    }
    return -1;
}

int ContentModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_done + m_rows.size() - m_taken;
}

const ContentRow& ContentModel::row(int position) const
{
    return position < m_done ? m_next.at(position) : m_rows.at(m_taken + position - m_done);
}

QVariant ContentModel::data(const QModelIndex& index, int role) const
{
    return checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)
        ? RecordValues::value(row(index.row()), role)
        : QVariant();
}

QHash<int, QByteArray> ContentModel::roleNames() const
{
    return m_roleNames;
}

void ContentModel::handleChange(int type)
{
    if (concerns(type, m_type)) {
        schedule();
    }
}

void ContentModel::refresh()
{
    schedule();
}

/// Reads the library again as soon as the current reading and the pause after it are over.
void ContentModel::schedule()
{
    m_isStale = true;
    if (m_thread && !m_reading && !m_pause.isActive()) {
        start();
    }
}

void ContentModel::requery()
{
    if (!m_thread) {
        return;
    }
    if (m_isChangingRows) {
        // A view or a handler has called this between two steps of an update. The rows are then
        // neither the old nor the new listing.
        m_isQueryStale = true;
        return;
    }
    // The result of the current reading is not needed any more.
    if (m_reading) {
        m_reading->cancel();
        m_reading.reset();
    }
    m_pause.stop();
    setStatus(Loading, {});
    start();
}

ContentModel::Query ContentModel::wholeListing(
    MoodsetContent::Type type, QueryAgent::Parameters parameters)
{
    parameters.modificationTimes = true;
    return {
        [type, parameters](QueryAgent::Recipient* recipient, int /*limit*/) {
            QueryAgent* const agent = QueryAgent::agentFor(type);
            return agent != nullptr && agent->query(recipient, parameters);
        },
        {},
        false};
}

void ContentModel::start()
{
    m_isStale = false;
    m_isQueryStale = false;
    m_readingTime.start();
    m_reading = m_thread->read([this, query = query(), rows = m_rows,
                                generation = m_generation](const LibraryThread::Work& work) {
        readRows(work, query, rows, generation);
    });
}

// This runs on the library's thread, so it must not use the model. Only the delivered functions
// may.
void ContentModel::readRows(
    const LibraryThread::Work& work, const Query& query, ContentRows before, int generation)
{
    const QString fault = work.open();
    const int newGeneration = work.generation();
    const auto fail = [this, &work, newGeneration](const QString& error) {
        work.deliver([this, error, newGeneration] { finish(error, newGeneration); });
    };
    if (!fault.isEmpty()) {
        fail(fault);
        return;
    }
    const RowKey key = newGeneration == generation ? RowKey::Id : RowKey::Url;
    const auto portions = [this, &work](const ContentRows& portion) {
        work.deliver([this, portion] { fill(portion); });
    };
    if (before.isEmpty() && query.hasFastStart && !query.filter) {
        ContentListing start(work, {}, key, {}, {});
        if (query.list(&start, FastStartRows)) {
            before = start.rest();
            portions(before);
        }
    }
    const bool isFilled = before.isEmpty();
    ContentListing listing(work, std::move(before), key, query.filter, portions);
    if (!query.list(&listing, NoLimit)) {
        fail(tr("the database at %1 cannot be read").arg(LibraryReader::standardPath()));
    } else if (isFilled) {
        portions(listing.rest());
        work.deliver([this, newGeneration] { finish({}, newGeneration); });
    } else if (!work.isCancelled()) {
        work.deliver([this, update = listing.update(), newGeneration] {
            apply(update);
            finish({}, newGeneration);
        });
    }
}

void ContentModel::finish(const QString& error, int generation)
{
    m_reading.reset();
    m_generation = generation;
    m_pause.start(
        int(qBound(qint64(ShortestPauseMs), m_readingTime.elapsed(), qint64(LongestPauseMs))));
    setStatus(error.isEmpty() ? Ready : Error, error);
    if (error.isEmpty()) {
        Q_EMIT updated();
    }
    if (m_isQueryStale) {
        requery();
    }
}

void ContentModel::setStatus(Status status, const QString& error)
{
    if (status != m_status || error != m_error) {
        m_status = status;
        m_error = error;
        Q_EMIT statusChanged();
    }
}

void ContentModel::fill(const ContentRows& rows)
{
    if (rows.isEmpty()) {
        return;
    }
    const QScopedValueRollback<bool> changing(m_isChangingRows, true);
    beginInsertRows({}, m_rows.size(), m_rows.size() + rows.size() - 1);
    m_rows += rows;
    endInsertRows();
}

void ContentModel::apply(const RowUpdate& update)
{
    const QScopedValueRollback<bool> changing(m_isChangingRows, true);
    walkRemovals(update);
    makeMoves(update);
    walkInsertions(update);
    announceChanges(update);
}

// In both walks, the rows before the current position are shown from the new list, and the rows
// after it from the old list. So no row is copied, however many rows are removed and inserted.

void ContentModel::walkRemovals(const RowUpdate& update)
{
    if (update.removals.empty()) {
        return;
    }
    m_next = update.kept;
    int removed = 0;
    for (const RowUpdate::Range& range : update.removals) {
        m_done = range.first - removed;
        m_taken = range.first;
        beginRemoveRows({}, m_done, m_done + range.count - 1);
        m_taken += range.count;
        endRemoveRows();
        removed += range.count;
    }
    m_rows = std::exchange(m_next, {});
    m_done = 0;
    m_taken = 0;
}

void ContentModel::makeMoves(const RowUpdate& update)
{
    for (const RowUpdate::Move& move : update.moves) {
        const int before = move.to > move.from ? move.to + 1 : move.to;
        beginMoveRows({}, move.from, move.from, {}, before);
        m_rows.move(move.from, move.to);
        endMoveRows();
    }
}

void ContentModel::walkInsertions(const RowUpdate& update)
{
    m_next = update.rows;
    int inserted = 0;
    for (const RowUpdate::Range& range : update.insertions) {
        m_done = range.first;
        m_taken = range.first - inserted;
        beginInsertRows({}, m_done, m_done + range.count - 1);
        m_done += range.count;
        endInsertRows();
        inserted += range.count;
    }
    m_rows = std::exchange(m_next, {});
    m_done = 0;
    m_taken = 0;
}

void ContentModel::announceChanges(const RowUpdate& update)
{
    for (const RowUpdate::Range& range : update.changes) {
        Q_EMIT dataChanged(index(range.first), index(range.first + range.count - 1));
    }
}
