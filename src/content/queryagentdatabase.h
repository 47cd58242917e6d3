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

/// A connection to the content database, with the statements and the agents that live on it.
///
/// The object is a QSQLITE connection without a name: it stays in one place and is never looked up.
/// Copies of its QSqlDatabase handle share the connection. Use from the thread that made it.
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

    /// Prepared statements by their text, the 20 most recently used.
    QCache<QString, QSqlQuery> cache;
    /// The agents of this connection, owned; an entry may be null.
    QHash<MoodsetContent::Type, QueryAgent*> agents;
    /// The serial number of this connection in the process, from 0; no thread id of the system.
    const int threadId;
};
