// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content.h"
#include "export.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class QSqlQuery;
class QUrl;
class QueryAgentDatabase;

/// Reads one kind of content from the database: one record, or a listing in batches.
///
/// agentFor() gives the agent of the calling thread, which has a read-only connection of its own.
/// Use an agent only on its thread; several threads may read at the same time. They see the data
/// that the daemon has committed. The daemon sends the signal `contentChanged` on the session bus
/// when there is something new to read.
///
/// Failures are reported in the Qt log as warnings and come back as a null result.
class MOODSET_CONTENT_EXPORT QueryAgent
{
public:
    /// Receives the batches of a listing.
    class Recipient
    {
    public:
        /// Handles the next batch. It has 50 records; the last one has fewer and may be empty. This
        /// is called from inside query(), on its thread, and must not start another moodset listing
        /// on that thread.
        virtual void receive(const QVector<Content>& batch) = 0;

        /// Whether the listing is to go on, which is asked after each batch. Once it is not, the
        /// listing ends, and has succeeded.
        virtual bool wantsMore() const { return true; }

    protected:
        ~Recipient() = default;
    };

    /// What to list. Each agent uses the members that are marked with its class.
    struct Parameters
    {
        enum FavoriteFilter : int { AllMoodsets = 0, Favorites = 1, NonFavorites = 2 };

        /// MoodsetQueryAgent: which moodsets to list.
        int favoriteFilter = AllMoodsets;
        /// FileQueryAgent: the MIME type, or a glob if it contains "*". Empty for any type.
        QString mimeType;
        /// FileQueryAgent: paths of directories. Only files in their sub-directories are listed, at
        /// any depth, and not the files that are directly in them. Empty for any directory. Glob
        /// characters in a path have their special meaning.
        QStringList directories;
        /// FileQueryAgent and MoodsetQueryAgent: whether the records are to have the times when
        /// their files were last changed.
        bool modificationTimes = false;
    };

    explicit QueryAgent(QueryAgentDatabase& database);
    virtual ~QueryAgent();

    QueryAgent(const QueryAgent&) = delete;
    QueryAgent& operator=(const QueryAgent&) = delete;

    /// The names of the roles of the agent's records, for models.
    virtual QHash<int, QByteArray> roleNames() const = 0;
    /// The record with this `file.id`, or a null handle.
    virtual Content queryById(qint64 id) = 0;
    /// The record of a local file or, for another URL, of the file that was downloaded from it. A
    /// null handle if there is none.
    virtual Content queryByUrl(const QUrl& url) = 0;
    /// Delivers the listing to `recipient`, which may be null and otherwise gets at least one
    /// batch. True if the listing succeeded.
    virtual bool query(Recipient* recipient, const Parameters& parameters) = 0;

    /// The calling thread's agent for files, moodsets or images. It is null for another type, or
    /// while the database cannot be opened; the next call tries again. Even with an agent, a
    /// statement can fail, for instance if the database was closed cleanly and its directory is not
    /// writable. The agent lives as long as its thread.
    static QueryAgent* agentFor(MoodsetContent::Type type);

    /// Closes the calling thread's connection, and deletes its agents. The next call of agentFor()
    /// opens another one. A connection goes on reading the file that it has opened, so a thread
    /// that is to see a database which the daemon has made again has to call this. Must not be
    /// called from inside a listing.
    static void closeConnection();

    /// The connection's QueryAgentDatabase::threadId as a decimal number.
    QString threadId() const;
    /// A prepared query for a statement. If the statement is among the 20 that were used last, this
    /// is a copy of the connection's query for it. If the statement cannot be prepared, this
    /// reports the failure and gives a query that fails.
    QSqlQuery prepareQuery(const QString& statement);

    /// Reports a failed statement in four warnings: the signature of the function that ran it, the
    /// message, the query's last error, and its text in double quotes.
    static void warn(const QSqlQuery& query, const char* function, const char* message);

protected:
    /// The number of records in a batch.
    static constexpr int BatchSize = 50;

    using RowReader = Content (*)(const QSqlQuery& query);

    /// A query for one file by its URL. For a local URL it is `byPath`, with the path of the
    /// directory and the name bound to it. For any other URL it is `bySource`, with the URL as text
    /// bound to it.
    QSqlQuery prepareQueryByUrl(const QUrl& url, const QString& byPath, const QString& bySource);
    /// Gives the rows of a query to `recipient` in batches, and calls `complete` for each batch if
    /// it is given.
    static void deliver(
        QSqlQuery& query, Recipient* recipient, RowReader readRow,
        const std::function<void(QVector<Content>*)>& complete = {});

private:
    QueryAgentDatabase& m_database;
};

/// A QueryAgent for records of class T.
template <typename T>
class MOODSET_CONTENT_EXPORT QueryAgentSpecialization : public QueryAgent
{
public:
    using QueryAgent::QueryAgent;

    QHash<int, QByteArray> roleNames() const override { return T::roleNames(); }
};
