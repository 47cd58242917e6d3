// SPDX-License-Identifier: BSD-3-Clause
#include "scratchlibrary.h"

#include "content/contentmanager.h"
#include "content/dbmanager.h"
#include "fuzztarget.h"
#include "moodset/managerfactory.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>
#include <QSqlRecord>

ScratchLibrary::ScratchLibrary()
{
    require(!qEnvironmentVariableIsEmpty("PRIVATE_MACHINE"), "runs in a private machine");
    require(m_folder.isValid(), "has a temporary folder");
    ContentManager::setFactory(makeManager);
    exec(
        QStringLiteral("INSERT INTO directory (id, path, scope) VALUES (1, ?, 2);"),
        {m_folder.path()});
}

QString ScratchLibrary::path(const QString& name) const
{
    return m_folder.filePath(name);
}

void ScratchLibrary::write(const QString& name, const QByteArray& content) const
{
    require(QDir().mkpath(QFileInfo(path(name)).path()), "folder can be made");
    writeFile(path(name), content);
}

qint64 ScratchLibrary::addFile(const QString& name, const QString& mimeType)
{
    exec(
        QStringLiteral("INSERT INTO file (directoryId, mimeType, fileName, permissions, "
                       "metadataCurrent) VALUES (1, ?, ?, 1, 0);"),
        {mimeType, name});
    return exec(QStringLiteral("SELECT last_insert_rowid();"))
        .constFirst()
        .constFirst()
        .toLongLong();
}

QVector<QVariantList> ScratchLibrary::exec(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(*DbManager::instance());
    query.prepare(statement);
    for (int i = 0; i < values.size(); ++i) {
        query.bindValue(i, values.at(i));
    }
    require(query.exec(), qPrintable(statement));
    QVector<QVariantList> rows;
    while (query.next()) {
        QVariantList row;
        for (int column = 0; column < query.record().count(); ++column) {
            row.append(query.value(column));
        }
        rows.append(row);
    }
    return rows;
}

bool ScratchLibrary::isInTransaction()
{
    // A transaction cannot be opened inside another.
    QSqlQuery query(*DbManager::instance());
    if (!query.exec(QStringLiteral("BEGIN;"))) {
        return true;
    }
    exec(QStringLiteral("ROLLBACK;"));
    return false;
}
