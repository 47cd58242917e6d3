// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "drivenfilemanager.h"
#include "indexdatabase.h"
#include "moodset/installmanager.h"
#include "registryentry.h"
#include "testfolder.h"

#include <QCoreApplication>
#include <QEvent>

/// An install manager that a test drives step by step.
class DrivenInstallManager : public InstallManager
{
public:
    explicit DrivenInstallManager(QueryAgentDatabase& database)
        : InstallManager(database, nullptr)
    {
    }

    /// Runs the posted step; false if none was posted.
    bool step()
    {
        const int before = m_steps;
        // An event that is posted during this call waits for the next call.
        QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
        return m_steps > before;
    }
    /// Runs steps until none is posted. Returns their number.
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

/// Replaces a parser of packages. It records its turns under a name.
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

    /// The number of turns that report that there is more to do.
    int remaining = 0;

private:
    const QString m_name;
    QStringList* const m_turns;
};

/// A database and the managers that an install manager works with, all driven by the test, and a
/// directory for install directories.
struct InstallLibrary
{
    /// Makes the row of a package's file up to date, and gives it another time.
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
    /// The parentId (0 for none) and the scope of a directory's row.
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

/// The error of a statement that the connection has refused, as the log shows it.
inline QString notAuthorizedToRun()
{
    return QStringLiteral("QSqlError(\"23\", \"Unable to fetch row\", \"not authorized\")");
}
