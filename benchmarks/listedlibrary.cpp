// SPDX-License-Identifier: BSD-3-Clause
#include "listedlibrary.h"

#include "content/databaseschema.h"
#include "measuredprocess.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace {

/// Numbers from 0 to one less than %1, as the column i.
const QString Numbers = QStringLiteral("WITH RECURSIVE numbers (i) AS (SELECT 0 UNION ALL SELECT i "
                                       "+ 1 FROM numbers WHERE i + 1 < %1) ");

QStringList directories(int count)
{
    constexpr int filesPerDirectory = 50;
    return {
        Numbers.arg(count / filesPerDirectory + 1)
        + QStringLiteral("INSERT INTO directory (id, path, scope) SELECT i, "
                         "printf('/home/user/Pictures/album-%05d', i), 0 FROM numbers")};
}

/// The names are in the reverse order of the rows, so a listing must sort.
QStringList files(int count, const QString& mimeType, const QString& extension)
{
    return {
        Numbers.arg(count)
        + QStringLiteral("INSERT INTO file (id, directoryId, mimeType, fileName, "
                         "modificationTime, permissions, metadataCurrent) "
                         "SELECT i + 1, i / 50, '%1', printf('IMG_%06d.%2', i * 7919 % 999983), "
                         "'2021-03-04T05:06:07.089', 3, 1 FROM numbers")
              .arg(mimeType, extension)};
}

/// As in the library of the indexing benchmark, seven of ten pictures have a time.
QStringList images(int count)
{
    return {
        Numbers.arg(count)
        + QStringLiteral("INSERT INTO image SELECT i + 1, "
                         "CASE WHEN i % 10 < 7 THEN strftime('%Y-%m-%dT%H:%M:%S.000', "
                         "1500000000 + i * 7919 % 99999989, 'unixepoch') END, "
                         "4000, 3000, 1 FROM numbers")};
}

QStringList moodsets(int count)
{
    return {
        Numbers.arg(count)
            + QStringLiteral("INSERT INTO moodset SELECT i + 1, i % 10 = 0, "
                             "'/home/user/.cache/home.jpg', '/home/user/.cache/application.jpg', "
                             "'#ff112233', '#80112233', '#ffffffff', '#80ffffff', "
                             "strftime('%Y-%m-%dT%H:%M:%SZ', 1500000000 + i * 7919 % 99999989, "
                             "'unixepoch'), 60, -1, '', 2 FROM numbers"),
        // One tone file for each kind, shared by all moodsets.
        QStringLiteral("INSERT INTO file (id, directoryId, fileName, displayName, permissions) "
                       "SELECT 1000000 + value, 0, 'tone-' || value || '.ogg', 'Tone ' || value, 1 "
                       "FROM json_each('[0, 1, 2, 3, 4, 5, 6]')"),
        Numbers.arg(count)
            + QStringLiteral("INSERT INTO resource SELECT i + 1, 'tone' || value || 'File', "
                             "1000000 + value FROM numbers, json_each('[0, 1, 2, 3, 4, 5, 6]')")};
}

QStringList rows(MoodsetContent::Type type, int count)
{
    if (type == MoodsetContent::Moodset) {
        return directories(count)
            + files(count, QStringLiteral("application/x-zavro-moodset"), QStringLiteral("moodset"))
            + moodsets(count);
    }
    const QStringList pictures = type == MoodsetContent::Image ? images(count) : QStringList();
    return directories(count) + files(count, QStringLiteral("image/jpeg"), QStringLiteral("jpg"))
        + pictures;
}

} // namespace

void makeLibrary(const QString& path, MoodsetContent::Type type, int count)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), path);
        database.setDatabaseName(path);
        database.open(); // A failure shows in the first statement.
        QSqlQuery query(database);
        const QStringList statements = QStringList{QStringLiteral("PRAGMA journal_mode = WAL")}
            + DatabaseSchema::statements() + QStringList{QStringLiteral("BEGIN")}
            + rows(type, count) + QStringList{QStringLiteral("COMMIT")};
        for (const QString& statement : statements) {
            if (!query.exec(statement)) {
                giveUp((statement + QLatin1String(": ") + query.lastError().text()).toUtf8());
            }
        }
    }
    QSqlDatabase::removeDatabase(path);
}
