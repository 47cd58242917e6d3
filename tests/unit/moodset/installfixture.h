// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "moodset/installmanager.h"
#include "registryentry.h"
#include "testfolder.h"

#include <QCoreApplication>
#include <QEvent>

/// An install manager that a test turns by hand.
class DrivenInstallManager : public InstallManager
{
public:
    explicit DrivenInstallManager(QueryAgentDatabase& database)
        : InstallManager(database, nullptr)
    {
    }

    /// Does the posted step; false if none was posted.
    bool step()
    {
        const int before = m_steps;
        // An event that is posted meanwhile waits for the next call.
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        return m_steps > before;
    }
    /// Does steps until none is posted; the number of them.
    int runToIdle()
    {
        int steps = 0;
        while (step()) {
            ++steps;
        }
        return steps;
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            ++m_steps;
        }
        return InstallManager::event(event);
    }

private:
    int m_steps = 0;
};

/// Stands in for what parses the files of packages: notes its turns under a name.
class ParserTurns : public ContentManager
{
public:
    ParserTurns(QueryAgentDatabase& database, QString name, QStringList* turns)
        : ContentManager(database)
        , m_name(std::move(name))
        , m_turns(turns)
    {
    }

    bool updateMetaData() override
    {
        m_turns->append(m_name);
        return remaining-- > 0;
    }

    /// How many turns say that there is more to do.
    int remaining = 0;

private:
    const QString m_name;
    QStringList* const m_turns;
};

/// A database and the managers that an install manager works with, all turned by hand, and a folder
/// for install directories.
struct InstallLibrary
{
    /// Makes a package's row up to date and of another time.
    void age(const QString& fileName)
    {
        database.exec(QStringLiteral("UPDATE file SET modificationTime = '1970-01-01T12:00:00.000',"
                                     " permissions = 3, metadataCurrent = 1 WHERE fileName = '%1';")
                          .arg(fileName));
    }
    int metadataCurrent(const QString& fileName) const
    {
        return database
            .value(
                QStringLiteral("SELECT metadataCurrent FROM file WHERE fileName = ?;"), {fileName})
            .toInt();
    }
    /// parentId, 0 for none, and scope of a directory's row.
    QList<int> directoryRow(const QString& path) const
    {
        const LibraryDatabase::Rows rows = database.rows(
            QStringLiteral("SELECT COALESCE(parentId, 0), scope FROM directory WHERE path = ?;"),
            {path});
        return rows.size() == 1
            ? QList<int>{rows.constFirst().at(0).toInt(), rows.constFirst().at(1).toInt()}
            : QList<int>();
    }
    int directoryId(const QString& path) const
    {
        return database.value(QStringLiteral("SELECT id FROM directory WHERE path = ?;"), {path})
            .toInt();
    }

    TestFolder folder;
    IndexDatabase database;
    DrivenFileManager files{database.connection()};
    QStringList turns;
    ParserTurns moodsets{database.connection(), QStringLiteral("moodsets"), &turns};
    ParserTurns indexes{database.connection(), QStringLiteral("indexes"), &turns};
    const RegistryEntry filesEntry{MoodsetContent::File, &files};
    const RegistryEntry moodsetsEntry{MoodsetContent::Moodset, &moodsets};
    const RegistryEntry indexesEntry{MoodsetContent::Index, &indexes};
    DrivenInstallManager manager{database.connection()};
};

/// The error of a statement that may not be run, as the log shows it.
inline QString notAuthorizedToRun()
{
    return QStringLiteral("QSqlError(\"23\", \"Unable to fetch row\", \"not authorized\")");
}
