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
/// The first use finds or makes the file, brings it to the current schema and, after a change of
/// the system's locale, marks translated content to be read again. A file of an unknown version is
/// thrown away and rebuilt. Whatever fails is reported in the log, and the daemon runs on. The
/// connection belongs to the thread of the first use.
class DbManager : public QueryAgentDatabase
{
public:
    /// The one instance, made on first use and destroyed when the process ends.
    static DbManager* instance();

    /// Closes the connection, then deletes the managers.
    ~DbManager();

    /// The registry's entry for a kind of content, made null where it is missing. The registry owns
    /// what is put there.
    ContentManager*& manager(MoodsetContent::Type type);

    /// Makes all tables, indexes and triggers on a connection to an empty file; false if any
    /// statement failed, after all have been tried.
    bool createDatabaseSchema(const QSqlDatabase& database);
    /// Writes the schema's version into the file, the current one for an empty text.
    bool updateSchemaVersion(const QString& version);
    bool updateSchema_v7to8();
    bool updateSchema_v8to10();
    /// Marks every moodset file to be parsed again.
    bool resetMoodsetsForReparsing();

private:
    DbManager();

    bool openCurrentSchema(bool exists);
    bool bringToCurrentSchema(int version);
    bool migrate(
        const char* function, const char* note, const QString& alteration, const QString& version);
    void deleteFiles(QDir directory, const QString& path);
    void scheduleTranslationUpdate();

    QHash<MoodsetContent::Type, ContentManager*> m_managers;
};
