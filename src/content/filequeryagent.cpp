// SPDX-License-Identifier: BSD-3-Clause
#include "filequeryagent.h"

#include "filerow.h"
#include "storedtime.h"

#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

#include <utility>

namespace {

/// All statements for files begin with this.
QString select(const QString& tail, bool withModificationTime = false)
{
    return QStringLiteral("SELECT file.id, directory.path || '/' || file.fileName, file.mimeType, "
                          "file.fileName, file.displayName, file.permissions")
        + FileRow::modificationTimeColumn(withModificationTime)
        + QStringLiteral(" FROM file INNER JOIN directory on file.directoryId = directory.id ")
        + tail;
}

Content fileFromRow(const QSqlQuery& query)
{
    auto* const file = FileRow::newRecord<FileData>(query);
    FileRow::fill(file, query);
    return Content(file);
}

Content fileWithTimeFromRow(const QSqlQuery& query)
{
    auto* const file = FileRow::newRecord<FileData>(query);
    FileRow::fill(file, query);
    file->modified = storedMilliseconds(query.value(FileRow::Count));
    return Content(file);
}

/// A WHERE clause with its values, in the order of the placeholders.
struct Condition
{
    QString clause;
    QVariantList values;
};

Condition conditionFor(const QueryAgent::Parameters& parameters)
{
    Condition condition;
    QString joiner = QStringLiteral("WHERE ");
    const auto join = [&joiner] { return std::exchange(joiner, QStringLiteral("\n     AND ")); };
    if (parameters.mimeType.contains(QLatin1Char('*'))) {
        condition.clause += join() + QStringLiteral("file.mimeType GLOB ?");
        condition.values.append(parameters.mimeType);
    } else if (!parameters.mimeType.isEmpty()) {
        condition.clause += join() + QStringLiteral("file.mimeType = ?");
        condition.values.append(parameters.mimeType);
    }
    if (!parameters.directories.isEmpty()) {
        condition.clause += join() + QLatin1Char('(');
        QString orJoiner;
        for (const QString& path : parameters.directories) {
            condition.clause += orJoiner + QStringLiteral("directory.path GLOB ?");
            condition.values.append(path + QStringLiteral("/*"));
            orJoiner = QStringLiteral("\n         OR ");
        }
        condition.clause += QLatin1Char(')');
    }
    return condition;
}

} // namespace

FileQueryAgent::FileQueryAgent(QueryAgentDatabase& database)
    : QueryAgentSpecialization<FileData>(database)
{
}

Content FileQueryAgent::queryById(qint64 id)
{
    QSqlQuery query = prepareQuery(select(QStringLiteral("WHERE file.id = ?;")));
    query.bindValue(0, id);
    return querySingleFile(query);
}

Content FileQueryAgent::queryByUrl(const QUrl& url)
{
    QSqlQuery query = prepareQueryByUrl(
        url, select(QStringLiteral("WHERE directory.path = ? AND file.fileName = ?;")),
        select(QStringLiteral("WHERE file.id IN (SELECT fileId FROM download WHERE source = ?);")));
    return querySingleFile(query);
}

Content FileQueryAgent::querySingleFile(QSqlQuery& query)
{
    Content file;
    if (!query.exec()) {
        warn(query, "Content FileQueryAgent::querySingleFile(QSqlQuery&)", "Failed to query file");
        return file;
    }
    if (query.next()) {
        file = fileFromRow(query);
        query.finish();
    }
    return file;
}

bool FileQueryAgent::query(Recipient* recipient, const Parameters& parameters)
{
    const Condition condition = conditionFor(parameters);
    QSqlQuery query = prepareQuery(select(
        condition.clause + QStringLiteral(" ORDER BY file.fileName;"),
        parameters.modificationTimes));
    for (int i = 0; i < condition.values.size(); ++i) {
        query.bindValue(i, condition.values.at(i));
    }
    if (!query.exec()) {
        warn(
            query,
            "virtual bool FileQueryAgent::query(QueryAgent::Recipient*, "
            "const QueryAgent::Parameters&)",
            "Failed to execute file query");
        return false;
    }
    deliver(query, recipient, parameters.modificationTimes ? fileWithTimeFromRow : fileFromRow);
    return true;
}
