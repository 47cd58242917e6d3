// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"
#include "moodsetcontent.h"

#include <QCache>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

class QueryAgent;

/// A connection to the content database, with its statements and agents.
///
/// The object is a QSQLITE connection without a name; it cannot be copied or looked up by name.
/// Copies of its QSqlDatabase handle share the connection. Use it on the thread that made it.
class MOODSET_CONTENT_EXPORT QueryAgentDatabase : public QSqlDatabase
{
public:
    QueryAgentDatabase();
    /// Deletes the agents, then the cached statements, then closes the connection.
    ~QueryAgentDatabase();

    QueryAgentDatabase(const QueryAgentDatabase&) = delete;
    QueryAgentDatabase& operator=(const QueryAgentDatabase&) = delete;

    /// The path of the database file, the same for the daemon and for readers.
    static QString filePath();
    /// The directory of that file, with a "/" at its end.
    static QString directoryPath();
    /// The name of the file in its directory.
    static QString fileName();

    /// The 20 prepared statements that were used last; the keys are their texts.
    QCache<QString, QSqlQuery> cache;
    /// The agents of this connection, which owns them. An entry may be null.
    QHash<MoodsetContent::Type, QueryAgent*> agents;
    /// The serial number of this connection in the process, from 0. It is not a thread id of the
    /// system.
    const int threadId;
};
