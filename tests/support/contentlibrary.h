// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/queryagentdatabase.h"
#include "contentwriter.h"

#include <QTemporaryDir>
#include <QTest>

/// A database in its own directory, with a writer, and with a read-only connection like those that
/// threads get for their agents. Declare it before the agent.
class ContentLibrary
{
public:
    ContentLibrary()
        : writer(path())
    {
        reader.setDatabaseName(path());
        reader.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!reader.open()) {
            QTest::qFail("Cannot open the database", __FILE__, __LINE__);
        }
    }

    QString path() const { return m_folder.filePath(QStringLiteral("moodsetd.sqlite")); }

private:
    QTemporaryDir m_folder;

public:
    ContentWriter writer;
    QueryAgentDatabase reader;
};
