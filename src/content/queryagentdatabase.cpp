// SPDX-License-Identifier: BSD-3-Clause
#include "queryagentdatabase.h"

#include "queryagent.h"

#include <QAtomicInt>
#include <QDir>
#include <QStandardPaths>

namespace {

/// Every statement costs 1, so this many are kept.
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
    const QStringList pieces{
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
        QStringLiteral("system/privileged"), QStringLiteral("Moodsetd"),
        QStringLiteral("moodsetd.sqlite")};
    return pieces.join(QDir::separator());
}
