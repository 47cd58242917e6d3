// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlist.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

const auto Listing = QStringLiteral(
    "SELECT file.id, file.displayName, directory.path || '/' || file.fileName, moodset.favorite,"
    " moodset.primaryColor, moodset.secondaryColor, moodset.highlightColor,"
    " moodset.secondaryHighlightColor FROM moodset JOIN file ON moodset.fileId = file.id"
    " JOIN directory ON file.directoryId = directory.id"
    " ORDER BY moodset.favorite DESC, moodset.timestamp ASC, moodset.fileId");

/// A read-only connection without a name.
class Connection : public QSqlDatabase
{
public:
    explicit Connection(const QString& path)
        : QSqlDatabase(QStringLiteral("QSQLITE"))
    {
        setDatabaseName(path);
        setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    }
};

ListedMoodset moodsetFromRow(const QSqlQuery& row)
{
    const auto text = [&row](int column) { return row.value(column).toString(); };
    return {
        row.value(0).toLongLong(),
        text(1),
        text(2),
        row.value(3).toBool(),
        text(4),
        text(5),
        text(6),
        text(7)};
}

} // namespace

std::optional<QVector<ListedMoodset>> readMoodsetList(const QString& database)
{
    Connection connection(database);
    if (!QFileInfo::exists(database) || !connection.open()) {
        return std::nullopt;
    }
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (!query.exec(Listing)) {
        return std::nullopt;
    }
    QVector<ListedMoodset> moodsets;
    while (query.next()) {
        moodsets.append(moodsetFromRow(query));
    }
    return query.lastError().isValid() ? std::nullopt : std::make_optional(moodsets);
}
