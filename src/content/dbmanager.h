// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "queryagentdatabase.h"

#include <QHash>
#include <QString>

class ContentManager;
class QDir;
class QSqlQuery;

/// The daemon's one read-write connection to the content database, and the registry of the managers
/// that write through it.
///
/// The first use opens or makes the file, upgrades it to the current schema and, if the system's
/// locale has changed, marks translated content to be read again. A file that was only partly made
/// is completed. A file of an unknown version is removed and made again. Failures are reported in
/// the log, and the daemon continues. The connection belongs to the thread of the first use.
class DbManager : public QueryAgentDatabase
{
public:
    /// The only instance, made at the first use and destroyed when the process ends.
    static DbManager* instance();

    /// Closes the connection, then deletes the managers.
    ~DbManager();

    /// The registry's entry for a kind of content. It is made, with the value null, if it is
    /// missing. The registry owns the managers.
    ContentManager*& manager(MoodsetContent::Type type);

    /// Makes all tables, indexes and triggers in an empty file. It tries all statements, and
    /// returns false if any has failed.
    bool createDatabaseSchema(const QSqlDatabase& database);
    /// Writes the schema's version into the file. An empty text means the current version.
    bool updateSchemaVersion(const QString& version);
    bool updateSchema_v7to8();
    bool updateSchema_v8to10();
    /// Marks every moodset file to be read again.
    bool resetMoodsetsForReparsing();

private:
    DbManager();

    bool openCurrentSchema(bool exists);
    void completeDatabaseSchema();
    bool bringToCurrentSchema(int version);
    bool migrate(
        const char* function, const char* note, const QString& alteration, const QString& version);
    void deleteFiles(QDir directory);
    void scheduleTranslationUpdate();

    QHash<MoodsetContent::Type, ContentManager*> m_managers;
};
