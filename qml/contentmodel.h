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

/// A list model of records that follows the library. It reads on the library's thread, and begins
/// when its component is complete. Later changes come as removals, moves and insertions of single
/// rows, so that views keep their place and their selection.
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
        Ready, ///< the rows are what the library holds, or are being brought up to date
        Error ///< the library cannot be read; the rows are those of the last time
    };
    Q_ENUM(Status)

    ~ContentModel() override;

    int count() const { return rowCount(); }
    Status status() const { return m_status; }
    /// Why the library cannot be read, in one line; empty if it can.
    QString error() const { return m_error; }

    /// All values of a row by the names of the roles; null if there is no such row.
    Q_INVOKABLE QVariant get(int row) const;
    /// The row of a record; -1 if it has none.
    Q_INVOKABLE int indexOf(qlonglong contentId) const;
    /// The row of a file; -1 if it has none.
    Q_INVOKABLE int indexOfUrl(const QUrl& url) const;
    /// Reads the library again, which the model does by itself when the daemon says that something
    /// has changed.
    Q_INVOKABLE void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void classBegin() override;
    void componentComplete() override;

Q_SIGNALS:
    void countChanged();
    void statusChanged();
    /// The rows are those that the library had when they were read.
    void updated();

protected:
    /// What to list, as the properties of the model say. Copied to the library's thread.
    struct Query
    {
        /// Lists on the library's thread; false if that failed. With a limit, as many records as
        /// fill a screen.
        std::function<bool(QueryAgent::Recipient*, int limit)> list;
        ContentListing::Filter filter;
        /// Whether the first rows can be listed much sooner than all of them.
        bool hasFastStart = false;
    };
    static constexpr int NoLimit = -1;

    /// The whole listing of the library's agent for a type, with the modification times.
    static Query wholeListing(MoodsetContent::Type type, QueryAgent::Parameters parameters);

    ContentModel(MoodsetContent::Type type, QObject* parent);

    virtual Query query() const = 0;

    /// Has the rows read for other properties.
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
    ReadingPointer m_reading; // null while none is under way
    bool m_isStale = false;
    bool m_isQueryStale = false;
    bool m_isChangingRows = false;
    QTimer m_pause;
    QElapsedTimer m_readingTime;
    int m_generation = 0;
    Status m_status = Null;
    QString m_error;

    /// The rows. While an update is applied, the first m_done of them are those of m_next, and
    /// those from m_taken on of m_rows follow.
    ContentRows m_rows;
    ContentRows m_next;
    int m_done = 0;
    int m_taken = 0;
};
