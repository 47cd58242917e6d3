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

/// Reads one kind of content from the database, a record at a time or as a listing in batches.
///
/// agentFor() gives the calling thread's agent, on a read-only connection of that thread alone. An
/// agent belongs to its connection's thread; several threads may read at once, each with its own.
/// They see what the daemon has committed. The daemon's signal `contentChanged` on the session bus
/// tells when there is something new to read.
///
/// Failures are reported in the Qt log as warnings and come back as a null result.
class MOODSET_CONTENT_EXPORT QueryAgent
{
public:
    /// Takes the batches of a listing.
    class Recipient
    {
    public:
        /// Takes the next batch, of 50 records but for the last, which has fewer and may be empty.
        /// Called from inside query(), on its thread. Must not start another moodset listing on
        /// that thread.
        virtual void receive(const QVector<Content>& batch) = 0;

    protected:
        ~Recipient() = default;
    };

    /// What a listing is to hold. Each agent reads the fields that its class names.
    struct Parameters
    {
        enum FavoriteFilter : int { AllMoodsets = 0, Favorites = 1, NonFavorites = 2 };

        /// MoodsetQueryAgent: which moodsets to list.
        int favoriteFilter = AllMoodsets;
        /// FileQueryAgent: the MIME type, or a glob if it holds "*"; empty for any.
        QString mimeType;
        /// FileQueryAgent: paths; only files in sub-directories of one of them are listed, at any
        /// depth, and not those that lie directly in it. Empty for any. Glob characters in a path
        /// act as such.
        QStringList directories;
    };

    explicit QueryAgent(QueryAgentDatabase& database);
    virtual ~QueryAgent();

    QueryAgent(const QueryAgent&) = delete;
    QueryAgent& operator=(const QueryAgent&) = delete;

    /// The names of the roles of the agent's records, for models.
    virtual QHash<int, QByteArray> roleNames() const = 0;
    /// The record with a `file.id`, or a null handle.
    virtual Content queryById(qint64 id) = 0;
    /// The record of a local file, or of the file that was downloaded from any other URL, or a null
    /// handle.
    virtual Content queryByUrl(const QUrl& url) = 0;
    /// Lists records to `recipient`, which gets at least one batch; it may be null. True if the
    /// listing ran.
    virtual bool query(Recipient* recipient, const Parameters& parameters) = 0;

    /// The calling thread's agent for files, moodsets or images, or null for another type or while
    /// the database cannot be opened; the next call tries again. Its statements can fail all the
    /// same, for instance when the database was closed cleanly and its folder cannot be written.
    /// The agent lives as long as the thread.
    static QueryAgent* agentFor(MoodsetContent::Type type);

    /// The connection's QueryAgentDatabase::threadId in decimal.
    QString threadId() const;
    /// A prepared query for a statement: a copy of the connection's one query for that text, if it
    /// is among the 20 most recently used. A statement that cannot be prepared is reported and
    /// gives a query that fails.
    QSqlQuery prepareQuery(const QString& statement);

    /// Reports a failed statement in four warnings: the signature of the function that ran it, the
    /// message, the query's last error, and its text in double quotes.
    static void warn(const QSqlQuery& query, const char* function, const char* message);

protected:
    /// How many records a batch holds.
    static constexpr int BatchSize = 50;

    using RowReader = Content (*)(const QSqlQuery& query);

    /// A query for one file by its URL: `byPath`, bound to its directory's path and its name, for a
    /// local one, and `bySource`, bound to the URL's text, for any other.
    QSqlQuery prepareQueryByUrl(const QUrl& url, const QString& byPath, const QString& bySource);
    /// Hands the rows of a query to `recipient` in batches, each completed by `complete` if given.
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
