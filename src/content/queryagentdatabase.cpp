// SPDX-License-Identifier: BSD-3-Clause
#include "queryagentdatabase.h"

#include "queryagent.h"

#include <QAtomicInt>
#include <QDir>
#include <QStandardPaths>

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
    return directoryPath() + fileName();
}

QString QueryAgentDatabase::directoryPath()
{
    const QStringList pieces{
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
        QStringLiteral("system/privileged"), QStringLiteral("Moodsetd"), QString()};
    return pieces.join(QDir::separator());
}

QString QueryAgentDatabase::fileName()
{
    return QStringLiteral("moodsetd.sqlite");
}
