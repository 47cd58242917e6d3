// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentlisting.h"
#include "contentrow.h"
#include "libraryevents.h"
#include "librarythread.h"
#include "rowupdate.h"

#include <QAbstractListModel>
#include <QElapsedTimer>
#include <QQmlParserStatus>
#include <QTimer>

#include <memory>

/// A list model of records that follows the library. It begins to read, on the library's thread,
/// when its component is complete. It reports later changes as removals, moves and insertions of
/// single rows, so that views keep their position and their selection.
class ContentModel : public QAbstractListModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString error READ error NOTIFY statusChanged)

public:
    enum Status : int {
        Null, ///< the component is not complete yet
        Loading, ///< the rows are being read for the first time, or for the first time with a
                 ///< filter
        Ready, ///< the rows show the library, or are being updated
        Error ///< the library cannot be read; the rows stay as they were
    };
    Q_ENUM(Status)

    ~ContentModel() override;

    int count() const { return rowCount(); }
    Status status() const { return m_status; }
    /// Why the library cannot be read, in one line; empty if it can.
    QString error() const { return m_error; }

    /// All values of a row, by the names of their roles; null if there is no such row.
    Q_INVOKABLE QVariant get(int row) const;
    /// The row of a record; -1 if it has none.
    Q_INVOKABLE int indexOf(qlonglong contentId) const;
    /// The row of a file; -1 if it has none.
    Q_INVOKABLE int indexOfUrl(const QUrl& url) const;
    /// Reads the library again. The model also does this by itself when the daemon announces a
    /// change.
    Q_INVOKABLE void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void classBegin() override;
    void componentComplete() override;

Q_SIGNALS:
    void countChanged();
    void statusChanged();
    /// A reading is complete, and the rows show its result.
    void updated();

protected:
    /// The listing that the properties of the model select. It is copied to the library's thread.
    struct Query
    {
        /// Runs the listing on the library's thread. False if it failed. If `limit` is not NoLimit,
        /// the listing may end after this number of records.
        std::function<bool(QueryAgent::Recipient*, int limit)> list;
        ContentListing::Filter filter;
        /// Whether the first rows can be listed much sooner than all rows.
        bool hasFastStart = false;
    };
    static constexpr int NoLimit = -1;

    /// The whole listing of a type's agent, with the modification times.
    static Query wholeListing(MoodsetContent::Type type, QueryAgent::Parameters parameters);

    ContentModel(MoodsetContent::Type type, QObject* parent);

    virtual Query query() const = 0;

    /// Reads the rows again because the properties have changed.
    void requery();

private:
    const ContentRow& row(int position) const;
    void handleChange(int type);
    void schedule();
    void start();
    void readRows(
        const LibraryThread::Work& work, const Query& query, ContentRows before, int generation);
    void fill(const ContentRows& rows);
    void apply(const RowUpdate& update);
    void walkRemovals(const RowUpdate& update);
    void makeMoves(const RowUpdate& update);
    void walkInsertions(const RowUpdate& update);
    void announceChanges(const RowUpdate& update);
    void finish(const QString& error, int generation);
    void setStatus(Status status, const QString& error);

    const MoodsetContent::Type m_type;
    const QHash<int, QByteArray> m_roleNames;
    std::shared_ptr<LibraryThread> m_thread;
    std::shared_ptr<LibraryEvents> m_events;
    ReadingPointer m_reading; // null while nothing is being read
    bool m_isStale = false;
    bool m_isQueryStale = false;
    bool m_isChangingRows = false;
    QTimer m_pause;
    QElapsedTimer m_readingTime;
    int m_generation = 0;
    Status m_status = Null;
    QString m_error;

    /// The rows of the model. While an update is applied, the model shows the first m_done rows of
    /// m_next, and after them the rows of m_rows from m_taken on.
    ContentRows m_rows;
    ContentRows m_next;
    int m_done = 0;
    int m_taken = 0;
};
