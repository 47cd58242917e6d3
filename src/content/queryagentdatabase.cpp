// SPDX-License-Identifier: BSD-3-Clause
#include "queryagentdatabase.h"

#include "databasepath.h"
#include "queryagent.h"

#include <QAtomicInt>

namespace {

/// The cost of each statement is 1, so this is their number.
constexpr int StatementCacheSize = 20;

int nextThreadId()
{
    static QAtomicInt counter(0);
    return counter.fetchAndAddOrdered(1);
}

} // namespace

QueryAgentDatabase::QueryAgentDatabase()
    : QSqlDatabase(QStringLiteral("QSQLITE"))
    , cache(StatementCacheSize)
    , threadId(nextThreadId())
{
}

QueryAgentDatabase::~QueryAgentDatabase()
{
    qDeleteAll(agents);
    agents.clear();
    cache.clear();
}

QString QueryAgentDatabase::filePath()
{
    return DatabasePath::file();
}

QString QueryAgentDatabase::directoryPath()
{
    return DatabasePath::directory();
}

QString QueryAgentDatabase::fileName()
{
    return DatabasePath::fileName();
}
